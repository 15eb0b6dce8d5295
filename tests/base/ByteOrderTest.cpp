#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

#include "base/ByteOrder.h"
#include "support/Bytes.h"

namespace test {
namespace {

TEST(ByteOrder, StoresTheMostSignificantByteFirstOrLast) {
  Bytes bytes = Zeros(3);
  StoreU16(bytes, 0x0102, ByteOrder::BigEndian);
  EXPECT_EQ(Hex(bytes), "010200");
  StoreU16(bytes, 0x0102, ByteOrder::LittleEndian);
  EXPECT_EQ(Hex(bytes), "020100");

  bytes = Zeros(5);
  StoreU32(bytes, 0x01020304, ByteOrder::BigEndian);
  EXPECT_EQ(Hex(bytes), "0102030400");
  StoreU32(bytes, 0x01020304, ByteOrder::LittleEndian);
  EXPECT_EQ(Hex(bytes), "0403020100");
}

TEST(ByteOrder, LoadsWhatItStored) {
  for (const ByteOrder order : {ByteOrder::BigEndian, ByteOrder::LittleEndian}) {
    Bytes bytes = Zeros(4);
    StoreU16(bytes, 0xFE01, order);
    EXPECT_EQ(LoadU16(bytes, order), 0xFE01);
    StoreU32(bytes, 0xFEDC0201, order);
    EXPECT_EQ(LoadU32(bytes, order), 0xFEDC0201);
  }
}

template <class T>
class HostValueTest : public testing::Test {};
using Numbers = testing::Types<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                               std::uint32_t>;
TYPED_TEST_SUITE(HostValueTest, Numbers);

TYPED_TEST(HostValueTest, BytesThatAreNotThereAreZero) {
  constexpr std::size_t kSize = sizeof(TypeParam);
  Bytes bytes(2 * kSize, 0xFF);
  EXPECT_EQ(HostValue<TypeParam>(bytes, 1), static_cast<TypeParam>(-1));
  EXPECT_EQ(HostValue<TypeParam>(bytes, 2), 0);
  EXPECT_EQ(HostValue<TypeParam>({}), 0);

  // Of the second value only the first byte in memory is there.
  bytes.resize(kSize + 1);
  Bytes expected = Zeros(kSize);
  expected[0] = 0xFF;
  EXPECT_EQ(HostValue<TypeParam>(bytes, 1), HostValue<TypeParam>(expected));
}

}  // namespace
}  // namespace test
