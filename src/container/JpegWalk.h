#ifndef LUMIDEX_CONTAINER_JPEGWALK_H_
#define LUMIDEX_CONTAINER_JPEGWALK_H_

// The walk over a JPEG file's marker segments (ITU-T T.81, annex B) that the locators share.

#include <cstdint>
#include <string_view>

#include "base/FileStream.h"

// A segment's places in the file. Its length field, which counts itself, stands before `payload`.
struct JpegSegment {
  std::uint8_t marker = 0;
  std::uint16_t length = 0;
  std::uint64_t start = 0;    // of the marker
  std::uint64_t payload = 0;  // behind the length field
  std::uint64_t next = 0;     // where the following segment starts
};

// Goes behind the SOI marker with which a file must begin; false when it does not.
[[nodiscard]] bool BeginJpegWalk(FileStream& stream);

// Reads a segment's head at the position and leaves the stream at its payload. False, which ends
// the walk, where no marker stands or its length cannot be read; the caller goes on by a seek to
// `next`.
[[nodiscard]] bool ReadJpegSegment(FileStream& stream, JpegSegment* segment);

// Whether a text of at most 32 bytes stands at the position.
[[nodiscard]] bool MatchesText(FileStream& stream, std::string_view text);

// Whether a segment is an EXIF one.
[[nodiscard]] bool IsExifSegment(FileStream& stream, const JpegSegment& segment);

#endif  // LUMIDEX_CONTAINER_JPEGWALK_H_
