#ifndef LUMIDEX_BENCH_WRITING_H_
#define LUMIDEX_BENCH_WRITING_H_

#include <string>

namespace bench {

// For each JPEG and PNG, and for a large one of either kind: a plain copy, and what the module
// writes into a copy of it; EmbedXmpFile only where there is no packet yet. The outputs go to the
// given folder, one after the other.
void MeasureWriting(const std::string& module, const std::string& folder,
                    const std::string& outputs);

}  // namespace bench

#endif  // LUMIDEX_BENCH_WRITING_H_
