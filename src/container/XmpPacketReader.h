#ifndef LUMIDEX_CONTAINER_XMPPACKETREADER_H_
#define LUMIDEX_CONTAINER_XMPPACKETREADER_H_

// Reads the XMP packet of a JPEG or PNG file back as it stands there, unparsed. By design it is
// looked for at one place, where this module puts it: behind the SOI marker or the EXIF segments of
// a JPEG. LMD_E_OPEN_FAILED; LMD_E_NOT_FOUND for another file type and for a file without a packet
// that its locator finds; LMD_E_BAD_FORMAT; LMD_E_READ_FAILED.

#include <cstdint>

#include "platform/Win32.h"

// By design a JPEG's size is the whole length of the segment, 31 more than the packet has.
HRESULT ReadXmpPacketSize(const WCHAR* path, std::uint32_t fileType, std::uint32_t* size);

// No more than `room` bytes are written to `buffer`: LMD_E_BUFFER_TOO_SMALL, with the buffer
// untouched, when the packet has more. By design a JPEG's size is told as 2 more than the bytes
// written. LMD_E_READ_FAILED, with the buffer untouched, when the file ends inside the packet or
// cannot be read.
HRESULT ReadXmpPacket(const WCHAR* path, std::uint32_t fileType, std::uint32_t* size,
                      std::uint8_t* buffer, std::uint32_t room);

#endif  // LUMIDEX_CONTAINER_XMPPACKETREADER_H_
