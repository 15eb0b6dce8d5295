#include "support/Png.h"

namespace test {
namespace {

// The checksum of PNG chunks (PNG specification, annex D).
std::uint32_t Crc32(const Bytes& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
  }
  return crc ^ 0xFFFFFFFF;
}

}  // namespace

Png::Png() : m_bytes{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A} {}

Png& Png::Chunk(std::string_view type, const Bytes& data) {
  return ChunkOfLength(type, static_cast<std::uint32_t>(data.size()), data);
}

Png& Png::ChunkOfLength(std::string_view type, std::uint32_t length, const Bytes& data) {
  const Bytes content = Join({Text(type), data});
  return Raw(Join({U32(length), content, U32(Crc32(content))}));
}

Png& Png::Header() {
  return Chunk("IHDR", {0, 0, 0, 1, 0, 0, 0, 1, 8, 0, 0, 0, 0});
}

Png& Png::Xmp(std::string_view text) {
  return Chunk("iTXt", XmpChunkData(text));
}

Png& Png::End() {
  return Chunk("IEND", {});
}

Png& Png::Raw(const Bytes& bytes) {
  m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
  return *this;
}

Bytes XmpChunkData(std::string_view text, std::string_view keyword, const Bytes& between) {
  return Join({Text(keyword), between, Text(text)});
}

Bytes SmallPng() {
  return Png().Header().End().Build();
}

}  // namespace test
