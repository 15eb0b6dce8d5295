#ifndef LUMIDEX_BASE_TAGVALUE_H_
#define LUMIDEX_BASE_TAGVALUE_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/ByteOrder.h"
#include "base/FileStream.h"
#include "base/TagEntry.h"
#include "base/TypeSizes.h"

// How a type of the file is stored.
struct StoredType {
  std::uint32_t type;  // as stored
  std::uint8_t size;   // bytes of a value
  std::uint8_t unit;   // bytes of a number that has a byte order
  std::uint8_t zeros;  // behind the value: a text has one
};

// By design FLOAT and DOUBLE are not read as numbers: they and unknown types keep raw bytes, one
// for each value. A type that the table does not hold is stored as the first row.
// clang-format off
inline constexpr auto kStoredTypes = std::to_array<StoredType>({
    {TYPE_UNDEFINED, 1, 1, 0},
    {TYPE_BYTE,      1, 1, 0},
    {TYPE_ASCII,     1, 1, 1},
    {TYPE_SHORT,     2, 2, 0},
    {TYPE_LONG,      4, 4, 0},
    {TYPE_RATIONAL,  8, 4, 0},
    {TYPE_BYTE,      1, 1, 0},  // SBYTE, by design
    {TYPE_UNDEFINED, 1, 1, 0},
    {TYPE_SSHORT,    2, 2, 0},
    {TYPE_SLONG,     4, 4, 0},
    {TYPE_SRATIONAL, 8, 4, 0},
    {TYPE_UNDEFINED, 1, 1, 0},  // FLOAT
    {TYPE_UNDEFINED, 1, 1, 0},  // DOUBLE
    {TYPE_IFD,       4, 4, 0},
});
// clang-format on
static_assert(kStoredTypes[TYPE_SRATIONAL].type == TYPE_SRATIONAL &&
              kStoredTypes.size() == TYPE_IFD + 1);

constexpr const StoredType& StoredTypeOf(std::uint32_t type) noexcept {
  return kStoredTypes[type < kStoredTypes.size() ? type : 0];
}

// Which steps reverse a number: the bytes of each pair, the pairs of each word of four bytes.
struct Reversal {
  std::uint16_t ofBytes;
  std::uint32_t ofPairs;
};

// By the bytes of a number.
inline constexpr std::array<Reversal, 5> kReversals = {Reversal{}, Reversal{}, Reversal{0xFFFF, 0},
                                                       Reversal{}, Reversal{0xFFFF, 0xFFFFFFFF}};

// Reverses the bytes of each number in an entry's room, in place.
inline void ReverseNumbers(std::array<std::uint8_t, kInlineTagData>& room,
                           std::uint32_t unit) noexcept {
  const Reversal reversal = kReversals[unit];
  auto pairs = std::bit_cast<std::array<std::uint16_t, kInlineTagData / 2>>(room);
  for (std::uint16_t& pair : pairs) {
    const int change = (pair ^ (pair << 8 | pair >> 8)) & reversal.ofBytes;
    pair = static_cast<std::uint16_t>(pair ^ change);
  }
  auto words = std::bit_cast<std::array<std::uint32_t, kInlineTagData / 4>>(pairs);
  for (std::uint32_t& word : words) word ^= (word ^ std::rotl(word, 16)) & reversal.ofPairs;
  room = std::bit_cast<std::array<std::uint8_t, kInlineTagData>>(words);
}

// Stores a value that fits into the entry with room to spare, as most do, when the stream's window
// holds as many bytes. All the room is copied and turned, whatever the value is: no branch depends
// on what no predictor can know, the types and sizes of a photograph's entries. False when the
// value needs the long way.
inline bool StoreSmallTagValue(TagEntry& entry, std::uint32_t tag, FileStream& stream,
                               std::uint32_t type, std::uint32_t count, ByteOrder order) {
  const StoredType& stored = StoredTypeOf(type);
  const std::uint64_t size = std::uint64_t{count} * stored.size;
  if (size == 0 || size >= kInlineTagData) return false;
  if (!stream.TakeSmall(entry.m_inline, size)) return false;
  if (!stream.Budget().TakeBytes(size + stored.zeros)) return false;

  if (order != kHostByteOrder) ReverseNumbers(entry.m_inline, stored.unit);
  const std::uint32_t isOpen = entry.m_inline[size - 1] != 0 ? 1 : 0;
  entry.m_inline[size] = 0;
  entry.m_nTag = tag;
  entry.m_nType = stored.type;
  entry.m_nCount = count;
  entry.m_nSize = static_cast<std::uint32_t>(size) + (stored.zeros & isOpen);
  entry.m_pData = entry.m_inline.data();
  return true;
}

// The same for any value.
void StoreTagValue(TagEntry& entry, std::uint32_t tag, FileStream& stream, std::uint32_t type,
                   std::uint32_t count, ByteOrder order, NodePool& pool);

// Reads the value at the stream's position into an entry, in host byte order, replacing what the
// entry held. What it costs counts against the stream's budget. Missing bytes are 0. SBYTE is
// stored as BYTE; an ASCII value always ends in a zero byte; FLOAT, DOUBLE and unknown types are
// stored as `count` raw bytes of UNDEFINED, and not at all when there are more than 65535.
inline void m_fnStoreTagValue(TagEntry& entry, std::uint32_t tag, FileStream& stream,
                              std::uint32_t type, std::uint32_t count, ByteOrder order,
                              NodePool& pool) {
  if (StoreSmallTagValue(entry, tag, stream, type, count, order)) return;
  StoreTagValue(entry, tag, stream, type, count, order, pool);
}

#endif  // LUMIDEX_BASE_TAGVALUE_H_
