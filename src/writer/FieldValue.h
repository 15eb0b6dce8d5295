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
  TagType type = TYPE_LONG;
  std::span<const std::uint8_t> data;

  // How many whole values the record holds.
  std::uint32_t Count() const noexcept;

  // The bytes that they take in the block.
  std::size_t StoredSize() const noexcept { return std::size_t{Count()} * TypeSize(type); }

  // Whether they stand in the directory entry itself (TIFF 6.0, section 2).
  bool IsInPlace() const noexcept { return StoredSize() <= 4; }

  // Writes them, little-endian, to the first StoredSize() bytes of `out`.
  void Store(std::span<std::uint8_t> out) const noexcept;
};

#endif  // LUMIDEX_WRITER_FIELDVALUE_H_
