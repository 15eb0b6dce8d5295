#include "Measure.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <numeric>
#include <random>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;
using Times = std::vector<std::int64_t>;  // nanoseconds, one of each round

std::int64_t TimeOf(const Operation& operation) {
  operation.prepare();
  const Clock::time_point begin = Clock::now();
  operation.run();
  return std::chrono::nanoseconds(Clock::now() - begin).count();
}

void RunInOrder(const Subject& subject, const std::vector<std::size_t>& order,
                std::vector<Times>& times) {
  for (const std::size_t i : order) times[i].push_back(TimeOf(subject.operations[i]));
}

std::int64_t Median(Times times) {
  const auto middle = times.begin() + static_cast<Times::difference_type>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

void Print(const Subject& subject, const std::vector<Times>& times) {
  for (std::size_t i = 0; i < times.size(); ++i) {
    std::printf("%s\t%s\t%lld\n", subject.name.c_str(),
                subject.operations[i].name.c_str(), static_cast<long long>(Median(times[i])));
  }
}

}  // namespace

void Measure(const std::vector<Subject>& subjects, const Patience& patience) {
  std::mt19937 random;  // the same orders in each run
  std::vector<std::vector<Times>> times;
  for (const Subject& subject : subjects) {
    times.emplace_back(subject.operations.size());
    for (const Operation& operation : subject.operations) static_cast<void>(TimeOf(operation));
  }

  const Clock::time_point end = Clock::now() + patience.time;
  for (int round = 0; round < patience.mostRounds; ++round) {
    if (round >= patience.leastRounds && Clock::now() >= end) break;
    for (std::size_t s = 0; s < subjects.size(); ++s) {
      std::vector<std::size_t> order(subjects[s].operations.size());
      std::iota(order.begin(), order.end(), std::size_t{0});
      std::shuffle(order.begin(), order.end(), random);
      RunInOrder(subjects[s], order, times[s]);
    }
  }
  for (std::size_t s = 0; s < subjects.size(); ++s) Print(subjects[s], times[s]);
}

}  // namespace bench
