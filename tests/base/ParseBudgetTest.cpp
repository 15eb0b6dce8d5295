#include <cstddef>
#include <cstdint>
#include <utility>

#include <gtest/gtest.h>

#include "base/FileStream.h"
#include "base/ParseBudget.h"
#include "support/TempFile.h"

namespace test {
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

TEST(ParseBudget, SmallFileGetsFewerBytes) {
  constexpr std::uint64_t kAny = 2'097'152;
  for (const auto& [size, bytes] : {std::pair<std::size_t, std::uint64_t>{0, kAny},
                                    {1, kAny + 4},
                                    {65'536, kAny + 262'144},
                                    {3'670'015, kMaxStoredBytes - 4},
                                    {3'670'016, kMaxStoredBytes},
                                    {3'670'017, kMaxStoredBytes}}) {
    const TempFile file{Bytes(size)};
    FileStream stream;
    ASSERT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
    ParseBudget budget(stream);
    EXPECT_TRUE(budget.TakeBytes(bytes)) << size;
    EXPECT_FALSE(budget.TakeBytes(1)) << size;
    EXPECT_TRUE(budget.TakeEntry()) << size;
  }
}

TEST(ParseBudget, BytesAndEntriesAreCountedApart) {
  ParseBudget budget;
  EXPECT_TRUE(budget.TakeBytes(kMaxStoredBytes));
  EXPECT_TRUE(budget.TakeEntry());
}

}  // namespace
}  // namespace test
