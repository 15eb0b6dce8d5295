#ifndef LUMIDEX_XMP_BYTECHUNKS_H_
#define LUMIDEX_XMP_BYTECHUNKS_H_

// Bytes of a text eight at a time. Names and values of a packet are mostly shorter than what makes
// a call of the library's search pay.

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

inline constexpr std::uint32_t kChunkSize = 8;

// The factor that repeats a byte, and the highest bit of every byte.
inline constexpr std::uint64_t kEachByte = 0x0101010101010101;
inline constexpr std::uint64_t kHighBits = 0x80 * kEachByte;

// The first byte becomes the lowest. The text has kChunkSize bytes from the position on.
inline std::uint64_t LoadChunk(std::string_view text, std::uint32_t at) noexcept {
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

// Where the lowest mark is.
constexpr std::uint32_t FirstByte(std::uint64_t marks) noexcept {
  return static_cast<std::uint32_t>(std::countr_zero(marks)) / 8;
}

#endif  // LUMIDEX_XMP_BYTECHUNKS_H_
