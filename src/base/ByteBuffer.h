#ifndef LUMIDEX_BASE_BYTEBUFFER_H_
#define LUMIDEX_BASE_BYTEBUFFER_H_

// Bytes with one owner and without the cost of clearing them first.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

class ByteBuffer {
 public:
  ByteBuffer() = default;

  // Throws std::bad_alloc. The bytes are not initialised.
  explicit ByteBuffer(std::size_t size)
      : m_data(std::make_unique_for_overwrite<std::uint8_t[]>(size)), m_size(size) {}

  std::size_t Size() const noexcept { return m_size; }
  std::span<std::uint8_t> Bytes() noexcept { return {m_data.get(), m_size}; }
  std::span<const std::uint8_t> Bytes() const noexcept { return {m_data.get(), m_size}; }

  // Forgets the bytes after the first `size`; `size` is at most Size().
  void Shrink(std::size_t size) noexcept { m_size = size; }

 private:
  std::unique_ptr<std::uint8_t[]> m_data;
  std::size_t m_size = 0;
};

#endif  // LUMIDEX_BASE_BYTEBUFFER_H_
