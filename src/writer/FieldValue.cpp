#include "writer/FieldValue.h"

#include <algorithm>

#include "base/ByteOrder.h"

void FieldValue::Store(std::span<std::uint8_t> out) const noexcept {
  static_assert(kHostByteOrder == ByteOrder::LittleEndian, "records are copied as they are");
  if (!IsWidened(type)) {
    std::copy_n(data.begin(), StoredSize(), out.begin());
    return;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto slot = LoadU32(data.subspan(sizeof(std::uint32_t) * i), kHostByteOrder);
    StoreU16(out.subspan(sizeof(std::uint16_t) * i), static_cast<std::uint16_t>(slot),
             ByteOrder::LittleEndian);
  }
}
