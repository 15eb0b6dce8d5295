#include "Measure.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <map>
#include <random>
#include <utility>

namespace bench {
namespace {

using WallClock = std::chrono::steady_clock;
using Times = std::vector<std::int64_t>;  // nanoseconds, one of each round

std::int64_t WallTime() {
  return std::chrono::nanoseconds(WallClock::now().time_since_epoch()).count();
}

std::int64_t ProcessorTime() {
  constexpr std::int64_t kTickNanoseconds = 1'000'000'000 / CLOCKS_PER_SEC;
  return std::clock() * kTickNanoseconds;
}

// Where an operation stands: the number of its subject, and its own there.
struct Place {
  std::size_t subject;
  std::size_t operation;
};

// The places of each operation, by its name.
std::vector<std::vector<Place>> PlacesByName(const std::vector<Subject>& subjects) {
  std::map<std::string, std::vector<Place>> byName;
  for (std::size_t s = 0; s < subjects.size(); ++s) {
    const std::vector<Operation>& operations = subjects[s].operations;
    for (std::size_t i = 0; i < operations.size(); ++i) {
      byName[operations[i].name].push_back({s, i});
    }
  }
  std::vector<std::vector<Place>> all;
  for (auto& [name, places] : byName) all.push_back(std::move(places));
  return all;
}

class Rounds {
 public:
  Rounds(const std::vector<Subject>& subjects, Clock clock)
      : m_subjects(subjects),
        m_places(PlacesByName(subjects)),
        m_now(clock == Clock::Wall ? &WallTime : &ProcessorTime) {
    for (const Subject& subject : subjects) m_times.emplace_back(subject.operations.size());
  }

  // Makes ready what lasts: the files in the system's memory, the heap.
  void WarmUp() {
    for (const Subject& subject : m_subjects) {
      for (const Operation& operation : subject.operations) static_cast<void>(TimeOf(operation));
    }
  }

  void RunOne() {
    std::shuffle(m_places.begin(), m_places.end(), m_random);
    for (const std::vector<Place>& places : m_places) {
      static_cast<void>(TimeOf(At(places.front())));  // what another operation left is not its cost
      for (const Place& place : places) {
        m_times[place.subject][place.operation].push_back(TimeOf(At(place)));
      }
    }
  }

  void Print() const;

 private:
  const Operation& At(const Place& place) const {
    return m_subjects[place.subject].operations[place.operation];
  }

  std::int64_t TimeOf(const Operation& operation) const {
    if (operation.prepare) operation.prepare();
    const std::int64_t begin = m_now();
    for (int i = 0; i < operation.runs; ++i) operation.run();
    return (m_now() - begin) / operation.runs;
  }

  const std::vector<Subject>& m_subjects;
  std::vector<std::vector<Place>> m_places;
  std::int64_t (*m_now)();
  std::mt19937 m_random;  // the same orders in every run
  std::vector<std::vector<Times>> m_times;
};

void Rounds::Print() const {
  for (std::size_t s = 0; s < m_subjects.size(); ++s) {
    const Subject& subject = m_subjects[s];
    for (std::size_t i = 0; i < subject.operations.size(); ++i) {
      std::printf("%s\t%s", subject.name.c_str(), subject.operations[i].name.c_str());
      for (const std::int64_t time : m_times[s][i]) {
        std::printf("\t%lld", static_cast<long long>(time));
      }
      std::printf("\n");
    }
  }
}

}  // namespace

void Measure(const std::vector<Subject>& subjects, const Patience& patience, Clock clock) {
  Rounds rounds(subjects, clock);
  rounds.WarmUp();
  const WallClock::time_point end = WallClock::now() + patience.time;
  for (int round = 0; round < patience.mostRounds; ++round) {
    if (round >= patience.leastRounds && WallClock::now() >= end) break;
    rounds.RunOne();
  }
  rounds.Print();
}

}  // namespace bench
