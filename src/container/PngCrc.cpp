#include "container/PngCrc.h"

#include <array>

#include "base/ByteOrder.h"

namespace {

using CrcTable = std::array<std::uint32_t, 256>;

// Bytes that are taken at a time: their lookups do not wait for each other.
constexpr std::size_t kStep = 8;

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

// The remainder so far counts as part of the first four of eight bytes.
std::uint32_t AddStep(std::uint32_t crc, std::span<const std::uint8_t> bytes) noexcept {
  const std::uint32_t first = LoadU32(bytes, ByteOrder::LittleEndian) ^ crc;
  const std::uint32_t second = LoadU32(bytes.subspan(4), ByteOrder::LittleEndian);
  return kTables[7][first & 0xFF] ^ kTables[6][first >> 8 & 0xFF] ^ kTables[5][first >> 16 & 0xFF] ^
         kTables[4][first >> 24] ^  //
         kTables[3][second & 0xFF] ^ kTables[2][second >> 8 & 0xFF] ^
         kTables[1][second >> 16 & 0xFF] ^ kTables[0][second >> 24];
}

}  // namespace

std::uint32_t PngCrc(std::span<const std::uint8_t> bytes) noexcept {
  constexpr std::uint32_t kAllBits = 0xFFFFFFFF;
  std::uint32_t crc = kAllBits;
  for (; bytes.size() >= kStep; bytes = bytes.subspan(kStep)) crc = AddStep(crc, bytes);
  for (const std::uint8_t next : bytes) crc = AddByte(crc, next);
  return crc ^ kAllBits;
}
