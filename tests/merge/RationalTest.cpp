#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "merge/Rational.h"

namespace {

constexpr std::uint32_t kMillion = 1000000;

TEST(LoadRational, CountsMissingBytesAsZero) {
  const std::uint8_t bytes[] = {1, 0, 0, 0, 2, 1};
  EXPECT_EQ(LoadRational(bytes), (Rational{1, 0x0102}));
  EXPECT_EQ(LoadRational(bytes, 1), (Rational{0, 0}));
  EXPECT_EQ(LoadRational({}), (Rational{0, 0}));
}

TEST(InMillionths, TruncatesTowardZero) {
  EXPECT_EQ(InMillionths(0.0), (Rational{0, kMillion}));
  EXPECT_EQ(InMillionths(0.5), (Rational{500000, kMillion}));
  EXPECT_EQ(InMillionths(0.0000019), (Rational{1, kMillion}));
  EXPECT_EQ(InMillionths(1234.5), (Rational{1234500000, kMillion}));
}

TEST(InMillionths, TakesTheNearestNumberThatFits) {
  EXPECT_EQ(InMillionths(4294.9672945), (Rational{4294967294, kMillion}));
  EXPECT_EQ(InMillionths(4294.9672955), (Rational{4294967295, kMillion}));
  EXPECT_EQ(InMillionths(4294.967296), (Rational{4294967295, kMillion}));
  EXPECT_EQ(InMillionths(1e300), (Rational{4294967295, kMillion}));
  EXPECT_EQ(InMillionths(HUGE_VAL), (Rational{4294967295, kMillion}));
  EXPECT_EQ(InMillionths(-0.5), (Rational{0, kMillion}));
  EXPECT_EQ(InMillionths(-HUGE_VAL), (Rational{0, kMillion}));
}

TEST(InMillionths, TakesNotANumberForZero) {
  EXPECT_EQ(InMillionths(std::numeric_limits<double>::quiet_NaN()), (Rational{0, kMillion}));
}

}  // namespace
