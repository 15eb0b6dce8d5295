#ifndef LUMIDEX_BENCH_MEASURE_H_
#define LUMIDEX_BENCH_MEASURE_H_

// Times operations against each other: in rounds, in each of which every operation works through
// all subjects once, so that what disturbs the machine disturbs all of them alike. An operation
// keeps the processor's caches to itself meanwhile, as in a host that does one thing with many
// photographs, and begins with a run that is not timed. Each round takes the operations in another
// order.

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Operation {
  std::string name;
  std::function<void()> run;
  std::function<void()> prepare = {};  // before each timing, unless it is empty
  int runs = 1;                        // in a row for one timing, which is that of one run
};

// What the operations work on: a file, or an input of some size.
struct Subject {
  std::string name;
  std::vector<Operation> operations;
};

enum class Clock {
  Wall,
  Processor,  // does not run while another program does; for work of a millisecond and more
};

struct Patience {
  std::chrono::milliseconds time;  // no new round begins when this is over,
  int leastRounds;                 // unless there were fewer than these
  int mostRounds;
};

// Prints a line for each operation, separated by tabs: subject, operation, and the nanoseconds of
// each round.
void Measure(const std::vector<Subject>& subjects, const Patience& patience,
             Clock clock = Clock::Wall);

}  // namespace bench

#endif  // LUMIDEX_BENCH_MEASURE_H_
