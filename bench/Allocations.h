#ifndef LUMIDEX_BENCH_ALLOCATIONS_H_
#define LUMIDEX_BENCH_ALLOCATIONS_H_

#include <cstdint>

namespace bench {

// How often operator new was called, by this program and by a module that takes it from the
// runtime, as on Linux. A module with a runtime of its own, as on Windows, is not counted.
std::uint64_t Allocations();

}  // namespace bench

#endif  // LUMIDEX_BENCH_ALLOCATIONS_H_
