#include "container/PngCrc.h"

#include <array>

#include "base/ByteOrder.h"

namespace {

using CrcTable = std::array<std::uint32_t, 256>;

// Bytes that are taken at a time: their lookups do not wait for each other, and only those of the
// first four wait for the step before.
constexpr std::size_t kStep = 16;

// For each byte its remainder by the reflected polynomial; in the table `n` the remainder when `n`
// zero bytes follow it.
consteval std::array<CrcTable, kStep> MakeTables() {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::array<CrcTable, kStep> tables = {};
  for (std::uint32_t index = 0; index < tables[0].size(); ++index) {
    std::uint32_t remainder = index;
    for (CrcTable& table : tables) {
      for (int bit = 0; bit < 8; ++bit) {
        remainder = remainder >> 1 ^ ((remainder & 1) != 0 ? kPolynomial : 0);
      }
      table[index] = remainder;
    }
  }
  return tables;
}

constexpr std::array<CrcTable, kStep> kTables = MakeTables();

std::uint32_t AddByte(std::uint32_t crc, std::uint8_t next) noexcept {
  return crc >> 8 ^ kTables[0][(crc ^ next) & 0xFF];
}

// The remainder of the four bytes of a word when `zeros` zero bytes follow them.
std::uint32_t OfWord(std::uint32_t word, std::size_t zeros) noexcept {
  return kTables[zeros + 3][word & 0xFF] ^ kTables[zeros + 2][word >> 8 & 0xFF] ^
         kTables[zeros + 1][word >> 16 & 0xFF] ^ kTables[zeros][word >> 24];
}

// The remainder so far counts as part of the first word.
std::uint32_t AddStep(std::uint32_t crc, std::span<const std::uint8_t> bytes) noexcept {
  const auto word = [bytes](std::size_t at) {
    return LoadU32(bytes.subspan(at), ByteOrder::LittleEndian);
  };
  return OfWord(word(12), 0) ^ OfWord(word(8), 4) ^ OfWord(word(4), 8) ^ OfWord(word(0) ^ crc, 12);
}

}  // namespace

std::uint32_t PngCrc(std::span<const std::uint8_t> bytes) noexcept {
  constexpr std::uint32_t kAllBits = 0xFFFFFFFF;
  std::uint32_t crc = kAllBits;
  for (; bytes.size() >= kStep; bytes = bytes.subspan(kStep)) crc = AddStep(crc, bytes);
  for (const std::uint8_t next : bytes) crc = AddByte(crc, next);
  return crc ^ kAllBits;
}
