#ifndef LUMIDEX_BENCH_BENCH_H_
#define LUMIDEX_BENCH_BENCH_H_

#include <string>
#include <vector>

namespace bench {

// Measures what the first argument names and prints it for programs: one line for each result, its
// fields separated by tabs. The arguments are UTF-8, without the program's name. Returns the exit
// code.
int RunBench(const std::vector<std::string>& arguments);

}  // namespace bench

#endif  // LUMIDEX_BENCH_BENCH_H_
