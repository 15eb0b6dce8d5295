#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "makernote/NoteFile.h"
#include "makernote/ParserBase.h"
#include "support/Tiff.h"

namespace {

using test::Bytes;
using test::Directory;
using test::kBig;
using test::kLittle;
using test::NoteFile;
using test::TagsOf;
using test::Tiff;
using testing::ElementsAre;
using testing::IsEmpty;

// A vendor class that adds nothing, and notes what its hooks are told.
class PlainParser : public CParserBase {
 public:
  struct Call {
    std::uint32_t tag;
    std::uint32_t type;
    std::uint64_t position;
    bool isStored = false;  // whether the tag had a value before
    bool operator==(const Call&) const = default;
  };

  std::vector<Call> calls;
  int finishes = 0;
  bool headerIsGood = true;
  bool fillResult = true;

  using CParserBase::EntryCopy;
  using CParserBase::GetEntry;
  using CParserBase::m_byteOrder;
  using CParserBase::m_nBaseOffset;
  using CParserBase::m_nFocalLength;
  using CParserBase::m_nParseState;
  using CParserBase::m_nStartPosition;
  using CParserBase::m_nVendorCode;
  using CParserBase::m_strMake;
  using CParserBase::m_strModel;
  using CParserBase::m_strSoftware;
  using CParserBase::m_workArea;

 protected:
  bool ReadHeader(FileStream&) override {
    m_nVendorCode = 99;
    return headerIsGood;
  }
  bool FillInfo(MakerNoteInfo& info) override {
    info.nLensId = info.nVendorCode + 1;
    return fillResult;
  }
  bool OnEntry(FileStream& stream, std::uint32_t tag, std::uint32_t type) override {
    EntryCopy ignored;
    calls.push_back({tag, type, stream.Position(), GetEntry(tag, ignored)});
    return true;
  }
  bool OnFinish(FileStream&) override {
    ++finishes;
    return true;
  }
};

// "type:count:hex" of each entry under its tag, in the order of the walk.
std::vector<std::pair<std::uint32_t, std::string>> Entries(CParserBase& parser) {
  std::vector<std::pair<std::uint32_t, std::string>> entries;
  for (bool more = parser.FirstEntry(); more; more = parser.NextEntry()) {
    const TagEntry* entry = parser.CurrentEntry();
    if (entry == nullptr) break;
    entries.emplace_back(entry->m_nTag, std::to_string(entry->m_nType) + ":" +
                                            std::to_string(entry->m_nCount) + ":" +
                                            test::Hex(TagBytes(*entry)));
  }
  return entries;
}

using Pairs = std::vector<std::pair<std::uint32_t, std::string>>;

// A directory at the start of a file of 300 bytes whose byte at position n is n & 0xFF.
Bytes CountingFile(const Tiff& tiff, const Directory& directory) {
  Bytes bytes = tiff.BuildDirectory(directory, 0);
  for (std::size_t i = bytes.size(); i < 300; ++i) bytes.push_back(static_cast<std::uint8_t>(i));
  return bytes;
}

// `count` entries with the tags 1, 2, ..., each a SHORT with the value of its tag.
Directory ManyEntries(const Tiff& tiff, std::uint16_t count) {
  Directory directory;
  for (std::uint16_t tag = 1; tag <= count; ++tag) directory.push_back(tiff.Short(tag, {tag}));
  return directory;
}

TEST(ParserBase, StartsLittleEndianWithoutVendorCodeAndWithoutEntries) {
  PlainParser parser;
  EXPECT_EQ(parser.m_byteOrder, kLittle);
  EXPECT_EQ(parser.m_nVendorCode, 0U);
  EXPECT_THAT(parser.m_workArea, testing::Each(std::uint8_t{0}));
  EXPECT_EQ(parser.CurrentEntry(), nullptr);
  EXPECT_FALSE(parser.NextEntry());
  EXPECT_TRUE(parser.FirstEntry());
  EXPECT_EQ(parser.CurrentEntry(), nullptr);
  EXPECT_FALSE(parser.NextEntry());
}

TEST(ParserBase, ReadsFourBytesInPlaceAndSixThroughTheirOffset) {
  for (const ByteOrder order : {kLittle, kBig}) {
    const Tiff tiff(order);
    NoteFile file(
        tiff.BuildDirectory({tiff.Short(1, {0x0102, 0x0304}), tiff.Short(2, {5, 6, 7})}, 0));
    PlainParser parser;
    ASSERT_TRUE(parser.Parse(file.Stream(), order, 0, 0));
    EXPECT_EQ(Entries(parser), (Pairs{{1, "3:2:02010403"}, {2, "3:3:050006000700"}}));
  }
}

TEST(ParserBase, CountsOffsetsFromTheBaseOffset) {
  const Tiff tiff(kLittle);
  const Bytes bytes =
      test::Join({test::Zeros(40), tiff.BuildDirectory({tiff.Long(7, {8, 9})}, 20)});
  NoteFile file(bytes, 40);
  PlainParser parser;
  parser.SetContext("make", "model", 20, "software", 50);
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(Entries(parser), (Pairs{{7, "4:2:0800000009000000"}}));
}

TEST(ParserBase, WrapsBaseAndOffsetAtThirtyTwoBits) {
  const Tiff tiff(kLittle);
  NoteFile file(CountingFile(tiff, {tiff.AtOffset(7, 1, 5, 116)}));
  PlainParser parser;
  parser.SetContext("", "", 0xFFFFFFF0, "", 0);
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 99, 200));
  EXPECT_EQ(Entries(parser), (Pairs{{7, "1:5:6465666768"}}));
}

