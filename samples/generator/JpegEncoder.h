#ifndef LUMIDEX_SAMPLES_GENERATOR_JPEGENCODER_H_
#define LUMIDEX_SAMPLES_GENERATOR_JPEGENCODER_H_

// A baseline JPEG encoder (ITU-T T.81): three components, 4:2:0, the tables of Annex K. It computes
// in integers alone, so that every compiler writes the same bytes.

#include "Picture.h"
#include "support/Jpeg.h"

namespace samples {

// Appends the quantization tables, the frame, the Huffman tables and the scan. `quality` is between
// 1 and 100.
void AppendPicture(test::Jpeg& file, const Picture& picture, int quality);

// A file with nothing but the picture.
test::Bytes EncodePicture(const Picture& picture, int quality);

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_JPEGENCODER_H_
