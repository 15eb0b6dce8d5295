#ifndef LUMIDEX_TESTS_SUPPORT_SAMSUNGPHOTO_H_
#define LUMIDEX_TESTS_SUPPORT_SAMSUNGPHOTO_H_

// Photographs with a Samsung maker note: a bare big-endian directory whose offsets count from its
// own first byte.
//
//   Bytes file = SamsungJpeg({kNoteBound, kNote.Long(0x10, {7})});

#include "support/Jpeg.h"
#include "support/Tiff.h"

namespace test {

// Makes the entries of a maker note.
inline const Tiff kNote(ByteOrder::BigEndian);

// Tag 1 with 64 bytes. The records of a table end at the first value that is larger than the
// table's first one, so a first entry of this size lets the small ones behind it through.
inline const Entry kNoteBound = kNote.Byte(1, Zeros(64));

Entry NoteSLong(std::uint16_t tag, const std::vector<std::int32_t>& values);
Entry NoteSRational(std::uint16_t tag,
                    const std::vector<std::pair<std::int32_t, std::int32_t>>& values);

// The TIFF block of such a photograph, in either byte order.
Bytes SamsungTiff(const Directory& note, ByteOrder order = ByteOrder::LittleEndian);

// A file of nothing but that block and a frame header.
Bytes SamsungJpeg(const Directory& note);

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_SAMSUNGPHOTO_H_
