#include <gtest/gtest.h>

#include "base/ParseBudget.h"

namespace {

TEST(ParseBudget, GivesAllBytesAndNoMore) {
  ParseBudget budget;
  EXPECT_TRUE(budget.TakeBytes(kMaxStoredBytes - 1));
  EXPECT_TRUE(budget.TakeBytes(1));
  EXPECT_FALSE(budget.TakeBytes(1));
}

TEST(ParseBudget, RefusedRequestCostsNothing) {
  ParseBudget budget;
  EXPECT_FALSE(budget.TakeBytes(kMaxStoredBytes + 1));
  EXPECT_FALSE(budget.TakeBytes(0xFFFFFFFFFFFFFFFF));
  EXPECT_TRUE(budget.TakeBytes(kMaxStoredBytes));
}

TEST(ParseBudget, NoBytesAreAlwaysGiven) {
  ParseBudget budget;
  EXPECT_TRUE(budget.TakeBytes(kMaxStoredBytes));
  EXPECT_TRUE(budget.TakeBytes(0));
}

TEST(ParseBudget, GivesAllEntriesAndNoMore) {
  ParseBudget budget;
  for (std::uint32_t i = 0; i < kMaxWalkedEntries; ++i) ASSERT_TRUE(budget.TakeEntry()) << i;
  EXPECT_FALSE(budget.TakeEntry());
  EXPECT_FALSE(budget.TakeEntry());
}

TEST(ParseBudget, BytesAndEntriesAreCountedApart) {
  ParseBudget budget;
  EXPECT_TRUE(budget.TakeBytes(kMaxStoredBytes));
  EXPECT_TRUE(budget.TakeEntry());
}

}  // namespace
