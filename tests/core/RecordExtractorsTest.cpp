#include <map>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "core/RecordExtractors.h"
#include "support/Bytes.h"

namespace test {
namespace {

// A record in a form that one comparison checks.
struct Extracted {
  std::uint32_t group = 0;
  std::uint32_t id = 0;
  std::uint32_t type = 0;
  std::string hex;

  bool operator==(const Extracted&) const = default;
};

void PrintTo(const Extracted& record, std::ostream* stream) {
  *stream << "group " << record.group << " id " << record.id << " type " << record.type << " "
          << record.hex;
}

std::vector<Extracted> Extract(VxMetadata& store, std::uint32_t mask) {
  std::vector<Extracted> all;
  for (const CInfoRecord& record : ExtractRecords(store, mask)) {
    EXPECT_EQ(record.m_dValue, 0.0);
    all.push_back(
        {record.m_nGroup, record.m_nId, record.m_nType, Hex({record.m_pData, record.m_nSize})});
  }
  return all;
}

void Put(VxMetadata& store, std::int32_t block, std::uint32_t tag, std::uint32_t type,
         const Bytes& data) {
  TagEntry& entry = store.m_fnFindOrInsert(*store.m_fnGetBlock(block), tag);
  SetTagValue(entry, tag, type, data, store.Memory());
}

// The one record of a block that holds one entry of a type.
Extracted Converted(std::uint32_t type, const Bytes& data) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 700, type, data);
  const auto records = Extract(store, CATEGORY_IFD0);
  return records.size() == 1 ? records[0] : Extracted{};
}

TEST(RecordConversion, ShortsAreZeroExtended) {
  EXPECT_EQ(Converted(3, {0x01, 0x00, 0xFF, 0xFF}), (Extracted{2, 700, 4097, "01000000ffff0000"}));
}

TEST(RecordConversion, SignedShortsAreSignExtended) {
  EXPECT_EQ(Converted(8, {0x01, 0x00, 0xFE, 0xFF}), (Extracted{2, 700, 1, "01000000feffffff"}));
}

TEST(RecordConversion, OddShortGetsTwiceItsSizeAndAMissingByteOf0) {
  EXPECT_EQ(Converted(3, {0x34}), (Extracted{2, 700, 4097, "3400"}));
  EXPECT_EQ(Converted(3, {0x34, 0x12, 0x56}), (Extracted{2, 700, 4097, "341200005600"}));
}

TEST(RecordConversion, OtherTypesKeepTheirBytes) {
  const Bytes eight = {1, 2, 3, 4, 5, 6, 7, 8};
  const std::map<std::uint32_t, std::uint32_t> rows = {
      {2, 4}, {4, 4097}, {13, 4097}, {5, 4098}, {9, 1}, {10, 2}, {12, 3}, {162, 5},
      {1, 6}, {6, 6},    {7, 6},     {11, 6},   {0, 6}, {14, 6}, {99, 6},
  };
  for (const auto& [tagType, recordType] : rows) {
    EXPECT_EQ(Converted(tagType, eight), (Extracted{2, 700, recordType, "0102030405060708"}))
        << tagType;
  }
}

TEST(RecordConversion, EmptyValueGivesAnEmptyRecord) {
  EXPECT_EQ(Converted(7, {}), (Extracted{2, 700, 6, ""}));
  EXPECT_EQ(Converted(3, {}), (Extracted{2, 700, 4097, ""}));
}

TEST(RecordConversion, EntryThatLostItsDataGivesNoRecord) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 700, 7, {1, 2});
  TagEntry& entry = store.m_fnGetBlock(BLOCK_IFD0)->FindOrInsert(700);
  DropTagData(entry);
  entry.m_nSize = 2;
  EXPECT_TRUE(Extract(store, CATEGORY_IFD0).empty());
}

TEST(RecordConversion, StoreKeepsItsEntries) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 700, 3, {1, 0});
  EXPECT_EQ(Extract(store, CATEGORY_IFD0), Extract(store, CATEGORY_IFD0));
  EXPECT_EQ(Hex(TagBytes(*store.m_fnGetBlock(BLOCK_IFD0)->Find(700))), "0100");
}

