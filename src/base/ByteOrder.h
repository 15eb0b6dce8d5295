#ifndef LUMIDEX_BASE_BYTEORDER_H_
#define LUMIDEX_BASE_BYTEORDER_H_

// The one place that puts integers together from bytes and takes them apart.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

// The byte-order mark of a TIFF header as a 16-bit word (TIFF 6.0, section 2).
enum class ByteOrder : std::uint16_t {
  LittleEndian = 0x4949,
  BigEndian = 0x4D4D,
};

static_assert(std::endian::native == std::endian::little, "values are kept little-endian");

inline constexpr ByteOrder kHostByteOrder = ByteOrder::LittleEndian;

// `bytes` holds at least two.
constexpr std::uint16_t LoadU16(std::span<const std::uint8_t> bytes, ByteOrder order) noexcept {
  if (order == ByteOrder::BigEndian) return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
  return static_cast<std::uint16_t>(bytes[1] << 8 | bytes[0]);
}

// `bytes` holds at least four.
constexpr std::uint32_t LoadU32(std::span<const std::uint8_t> bytes, ByteOrder order) noexcept {
  const auto four = bytes.first<4>();
  const auto at = [four](std::size_t i, int shift) { return std::uint32_t{four[i]} << shift; };
  if (order == ByteOrder::BigEndian) return at(0, 24) | at(1, 16) | at(2, 8) | at(3, 0);
  return at(3, 24) | at(2, 16) | at(1, 8) | at(0, 0);
}

// Writes a value into the first two bytes; `bytes` holds at least two.
constexpr void StoreU16(std::span<std::uint8_t> bytes, std::uint16_t value,
                        ByteOrder order) noexcept {
  const auto high = static_cast<std::uint8_t>(value >> 8);
  const auto low = static_cast<std::uint8_t>(value);
  bytes[0] = order == ByteOrder::BigEndian ? high : low;
  bytes[1] = order == ByteOrder::BigEndian ? low : high;
}

// Writes a value into the first four bytes; `bytes` holds at least four.
constexpr void StoreU32(std::span<std::uint8_t> bytes, std::uint32_t value,
                        ByteOrder order) noexcept {
  const auto high = static_cast<std::uint16_t>(value >> 16);
  const auto low = static_cast<std::uint16_t>(value);
  StoreU16(bytes, order == ByteOrder::BigEndian ? high : low, order);
  StoreU16(bytes.subspan(2), order == ByteOrder::BigEndian ? low : high, order);
}

// The value number `index` of an array in host order; bytes that are not there count as 0.
template <class T>
T HostValue(std::span<const std::uint8_t> bytes, std::size_t index = 0) noexcept {
  T value{};
  const std::size_t offset = index * sizeof(T);
  if (offset >= bytes.size()) return value;
  const std::size_t present = bytes.size() - offset;
  std::memcpy(&value, bytes.data() + offset, present < sizeof(T) ? present : sizeof(T));
  return value;
}

// Turns an array of 16-bit values in a given order into host order, in place. An odd last byte
// stays.
inline void ToHostOrder16(std::span<std::uint8_t> bytes, ByteOrder order) noexcept {
  if (order == kHostByteOrder) return;
  for (std::size_t i = 0; i + 2 <= bytes.size(); i += 2) {
    const std::uint16_t value = LoadU16(bytes.subspan(i, 2), order);
    std::memcpy(&bytes[i], &value, sizeof(value));
  }
}

// The same for 32-bit values.
inline void ToHostOrder32(std::span<std::uint8_t> bytes, ByteOrder order) noexcept {
  if (order == kHostByteOrder) return;
  for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
    const std::uint32_t value = LoadU32(bytes.subspan(i, 4), order);
    std::memcpy(&bytes[i], &value, sizeof(value));
  }
}

#endif  // LUMIDEX_BASE_BYTEORDER_H_
