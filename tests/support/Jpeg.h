#ifndef LUMIDEX_TESTS_SUPPORT_JPEG_H_
#define LUMIDEX_TESTS_SUPPORT_JPEG_H_

// Builds JPEG files segment by segment:
//
//   Bytes file = Jpeg().Exif(tiffBlock).Frame(640, 480).Scan().Build();

#include <cstdint>
#include <string_view>

#include "support/Bytes.h"

namespace test {

class Jpeg {
 public:
  Jpeg();

  // A marker with its length field and payload.
  Jpeg& Segment(std::uint8_t marker, const Bytes& payload);

  // The same with a length of the caller's choice.
  Jpeg& SegmentOfLength(std::uint8_t marker, std::uint16_t length, const Bytes& payload);

  Jpeg& Exif(const Bytes& tiffBlock);  // APP1 "Exif\0\0"
  Jpeg& Xmp(std::string_view packet);  // APP1 with the XMP basic namespace
  Jpeg& Icc(const Bytes& profile, std::uint8_t number = 1, std::uint8_t total = 1);  // APP2
  Jpeg& Photoshop(const Bytes& resources);  // APP13 "Photoshop 3.0\0"
  Jpeg& Frame(std::uint16_t width, std::uint16_t height, std::uint8_t marker = 0xC0);
  Jpeg& Scan();  // a start-of-scan header and some data
  Jpeg& Raw(const Bytes& bytes);

  // The file, from SOI to EOI.
  Bytes Build() const;

  // The offset at which the next segment's marker will stand.
  std::uint32_t NextOffset() const { return static_cast<std::uint32_t>(m_bytes.size()); }

 private:
  Bytes m_bytes;
};

// A file of 8 x 8 without metadata.
Bytes SmallJpeg();

// One Photoshop image resource with an empty name, padded to even length.
Bytes PhotoshopResource(std::uint16_t id, const Bytes& data);

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_JPEG_H_
