#ifndef LUMIDEX_WRITER_TIFFBLOCK_H_
#define LUMIDEX_WRITER_TIFFBLOCK_H_

// The TIFF block of a new EXIF segment: little-endian, of limited size, filled from its start. What
// does not fit is left out and remembered, and the block is then good for nothing.

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/ByteBuffer.h"

class TiffBlock {
 public:
  // Far below the 65,527 bytes that a marker segment could carry.
  static constexpr std::size_t kCapacity = 64000;

  // Throws std::bad_alloc.
  TiffBlock() : m_buffer(kCapacity) {}

  // Makes the block empty.
  void Clear() noexcept {
    m_nPos = 0;
    m_overrun = false;
  }

  // The current end, where the next bytes go.
  std::uint32_t Position() const noexcept { return m_nPos; }

  // Adds `count` zero bytes and returns them for filling; none when they do not fit.
  std::span<std::uint8_t> Append(std::size_t count) noexcept;
  void AppendBytes(std::span<const std::uint8_t> bytes) noexcept;
  void AppendU16(std::uint16_t value) noexcept;
  void AppendU32(std::uint32_t value) noexcept;

  // Lets the 4 bytes at `pointer` point to the directory at `directory`. No pointer stands at 0.
  void Link(std::uint32_t pointer, std::uint32_t directory) noexcept;

  bool IsOverrun() const noexcept { return m_overrun; }
  std::span<const std::uint8_t> Bytes() const noexcept { return m_buffer.Bytes().first(m_nPos); }

 private:
  // The bytes at a position, or none beyond the capacity: the one place that knows the bounds.
  std::span<std::uint8_t> Room(std::uint32_t position, std::size_t count) noexcept;

  ByteBuffer m_buffer;
  std::uint32_t m_nPos = 0;
  bool m_overrun = false;
};

#endif  // LUMIDEX_WRITER_TIFFBLOCK_H_
