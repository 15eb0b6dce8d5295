#include "support/SamsungPhoto.h"

namespace test {

Entry NoteSLong(std::uint16_t tag, const std::vector<std::int32_t>& values) {
  Bytes bytes;
  for (const std::int32_t value : values) {
    bytes = Join({bytes, U32(static_cast<std::uint32_t>(value), kNote.Order())});
  }
  return kNote.Raw(tag, 9, static_cast<std::uint32_t>(values.size()), bytes);
}

Entry NoteSRational(std::uint16_t tag,
                    const std::vector<std::pair<std::int32_t, std::int32_t>>& values) {
  Bytes bytes;
  for (const auto& [numerator, denominator] : values) {
    bytes = Join({bytes, U32(static_cast<std::uint32_t>(numerator), kNote.Order()),
                  U32(static_cast<std::uint32_t>(denominator), kNote.Order())});
  }
  return kNote.Raw(tag, 10, static_cast<std::uint32_t>(values.size()), bytes);
}

Bytes SamsungTiff(const Directory& note, ByteOrder order) {
  const Tiff tiff(order);
  const Directory exif = {tiff.Undefined(0x927C, kNote.BuildDirectory(note, 0))};
  return tiff.Build(
      {tiff.Ascii(271, "SAMSUNG"), tiff.Ascii(272, "NX10"), tiff.Child(0x8769, exif)});
}

Bytes SamsungJpeg(const Directory& note) {
  return Jpeg().Exif(SamsungTiff(note)).Frame(640, 480).Scan().Build();
}

}  // namespace test