TEST(RecordBound, FirstEntryOf2BytesHidesASecondOf8) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 1, 3, {1, 0});
  Put(store, BLOCK_EXIF, 2, 5, Bytes(8, 7));
  Put(store, BLOCK_EXIF, 3, 3, {2, 0});
  EXPECT_EQ(Extract(store, CATEGORY_EXIF), (std::vector<Extracted>{{4, 1, 4097, "01000000"}}));
}

TEST(RecordBound, ShrinkingEntriesAllBecomeRecords) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 1, 7, {1, 2, 3, 4});
  Put(store, BLOCK_EXIF, 2, 7, {1, 2, 3});
  Put(store, BLOCK_EXIF, 3, 7, {1});
  EXPECT_EQ(Extract(store, CATEGORY_EXIF),
            (std::vector<Extracted>{{4, 1, 6, "01020304"}, {4, 2, 6, "010203"}, {4, 3, 6, "01"}}));
}

TEST(RecordBound, IsTheFirstEntrysAndNotTheOneBefore) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 1, 7, {1, 2, 3});
  Put(store, BLOCK_EXIF, 2, 7, {1});
  Put(store, BLOCK_EXIF, 3, 7, {4, 5, 6});
  EXPECT_EQ(Extract(store, CATEGORY_EXIF).size(), 3U);
}

TEST(RecordBound, IsTheStoredSizeAndNotTheWidenedOne) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 1, 3, {1, 0});
  Put(store, BLOCK_EXIF, 2, 7, {1, 2, 3});
  EXPECT_EQ(Extract(store, CATEGORY_EXIF).size(), 1U);
}

TEST(RecordBound, EmptyFirstEntryLetsOnlyEmptyOnesThrough) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 1, 7, {});
  Put(store, BLOCK_EXIF, 2, 7, {});
  Put(store, BLOCK_EXIF, 3, 7, {1});
  Put(store, BLOCK_EXIF, 4, 7, {});
  EXPECT_EQ(Extract(store, CATEGORY_EXIF), (std::vector<Extracted>{{4, 1, 6, ""}, {4, 2, 6, ""}}));
}

TEST(RecordBound, HoldsForEachBlockOfItsOwn) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 1, 7, {1});
  Put(store, BLOCK_EXIF, 1, 7, {1, 2, 3});
  EXPECT_EQ(Extract(store, CATEGORY_IFD0 | CATEGORY_EXIF).size(), 2U);
}

TEST(RecordBound, HoldsForXmpValuesAndRegionsApart) {
  VxMetadata store;
  Put(store, BLOCK_XMP, 0xAA01, 162, WideBytes(LMD_W("3")));
  Put(store, BLOCK_XMP, 0xAB19, 162, WideBytes(LMD_W("equirectangular")));
  Put(store, BLOCK_XMP_REGIONS, 0, 162, WideBytes(LMD_W("abc")));
  Put(store, BLOCK_XMP_REGIONS, 1, 162, WideBytes(LMD_W("de")));
  EXPECT_EQ(Extract(store, CATEGORY_XMP), (std::vector<Extracted>{{64, 0xAA01, 5, "33000000"},
                                                                  {64, 0, 5, "6100620063000000"},
                                                                  {64, 1, 5, "640065000000"}}));
}

TEST(RecordBound, DoesNotApplyToBasicsAndDates) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, {0});
  Put(store, BLOCK_IFD0, 274, 3, {6, 0});
  Put(store, BLOCK_IFD0, 306, 2, {'a', 'b', 0});
  EXPECT_EQ(Extract(store, CATEGORY_IFD0).size(), 1U);
  EXPECT_EQ(Extract(store, CATEGORY_DATES), (std::vector<Extracted>{{32, 306, 4, "616200"}}));
  EXPECT_EQ(Extract(store, CATEGORY_BASICS)[2], (Extracted{1, 274, 4097, "06000000"}));
}

