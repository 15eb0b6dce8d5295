#ifndef LUMIDEX_SAMPLES_GENERATOR_PNGENCODER_H_
#define LUMIDEX_SAMPLES_GENERATOR_PNGENCODER_H_

#include <string_view>

#include "Picture.h"
#include "support/Bytes.h"

namespace samples {

// A PNG file with the XMP packet in an uncompressed iTXt chunk before the pixels, which are stored
// without compression.
test::Bytes EncodePng(const Picture& picture, std::string_view xmpPacket);

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_PNGENCODER_H_
