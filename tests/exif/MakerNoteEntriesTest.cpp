// The maker note in the store: its entries, and the summary.

#include <algorithm>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "makernote/MakerNoteInfo.h"
#include "makernote/VxMakerNoteParser.h"
#include "support/Jpeg.h"
#include "support/LogCapture.h"
#include "support/StoreFile.h"
#include "support/Tiff.h"

namespace {

using test::Bytes;
using test::Directory;
using test::Find;
using test::Jpeg;
using test::Keys;
using test::LogCapture;
using test::Stored;
using test::StoreFile;
using test::Tiff;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ByteOrder kLittle = ByteOrder::LittleEndian;
constexpr std::uint32_t kNotePosition = 20;

const Tiff g_big(ByteOrder::BigEndian);
const Tiff g_little(kLittle);

Directory LensDirectory() {
  return {g_big.Short(0x0001, {1, 2, 3}), g_big.Byte(0x0021, {3}), g_big.Short(0xA003, {7})};
}

void SetText(VxMetadata& store, std::uint32_t tag, std::string_view text) {
  Bytes bytes = test::Text(text);
  bytes.push_back(0);
  SetTagValue(store.m_fnGetBlock(BLOCK_IFD0)->FindOrInsert(tag), tag, 2, bytes, store.Memory());
}

// A store whose file has a note at kNotePosition, with make and model, standing at the note.
class NoteStore : public StoreFile {
 public:
  explicit NoteStore(const Directory& directory = LensDirectory(),
                     std::uint32_t flags = test::kReadAll)
      : StoreFile(test::Join({test::Zeros(kNotePosition), g_big.BuildDirectory(directory, 0)}),
                  flags) {
    SetText(Store(), 271, "SAMSUNG");
    SetText(Store(), 272, "NX10");
    Stream().Seek(kNotePosition);
  }

