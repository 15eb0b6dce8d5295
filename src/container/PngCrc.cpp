#include "container/PngCrc.h"

#include <array>

namespace {

using CrcTable = std::array<std::uint32_t, 256>;

// The remainder of each byte by the reflected polynomial.
consteval CrcTable MakeTable() {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  CrcTable table = {};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    std::uint32_t remainder = byte;
    for (int bit = 0; bit < 8; ++bit) {
      remainder = remainder >> 1 ^ ((remainder & 1) != 0 ? kPolynomial : 0);
    }
    table[byte] = remainder;
  }
  return table;
}

constexpr CrcTable kTable = MakeTable();

}  // namespace

std::uint32_t PngCrc(std::span<const std::uint8_t> bytes) noexcept {
  constexpr std::uint32_t kAllBits = 0xFFFFFFFF;
  std::uint32_t crc = kAllBits;
  for (const std::uint8_t next : bytes) crc = crc >> 8 ^ kTable[(crc ^ next) & 0xFF];
  return crc ^ kAllBits;
}
