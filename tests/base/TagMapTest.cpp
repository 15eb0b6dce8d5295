#include <vector>

#include <gtest/gtest.h>

#include "base/TagMap.h"
#include "support/Bytes.h"

namespace test {
namespace {

TEST(TagMap, NewTableIsEmpty) {
  NodePool nodes;
  TagMap table(nodes);
  EXPECT_TRUE(table.IsEmpty());
  EXPECT_EQ(table.Count(), 0U);
  EXPECT_EQ(table.begin(), table.end());
}

TEST(TagMap, MissingKeyIsInsertedAsZeros) {
  NodePool nodes;
  TagMap table(nodes);
  const TagEntry& entry = table.FindOrInsert(271);
  EXPECT_EQ(table.Count(), 1U);
  EXPECT_EQ(entry.m_nTag, 0U);
  EXPECT_EQ(entry.m_nType, 0U);
  EXPECT_EQ(entry.m_nCount, 0U);
  EXPECT_EQ(entry.m_nSize, 0U);
  EXPECT_EQ(entry.m_pData, nullptr);
}

TEST(TagMap, SecondLookUpFindsTheSameEntry) {
  NodePool nodes;
  TagMap table(nodes);
  ParseBudget budget;
  const ValueMemory memory{nodes, budget};
  SetTagValue(table.FindOrInsert(271), 271, 2, Bytes{0x41, 0x00}, memory);
  SetTagValue(table.FindOrInsert(271), 271, 2, Bytes{0x42, 0x00}, memory);
  EXPECT_EQ(table.Count(), 1U);
  EXPECT_EQ(Hex(TagBytes(*table.Find(271))), "4200");
}

TEST(TagMap, FindDoesNotInsert) {
  NodePool nodes;
  TagMap table(nodes);
  EXPECT_EQ(table.Find(5), nullptr);
  EXPECT_FALSE(table.Contains(5));
  EXPECT_TRUE(table.IsEmpty());
}

TEST(TagMap, KeysAscendUnsigned) {
  NodePool nodes;
  TagMap table(nodes);
  for (const std::uint32_t key : {0xFFFFFFFFU, 5U, 0x80000000U, 0U, 0x7FFFFFFFU}) {
    table.FindOrInsert(key);
  }
  std::vector<std::uint32_t> keys;
  for (const auto& [key, entry] : table) keys.push_back(key);
  EXPECT_EQ(keys, (std::vector<std::uint32_t>{0, 5, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
}

// Enough keys for many runs, in orders that fill them from either end and from the middle.
class TagMapOrder : public testing::TestWithParam<std::uint32_t (*)(std::uint32_t)> {};

TEST_P(TagMapOrder, KeysAscendInWhateverOrderTheyCome) {
  constexpr std::uint32_t kCount = 1009;  // a prime
  NodePool nodes;
  TagMap table(nodes);
  for (std::uint32_t i = 0; i < kCount; ++i) {
    TagEntry& entry = table.FindOrInsert(GetParam()(i));
    EXPECT_EQ(entry.m_nTag, 0U) << i;
    entry.m_nTag = GetParam()(i);
    EXPECT_EQ(table.Find(GetParam()(i)), &entry) << i;
  }
  EXPECT_EQ(table.Count(), kCount);
  std::uint32_t expected = 0;
  for (const auto& [key, entry] : table) {
    EXPECT_EQ(key, expected);
    EXPECT_EQ(entry.m_nTag, expected);
    EXPECT_EQ(&table.FindOrInsert(key), &entry);
    ++expected;
  }
  EXPECT_EQ(expected, kCount);
  EXPECT_EQ(table.Count(), kCount);
  EXPECT_EQ(table.Find(kCount), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Orders, TagMapOrder,
                         testing::Values([](std::uint32_t i) { return i; },
                                         [](std::uint32_t i) { return 1008 - i; },
                                         [](std::uint32_t i) { return i * 500 % 1009; }));

TEST(TagMap, KeysBetweenTwoRunsAreFoundAbsent) {
  NodePool nodes;
  TagMap table(nodes);
  for (std::uint32_t key = 0; key < 200; key += 2) table.FindOrInsert(key);
  for (std::uint32_t key = 0; key < 200; ++key) EXPECT_EQ(table.Contains(key), key % 2 == 0) << key;
}

TEST(TagMap, TablesShareAPool) {
  NodePool nodes;
  TagMap first(nodes);
  TagMap second(nodes);
  for (std::uint32_t key = 0; key < 100; ++key) {
    first.FindOrInsert(key).m_nTag = key;
    second.FindOrInsert(key).m_nTag = 1000 + key;
  }
  for (std::uint32_t key = 0; key < 100; ++key) {
    EXPECT_EQ(first.Find(key)->m_nTag, key);
    EXPECT_EQ(second.Find(key)->m_nTag, 1000 + key);
  }
}

TEST(TagMap, ClearedTableTakesEntriesAgain) {
  NodePool nodes;
  TagMap table(nodes);
  for (std::uint32_t key = 0; key < 100; ++key) table.FindOrInsert(key);
  table.Clear();
  nodes.Clear();
  EXPECT_EQ(table.begin(), table.end());
  table.FindOrInsert(7);
  EXPECT_EQ(table.Count(), 1U);
  EXPECT_FALSE(table.Contains(99));
}

TEST(TagMap, ReferencesStayValidWhileOthersAreInserted) {
  NodePool nodes;
  TagMap table(nodes);
  TagEntry& first = table.FindOrInsert(500);
  for (std::uint32_t key = 0; key < 400; ++key) table.FindOrInsert(key);
  first.m_nCount = 3;
  EXPECT_EQ(table.Find(500), &first);
}

TEST(TagMap, ClearEmptiesTheTable) {
  NodePool nodes;
  TagMap table(nodes);
  ParseBudget budget;
  const ValueMemory memory{nodes, budget};
  SetTagValue(table.FindOrInsert(1), 1, 7, Bytes{1, 2, 3}, memory);
  SetTagValue(table.FindOrInsert(2), 2, 7, Bytes{4}, memory);
  table.Clear();
  EXPECT_TRUE(table.IsEmpty());
  EXPECT_FALSE(table.Contains(1));
}

}  // namespace
}  // namespace test
