#include <gtest/gtest.h>

#include "base/TagEntry.h"
#include "support/Bytes.h"

namespace test {
namespace {

class TagEntryTest : public testing::Test {
 protected:
  NodePool pool;
  ParseBudget budget;
  ValueMemory memory{pool, budget};
  TagEntry entry;
};

TEST_F(TagEntryTest, NewEntryIsAllZeros) {
  EXPECT_EQ(entry.m_nTag, 0U);
  EXPECT_EQ(entry.m_nType, 0U);
  EXPECT_EQ(entry.m_nCount, 0U);
  EXPECT_EQ(entry.m_nSize, 0U);
  EXPECT_EQ(entry.m_pData, nullptr);
  EXPECT_TRUE(TagBytes(entry).empty());
}

TEST_F(TagEntryTest, SetValueReplacesAllButTheCount) {
  entry.m_nCount = 7;
  SetTagValue(entry, 271, 2, Bytes{0x41, 0x00}, memory);
  EXPECT_EQ(entry.m_nTag, 271U);
  EXPECT_EQ(entry.m_nType, 2U);
  EXPECT_EQ(entry.m_nCount, 7U);
  EXPECT_EQ(entry.m_nSize, 2U);
  EXPECT_EQ(Hex(TagBytes(entry)), "4100");

  SetTagValue(entry, 272, 7, Bytes{1, 2, 3}, memory);
  EXPECT_EQ(entry.m_nTag, 272U);
  EXPECT_EQ(entry.m_nType, 7U);
  EXPECT_EQ(entry.m_nCount, 7U);
  EXPECT_EQ(Hex(TagBytes(entry)), "010203");
}

TEST_F(TagEntryTest, SetValueTakesPartOfItsOwnOldData) {
  SetTagValue(entry, 1, 7, Bytes{1, 2, 3, 4, 5}, memory);
  SetTagValue(entry, 1, 7, TagBytes(entry).subspan(1, 3), memory);
  EXPECT_EQ(Hex(TagBytes(entry)), "020304");
}

TEST_F(TagEntryTest, SetValueCopiesItsBytes) {
  Bytes bytes = {1, 2};
  SetTagValue(entry, 1, 7, bytes, memory);
  bytes[0] = 9;
  EXPECT_EQ(Hex(TagBytes(entry)), "0102");
}

// From an empty value to ones that stand in the entry and ones that do not.
TEST_F(TagEntryTest, ValuesOfAnySizeReplaceEachOther) {
  for (const std::size_t before : {0U, 1U, 31U, 32U, 33U, 1000U}) {
    for (const std::size_t after : {0U, 1U, 31U, 32U, 33U, 1000U}) {
      SetTagValue(entry, 1, 7, Bytes(before, 0xBB), memory);
      const Bytes value(after, 0xAA);
      SetTagValue(entry, 1, 7, value, memory);
      EXPECT_EQ(entry.m_nSize, after);
      EXPECT_EQ(Hex(TagBytes(entry)), Hex(value)) << before << " to " << after;
    }
  }
}

TEST_F(TagEntryTest, SetValueTakesPartOfItsOwnLargeData) {
  Bytes bytes(100, 0xAA);
  bytes[60] = 0xBB;
  SetTagValue(entry, 1, 7, bytes, memory);
  SetTagValue(entry, 1, 7, TagBytes(entry).subspan(59, 2), memory);
  EXPECT_EQ(Hex(TagBytes(entry)), "aabb");
}

TEST_F(TagEntryTest, AllocatedDataIsForFilling) {
  SetTagValue(entry, 1, 7, Bytes{9, 9, 9, 9}, memory);
  const auto bytes = AllocateTagData(entry, 3, memory);
  EXPECT_EQ(bytes.size(), 3U);
  EXPECT_EQ(entry.m_nSize, 3U);
  EXPECT_EQ(bytes.data(), entry.m_pData);
}

TEST_F(TagEntryTest, DroppedDataLeavesTheOtherFields) {
  SetTagValue(entry, 271, 2, Bytes{0x41, 0x00}, memory);
  entry.m_nCount = 2;
  DropTagData(entry);
  EXPECT_EQ(entry.m_pData, nullptr);
  EXPECT_EQ(entry.m_nSize, 0U);
  EXPECT_EQ(entry.m_nTag, 271U);
  EXPECT_EQ(entry.m_nType, 2U);
  EXPECT_EQ(entry.m_nCount, 2U);
}

TEST_F(TagEntryTest, UsedUpBudgetLeavesTheValueWithoutData) {
  SetTagValue(entry, 1, 7, Bytes{1, 2, 3, 4}, memory);
  ASSERT_TRUE(budget.TakeBytes(kMaxStoredBytes - 5));
  const auto bytes = AllocateTagData(entry, 2, memory);
  EXPECT_TRUE(bytes.empty());
  EXPECT_EQ(entry.m_nSize, 2U);
  EXPECT_EQ(entry.m_pData, nullptr);
  EXPECT_TRUE(TagBytes(entry).empty());
}

TEST_F(TagEntryTest, UsedUpBudgetStillSetsTagAndType) {
  ASSERT_TRUE(budget.TakeBytes(kMaxStoredBytes));
  SetTagValue(entry, 271, 2, Bytes{0x41, 0x00}, memory);
  EXPECT_EQ(entry.m_nTag, 271U);
  EXPECT_EQ(entry.m_nType, 2U);
  EXPECT_EQ(entry.m_pData, nullptr);
}

TEST_F(TagEntryTest, StoredBytesCountAgainstTheBudget) {
  SetTagValue(entry, 1, 7, Bytes(100), memory);
  EXPECT_FALSE(budget.TakeBytes(kMaxStoredBytes - 99));
  EXPECT_TRUE(budget.TakeBytes(kMaxStoredBytes - 100));
}

TEST_F(TagEntryTest, BytesWithoutDataAreNoneWhateverTheSizeSays) {
  entry.m_nSize = 5;
  EXPECT_TRUE(TagBytes(entry).empty());
}

}  // namespace
}  // namespace test
