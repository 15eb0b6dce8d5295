#ifndef LUMIDEX_BASE_BYTECURSOR_H_
#define LUMIDEX_BASE_BYTECURSOR_H_

// A reading position over bytes in memory. It never leaves its buffer: a number that does not lie
// wholly inside reads as 0, moves the position to the end, and WasShort() stays true from then on.

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/ByteOrder.h"

class ByteCursor {
 public:
  ByteCursor(std::span<const std::uint8_t> bytes, ByteOrder order) noexcept
      : m_bytes(bytes), m_order(order) {}

  std::size_t Position() const noexcept { return m_position; }
  std::size_t Remaining() const noexcept { return m_bytes.size() - m_position; }
  bool WasShort() const noexcept { return m_wasShort; }

  // Moves to an offset from the start of the buffer; beyond the end counts as short.
  void Seek(std::size_t position) noexcept {
    if (position > m_bytes.size()) {
      m_wasShort = true;
      position = m_bytes.size();
    }
    m_position = position;
  }

  void Skip(std::size_t count) noexcept { static_cast<void>(Take(count)); }

  [[nodiscard]] std::uint8_t ReadU8() noexcept {
    const auto bytes = Take(1);
    return bytes.empty() ? std::uint8_t{0} : bytes[0];
  }
  [[nodiscard]] std::uint16_t ReadU16() noexcept {
    const auto bytes = Take(2);
    return bytes.empty() ? std::uint16_t{0} : LoadU16(bytes, m_order);
  }
  [[nodiscard]] std::uint32_t ReadU32() noexcept {
    const auto bytes = Take(4);
    return bytes.empty() ? std::uint32_t{0} : LoadU32(bytes, m_order);
  }

  // The next `count` bytes, or none when fewer are left.
  [[nodiscard]] std::span<const std::uint8_t> ReadBytes(std::size_t count) noexcept {
    return Take(count);
  }

 private:
  std::span<const std::uint8_t> Take(std::size_t count) noexcept {
    if (count > Remaining()) {
      m_wasShort = true;
      m_position = m_bytes.size();
      return {};
    }
    const auto bytes = m_bytes.subspan(m_position, count);
    m_position += count;
    return bytes;
  }

  std::span<const std::uint8_t> m_bytes;
  std::size_t m_position = 0;
  ByteOrder m_order;
  bool m_wasShort = false;
};

#endif  // LUMIDEX_BASE_BYTECURSOR_H_
