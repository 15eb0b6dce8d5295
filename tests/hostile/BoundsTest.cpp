// The measuring itself.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "Bounds.h"

namespace test {
namespace {

TEST(Bounds, MemoryIsTheMostThatIsInUseAtOneMoment) {
  Cost cost;
  const auto work = [] {
    const std::vector<std::uint8_t> first(1000);
    { const std::vector<std::uint8_t> second(3000); }
    const std::vector<std::uint8_t> third(2000);
    return first.size() + third.size();
  };
  EXPECT_EQ(Measure(cost, work), 3000U);
  EXPECT_GE(cost.bytes, 4000U);
  EXPECT_LT(cost.bytes, 4200U);
}

TEST(Bounds, WhatStoodBeforeAndStaysIsCountedRight) {
  auto before = std::make_unique<std::vector<std::uint8_t>>(5000);
  Cost cost;
  const auto work = [&] {
    before.reset();
    return std::make_unique<std::vector<std::uint8_t>>(7000);
  };
  const auto stays = Measure(cost, work);
  EXPECT_GE(cost.bytes, 2000U);
  EXPECT_LT(cost.bytes, 2300U);
}

TEST(Bounds, TooMuchMemoryFails) {
  EXPECT_NONFATAL_FAILURE(
      Bounded(Bound{1000, 1000}, [] { return std::vector<std::uint8_t>(1500).size(); }),
      "bytes in use");
}

// Work whose time is known to grow with the count.
std::uint64_t Sum(std::size_t count) {
  volatile std::uint64_t sum = 0;
  for (std::size_t i = 0; i < count; ++i) sum = sum + i;
  return sum;
}

TEST(Bounds, TooMuchTimeFails) {
  EXPECT_NONFATAL_FAILURE(
      Bounded(Bound{0.1, 1000}, [] { return Sum(static_cast<std::size_t>(1e7 * kTimeFactor)); }),
      "milliseconds");
}

TEST(Bounds, EnoughTimeAndMemoryPass) {
  EXPECT_EQ(Bounded(kSmallInput, [] { return Sum(256); }), 255U * 128);
}

TEST(Bounds, LinearWorkIsLinear) {
  ExpectLinear(100'000, [](std::size_t parts) { return Sum(parts * 10); });
}

// Of the third order, so that a clock that other programs disturb cannot hide it.
TEST(Bounds, CubicWorkIsNot) {
  EXPECT_NONFATAL_FAILURE(ExpectLinear(
                              60, [](std::size_t parts) { return Sum(parts * parts * parts); }, 1),
                          "milliseconds");
}

}  // namespace
}  // namespace test