TEST(RecordCategories, EachBitGivesItsBlockUnderItsGroup) {
  VxMetadata store;
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    Put(store, block, 500, 7, {static_cast<std::uint8_t>(block)});
  }
  const auto one = [&](std::uint32_t mask) { return Extract(store, mask); };
  EXPECT_EQ(one(0x002), (std::vector<Extracted>{{2, 500, 6, "01"}}));
  EXPECT_EQ(one(0x004), (std::vector<Extracted>{{4, 500, 6, "02"}}));
  EXPECT_EQ(one(0x008), (std::vector<Extracted>{{8, 500, 6, "03"}}));
  EXPECT_EQ(one(0x200), (std::vector<Extracted>{{512, 500, 6, "04"}}));
  EXPECT_EQ(one(0x010), (std::vector<Extracted>{{16, 500, 6, "05"}}));
  EXPECT_EQ(one(0x080), (std::vector<Extracted>{{128, 500, 6, "06"}}));
  EXPECT_EQ(one(0x400), (std::vector<Extracted>{{1024, 500, 6, "07"}}));
  EXPECT_EQ(one(0x800), (std::vector<Extracted>{{2048, 500, 6, "08"}}));
  EXPECT_EQ(one(0x040), (std::vector<Extracted>{{64, 500, 6, "09"}, {64, 500, 6, "0a"}}));
  EXPECT_TRUE(one(0x100).empty());
  EXPECT_TRUE(one(0x000).empty());
  EXPECT_TRUE(one(0x020).empty());
}

TEST(RecordCategories, BitsThatSelectNothing) {
  VxMetadata store;
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    Put(store, block, 500, 7, {1});
  }
  for (std::uint32_t bit = 0x1000; bit != 0; bit <<= 1) {
    EXPECT_TRUE(Extract(store, bit).empty()) << bit;
  }
  EXPECT_EQ(Extract(store, 0xFFFFF102), Extract(store, CATEGORY_IFD0));
}

TEST(RecordCategories, EntriesComeInTheOrderOfTheirTags) {
  VxMetadata store;
  for (const std::uint32_t tag : {0xC630U, 2U, 271U, 1U}) Put(store, BLOCK_GPS, tag, 7, {1});
  EXPECT_EQ(Extract(store, CATEGORY_GPS),
            (std::vector<Extracted>{
                {8, 1, 6, "01"}, {8, 2, 6, "01"}, {8, 271, 6, "01"}, {8, 0xC630, 6, "01"}}));
}

TEST(RecordCategories, RunInTheirFixedOrder) {
  VxMetadata store;
  for (std::int32_t block = BLOCK_IFD0; block <= kBlockCount; ++block) {
    Put(store, block, 500, 7, {1});
  }
  Put(store, BLOCK_IFD0, 306, 2, Text("d"));
  std::vector<std::uint32_t> groups;
  for (const Extracted& record : Extract(store, 0xFFF)) {
    if (groups.empty() || groups.back() != record.group) groups.push_back(record.group);
  }
  EXPECT_EQ(groups, (std::vector<std::uint32_t>{1, 2, 4, 8, 16, 32, 512, 128, 1024, 2048, 64}));
}

TEST(RecordCategories, MasksOfTheInterface) {
  EXPECT_EQ(kOpenMask, 0x4DFU);
  EXPECT_EQ(kBasicMask, 0x00FU);
}

TEST(RecordCategories, RegionRecordIsNamedByItsTagAndNotByItsKey) {
  VxMetadata store;
  TagEntry& region = store.m_fnGetBlock(BLOCK_XMP_REGIONS)->FindOrInsert(0);
  SetTagValue(region, 0xAB09, 162, WideBytes(LMD_W("r")), store.Memory());
  store.m_fnGetBlock(BLOCK_XMP_REGIONS)->FindOrInsert(1);
  EXPECT_EQ(Extract(store, CATEGORY_XMP),
            (std::vector<Extracted>{{64, 0xAB09, 5, "72000000"}, {64, 0, 6, ""}}));
}

