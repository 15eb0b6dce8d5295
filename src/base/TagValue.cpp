#include "base/TagValue.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "base/TypeSizes.h"

namespace {

// By design FLOAT and DOUBLE are not read as numbers: they and unknown types keep raw bytes, one
// for each value, up to this count.
constexpr std::uint32_t kMaxUndefinedCount = 65535;

constexpr std::uint32_t kMax32 = std::numeric_limits<std::uint32_t>::max();

// How a type of the file is stored.
struct Storage {
  std::uint32_t type;      // as stored
  std::uint32_t unit;      // bytes of one number that has a byte order
  std::uint32_t perValue;  // such numbers in one value
};

// By type; a type that the table does not hold is stored as the first row.
// clang-format off
constexpr auto kStorage = std::to_array<Storage>({
    {TYPE_UNDEFINED, 1, 1},
    {TYPE_BYTE,      1, 1},
    {TYPE_ASCII,     1, 1},
    {TYPE_SHORT,     2, 1},
    {TYPE_LONG,      4, 1},
    {TYPE_RATIONAL,  4, 2},
    {TYPE_BYTE,      1, 1},  // SBYTE, by design
    {TYPE_UNDEFINED, 1, 1},
    {TYPE_SSHORT,    2, 1},
    {TYPE_SLONG,     4, 1},
    {TYPE_SRATIONAL, 4, 2},
    {TYPE_UNDEFINED, 1, 1},  // FLOAT
    {TYPE_UNDEFINED, 1, 1},  // DOUBLE
    {TYPE_IFD,       4, 1},
});
// clang-format on
static_assert(kStorage[TYPE_SRATIONAL].type == TYPE_SRATIONAL && kStorage.size() == TYPE_IFD + 1);

// Fills data that the window, or the room in the entry, does not hold as a whole. A number that is
// cut by the end of the file is 0.
void ReadFar(FileStream& stream, std::span<std::uint8_t> data, std::uint32_t unit) {
  const std::size_t read = stream.Read(data);
  if (read < data.size()) std::ranges::fill(data.subspan(read - read % unit), std::uint8_t{0});
}

// Fills the entry's data from the file.
inline void ReadData(TagEntry& entry, FileStream& stream, std::span<std::uint8_t> data,
                     std::uint32_t unit) {
  if (data.empty() || (IsInline(entry) && stream.TakeSmall(entry.m_inline, data.size()))) return;
  ReadFar(stream, data, unit);
}

// Stores the characters and a final zero, which counts only when the text lacks its own.
void StoreText(TagEntry& entry, FileStream& stream, std::uint32_t count, NodePool& pool) {
  const auto data = AllocateTagData(entry, count + 1, {pool, stream.Budget()});
  if (data.empty()) return;
  ReadData(entry, stream, data.first(count), 1);
  data[count] = 0;
  if (count != 0 && data[count - 1] == 0) entry.m_nSize = count;
}

// Stores numbers in host order.
inline void StoreNumbers(TagEntry& entry, FileStream& stream, std::uint64_t size,
                         std::uint32_t unit, ByteOrder order, NodePool& pool) {
  const auto data = AllocateTagData(entry, size, {pool, stream.Budget()});
  ReadData(entry, stream, data, unit);
  if (order == kHostByteOrder) return;
  if (unit == 2) ToHostOrder16(data, order);
  if (unit == 4) ToHostOrder32(data, order);
}

}  // namespace

void m_fnStoreTagValue(TagEntry& entry, std::uint32_t tag, FileStream& stream, std::uint32_t type,
                       std::uint32_t count, ByteOrder order, NodePool& pool) {
  const Storage& storage = kStorage[type < kStorage.size() ? type : 0];
  const std::uint64_t size = std::uint64_t{count} * storage.unit * storage.perValue;
  entry.m_nTag = tag;
  entry.m_nType = storage.type;
  entry.m_nCount = count;

  if (storage.type == TYPE_ASCII && count < kMax32) return StoreText(entry, stream, count, pool);
  if (size >= kMax32 || (storage.type == TYPE_UNDEFINED && count > kMaxUndefinedCount)) {
    DropTagData(entry);
    entry.m_nCount = 0;
    return;
  }
  StoreNumbers(entry, stream, size, storage.unit, order, pool);
}
