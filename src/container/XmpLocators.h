#ifndef LUMIDEX_CONTAINER_XMPLOCATORS_H_
#define LUMIDEX_CONTAINER_XMPLOCATORS_H_

// Find an XMP packet at the file level without parsing it (XMP part 3, JPEG and PNG). Both report
// LMD_E_XMP_FOUND, a code of failure severity, when it is there, and S_OK when it is not; *position
// becomes the offset at which a new packet belongs. LMD_E_INVALID_ARG for a null argument;
// LMD_E_BAD_FORMAT when the file does not begin as it must.

#include <cstdint>

#include "base/FileStream.h"

// Any XMP segment counts.
HRESULT LocateJpegXmp(FileStream* stream, std::uint64_t* position);

// By design only an uncompressed chunk with empty language and keyword translation counts, and only
// when its text holds "equirectangular": the answer is whether the file is a panorama.
HRESULT LocatePngXmp(FileStream* stream, std::uint64_t* position);

#endif  // LUMIDEX_CONTAINER_XMPLOCATORS_H_
