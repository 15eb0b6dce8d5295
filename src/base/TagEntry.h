#ifndef LUMIDEX_BASE_TAGENTRY_H_
#define LUMIDEX_BASE_TAGENTRY_H_

// One stored value, and the helpers that replace its bytes. A TagEntry is a plain record: its bytes
// belong to the pool that serves the table it is in, and go with it. Most values of a photograph
// are numbers and short texts; these stand in the entry itself and cost no memory of their own.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "base/NodePool.h"
#include "base/ParseBudget.h"

// The largest value that stands in its entry.
inline constexpr std::size_t kInlineTagData = 32;

struct TagEntry {
  std::uint32_t m_nTag = 0;
  std::uint32_t m_nType = 0;        // TIFF field type as stored
  std::uint32_t m_nCount = 0;       // number of values of that type
  std::uint32_t m_nSize = 0;        // bytes at m_pData
  std::uint8_t* m_pData = nullptr;  // in host byte order; null when nothing was read
  std::array<std::uint8_t, kInlineTagData> m_inline = {};
};

// Where the bytes of values come from, and what they may cost.
struct ValueMemory {
  NodePool& pool;
  ParseBudget& budget;
};

// The value's bytes; none when the entry has no data, whatever its size says.
inline std::span<const std::uint8_t> TagBytes(const TagEntry& entry) noexcept {
  if (entry.m_pData == nullptr) return {};
  return {entry.m_pData, entry.m_nSize};
}

// What a number reads as when its type is none of the integer types or there is no such value.
inline constexpr std::uint32_t kNoInteger = 0x7FFFFFFF;

// The value number `index` by the entry's stored type: BYTE and SHORT zero-extended, SBYTE and
// SSHORT sign-extended, LONG and SLONG as they are.
std::uint32_t TagInteger(const TagEntry& entry, std::uint32_t index) noexcept;

// Takes the data away and sets the size to 0; the other fields stay.
inline void DropTagData(TagEntry& entry) noexcept {
  entry.m_pData = nullptr;
  entry.m_nSize = 0;
}

// Replaces the data by `size` bytes and returns them for filling; they are not cleared. When the
// budget or the memory does not allow it, the entry has its size but no data, and the result is
// empty.
inline std::span<std::uint8_t> AllocateTagData(TagEntry& entry, std::uint64_t size,
                                               const ValueMemory& memory) {
  entry.m_pData = nullptr;
  entry.m_nSize = static_cast<std::uint32_t>(size);
  if (!memory.budget.TakeBytes(size)) return {};
  const bool fits = size <= kInlineTagData;
  entry.m_pData =
      fits ? entry.m_inline.data() : static_cast<std::uint8_t*>(memory.pool.TryAllocate(size));
  if (entry.m_pData == nullptr) return {};
  return {entry.m_pData, size};
}

// Replaces tag, type, size and data; the count stays. `bytes` is copied and may be part of the
// entry's own old data.
void SetTagValue(TagEntry& entry, std::uint32_t tag, std::uint32_t type,
                 std::span<const std::uint8_t> bytes, const ValueMemory& memory);

#endif  // LUMIDEX_BASE_TAGENTRY_H_
