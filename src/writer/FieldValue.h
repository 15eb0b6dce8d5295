#ifndef LUMIDEX_WRITER_FIELDVALUE_H_
#define LUMIDEX_WRITER_FIELDVALUE_H_

// A value on its way from a record into a directory: the type to be written and the record's bytes,
// which stay the host's. Records hold every integer in 32 bits; a 16-bit value is the low half of
// its slot.

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/TypeSizes.h"

struct FieldValue {
  constexpr FieldValue(TagType storedType, std::span<const std::uint8_t> bytes) noexcept
      : type(storedType),
        count(static_cast<std::uint32_t>(bytes.size()) / RecordUnit(storedType)),
        data(bytes) {}

  // The bytes that one value takes in a record.
  static constexpr std::uint32_t RecordUnit(TagType type) noexcept {
    return IsWidened(type) ? std::uint32_t{sizeof(std::uint32_t)} : TypeSize(type);
  }
  static constexpr bool IsWidened(TagType type) noexcept {
    return type == TYPE_SHORT || type == TYPE_SSHORT;
  }

  // The bytes that the values take in the block.
  std::size_t StoredSize() const noexcept { return std::size_t{count} * TypeSize(type); }

  // Whether they stand in the directory entry itself (TIFF 6.0, section 2).
  bool IsInPlace() const noexcept { return StoredSize() <= 4; }

  // Writes them, little-endian, to the first StoredSize() bytes of `out`.
  void Store(std::span<std::uint8_t> out) const noexcept;

  TagType type;
  std::uint32_t count;  // of the whole values that the record holds
  std::span<const std::uint8_t> data;
};

#endif  // LUMIDEX_WRITER_FIELDVALUE_H_