  HRESULT Parse(std::uint32_t segEnd = 1000) {
    return Store().m_fnParseMakerNote(0, kLittle, segEnd);
  }
  std::vector<std::uint32_t> SummaryKeys() { return Keys(Store(), BLOCK_MAKERNOTE_SUMMARY); }
  std::vector<std::uint32_t> EntryKeys() { return Keys(Store(), BLOCK_MAKERNOTE); }
};

TEST(MakerNoteEntries, StoresEntriesAndSummary) {
  NoteStore note;
  VxMetadata& store = note.Store();
  const LogCapture log;
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_THAT(note.EntryKeys(), ElementsAre(0x0001, 0x0021, 0xA003));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE, 0x0001), (Stored{0x0001, 3, 3, "010002000300"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE, 0x0021), (Stored{0x0021, 1, 1, "03"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE, 0xA003), (Stored{0xA003, 3, 1, "0700"}));

  constexpr std::string_view kLens = "Samsung NX 60mm F2.8 Macro ED OIS SSA";
  EXPECT_THAT(note.SummaryKeys(), ElementsAre(1, 2, 4, 10));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 1), (Stored{1, 4, 1, "0a000000"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 2),
            (Stored{2, 2, kLens.size() + 1, test::Hex(test::Text(kLens)) + "00"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 4), (Stored{4, 4, 1, "07000000"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 10), (Stored{10, 2, 10, "4c616e64736361706500"}));
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(MakerNoteEntries, ReadsWithEitherFlagAndNotWithoutBoth) {
  for (const std::uint32_t flag : {0x0080U, 0x0400U, 0x0480U}) {
    NoteStore note(LensDirectory(), flag);
    EXPECT_EQ(note.Parse(), S_OK);
    EXPECT_EQ(note.EntryKeys().size(), 3U) << flag;
    EXPECT_EQ(note.SummaryKeys().size(), 4U) << flag;
  }
  NoteStore note(LensDirectory(), ~0x0480U);
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_THAT(note.EntryKeys(), IsEmpty());
  EXPECT_THAT(note.SummaryKeys(), IsEmpty());
}

TEST(MakerNoteEntries, NeedsAnOpenFile) {
  VxMetadata store;
  store.m_nParseFlags = test::kReadAll;
  EXPECT_EQ(store.m_fnParseMakerNote(0, kLittle, 0), E_POINTER);
}

TEST(MakerNoteEntries, StopsWhenMakeOrModelCannotBeReadAsText) {
  for (const std::uint32_t tag : {271U, 272U}) {
    NoteStore note;
    TagEntry& entry = note.Store().m_fnGetBlock(BLOCK_IFD0)->FindOrInsert(tag);
    SetTagValue(entry, tag, 7, test::Text("SAMSUNG"), note.Store().Memory());
    EXPECT_EQ(note.Parse(), E_FAIL) << "no final zero";
    DropTagData(entry);
    EXPECT_EQ(note.Parse(), E_FAIL) << "no data";
    EXPECT_THAT(note.EntryKeys(), IsEmpty());
    EXPECT_THAT(note.SummaryKeys(), IsEmpty());
  }
}

TEST(MakerNoteEntries, SkipsAnEmptyMakeOrModelWithoutAMessage) {
  for (const std::uint32_t tag : {271U, 272U}) {
    NoteStore note;
    SetText(note.Store(), tag, "");
    const LogCapture log;
    EXPECT_EQ(note.Parse(), S_OK);
    EXPECT_THAT(note.SummaryKeys(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
  }
}

TEST(MakerNoteEntries, SkipsAMakeWithoutAVendorParserWithoutAMessage) {
  NoteStore note;
  SetText(note.Store(), 271, "Samsung");
  const LogCapture log;
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_THAT(note.SummaryKeys(), IsEmpty());
  EXPECT_THAT(note.EntryKeys(), IsEmpty());
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(MakerNoteEntries, SkipsTheNoteWithoutAFrontEnd) {
  NoteStore note;
  note.Store().m_pMakerNote.reset();
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_THAT(note.SummaryKeys(), IsEmpty());
}

TEST(MakerNoteEntries, LeavesTheFileWhereItStood) {
  NoteStore note;
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_EQ(note.Stream().Position(), kNotePosition);
  SetText(note.Store(), 271, "Maker");
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_EQ(note.Stream().Position(), kNotePosition);
}

TEST(MakerNoteEntries, StoresNothingFromAnUnreadableNote) {
  NoteStore note;
  note.Stream().Seek(0);
  const LogCapture log;
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_THAT(note.SummaryKeys(), IsEmpty());
  EXPECT_THAT(note.EntryKeys(), IsEmpty());
  EXPECT_EQ(note.Stream().Position(), 0U);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(MakerNoteEntries, BoundsValuesByTheNoteAndTheSegment) {
  // The six bytes behind the directory of three entries.
  constexpr std::uint32_t kValueAt = kNotePosition + 2 + 3 * 12 + 4;
  for (const std::uint32_t segEnd : {kValueAt - 1, kValueAt}) {
    NoteStore note;
    EXPECT_EQ(note.Parse(segEnd), S_OK);
    EXPECT_THAT(note.EntryKeys(), ElementsAre(0x0021, 0xA003)) << segEnd;
  }
  for (const std::uint32_t segEnd : {kValueAt + 1, 0U}) {
    NoteStore note;
    EXPECT_EQ(note.Parse(segEnd), S_OK);
    EXPECT_THAT(note.EntryKeys(), ElementsAre(0x0001, 0x0021, 0xA003)) << segEnd;
  }
}

TEST(MakerNoteEntries, LeavesALensIdOfZeroOutOfTheSummary) {
  NoteStore note({g_big.Short(0xA003, {0})});
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_THAT(note.SummaryKeys(), ElementsAre(1));
  EXPECT_THAT(note.EntryKeys(), ElementsAre(0xA003));
}

TEST(MakerNoteEntries, ReplacesEntriesOfAnEarlierNoteAndKeepsTheOthers) {
  NoteStore note({g_big.Short(5, {6})});
  VxMetadata& store = note.Store();
  const Bytes old = {9, 9, 9, 9};
  TagMap& table = *store.m_fnGetBlock(BLOCK_MAKERNOTE);
  SetTagValue(table.FindOrInsert(5), 5, 4, old, store.Memory());
  SetTagValue(table.FindOrInsert(6), 6, 4, old, store.Memory());
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE, 5), (Stored{5, 3, 1, "0600"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE, 6), (Stored{6, 4, 0, "09090909"}));
}

TEST(MakerNoteEntries, KeepsSizesOfEntriesThatFindNoRoom) {
  NoteStore note({g_big.Short(5, {6, 7})});
  VxMetadata& store = note.Store();
  // Make and model took 13 bytes. Eight are left: the parser's four and the vendor code's four, so
  // that the store's copy of the entry finds none.
  ASSERT_TRUE(store.Budget().TakeBytes(kMaxStoredBytes - 13 - 8));
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 1), (Stored{1, 4, 1, "0a000000"}));
  const TagEntry* entry = store.m_fnGetBlock(BLOCK_MAKERNOTE)->Find(5);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->m_nTag, 5U);
  EXPECT_EQ(entry->m_nType, 3U);
  EXPECT_EQ(entry->m_nCount, 2U);
  EXPECT_EQ(entry->m_nSize, 4U);
  EXPECT_EQ(entry->m_pData, nullptr);
}

TEST(MakerNoteEntries, CopiesEntriesThatHaveNoDataAsTheyAre) {
  NoteStore note({g_big.Short(5, {6, 7})});
  VxMetadata& store = note.Store();
  ASSERT_TRUE(store.Budget().TakeBytes(kMaxStoredBytes - 13));
  EXPECT_EQ(note.Parse(), S_OK);
  const TagEntry* entry = store.m_fnGetBlock(BLOCK_MAKERNOTE)->Find(5);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->m_nCount, 2U);
  EXPECT_EQ(entry->m_nSize, 4U);
  EXPECT_EQ(entry->m_pData, nullptr);
}

TEST(MakerNoteEntries, StoresEmptyValues) {
  NoteStore note({g_big.Byte(5, {}), g_big.Raw(6, 2, 0, {})});
  EXPECT_EQ(note.Parse(), S_OK);
  EXPECT_EQ(Find(note.Store(), BLOCK_MAKERNOTE, 5), (Stored{5, 1, 0, ""}));
  EXPECT_EQ(Find(note.Store(), BLOCK_MAKERNOTE, 6), (Stored{6, 2, 0, "00"}));
}

// --- Through the directories of a photograph ---

Bytes PhotographWithNote(const Directory& note) {
  // The note's own offsets count from its first byte, so it can be built apart.
  const Directory exif = {g_little.Undefined(0x927C, g_big.BuildDirectory(note, 0))};
  return Jpeg()
      .Exif(g_little.Build({g_little.Ascii(271, "SAMSUNG"), g_little.Ascii(272, "NX10"),
                            g_little.Child(0x8769, exif)}))
      .Scan()
      .Build();
}

TEST(MakerNoteEntries, ReadsABigEndianNoteInALittleEndianPhotograph) {
  StoreFile file(PhotographWithNote(LensDirectory()));
  ASSERT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_THAT(Keys(file.Store(), BLOCK_MAKERNOTE), ElementsAre(0x0001, 0x0021, 0xA003));
  EXPECT_EQ(Find(file.Store(), BLOCK_MAKERNOTE, 0x0001), (Stored{1, 3, 3, "010002000300"}));
  EXPECT_EQ(Find(file.Store(), BLOCK_MAKERNOTE_SUMMARY, 4), (Stored{4, 4, 1, "07000000"}));
  ASSERT_TRUE(Find(file.Store(), BLOCK_EXIF, 0x927C)) << "the raw bytes are kept as well";
}

TEST(MakerNoteEntries, SurvivesEveryPrefixOfAPhotograph) {
  const Bytes bytes = PhotographWithNote(LensDirectory());
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    StoreFile file(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)));
    ASSERT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_LE(Keys(file.Store(), BLOCK_MAKERNOTE).size(), 4U) << size;
  }
}

