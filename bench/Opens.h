#ifndef LUMIDEX_BENCH_OPENS_H_
#define LUMIDEX_BENCH_OPENS_H_

#include <string>

namespace bench {

// Opens every JPEG of a folder, which makes ready what lasts, and then those that could be opened a
// second time. Prints a line "file, allocations, number" for each second Open, separated by tabs.
// For programs that watch this one, a file that does not exist is asked for before and behind it.
inline constexpr const char* kMarkBefore = "/lumidex-bench/before";
inline constexpr const char* kMarkBehind = "/lumidex-bench/behind";
void CountOpens(const std::string& module, const std::string& folder);

}  // namespace bench

#endif  // LUMIDEX_BENCH_OPENS_H_
