#ifndef LUMIDEX_CONTAINER_XMPEMBEDDING_H_
#define LUMIDEX_CONTAINER_XMPEMBEDDING_H_

// Puts the packet of an XMP file into an image that has none. What the paths lead to was checked by
// the caller.
//
// Results, in the order in which they are decided: LMD_E_OPEN_FAILED for the packet file; what the
// locator of the file type says, LMD_E_XMP_FOUND included; LMD_E_READ_FAILED when the image could
// not be searched to its end; LMD_E_BUFFER_TOO_SMALL and LMD_E_READ_FAILED for the packet file;
// then as told with each.

#include "base/FileStream.h"
#include "platform/Win32.h"

// Writes a new file from a source that OpenForCopy has opened: LMD_E_OPEN_FAILED for the output,
// LMD_E_READ_FAILED, LMD_E_WRITE_FAILED. What was written before a failure stays.
HRESULT EmbedIntoJpeg(FileStream& source, const WCHAR* output, const WCHAR* packet);
HRESULT EmbedIntoPng(FileStream& source, const WCHAR* output, const WCHAR* packet);

// Writes into the image itself, in front of its end chunk: LMD_E_OPEN_FAILED for the image before
// all else; LMD_E_BAD_FORMAT when it does not end with exactly that chunk, LMD_E_WRITE_FAILED.
// After a failure the file has its old contents and size, as far as the system lets it.
HRESULT EmbedIntoSamePng(const WCHAR* image, const WCHAR* packet);

#endif  // LUMIDEX_CONTAINER_XMPEMBEDDING_H_
