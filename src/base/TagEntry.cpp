#include "base/TagEntry.h"

#include <cstring>

#include "base/ByteOrder.h"
#include "base/TypeSizes.h"

std::uint32_t TagInteger(const TagEntry& entry, std::uint32_t index) noexcept {
  if (index >= entry.m_nCount) return kNoInteger;
  const auto bytes = TagBytes(entry);
  switch (entry.m_nType) {
    case TYPE_BYTE:
      return HostValue<std::uint8_t>(bytes, index);
    case TYPE_SHORT:
      return HostValue<std::uint16_t>(bytes, index);
    case TYPE_LONG:
    case TYPE_SLONG:
      return HostValue<std::uint32_t>(bytes, index);
    case TYPE_SBYTE:
      return static_cast<std::uint32_t>(HostValue<std::int8_t>(bytes, index));
    case TYPE_SSHORT:
      return static_cast<std::uint32_t>(HostValue<std::int16_t>(bytes, index));
    default:
      return kNoInteger;
  }
}

// Bytes of the old data still stand where they stood when the new data has its room; in the entry
// itself the two may overlap.
void SetTagValue(TagEntry& entry, std::uint32_t tag, std::uint32_t type,
                 std::span<const std::uint8_t> bytes, const ValueMemory& memory) {
  entry.m_nTag = tag;
  entry.m_nType = type;
  const auto data = AllocateTagData(entry, bytes.size(), memory);
  if (!data.empty()) std::memmove(data.data(), bytes.data(), data.size());
}
