#ifndef LUMIDEX_TESTS_HOSTILE_BOUNDS_H_
#define LUMIDEX_TESTS_HOSTILE_BOUNDS_H_

// What a piece of work may cost. The work runs inside Bounded(), which hands its result on:
//
//   const auto file = Bounded(kSmallInput, [&] { return ParsedJpeg(bytes); });
//   EXPECT_EQ(Keys(file->Store(), BLOCK_IFD0), Tags{271});
//
// Time is the time of the processor, where the system tells it, and the best of a few runs, so that
// a busy machine does not fail a test; memory is the largest number of bytes from `operator new`
// that are in use at one moment of the work. The allocation functions of this program are replaced
// to count them.

#include <cstddef>
#include <cstdint>
#include <utility>

#include <gtest/gtest.h>

namespace test {

struct Bound {
  double milliseconds = 0;
  std::size_t bytes = 0;
};

// Every input of at most 64 KiB.
inline constexpr std::size_t kSmallInputSize = 64U * 1024;
inline constexpr Bound kSmallInput = {50, 32U * 1024 * 1024};

// A larger input: as much for each of its bytes as for those of a small one.
constexpr Bound InputOf(std::size_t size) {
  if (size <= kSmallInputSize) return kSmallInput;
  const double times = static_cast<double>(size) / static_cast<double>(kSmallInputSize);
  return {kSmallInput.milliseconds * times, kSmallInput.bytes / kSmallInputSize * size};
}

// How much longer than in the plain native build the work may take in this one: sanitizers check
// every access, and Wine tells no time but the clock's.
inline constexpr double kTimeFactor = LUMIDEX_TIME_FACTOR;

struct Cost {
  double milliseconds = 0;
  std::size_t bytes = 0;

  bool IsWithin(const Bound& bound) const {
    return milliseconds < bound.milliseconds * kTimeFactor && bytes < bound.bytes;
  }
};

// Measures from its construction on. One at a time.
class Meter {
 public:
  Meter();
  Cost Read() const;

 private:
  double m_start;
  std::size_t m_liveAtStart;
};

// The cost and the result of one run.
template <class Work>
auto Measure(Cost& cost, Work&& work) {
  const Meter meter;
  auto result = work();
  cost = meter.Read();
  return result;
}

inline constexpr int kRuns = 3;

// The result of the work, which fails the test when its cheapest run exceeds the bound. The work
// starts anew at each run.
template <class Work>
auto Bounded(const Bound& bound, Work&& work) {
  Cost cost;
  auto result = Measure(cost, work);
  Cost best = cost;
  for (int run = 1; run < kRuns && !best.IsWithin(bound); ++run) {
    result = Measure(cost, work);
    if (cost.milliseconds < best.milliseconds) best = cost;
  }
  EXPECT_LT(best.milliseconds, bound.milliseconds * kTimeFactor) << "milliseconds";
  EXPECT_LT(best.bytes, bound.bytes) << "bytes in use";
  testing::Test::RecordProperty("microseconds", static_cast<int>(best.milliseconds * 1000));
  testing::Test::RecordProperty("kilobytes", static_cast<int>(best.bytes / 1024));
  return result;
}

inline constexpr std::size_t kTimes = 8;

// Fails the test when eight times the input costs more than `slack` times as much for each of its
// parts. `work(n)` does the work of n parts and starts anew at each run.
template <class Work>
void ExpectLinear(std::size_t parts, Work&& work, double slack = 3) {
  constexpr double kFloor = 1;  // milliseconds; below, the clock's grain decides
  Cost small;
  Cost large;
  for (int run = 0; run < kRuns; ++run) {
    static_cast<void>(Measure(small, [&] { return work(parts); }));
    static_cast<void>(Measure(large, [&] { return work(parts * kTimes); }));
    if (large.milliseconds <= kTimes * slack * (small.milliseconds + kFloor)) break;
  }
  EXPECT_LE(large.milliseconds, kTimes * slack * (small.milliseconds + kFloor)) << "milliseconds";
  EXPECT_LE(large.bytes, kTimes * slack * static_cast<double>(small.bytes)) << "bytes in use";
}

}  // namespace test

#endif  // LUMIDEX_TESTS_HOSTILE_BOUNDS_H_
