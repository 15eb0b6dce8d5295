#ifndef LUMIDEX_BENCH_OPENS_H_
#define LUMIDEX_BENCH_OPENS_H_

#include <string>

namespace bench {

// Prints a line "file, allocations, number" for the second Open of each JPEG that can be opened,
// its fields separated by tabs; the first makes ready what lasts. For programs that watch this one,
// a file that does not exist is asked for before and behind it.
inline constexpr const char* kMarkBefore = "/lumidex-bench/before";
inline constexpr const char* kMarkBehind = "/lumidex-bench/behind";
void CountOpens(const std::string& module, const std::string& folder);

}  // namespace bench

#endif  // LUMIDEX_BENCH_OPENS_H_
