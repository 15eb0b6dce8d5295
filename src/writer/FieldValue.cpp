#include "writer/FieldValue.h"

#include <algorithm>

#include "base/ByteOrder.h"

namespace {

bool IsWidened(TagType type) noexcept {
  return type == TYPE_SHORT || type == TYPE_SSHORT;
}

// The bytes that one value takes in a record.
std::uint32_t RecordUnit(TagType type) noexcept {
  return IsWidened(type) ? std::uint32_t{sizeof(std::uint32_t)} : TypeSize(type);
}

}  // namespace

std::uint32_t FieldValue::Count() const noexcept {
  return static_cast<std::uint32_t>(data.size()) / RecordUnit(type);
}

void FieldValue::Store(std::span<std::uint8_t> out) const noexcept {
  static_assert(kHostByteOrder == ByteOrder::LittleEndian, "records are copied as they are");
  if (!IsWidened(type)) {
    std::copy_n(data.begin(), StoredSize(), out.begin());
    return;
  }
  for (std::size_t i = 0, count = Count(); i < count; ++i) {
    const auto slot = LoadU32(data.subspan(sizeof(std::uint32_t) * i), kHostByteOrder);
    StoreU16(out.subspan(sizeof(std::uint16_t) * i), static_cast<std::uint16_t>(slot),
             ByteOrder::LittleEndian);
  }
}
