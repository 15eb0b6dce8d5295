#ifndef LUMIDEX_CONTAINER_EXIFLOCATOR_H_
#define LUMIDEX_CONTAINER_EXIFLOCATOR_H_

#include <cstdint>

#include "base/FileStream.h"

// Finds the first EXIF segment of a JPEG file: LMD_E_HAS_EXIF, with *position the offset of its
// marker. S_OK when there is none; *position is then behind the SOI marker. LMD_E_BAD_FORMAT when
// the file does not begin with one.
HRESULT LocateJpegExif(FileStream& stream, std::uint64_t* position);

#endif  // LUMIDEX_CONTAINER_EXIFLOCATOR_H_