TEST(MakerNoteEntries, TakesTheNoteOfDngPrivateDataOnlyWithoutAnother) {
  const Bytes first = g_big.BuildDirectory({g_big.Short(1, {1})}, 0);
  const Bytes second = g_big.BuildDirectory({g_big.Short(2, {2})}, 0);
  const Directory withBoth = {g_little.Ascii(271, "SAMSUNG"), g_little.Ascii(272, "NX10"),
                              g_little.Child(0x8769, {g_little.Undefined(0x927C, first)}),
                              g_little.Undefined(0xC634, second)};
  StoreFile both(Jpeg().Exif(g_little.Build(withBoth)).Build());
  ASSERT_EQ(both.ParseJpeg(), S_OK);
  EXPECT_THAT(Keys(both.Store(), BLOCK_MAKERNOTE), ElementsAre(1));

  const Directory withOne = {g_little.Ascii(271, "SAMSUNG"), g_little.Ascii(272, "NX10"),
                             g_little.Undefined(0xC634, second)};
  StoreFile one(Jpeg().Exif(g_little.Build(withOne)).Build());
  ASSERT_EQ(one.ParseJpeg(), S_OK);
  EXPECT_THAT(Keys(one.Store(), BLOCK_MAKERNOTE), ElementsAre(2));
}

// --- The summary ---

std::unique_ptr<char[]> CopyText(std::string_view text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::ranges::copy(text, copy.get());
  return copy;
}

TEST(MakerNoteSummary, HasOnlyTheVendorCodeOfAnEmptyRecord) {
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(MakerNoteInfo{});
  EXPECT_THAT(Keys(store, BLOCK_MAKERNOTE_SUMMARY), ElementsAre(1));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 1), (Stored{1, 4, 1, "00000000"}));
}

