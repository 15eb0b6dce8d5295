#ifndef LUMIDEX_XMP_BYTECHUNKS_H_
#define LUMIDEX_XMP_BYTECHUNKS_H_

// Bytes of a text eight at a time. Names and values of a packet are mostly shorter than what makes
// a call of the library's search pay.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

inline constexpr std::uint32_t kChunkSize = 8;

// The factor that repeats a byte, and the highest bit of every byte.
inline constexpr std::uint64_t kEachByte = 0x0101010101010101;
inline constexpr std::uint64_t kHighBits = 0x80 * kEachByte;

// The first byte becomes the lowest. The text has kChunkSize bytes from the position on.
inline std::uint64_t LoadChunk(std::string_view text, std::size_t at) noexcept {
  static_assert(std::endian::native == std::endian::little);
  std::uint64_t chunk = 0;
  std::memcpy(&chunk, text.data() + at, kChunkSize);
  return chunk;
}

// Marks the bytes up to `last`, which is below 0x7F. Only the lowest mark is sure to be right;
// without any there is no such byte.
constexpr std::uint64_t BytesUpTo(std::uint64_t chunk, char last) noexcept {
  return (chunk - kEachByte * (static_cast<std::uint64_t>(last) + 1)) & ~chunk & kHighBits;
}

// The same for the bytes that are `wanted`.
constexpr std::uint64_t BytesEqual(std::uint64_t chunk, char wanted) noexcept {
  return BytesUpTo(chunk ^ kEachByte * static_cast<std::uint64_t>(wanted), 0);
}

// Where the lowest byte is that is not zero, which is that of the lowest mark.
constexpr std::size_t FirstByte(std::uint64_t marks) noexcept {
  return static_cast<std::uint32_t>(std::countr_zero(marks)) / 8;
}

// All bits of a chunk's first bytes: as many as it has, or `count`.
constexpr std::uint64_t FirstBytes(std::size_t count) noexcept {
  return count >= kChunkSize ? ~std::uint64_t{0} : (std::uint64_t{1} << 8 * count) - 1;
}

// The first bytes of a part of a text, as many as a chunk has; zero bytes stand for missing ones.
// The part lies in the text.
inline std::uint64_t HeadOf(std::string_view text, std::uint32_t start,
                            std::uint32_t length) noexcept {
  if (text.size() - start >= kChunkSize) return LoadChunk(text, start) & FirstBytes(length);
  std::uint64_t head = 0;
  std::memcpy(&head, text.data() + start, length);
  return head;
}

// Where a byte up to `last` next stands from a position on. Without one it is the text's size, or
// the position when that lies behind the text.
inline std::size_t FindByteUpTo(std::string_view text, char last, std::size_t at) noexcept {
  for (; at + kChunkSize <= text.size(); at += kChunkSize) {
    const std::uint64_t marks = BytesUpTo(LoadChunk(text, at), last);
    if (marks != 0) return at + FirstByte(marks);
  }
  while (at < text.size() && static_cast<unsigned char>(text[at]) > last) ++at;
  return at;
}

// The same for the next byte that is not a space.
inline std::size_t SkipSpaces(std::string_view text, std::size_t at) noexcept {
  for (; at + kChunkSize <= text.size(); at += kChunkSize) {
    const std::uint64_t others = LoadChunk(text, at) ^ kEachByte * std::uint64_t{' '};
    if (others != 0) return at + FirstByte(others);
  }
  while (at < text.size() && text[at] == ' ') ++at;
  return at;
}

// Where a byte next stands, or the text's size. Most stand nearby; for the others the library's
// search is quicker.
inline std::size_t FindByte(std::string_view text, char wanted, std::size_t from) noexcept {
  constexpr std::size_t kNearby = 4 * kChunkSize;
  std::size_t at = from;
  if (at + kNearby <= text.size()) {
    for (; at != from + kNearby; at += kChunkSize) {
      const std::uint64_t marks = BytesEqual(LoadChunk(text, at), wanted);
      if (marks != 0) return at + FirstByte(marks);
    }
  }
  return std::min(text.find(wanted, at), text.size());
}

#endif  // LUMIDEX_XMP_BYTECHUNKS_H_