TEST(ParserBase, KeepsContextAndWhereTheParseBegan) {
  const Tiff tiff(kLittle);
  NoteFile file(test::Join({test::Zeros(6), tiff.BuildDirectory({tiff.Short(1, {1})}, 6)}), 6);
  PlainParser parser;
  parser.m_nParseState = 5;
  parser.SetContext("make", "model", 12, "software", 35);
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(parser.m_strMake, "make");
  EXPECT_EQ(parser.m_strModel, "model");
  EXPECT_EQ(parser.m_strSoftware, "software");
  EXPECT_EQ(parser.m_nBaseOffset, 12U);
  EXPECT_EQ(parser.m_nFocalLength, 35U);
  EXPECT_EQ(parser.m_nStartPosition, 6U);
  EXPECT_EQ(parser.m_nParseState, 0U);
}

TEST(ParserBase, FailsWithoutAnOpenFile) {
  FileStream stream;
  PlainParser parser;
  EXPECT_FALSE(parser.Parse(stream, kLittle, 0, 0));
  EXPECT_EQ(parser.finishes, 0);
}

TEST(ParserBase, FailsWithABadHeaderBeforeTheDirectory) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Short(1, {1})}, 0));
  PlainParser parser;
  parser.headerIsGood = false;
  EXPECT_FALSE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_THAT(Entries(parser), IsEmpty());
  EXPECT_EQ(file.Stream().Position(), 0U);
}

TEST(ParserBase, TakesOneTo256Entries) {
  const Tiff tiff(kBig);
  for (const std::uint16_t count : std::array<std::uint16_t, 4>{0, 1, 256, 257}) {
    NoteFile file(tiff.BuildDirectory(ManyEntries(tiff, count), 0));
    PlainParser parser;
    const bool isValid = count >= 1 && count <= 256;
    EXPECT_EQ(parser.Parse(file.Stream(), kBig, 0, 0), isValid) << count;
    EXPECT_EQ(Entries(parser).size(), isValid ? count : 0U) << count;
    EXPECT_EQ(parser.finishes, isValid ? 1 : 0) << count;
  }
}

TEST(ParserBase, FailsWhenTheCountIsCut) {
  for (const Bytes& bytes : {Bytes{}, Bytes{1}}) {
    NoteFile file(bytes);
    PlainParser parser;
    EXPECT_FALSE(parser.Parse(file.Stream(), kLittle, 0, 0));
  }
}

TEST(ParserBase, AcceptsPositionsStrictlyBetweenTheBounds) {
  const Tiff tiff(kLittle);
  NoteFile file(CountingFile(tiff, {tiff.AtOffset(1, 1, 5, 99), tiff.AtOffset(2, 1, 5, 100),
                                    tiff.AtOffset(3, 1, 5, 101), tiff.AtOffset(4, 1, 5, 199),
                                    tiff.AtOffset(5, 1, 5, 200), tiff.AtOffset(6, 1, 5, 201)}));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 100, 200));
  EXPECT_EQ(Entries(parser), (Pairs{{3, "1:5:6566676869"}, {4, "1:5:c7c8c9cacb"}}));
  EXPECT_EQ(parser.calls, (std::vector<PlainParser::Call>{{3, 1, 101}, {4, 1, 199}}));
}

