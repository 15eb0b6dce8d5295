#ifndef LUMIDEX_CONTAINER_METADATAREWRITE_H_
#define LUMIDEX_CONTAINER_METADATAREWRITE_H_

// Writes a copy of a JPEG file with a new EXIF segment, a new XMP segment, or both. What the paths
// lead to was checked by the caller, who also opened the source.
//
// With records the copy is SOI, the new EXIF segment, the XMP segment, and then the source from its
// first EXIF segment on. By design that old segment stays, and what stood before it is left out.
// Without an old segment, and without records, nothing of the source is left out.

#include <cstdint>

#include <lumidex/ImageInfo.h>

#include "base/FileStream.h"
#include "platform/Win32.h"

struct RewriteRequest {
  FileStream* source = nullptr;  // as OpenForCopy left it
  const WCHAR* output = nullptr;
  const WCHAR* packet = nullptr;         // of an XMP file, or null for none
  const CInfoRecord* records = nullptr;  // for the EXIF segment, or null for none
  std::uint32_t recordCount = 0;
  const std::uint8_t* thumbnail = nullptr;
  std::uint32_t thumbnailLength = 0;
  std::uint32_t writerOption = 0;
  bool overwrite = false;  // whether the source may have an EXIF segment
};

// In the order in which they are decided: with records, LMD_E_BAD_FORMAT without an SOI marker and
// LMD_E_HAS_EXIF; with a packet, LMD_E_OPEN_FAILED, what the locator says, LMD_E_BUFFER_TOO_SMALL,
// LMD_E_READ_FAILED; LMD_E_BUFFER_TOO_SMALL for records that do not fit a segment;
// LMD_E_READ_FAILED for a source that could not be searched to its end; LMD_E_OPEN_FAILED for the
// output, which is created only now; LMD_E_READ_FAILED, LMD_E_WRITE_FAILED. What was written before
// a failure stays.
HRESULT RewriteMetadata(const RewriteRequest& request);

#endif  // LUMIDEX_CONTAINER_METADATAREWRITE_H_
