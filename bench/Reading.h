#ifndef LUMIDEX_BENCH_READING_H_
#define LUMIDEX_BENCH_READING_H_

#include <string>

namespace bench {

// For each JPEG that Open accepts: the floor, Open, ParseBasic and the peers.
void MeasureReading(const std::string& module, const std::string& folder);

}  // namespace bench

#endif  // LUMIDEX_BENCH_READING_H_