TEST(ParserBase, AcceptsEveryPositionWhenABoundIsZero) {
  const Tiff tiff(kLittle);
  for (const auto& [lower, upper] : {std::pair{0U, 200U}, {100U, 0U}, {0U, 0U}}) {
    NoteFile file(CountingFile(tiff, {tiff.AtOffset(1, 1, 5, 99), tiff.AtOffset(2, 1, 5, 100),
                                      tiff.AtOffset(3, 1, 5, 200)}));
    PlainParser parser;
    ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, lower, upper));
    EXPECT_THAT(TagsOf(parser), ElementsAre(1, 2, 3)) << lower << " " << upper;
  }
}

TEST(ParserBase, DoesNotBoundValuesInPlace) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Byte(1, {1, 2, 3, 4})}, 0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 100, 200));
  EXPECT_EQ(Entries(parser), (Pairs{{1, "1:4:01020304"}}));
}

TEST(ParserBase, KeepsTheLastOfSeveralEntriesWithOneTag) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Long(9, {1, 2}), tiff.Byte(9, {3})}, 0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(Entries(parser), (Pairs{{9, "1:1:03"}}));
}

TEST(ParserBase, WalksEntriesAscendingByTag) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory(
      {tiff.Short(0xFFFF, {1}), tiff.Short(3, {2}), tiff.Short(0x8000, {3}), tiff.Short(0, {4})},
      0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_THAT(TagsOf(parser), ElementsAre(0, 3, 0x8000, 0xFFFF));
  EXPECT_EQ(parser.CurrentEntry(), nullptr);
  EXPECT_FALSE(parser.NextEntry());
  EXPECT_TRUE(parser.FirstEntry());
  ASSERT_NE(parser.CurrentEntry(), nullptr);
  EXPECT_EQ(parser.CurrentEntry()->m_nTag, 0U);
}

TEST(ParserBase, StoresEachTypeAsTheStoreDoes) {
  const Tiff tiff(kBig);
  NoteFile file(tiff.BuildDirectory(
      {
          tiff.Raw(1, 6, 2, {0xFF, 0x01}),                           // SBYTE
          tiff.Raw(2, 2, 3, test::Text("abc")),                      // ASCII without its zero
          tiff.Raw(3, 11, 1, {0x3F, 0x80, 0, 0}),                    // FLOAT
          tiff.Raw(4, 12, 1, {0x3F, 0xF0, 1, 2, 3, 4, 5, 6}),        // DOUBLE
          tiff.Raw(5, 0, 4, {1, 2, 3, 4}),                           // type 0
          tiff.Raw(6, 14, 4, {1, 2, 3, 4}),                          // unknown, in place
          tiff.Raw(7, 0xFFFF, 5, {1, 2, 3, 4, 5}),                   // unknown, behind
          tiff.Raw(8, 10, 1, {0xFF, 0xFF, 0xFF, 0xFE, 0, 0, 0, 3}),  // SRATIONAL
          tiff.Raw(9, 8, 1, {0xFF, 0xFE}),                           // SSHORT
          tiff.Raw(10, 13, 1, {0, 0, 1, 2}),                         // IFD
      },
      0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kBig, 0, 0));
  EXPECT_EQ(Entries(parser), (Pairs{{1, "1:2:ff01"},
                                    {2, "2:3:61626300"},
                                    {3, "7:1:3f"},
                                    {4, "7:1:3f"},
                                    {5, "7:4:01020304"},
                                    {6, "7:4:01020304"},
                                    {7, "7:5:0102030405"},
                                    {8, "10:1:feffffff03000000"},
                                    {9, "8:1:feff"},
                                    {10, "13:1:02010000"}}));
}

TEST(ParserBase, PassesOverEntriesWithMoreThan65535Values) {
  const Tiff tiff(kLittle);
  Bytes bytes =
      tiff.BuildDirectory({tiff.AtOffset(1, 1, 65535, 100), tiff.AtOffset(2, 1, 65536, 100)}, 0);
  bytes.resize(100 + 65536, 0xAB);
  NoteFile file(bytes);
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(Entries(parser), (Pairs{{1, "1:65535:" + test::Hex(Bytes(65535, 0xAB))}}));
  EXPECT_EQ(parser.calls, (std::vector<PlainParser::Call>{{1, 1, 100}, {2, 1, 100}}));
}

// 8 x 0x20000000 is 0 in 32 bits, and such a value would seem to stand in the entry.
TEST(ParserBase, ComputesSizesInSixtyFourBits) {
  const Tiff tiff(kLittle);
  NoteFile file(CountingFile(
      tiff, {tiff.AtOffset(1, 5, 0x20000000, 150), tiff.AtOffset(2, 5, 0x20000000, 250),
             tiff.AtOffset(3, 4, 0x40000001, 151)}));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 100, 200));
  EXPECT_EQ(parser.calls, (std::vector<PlainParser::Call>{{1, 5, 150}, {3, 4, 151}}));
  EXPECT_THAT(Entries(parser), IsEmpty());
}

