#ifndef LUMIDEX_XMP_BYTECHUNKS_H_
#define LUMIDEX_XMP_BYTECHUNKS_H_

// Eight bytes of a text as a number: a name's first bytes tell it apart in one comparison.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

inline constexpr std::uint32_t kChunkSize = 8;

// The first byte becomes the lowest. The text has kChunkSize bytes from the position on.
inline std::uint64_t LoadChunk(std::string_view text, std::size_t at) noexcept {
  static_assert(std::endian::native == std::endian::little);
  std::uint64_t chunk = 0;
  std::memcpy(&chunk, text.data() + at, kChunkSize);
  return chunk;
}

// The same for half as many bytes.
inline std::uint32_t LoadHalf(std::string_view text, std::size_t at) noexcept {
  std::uint32_t half = 0;
  std::memcpy(&half, text.data() + at, sizeof(half));
  return half;
}

inline constexpr std::uint64_t kEightSpaces = 0x2020202020202020;

// Where the lowest byte is that is not zero.
constexpr std::size_t FirstByte(std::uint64_t bytes) noexcept {
  return static_cast<std::uint32_t>(std::countr_zero(bytes)) / 8;
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

#endif  // LUMIDEX_XMP_BYTECHUNKS_H_
