// Directories that lead to each other and to themselves, and lists without an end.

#include <cstdint>
#include <string_view>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

constexpr std::uint16_t kSubIfdsTag = 330;
constexpr std::uint16_t kInteropTag = 0xA005;
constexpr std::uint16_t kMakerNoteTag = 0x927C;
constexpr std::uint16_t kLeafTag = 0x8606;

class HostileDirectories : public TiffSuite {
 protected:
  Bytes LeafRecord(std::string_view name, std::uint32_t size, const Bytes& data = {}) const {
    Bytes field = Text(name);
    field.resize(40);
    return Join({Number(0x504B5453), Zeros(4), field, Number(size), data});
  }

  static Bytes Photograph(const Bytes& block) {
    return Jpeg().Exif(block).Frame(640, 480).Scan().Build();
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, HostileDirectories, kBothOrders, OrderName);

// Each of the records without data holds all that follow as a nested list and has them as
// neighbours as well: walked to the letter, 2 to the 40th power visits.
TEST_P(HostileDirectories, FortyNestedLeafListsOfNoSize) {
  const Bytes records =
      Join({Repeat(LeafRecord("Empty", 0), 40), LeafRecord("ShootObj_back_type", 3, Text("11\n"))});
  const auto file = BoundedJpeg(Photograph(tiff.Build({tiff.Undefined(kLeafTag, records)})));
  EXPECT_EQ(Keys(file->Store(), BLOCK_IFD0), (Tags{271, 272}));
  EXPECT_EQ(Find(file->Store(), BLOCK_IFD0, 271), MadeUpText(271, "Leaf"));
  EXPECT_EQ(Find(file->Store(), BLOCK_IFD0, 272), MadeUpText(272, "Aptus 17"));
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

// The magic over and over: a record begins at every fourth byte, and its neighbour lies beyond the
// file. Every list is met by hundreds of pointers.
TEST_P(HostileDirectories, ManyPointersToOverlappingLeafRecords) {
  Directory pointers;
  constexpr std::uint32_t kRecords = 8 + 2 + 12 * 500 + 4;
  for (std::uint32_t i = 0; i < 500; ++i) {
    pointers.push_back(tiff.AtOffset(kLeafTag, 7, 50'000, kRecords + 4 * i));
  }
  const Bytes records = Repeat(Number(0x504B5453), 14'000);
  const auto file = BoundedJpeg(Photograph(Join({tiff.Build(pointers), records})));
  EXPECT_EQ(Keys(file->Store(), BLOCK_IFD0), Tags{271});
  EXPECT_FALSE(file->Store().Budget().TakeEntry());
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

// 127 passes over the directory fit into the budget: each costs its 512 entries and the pointer.
TEST_P(HostileDirectories, ManyExifPointersToOneDirectory) {
  const Directory pointers(512, tiff.Long(kExifPointer, {8 + 2 + 12 * 512 + 4}));
  const Bytes exif = tiff.BuildDirectory(ShortEntries(tiff, 1, 512), 0);
  const auto file = BoundedJpeg(Photograph(Join({tiff.Build(pointers), exif})));
  VxMetadata& store = file->Store();
  EXPECT_TRUE(Keys(store, BLOCK_IFD0).empty());
  EXPECT_EQ(Keys(store, BLOCK_EXIF).size(), 512U);
  EXPECT_EQ(Find(store, BLOCK_EXIF, 512), ShortValue(512, 512));
  EXPECT_FALSE(store.Budget().TakeEntry());
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

// The values lie inside the segment and beyond the file's end, so each is all zeros.
TEST_P(HostileDirectories, ManyExifPointersToOneDirectoryOfValuesBeyondTheFile) {
  const Directory pointers(512, tiff.Long(kExifPointer, {8 + 2 + 12 * 512 + 4}));
  Directory values;
  for (std::uint16_t i = 1; i <= 512; ++i) values.push_back(tiff.AtOffset(i, 4, 2, 60'000));
  const Bytes block = Join({tiff.Build(pointers), tiff.BuildDirectory(values, 0)});
  const Bytes payload = Join({Text("Exif"), Zeros(2), block});
  const auto file = BoundedJpeg(Jpeg().SegmentOfLength(0xE1, 0xFFFF, payload).Build());
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_EXIF).size(), 512U);
  EXPECT_EQ(Find(store, BLOCK_EXIF, 512), (Stored{512, 4, 2, Hex(Zeros(8))}));
  EXPECT_FALSE(store.Budget().TakeEntry());
}

// Every pass would store 512 values of 8192 bytes, 4 MiB. The budget ends during the first, and the
// next ones leave every value without data.
TEST_P(HostileDirectories, ManyExifPointersToOneDirectoryOfLargeValues) {
  const Directory pointers(512, tiff.Long(kExifPointer, {8 + 2 + 12 * 512 + 4}));
  Directory values;
  for (std::uint16_t i = 1; i <= 512; ++i) values.push_back(tiff.AtOffset(i, 5, 1024, 8));
  const Bytes block = Join({tiff.Build(pointers), tiff.BuildDirectory(values, 0), Zeros(40'000)});
  const auto file = BoundedJpeg(Photograph(block));
  VxMetadata& store = file->Store();
  EXPECT_EQ(store.m_fnGetBlock(BLOCK_EXIF)->Count(), 512U);
  EXPECT_EQ(StoredBytes(store, BLOCK_EXIF), 0U);
  ExpectSound(store);
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

TEST_P(HostileDirectories, ManyMakerNotesOfManyEntries) {
  Directory note;
  for (std::uint16_t i = 1; i <= 255; ++i) {
    note.push_back(Tiff(ByteOrder::BigEndian).Short(i, {i}));
  }
  note.push_back(Tiff(ByteOrder::BigEndian).Short(0xA003, {7}));
  const Bytes bytes = Tiff(ByteOrder::BigEndian).BuildDirectory(note, 0);
  const auto size = static_cast<std::uint32_t>(bytes.size());

  // The notes share their bytes, which stand behind the directory of pointers to them.
  constexpr std::uint32_t kNotes = 1000 + 2 + 12 * 512 + 4;
  const Directory notes(512, tiff.AtOffset(kMakerNoteTag, 7, size, kNotes));
  Bytes block = tiff.Build(
      {tiff.Ascii(271, "SAMSUNG"), tiff.Ascii(272, "NX10"), tiff.Long(kExifPointer, {1000})});
  block.resize(1000);
  const auto file = BoundedJpeg(Photograph(Join({block, tiff.BuildDirectory(notes, 1000), bytes})));
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_EXIF), Tags{kMakerNoteTag});
  EXPECT_EQ(Keys(store, BLOCK_MAKERNOTE).size(), 256U);
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE, 255), ShortValue(255, 255));
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 4), LongValue(4, 7));
  EXPECT_FALSE(store.Budget().TakeEntry());
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

// A value of a note may have 65535 numbers: each of these has half a megabyte, twice.
TEST_P(HostileDirectories, MakerNoteOfLargeValues) {
  Directory note;
  for (std::uint16_t i = 1; i <= 256; ++i) {
    note.push_back(Tiff(ByteOrder::BigEndian).AtOffset(i, 5, 65535, 2));
  }
  const Bytes bytes = Tiff(ByteOrder::BigEndian).BuildDirectory(note, 0);
  const Directory exif = {tiff.Undefined(kMakerNoteTag, bytes)};
  const auto file = BoundedJpeg(Photograph(tiff.Build(
      {tiff.Ascii(271, "SAMSUNG"), tiff.Ascii(272, "NX10"), tiff.Child(kExifPointer, exif)})));
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_MAKERNOTE_SUMMARY), Tags{1});
  EXPECT_EQ(store.m_fnGetBlock(BLOCK_MAKERNOTE)->Count(), 256U);
  EXPECT_LE(StoredBytes(store, BLOCK_MAKERNOTE), 3U * 1024 * 1024);
  ExpectSound(store);
}

// Of every segment no more than the header is its own: the first directory of all of them is one.
TEST_P(HostileDirectories, ManyExifSegmentsThatShareOneDirectory) {
  Jpeg jpeg;
  const std::uint32_t directory = jpeg.NextOffset() + 4;
  jpeg.Segment(0xE4, tiff.BuildDirectory(ShortEntries(tiff, 1001, 512), 0));
  for (int i = 0; i < 3000; ++i) {
    const std::uint32_t base = jpeg.NextOffset() + 10;
    const Bytes mark = Text(GetParam() == ByteOrder::BigEndian ? "MM" : "II");
    jpeg.Exif(Join({mark, Word(42), Number(directory - base)}));
  }
  const auto file = BoundedJpeg(jpeg.Frame(640, 480).Scan().Build());
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_IFD0).size(), 512U);
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1512), ShortValue(1512, 1512));
  EXPECT_FALSE(store.Budget().TakeEntry());
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

// The list is all zeros, and at offset 0 stands the byte-order mark, which is no number of entries.
// 65535 offsets fit into the budget beside the entry itself; their tables are those of the numbers
// below 65536 that have bit 12.
TEST_P(HostileDirectories, SubIfdListOfGreatestCount) {
  const Bytes block =
      Join({tiff.Build({tiff.AtOffset(kSubIfdsTag, 4, 0xFFFFFFFF, 100)}), Zeros(200)});
  const auto file = BoundedJpeg(Photograph(block));
  VxMetadata& store = file->Store();
  EXPECT_EQ(store.m_mapSubIfd.size(), 32768U);
  EXPECT_TRUE(Keys(store, 0x1000).empty());
  EXPECT_TRUE(Keys(store, 0xFFFF).empty());
  EXPECT_FALSE(store.Budget().TakeEntry());
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

// Every offset of the list leads beyond the file, where a directory has no entries.
TEST_P(HostileDirectories, SubIfdListOfOffsetsBeyondTheFile) {
  const Bytes block =
      Join({tiff.Build({tiff.AtOffset(kSubIfdsTag, 4, 0xFFFFFFFF, 100)}), Bytes(64'000, 0x7F)});
  const auto file = BoundedJpeg(Photograph(block));
  EXPECT_EQ(file->Store().m_mapSubIfd.size(), 32768U);
  EXPECT_TRUE(Keys(file->Store(), 0x1000).empty());
  EXPECT_FALSE(file->Store().Budget().TakeEntry());
}

TEST_P(HostileDirectories, SubIfdListOfTheFirstDirectory) {
  constexpr std::uint16_t kCount = 5000;
  Directory ifd0 = ShortEntries(tiff, 1001, 100);
  ifd0.push_back(tiff.Long(kSubIfdsTag, std::vector<std::uint32_t>(kCount, 8)));
  const auto file = BoundedJpeg(Photograph(tiff.Build(ifd0)));
  VxMetadata& store = file->Store();
  // Each table takes an offset and 101 entries; the first 642 are complete.
  static_assert((kMaxWalkedEntries - 101) / 102 == 641);
  EXPECT_EQ(Keys(store, 0x1000).size(), 101U);
  EXPECT_EQ(Find(store, 0x1000, kSubIfdsTag)->count, 1024U);
  EXPECT_EQ(Keys(store, 0x1000 | 640).size(), 101U);
  EXPECT_LT(Keys(store, 0x1000 | 641).size(), 101U);
  EXPECT_EQ(Keys(store, BLOCK_IFD0).size(), 100U);
}

TEST_P(HostileDirectories, NextDirectoryIsTheFirst) {
  Bytes block = tiff.Build({tiff.Short(274, {6}), tiff.Long(kExifPointer, {8})});
  const Bytes next = Number(8);
  std::copy(next.begin(), next.end(), block.begin() + 8 + 2 + 12 * 2);
  const auto file = BoundedJpeg(Photograph(block));
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_IFD0), Tags{274});
  EXPECT_EQ(Keys(store, BLOCK_IFD1), (Tags{274, kExifPointer}));
  EXPECT_EQ(Keys(store, BLOCK_EXIF), (Tags{274, kExifPointer}));
  EXPECT_EQ(store.m_pThumbnail, nullptr);
}

TEST_P(HostileDirectories, ExifDirectoryPointsAtItself) {
  constexpr std::uint32_t kExif = 8 + 2 + 12 * 2 + 4;
  const Directory ifd0 = {tiff.Long(kExifPointer, {kExif}), tiff.Long(kGpsPointer, {kExif})};
  const Directory exif = {tiff.Short(1, {11}), tiff.Short(2, {22}),
                          tiff.Long(kExifPointer, {kExif}), tiff.Long(kInteropTag, {kExif}),
                          tiff.Long(kSubIfdsTag, {kExif})};
  const auto file =
      BoundedJpeg(Photograph(Join({tiff.Build(ifd0), tiff.BuildDirectory(exif, kExif, kExif)})));
  VxMetadata& store = file->Store();
  const Tags all = {1, 2, kSubIfdsTag, kExifPointer, kInteropTag};
  EXPECT_TRUE(Keys(store, BLOCK_IFD0).empty());
  EXPECT_EQ(Keys(store, BLOCK_EXIF), all);
  EXPECT_EQ(Keys(store, BLOCK_GPS), all);
  EXPECT_EQ(Find(store, BLOCK_EXIF, 2), ShortValue(2, 22));
  EXPECT_TRUE(Keys(store, BLOCK_IFD1).empty());
  EXPECT_TRUE(store.m_mapSubIfd.empty());
}

// 512 directories of 512 pointers to one more: a quarter of a million visits to the last one.
TEST_P(HostileDirectories, PointersToPointersToOneDirectory) {
  constexpr std::uint32_t kExif = 8 + 2 + 12 * 512 + 4;
  constexpr std::uint32_t kInterop = kExif + 2 + 12 * 512 + 4;
  const Directory ifd0(512, tiff.Long(kExifPointer, {kExif}));
  const Directory exif(512, tiff.Long(kInteropTag, {kInterop}));
  const auto file =
      BoundedJpeg(Photograph(Join({tiff.Build(ifd0), tiff.BuildDirectory(exif, kExif),
                                   tiff.BuildDirectory(ShortEntries(tiff, 1, 512), kInterop)})));
  EXPECT_EQ(Keys(file->Store(), BLOCK_EXIF), (Tags{1, 2, kInteropTag}));
  EXPECT_EQ(Find(file->Store(), BLOCK_EXIF, 2), ShortValue(2, 2));
  EXPECT_FALSE(file->Store().Budget().TakeEntry());
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

// Directory and values lie in different parts of a file that is larger than one read.
TEST_P(HostileDirectories, ManyEntriesFarFromTheirValues) {
  Directory values;
  for (std::uint16_t i = 1; i <= 512; ++i) values.push_back(tiff.AtOffset(i, 4, 2, 65'400));
  Jpeg jpeg;
  jpeg.Segment(0xE4, Zeros(2000));
  const Directory pointers(512, tiff.Long(kExifPointer, {8 + 2 + 12 * 512 + 4}));
  Bytes block = Join({tiff.Build(pointers), tiff.BuildDirectory(values, 0)});
  block.resize(65'400, 0x11);
  const auto file = BoundedJpeg(jpeg.Exif(Join({block, Bytes(8, 0x22)})).Frame(640, 480).Build());
  VxMetadata& store = file->Store();
  EXPECT_EQ(Keys(store, BLOCK_EXIF).size(), 512U);
  EXPECT_EQ(Find(store, BLOCK_EXIF, 512), (Stored{512, 4, 2, Hex(Bytes(8, 0x22))}));
  EXPECT_FALSE(store.Budget().TakeEntry());
  EXPECT_EQ(store.m_nImageWidth, 640U);
}

}  // namespace
}  // namespace test
