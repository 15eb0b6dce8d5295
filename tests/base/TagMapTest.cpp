#include <vector>

#include <gtest/gtest.h>

#include "base/TagMap.h"
#include "support/Bytes.h"

namespace test {
namespace {

TEST(TagMap, NewTableIsEmpty) {
  TagMap table;
  EXPECT_TRUE(table.IsEmpty());
  EXPECT_EQ(table.Count(), 0U);
  EXPECT_EQ(table.begin(), table.end());
}

TEST(TagMap, MissingKeyIsInsertedAsZeros) {
  TagMap table;
  const TagEntry& entry = table.FindOrInsert(271);
  EXPECT_EQ(table.Count(), 1U);
  EXPECT_EQ(entry.m_nTag, 0U);
  EXPECT_EQ(entry.m_nType, 0U);
  EXPECT_EQ(entry.m_nCount, 0U);
  EXPECT_EQ(entry.m_nSize, 0U);
  EXPECT_EQ(entry.m_pData, nullptr);
}

TEST(TagMap, SecondLookUpFindsTheSameEntry) {
  TagMap table;
  ParseBudget budget;
  SetTagValue(table.FindOrInsert(271), 271, 2, Bytes{0x41, 0x00}, budget);
  SetTagValue(table.FindOrInsert(271), 271, 2, Bytes{0x42, 0x00}, budget);
  EXPECT_EQ(table.Count(), 1U);
  EXPECT_EQ(Hex(TagBytes(*table.Find(271))), "4200");
}

TEST(TagMap, FindDoesNotInsert) {
  TagMap table;
  EXPECT_EQ(table.Find(5), nullptr);
  EXPECT_FALSE(table.Contains(5));
  EXPECT_TRUE(table.IsEmpty());
}

TEST(TagMap, KeysAscendUnsigned) {
  TagMap table;
  for (const std::uint32_t key : {0xFFFFFFFFU, 5U, 0x80000000U, 0U, 0x7FFFFFFFU}) {
    table.FindOrInsert(key);
  }
  std::vector<std::uint32_t> keys;
  for (const auto& [key, entry] : table) keys.push_back(key);
  EXPECT_EQ(keys, (std::vector<std::uint32_t>{0, 5, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
}

TEST(TagMap, ReferencesStayValidWhileOthersAreInserted) {
  TagMap table;
  TagEntry& first = table.FindOrInsert(500);
  for (std::uint32_t key = 0; key < 400; ++key) table.FindOrInsert(key);
  first.m_nCount = 3;
  EXPECT_EQ(table.Find(500), &first);
}

TEST(TagMap, ClearEmptiesTheTable) {
  TagMap table;
  ParseBudget budget;
  SetTagValue(table.FindOrInsert(1), 1, 7, Bytes{1, 2, 3}, budget);
  SetTagValue(table.FindOrInsert(2), 2, 7, Bytes{4}, budget);
  table.Clear();
  EXPECT_TRUE(table.IsEmpty());
  EXPECT_FALSE(table.Contains(1));
}

}  // namespace
}  // namespace test
