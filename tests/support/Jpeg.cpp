#include "support/Jpeg.h"

namespace test {

Jpeg::Jpeg() : m_bytes{0xFF, 0xD8} {}

Jpeg& Jpeg::Segment(std::uint8_t marker, const Bytes& payload) {
  return SegmentOfLength(marker, static_cast<std::uint16_t>(payload.size() + 2), payload);
}

Jpeg& Jpeg::SegmentOfLength(std::uint8_t marker, std::uint16_t length, const Bytes& payload) {
  return Raw(Join({{0xFF, marker}, U16(length), payload}));
}

Jpeg& Jpeg::Exif(const Bytes& tiffBlock) {
  return Segment(0xE1, Join({Text("Exif"), Zeros(2), tiffBlock}));
}

Jpeg& Jpeg::Xmp(std::string_view packet) {
  return Segment(0xE1, Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1), Text(packet)}));
}

Jpeg& Jpeg::Icc(const Bytes& profile, std::uint8_t number, std::uint8_t total) {
  return Segment(0xE2, Join({Text("ICC_PROFILE"), Zeros(1), {number, total}, profile}));
}

Jpeg& Jpeg::Photoshop(const Bytes& resources) {
  return Segment(0xED, Join({Text("Photoshop 3.0"), Zeros(1), resources}));
}

Jpeg& Jpeg::Frame(std::uint16_t width, std::uint16_t height, std::uint8_t marker) {
  return Segment(marker, Join({{8}, U16(height), U16(width), {1, 1, 0x11, 0}}));
}

Jpeg& Jpeg::Scan() {
  Segment(0xDA, {1, 1, 0, 0, 63, 0});
  return Raw({0x12, 0x34, 0x56});
}

Jpeg& Jpeg::Raw(const Bytes& bytes) {
  m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
  return *this;
}

Bytes Jpeg::Build() const {
  return Join({m_bytes, {0xFF, 0xD9}});
}

Bytes PhotoshopResource(std::uint16_t id, const Bytes& data) {
  Bytes resource =
      Join({Text("8BIM"), U16(id), Zeros(2), U32(static_cast<std::uint32_t>(data.size())), data});
  if (data.size() % 2 != 0) resource.push_back(0);
  return resource;
}

Bytes SmallJpeg() {
  return Jpeg().Frame(8, 8).Scan().Build();
}

}  // namespace test
