#include "PngEncoder.h"

#include <algorithm>
#include <span>

namespace samples {
namespace {

using test::Bytes;
using test::Join;
using test::Text;
using test::U16;
using test::U32;
using test::Zeros;

// The chunk check value (PNG, annex D), bit by bit.
std::uint32_t Crc(const Bytes& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xEDB88320 : crc >> 1;
  }
  return ~crc;
}

Bytes Chunk(std::string_view type, const Bytes& data) {
  const Bytes checked = Join({Text(type), data});
  return Join({U32(static_cast<std::uint32_t>(data.size())), checked, U32(Crc(checked))});
}

// The check value of a zlib stream (RFC 1950).
std::uint32_t Adler(const Bytes& bytes) {
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const std::uint8_t byte : bytes) {
    low = (low + byte) % 65521;
    high = (high + low) % 65521;
  }
  return high << 16 | low;
}

// A zlib stream of stored blocks (RFC 1951, 3.2.4).
Bytes Store(const Bytes& bytes) {
  constexpr std::size_t kLargestBlock = 65535;
  Bytes stream = {0x78, 0x01};
  for (std::size_t at = 0; at < bytes.size(); at += kLargestBlock) {
    const std::span block =
        std::span(bytes).subspan(at, std::min(kLargestBlock, bytes.size() - at));
    const auto length = static_cast<std::uint16_t>(block.size());
    const bool last = at + block.size() == bytes.size();
    stream = Join({stream,
                   {static_cast<std::uint8_t>(last ? 1 : 0)},
                   U16(length, ByteOrder::LittleEndian),
                   U16(static_cast<std::uint16_t>(~length), ByteOrder::LittleEndian),
                   {block.begin(), block.end()}});
  }
  return Join({stream, U32(Adler(bytes))});
}

// Each row begins with its filter, none.
Bytes Rows(const Picture& picture) {
  Bytes rows;
  for (int y = 0; y < picture.Height(); ++y) {
    rows.push_back(0);
    for (int x = 0; x < picture.Width(); ++x) {
      const Color color = picture.At(x, y);
      for (const int part : {color.red, color.green, color.blue}) {
        rows.push_back(static_cast<std::uint8_t>(part));
      }
    }
  }
  return rows;
}

}  // namespace

Bytes EncodePng(const Picture& picture, std::string_view xmpPacket) {
  const Bytes header = Join({U32(static_cast<std::uint32_t>(picture.Width())),
                             U32(static_cast<std::uint32_t>(picture.Height())),
                             {8, 2, 0, 0, 0}});
  const Bytes text = Join({Text("XML:com.adobe.xmp"), Zeros(5), Text(xmpPacket)});
  return Join({{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A},
               Chunk("IHDR", header),
               Chunk("iTXt", text),
               Chunk("IDAT", Store(Rows(picture))),
               Chunk("IEND", {})});
}

}  // namespace samples
