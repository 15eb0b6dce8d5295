#include "writer/TiffBlock.h"

#include <algorithm>

#include "base/ByteOrder.h"
#include "core/DebugLog.h"

std::span<std::uint8_t> TiffBlock::Room(std::uint32_t position, std::size_t count) noexcept {
  if (position <= kCapacity && count <= kCapacity - position) {
    return m_buffer.Bytes().subspan(position, count);
  }
  m_overrun = true;
  return {};
}

std::span<std::uint8_t> TiffBlock::Append(std::size_t count) noexcept {
  const auto room = Room(m_nPos, count);
  std::ranges::fill(room, std::uint8_t{0});
  m_nPos += static_cast<std::uint32_t>(room.size());
  return room;
}

void TiffBlock::AppendBytes(std::span<const std::uint8_t> bytes) noexcept {
  const auto room = Append(bytes.size());
  std::copy_n(bytes.begin(), room.size(), room.begin());
}

void TiffBlock::AppendU16(std::uint16_t value) noexcept {
  const auto room = Append(sizeof(value));
  if (!room.empty()) StoreU16(room, value, ByteOrder::LittleEndian);
}

void TiffBlock::AppendU32(std::uint32_t value) noexcept {
  const auto room = Append(sizeof(value));
  if (!room.empty()) StoreU32(room, value, ByteOrder::LittleEndian);
}

void TiffBlock::Link(std::uint32_t pointer, std::uint32_t directory) noexcept {
  if (pointer == 0) {
    // By design the message is the same for every pointer.
    DebugLog("m_nExifIFDPos is 0, err!");
    return;
  }
  const auto room = Room(pointer, sizeof(directory));
  if (!room.empty()) StoreU32(room, directory, ByteOrder::LittleEndian);
}