class ImageBasics : public ::testing::Test {
 protected:
  // The value of one of the five records, all of which are there.
  std::uint32_t Basic(std::uint32_t id) {
    const auto records = ExtractRecords(m_store, CATEGORY_BASICS);
    EXPECT_EQ(records.size(), 5U);
    for (const CInfoRecord& record : records) {
      EXPECT_EQ(record.m_nGroup, 1U);
      EXPECT_EQ(record.m_nType, 4097U);
      EXPECT_EQ(record.m_nSize, 4U);
      if (record.m_nId == id) return HostValue<std::uint32_t>({record.m_pData, record.m_nSize});
    }
    ADD_FAILURE() << "no record " << id;
    return 0;
  }

  VxMetadata m_store;
};

TEST_F(ImageBasics, OfAnEmptyStore) {
  EXPECT_EQ(Extract(m_store, CATEGORY_BASICS), (std::vector<Extracted>{{1, 256, 4097, "00000000"},
                                                                       {1, 257, 4097, "00000000"},
                                                                       {1, 274, 4097, "01000000"},
                                                                       {1, 277, 4097, "03000000"},
                                                                       {1, 11, 4097, "00000000"}}));
}

TEST_F(ImageBasics, TellSizeOrientationAndSamples) {
  m_store.m_nImageWidth = 640;
  m_store.m_nImageHeight = 480;
  Put(m_store, BLOCK_IFD0, 274, 3, {6, 0});
  Put(m_store, BLOCK_IFD0, 277, 3, {1, 0});
  EXPECT_EQ(Basic(256), 640U);
  EXPECT_EQ(Basic(257), 480U);
  EXPECT_EQ(Basic(274), 6U);
  EXPECT_EQ(Basic(277), 1U);
}

// They are read as the first 16 bits of the value, with their sign, whatever the type.
TEST_F(ImageBasics, OrientationAndSamplesAreSignExtendedShorts) {
  Put(m_store, BLOCK_IFD0, 274, 3, {0xFF, 0xFF});
  Put(m_store, BLOCK_IFD0, 277, 3, {0x00, 0x80, 7, 0});
  EXPECT_EQ(Basic(274), 0xFFFFFFFFU);
  EXPECT_EQ(Basic(277), 0xFFFF8000U);
  Put(m_store, BLOCK_IFD0, 274, 4, {6, 0, 1, 0});
  Put(m_store, BLOCK_IFD0, 277, 1, {4});
  EXPECT_EQ(Basic(274), 6U);
  EXPECT_EQ(Basic(277), 4U);
}

TEST_F(ImageBasics, EmptyValuesCountAsAbsent) {
  Put(m_store, BLOCK_IFD0, 274, 3, {});
  Put(m_store, BLOCK_IFD0, 277, 3, {});
  Put(m_store, BLOCK_EXIF, 0xA001, 3, {});
  EXPECT_EQ(Basic(274), 1U);
  EXPECT_EQ(Basic(277), 3U);
  EXPECT_EQ(Basic(11), 0U);
}

TEST_F(ImageBasics, ZeroIsAValue) {
  Put(m_store, BLOCK_IFD0, 274, 3, {0, 0});
  Put(m_store, BLOCK_IFD0, 277, 3, {0, 0});
  EXPECT_EQ(Basic(274), 0U);
  EXPECT_EQ(Basic(277), 0U);
}

TEST_F(ImageBasics, TagsOfOtherBlocksDoNotCount) {
  Put(m_store, BLOCK_EXIF, 274, 3, {6, 0});
  Put(m_store, BLOCK_IFD1, 277, 3, {1, 0});
  Put(m_store, BLOCK_IFD0, 0xA001, 3, {1, 0});
  EXPECT_EQ(Basic(274), 1U);
  EXPECT_EQ(Basic(277), 3U);
  EXPECT_EQ(Basic(11), 0U);
}

TEST_F(ImageBasics, ColourSpaceByNumber) {
  Put(m_store, BLOCK_EXIF, 0xA001, 3, {1, 0});
  EXPECT_EQ(Basic(11), 1U);
  Put(m_store, BLOCK_EXIF, 0xA001, 3, {2, 0});
  EXPECT_EQ(Basic(11), 3U);
  Put(m_store, BLOCK_EXIF, 0xA001, 3, {0xFF, 0xFF});
  EXPECT_EQ(Basic(11), 0U);
}

