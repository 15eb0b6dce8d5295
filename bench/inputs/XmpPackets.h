#ifndef LUMIDEX_BENCH_INPUTS_XMPPACKETS_H_
#define LUMIDEX_BENCH_INPUTS_XMPPACKETS_H_

// XMP packets of about the given size.

#include <cstddef>
#include <string>

namespace bench {

// What editors write: simple properties, keywords, a history and a rights statement, repeated.
std::string FlatPacket(std::size_t size);

// One property inside as many levels of elements as fit.
std::string NestedPacket(std::size_t size);

}  // namespace bench

#endif  // LUMIDEX_BENCH_INPUTS_XMPPACKETS_H_