TEST(ParserBase, CallsTheFinishingHookOnceAndReadsNoNextDirectory) {
  const Tiff tiff(kLittle);
  const Directory directory = {tiff.Short(1, {1}), tiff.Short(2, {2})};
  NoteFile file(tiff.BuildDirectory(directory, 0, 2));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(parser.finishes, 1);
  EXPECT_EQ(file.Stream().Position(), 2U + 2 * 12);
}

TEST(ParserBase, TellsTheVendorOfAnEntryBeforeItsValueIsStored) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Short(5, {1}), tiff.Short(5, {2})}, 0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(parser.calls, (std::vector<PlainParser::Call>{{5, 3, 10, false}, {5, 3, 22, true}}));
}

TEST(ParserBase, WritesTheVendorCodeBeforeTheVendorFillsTheSummary) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Short(1, {1})}, 0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  MakerNoteInfo info;
  EXPECT_TRUE(parser.GetInfo(info));
  EXPECT_EQ(info.nVendorCode, 99U);
  EXPECT_EQ(info.nLensId, 100U);
  parser.fillResult = false;
  EXPECT_FALSE(parser.GetInfo(info));
}

TEST(ParserBase, CopiesAnEntryOut) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Short(1, {1, 2}), tiff.Byte(2, {})}, 0));
  PlainParser parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  PlainParser::EntryCopy copy;
  EXPECT_TRUE(parser.GetEntry(1, copy));
  EXPECT_EQ(copy.m_nTag, 1U);
  EXPECT_EQ(copy.m_nType, 3U);
  EXPECT_EQ(copy.bytes, (Bytes{1, 0, 2, 0}));
  EXPECT_FALSE(parser.GetEntry(2, copy)) << "no bytes";
  EXPECT_FALSE(parser.GetEntry(3, copy)) << "no such tag";
  EXPECT_EQ(copy.m_nTag, 1U) << "untouched";
  EXPECT_THAT(TagsOf(parser), ElementsAre(1, 2));
}

TEST(ParserBase, EndsQuietlyWhenTheEntryBudgetIsUsedUp) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory(ManyEntries(tiff, 5), 0));
  for (std::uint32_t i = 0; i + 2 < kMaxWalkedEntries; ++i) {
    ASSERT_TRUE(file.Stream().Budget().TakeEntry());
  }
  PlainParser parser;
  EXPECT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_THAT(TagsOf(parser), ElementsAre(1, 2));
  EXPECT_EQ(parser.finishes, 1);
}

TEST(ParserBase, LeavesValuesWithoutDataWhenTheByteBudgetIsUsedUp) {
  const Tiff tiff(kLittle);
  NoteFile file(tiff.BuildDirectory({tiff.Long(1, {1}), tiff.Long(2, {2})}, 0));
  ASSERT_TRUE(file.Stream().Budget().TakeBytes(kMaxStoredBytes - 4));
  PlainParser parser;
  EXPECT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  EXPECT_EQ(Entries(parser), (Pairs{{1, "4:1:01000000"}, {2, "4:1:"}}));
  PlainParser::EntryCopy copy;
  EXPECT_TRUE(parser.GetEntry(1, copy));
  EXPECT_FALSE(parser.GetEntry(2, copy));
}

// A cut entry reads as tag 0 of type 0 without values; the whole ones before it stay.
TEST(ParserBase, ReadsEveryPrefixOfADirectory) {
  const Tiff tiff(kBig);
  const Bytes bytes = tiff.BuildDirectory(
      {tiff.Short(1, {1}), tiff.Long(2, {3, 4}), tiff.Ascii(3, "a longer text")}, 0);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    NoteFile file(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)));
    PlainParser parser;
    ASSERT_EQ(parser.Parse(file.Stream(), kBig, 0, 0), size >= 2) << size;
    const std::size_t whole = size < 2 ? 0 : std::min<std::size_t>((size - 2) / 12, 3);
    const auto tags = TagsOf(parser);
    for (std::uint32_t tag = 1; tag <= whole; ++tag) {
      EXPECT_THAT(tags, testing::Contains(tag)) << size;
    }
    EXPECT_LE(tags.size(), 4U) << size;
  }
}

}  // namespace