TEST_F(ImageBasics, ColourSpaceByWordUnderTheColourSpaceTag) {
  Put(m_store, BLOCK_EXIF, 0xA001, 2, {'R', '9', '8', 0});
  EXPECT_EQ(Basic(11), 1U);
  Put(m_store, BLOCK_EXIF, 0xA001, 2, {'R', '0', '3', 0});
  EXPECT_EQ(Basic(11), 3U);
  Put(m_store, BLOCK_EXIF, 0xA001, 2, {'R', '9', '8', 'x', 0});
  EXPECT_EQ(Basic(11), 0U);
}

TEST_F(ImageBasics, ColourSpaceNumbersThatMeanNothing) {
  for (const std::uint8_t number : Bytes{0, 3, 4, 0x80}) {
    Put(m_store, BLOCK_EXIF, 0xA001, 3, {number, 0});
    EXPECT_EQ(Basic(11), 0U);
  }
  Put(m_store, BLOCK_EXIF, 0xA001, 4, {2, 0, 9, 9});
  EXPECT_EQ(Basic(11), 3U);
}

TEST_F(ImageBasics, ColourSpaceWordIsComparedExactly) {
  for (const std::string_view word : {"R03 ", "r03", "R3", "R99", "", "R98 - sRGB"}) {
    Put(m_store, BLOCK_EXIF, 0xA001, 2, Join({Text(word), Zeros(1)}));
    EXPECT_EQ(Basic(11), 0U) << word;
  }
  // The text ends at its first zero; without a zero there is no text.
  Put(m_store, BLOCK_EXIF, 0xA001, 7, {'R', '0', '3', 0, 'x', 'y'});
  EXPECT_EQ(Basic(11), 3U);
  Put(m_store, BLOCK_EXIF, 0xA001, 7, {'R', '0', '3'});
  EXPECT_EQ(Basic(11), 0U);
}

TEST_F(ImageBasics, InteroperabilityIndexIsNoColourSpace) {
  Put(m_store, BLOCK_EXIF, 0x0001, 2, {'R', '9', '8', 0});
  EXPECT_EQ(Basic(11), 0U);
}

TEST(DateRecords, CountTheFinalZero) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 306, 2, {'a', 'b', 0});
  Put(store, BLOCK_EXIF, 36867, 2, {'c', 0});
  EXPECT_EQ(Extract(store, CATEGORY_DATES),
            (std::vector<Extracted>{{32, 306, 4, "616200"}, {32, 36867, 4, "6300"}}));
}

TEST(DateRecords, EitherMayBeAbsent) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 36867, 2, {'c', 0});
  EXPECT_EQ(Extract(store, CATEGORY_DATES), (std::vector<Extracted>{{32, 36867, 4, "6300"}}));
}

TEST(DateRecords, AreLookedForInTheirOwnBlocks) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 306, 2, {'a', 0});
  Put(store, BLOCK_IFD0, 36867, 2, {'b', 0});
  EXPECT_TRUE(Extract(store, CATEGORY_DATES).empty());
}

TEST(DateRecords, LongTextIsCutAt256BytesWithAZero) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 306, 2, Bytes(255, 'x'));
  auto records = ExtractRecords(store, CATEGORY_DATES);
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].m_nSize, 255U);
  EXPECT_EQ(records[0].m_pData[254], 'x');

  for (const std::size_t size : {256U, 300U}) {
    Put(store, BLOCK_IFD0, 306, 2, Bytes(size, 'x'));
    records = ExtractRecords(store, CATEGORY_DATES);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].m_nSize, 256U) << size;
    EXPECT_EQ(records[0].m_pData[254], 'x') << size;
    EXPECT_EQ(records[0].m_pData[255], 0) << size;
  }
}

TEST(DateRecords, EmptyValueGivesNone) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 306, 7, {});
  EXPECT_TRUE(Extract(store, CATEGORY_DATES).empty());
}

}  // namespace
}  // namespace test
