#ifndef LUMIDEX_BASE_TYPESIZES_H_
#define LUMIDEX_BASE_TYPESIZES_H_

// The TIFF field types (TIFF 6.0, section 2; 13 from the TIFF Technical Notes) and their sizes.

#include <cstdint>
#include <string_view>

enum TagType : std::uint32_t {
  TYPE_BYTE = 1,
  TYPE_ASCII = 2,
  TYPE_SHORT = 3,
  TYPE_LONG = 4,
  TYPE_RATIONAL = 5,
  TYPE_SBYTE = 6,
  TYPE_UNDEFINED = 7,
  TYPE_SSHORT = 8,
  TYPE_SLONG = 9,
  TYPE_SRATIONAL = 10,
  TYPE_FLOAT = 11,
  TYPE_DOUBLE = 12,
  TYPE_IFD = 13,
  TYPE_WIDE_TEXT = 162,  // UTF-16 text; the module's own, never read from a file
};

inline constexpr std::string_view kTypeSizes = "11124811248484";

// Bytes of one value. A type that the table does not hold counts 1 byte.
constexpr std::uint32_t TypeSize(std::uint32_t type) noexcept {
  const char digit = kTypeSizes[type < kTypeSizes.size() ? type : 0];
  return static_cast<std::uint32_t>(digit - '0');
}

// Bytes of `count` values; 64 bits, so that it cannot wrap.
constexpr std::uint64_t ValueSize(std::uint32_t type, std::uint32_t count) noexcept {
  return std::uint64_t{TypeSize(type)} * count;
}

#endif  // LUMIDEX_BASE_TYPESIZES_H_
