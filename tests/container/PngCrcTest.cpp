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

}  // namespace
}  // namespace test