TEST(MakerNoteSummary, StoresEveryFieldUnderItsKey) {
  MakerNoteInfo info;
  info.nVendorCode = 0x01020304;
  info.pszLensName = CopyText("name");
  info.pszLensModel = CopyText("model");
  info.nVendorValue1 = -1;
  info.nVendorValue2 = -2;
  info.nIso = 102400;
  info.vendorRational = {1, 2};
  info.fNumber = {28, 10};
  info.nLensId = 9;
  info.pszPictureStyle = CopyText("style");
  info.lensInfo = {{24, 1}, {70, 1}, {28, 10}, {56, 10}};
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(info);

  const Stored expected[] = {
      {1, 4, 1, "04030201"},          {2, 2, 5, "6e616d6500"},
      {3, 2, 6, "6d6f64656c00"},      {4, 4, 1, "09000000"},
      {5, 9, 1, "feffffff"},          {6, 9, 1, "ffffffff"},
      {7, 4, 1, "00900100"},          {8, 5, 1, "0100000002000000"},
      {9, 5, 1, "1c0000000a000000"},  {10, 2, 6, "7374796c6500"},
      {12, 5, 1, "1800000001000000"}, {13, 5, 1, "4600000001000000"},
      {14, 5, 1, "1c0000000a000000"}, {15, 5, 1, "380000000a000000"},
  };
  EXPECT_EQ(Keys(store, BLOCK_MAKERNOTE_SUMMARY).size(), std::size(expected));
  for (const Stored& entry : expected) {
    EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, entry.tag), entry);
  }
}

TEST(MakerNoteSummary, GoesByTheNumeratorOfARational) {
  MakerNoteInfo info;
  info.vendorRational = {0, 5};
  info.fNumber = {5, 0};
  info.lensInfo = {{0, 1}, {1, 0}, {0, 0}, {1, 1}};
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(info);
  EXPECT_THAT(Keys(store, BLOCK_MAKERNOTE_SUMMARY), ElementsAre(1, 9, 13, 15));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 9), (Stored{9, 5, 1, "0500000000000000"}));
}

TEST(MakerNoteSummary, StoresAnEmptyTextAsItsZero) {
  MakerNoteInfo info;
  info.pszLensModel = CopyText("");
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(info);
  EXPECT_THAT(Keys(store, BLOCK_MAKERNOTE_SUMMARY), ElementsAre(1, 3));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 3), (Stored{3, 2, 1, "00"}));
}

TEST(MakerNoteSummary, KeepsFieldsOfAnEarlierRecordThatALaterOneLacks) {
  MakerNoteInfo first;
  first.nVendorCode = 10;
  first.nIso = 100;
  MakerNoteInfo second;
  second.nVendorCode = 11;
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(first);
  store.m_fnStoreMakerNoteSummary(second);
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 1), (Stored{1, 4, 1, "0b000000"}));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 7), (Stored{7, 4, 1, "64000000"}));
}

// A JPEG of 40 x 30 pixels, its frame header far enough from its end.
Bytes PreviewJpeg() {
  return Jpeg().Frame(40, 30).Raw(test::Zeros(16)).Build();
}

MakerNoteInfo InfoWithPreview(const Bytes& preview) {
  MakerNoteInfo info;
  info.pPreview = std::make_unique<std::uint8_t[]>(preview.size());
  std::ranges::copy(preview, info.pPreview.get());
  info.nPreviewSize = preview.size();
  return info;
}

TEST(MakerNoteSummary, TakesThePreviewAsThumbnailWhenThereIsNone) {
  const Bytes preview = PreviewJpeg();
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(InfoWithPreview(preview));
  ASSERT_NE(store.m_pThumbnail, nullptr);
  ASSERT_EQ(store.m_nThumbnailSize, preview.size());
  EXPECT_TRUE(std::equal(preview.begin(), preview.end(), store.m_pThumbnail.get()));
  EXPECT_EQ(store.m_nThumbnailWidth, 40U);
  EXPECT_EQ(store.m_nThumbnailHeight, 30U);
}

TEST(MakerNoteSummary, LeavesAThumbnailThatIsThere) {
  VxMetadata store;
  const Bytes thumbnail = {1, 2, 3};
  store.SetThumbnail(thumbnail);
  store.m_fnStoreMakerNoteSummary(InfoWithPreview(PreviewJpeg()));
  EXPECT_EQ(store.m_nThumbnailSize, 3U);
  EXPECT_EQ(store.m_nThumbnailWidth, 0U);
}

TEST(MakerNoteSummary, TakesNoPreviewWithoutBytes) {
  MakerNoteInfo empty = InfoWithPreview(PreviewJpeg());
  empty.nPreviewSize = 0;
  MakerNoteInfo missing;
  missing.nPreviewSize = 100;
  VxMetadata store;
  store.m_fnStoreMakerNoteSummary(empty);
  store.m_fnStoreMakerNoteSummary(missing);
  EXPECT_EQ(store.m_pThumbnail, nullptr);
  EXPECT_EQ(store.m_nThumbnailSize, 0U);
}

}  // namespace
