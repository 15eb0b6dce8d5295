#ifndef LUMIDEX_BENCH_GROWTH_H_
#define LUMIDEX_BENCH_GROWTH_H_

namespace bench {

// The readers of XMP, IPTC, directories and segments on inputs of three sizes; the name of an
// operation is the size in bytes. The time of a byte must not grow with the size.
void MeasureGrowth();

}  // namespace bench

#endif  // LUMIDEX_BENCH_GROWTH_H_
