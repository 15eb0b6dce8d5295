#ifndef LUMIDEX_FUZZ_FUZZINPUT_H_
#define LUMIDEX_FUZZ_FUZZINPUT_H_

// The bytes of one run: numbers that steer it in front, little-endian, then what is parsed. What an
// input does not have is 0.

#include <algorithm>
#include <cstdint>
#include <span>

#include "base/ByteCursor.h"

namespace fuzz {

class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size)
      : m_cursor({data, size}, ByteOrder::LittleEndian) {}

  std::uint8_t TakeU8() { return m_cursor.ReadU8(); }
  std::uint16_t TakeU16() { return m_cursor.ReadU16(); }
  std::uint32_t TakeU32() { return m_cursor.ReadU32(); }

  // At most `count` of the bytes that are left, or all of them.
  std::span<const std::uint8_t> Take(std::size_t count) {
    return m_cursor.ReadBytes(std::min(count, m_cursor.Remaining()));
  }
  std::span<const std::uint8_t> TakeRest() { return Take(m_cursor.Remaining()); }

 private:
  ByteCursor m_cursor;
};

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_FUZZINPUT_H_
