#include "base/TagValue.h"

#include <algorithm>
#include <limits>

namespace {

// More raw bytes than these are not stored.
constexpr std::uint32_t kMaxUndefinedCount = 65535;

constexpr std::uint32_t kMax32 = std::numeric_limits<std::uint32_t>::max();

// Fills data from the file. A number that is cut by the end of the file is 0.
void ReadData(FileStream& stream, std::span<std::uint8_t> data, std::uint32_t unit) {
  if (data.empty()) return;
  const std::size_t read = stream.Read(data);
  if (read < data.size()) std::ranges::fill(data.subspan(read - read % unit), std::uint8_t{0});
}

// Stores the characters and a final zero, which counts only when the text lacks its own.
void StoreText(TagEntry& entry, FileStream& stream, std::uint32_t count, NodePool& pool) {
  const auto data = AllocateTagData(entry, count + 1, {pool, stream.Budget()});
  if (data.empty()) return;
  ReadData(stream, data.first(count), 1);
  data[count] = 0;
  if (count != 0 && data[count - 1] == 0) entry.m_nSize = count;
}

// Stores numbers in host order.
void StoreNumbers(TagEntry& entry, FileStream& stream, std::uint64_t size, std::uint32_t unit,
                  ByteOrder order, NodePool& pool) {
  const auto data = AllocateTagData(entry, size, {pool, stream.Budget()});
  ReadData(stream, data, unit);
  if (unit == 2) ToHostOrder16(data, order);
  if (unit == 4) ToHostOrder32(data, order);
}

}  // namespace

void StoreTagValue(TagEntry& entry, std::uint32_t tag, FileStream& stream, std::uint32_t type,
                   std::uint32_t count, ByteOrder order, NodePool& pool) {
  const StoredType& stored = StoredTypeOf(type);
  const std::uint64_t size = std::uint64_t{count} * stored.size;
  entry.m_nTag = tag;
  entry.m_nType = stored.type;
  entry.m_nCount = count;

  if (stored.zeros != 0 && count < kMax32) return StoreText(entry, stream, count, pool);
  if (size >= kMax32 || (stored.type == TYPE_UNDEFINED && count > kMaxUndefinedCount)) {
    DropTagData(entry);
    entry.m_nCount = 0;
    return;
  }
  StoreNumbers(entry, stream, size, stored.unit, order, pool);
}
