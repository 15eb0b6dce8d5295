#include <gtest/gtest.h>

#include "container/PngCrc.h"
#include "support/Bytes.h"

namespace test {
namespace {

// The check value that the polynomial is published with.
TEST(PngCrc, OfTheDigits) {
  EXPECT_EQ(PngCrc(Text("123456789")), 0xCBF43926U);
}

// The four bytes that every PNG file ends with.
TEST(PngCrc, OfTheEndChunk) {
  EXPECT_EQ(PngCrc(Text("IEND")), 0xAE426082U);
}

TEST(PngCrc, OfNothing) {
  EXPECT_EQ(PngCrc({}), 0U);
}

TEST(PngCrc, OfZeros) {
  EXPECT_EQ(PngCrc(Zeros(32)), 0x190A55ADU);
}

TEST(PngCrc, OfAscendingBytes) {
  Bytes bytes;
  for (std::uint8_t value = 0; value < 32; ++value) bytes.push_back(value);
  EXPECT_EQ(PngCrc(bytes), 0x91267E8AU);
}

// One bit after the other, as the polynomial is defined.
std::uint32_t SlowCrc(const Bytes& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t value : bytes) {
    crc ^= value;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
  }
  return crc ^ 0xFFFFFFFF;
}

TEST(PngCrc, OfEveryLength) {
  Bytes bytes;
  for (std::uint32_t length = 0; length < 100; ++length) {
    EXPECT_EQ(PngCrc(bytes), SlowCrc(bytes)) << length;
    bytes.push_back(static_cast<std::uint8_t>(length * 167 + 13));
  }
}

}  // namespace
}  // namespace test
