#ifndef LUMIDEX_BENCH_INPUTS_BLOCKS_H_
#define LUMIDEX_BENCH_INPUTS_BLOCKS_H_

// Inputs of the readers of binary formats, of about the given size. A reader stores all of them up
// to 16 MiB: the budget of a parse is not used up.

#include <cstddef>

#include "support/Bytes.h"

namespace bench {

// IPTC datasets of photographs with captions and previews, one behind the other. The captions, the
// longest of the texts, are stored under kCaptionKey.
inline constexpr std::uint32_t kCaptionKey = 19;
test::Bytes IptcDatasets(std::size_t size);

// A TIFF block whose IFD0 lists SubIFDs of kEntriesOfDirectory entries.
inline constexpr std::size_t kEntriesOfDirectory = 64;
test::Bytes TiffDirectories(std::size_t size);

// A JPEG file of segments of all kinds in front of a frame of kFrameWidth pixels a line.
inline constexpr std::uint16_t kFrameWidth = 640;
test::Bytes JpegSegments(std::size_t size);

}  // namespace bench

#endif  // LUMIDEX_BENCH_INPUTS_BLOCKS_H_
