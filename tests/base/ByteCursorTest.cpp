#include <gtest/gtest.h>

#include "base/ByteCursor.h"
#include "support/Bytes.h"

namespace test {
namespace {

TEST(ByteCursor, ReadsNumbersInBigEndianOrder) {
  const Bytes bytes = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  EXPECT_EQ(cursor.ReadU8(), 0x01U);
  EXPECT_EQ(cursor.ReadU16(), 0x2345U);
  EXPECT_EQ(cursor.ReadU32(), 0x6789ABCDU);
  EXPECT_EQ(cursor.Position(), 7U);
  EXPECT_EQ(cursor.Remaining(), 0U);
  EXPECT_FALSE(cursor.WasShort());
}

TEST(ByteCursor, ReadsNumbersInLittleEndianOrder) {
  const Bytes bytes = {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD};
  ByteCursor cursor(bytes, ByteOrder::LittleEndian);
  EXPECT_EQ(cursor.ReadU8(), 0x01U);
  EXPECT_EQ(cursor.ReadU16(), 0x4523U);
  EXPECT_EQ(cursor.ReadU32(), 0xCDAB8967U);
  EXPECT_FALSE(cursor.WasShort());
}

TEST(ByteCursor, CutNumberIsZeroAsAWhole) {
  const Bytes bytes = {0xFF, 0xFF, 0xFF};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  EXPECT_EQ(cursor.ReadU32(), 0U);
  EXPECT_TRUE(cursor.WasShort());
  EXPECT_EQ(cursor.Remaining(), 0U);
}

TEST(ByteCursor, CutShortIsZeroAsAWhole) {
  const Bytes bytes = {0xFF};
  ByteCursor cursor(bytes, ByteOrder::LittleEndian);
  EXPECT_EQ(cursor.ReadU16(), 0U);
  EXPECT_TRUE(cursor.WasShort());
}

TEST(ByteCursor, EmptyBufferReadsZeros) {
  ByteCursor cursor({}, ByteOrder::BigEndian);
  EXPECT_FALSE(cursor.WasShort());
  EXPECT_EQ(cursor.ReadU8(), 0U);
  EXPECT_TRUE(cursor.WasShort());
}

TEST(ByteCursor, StaysShortAfterLaterGoodReads) {
  const Bytes bytes = {0x11, 0x22};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  EXPECT_EQ(cursor.ReadU32(), 0U);
  cursor.Seek(0);
  EXPECT_EQ(cursor.ReadU16(), 0x1122U);
  EXPECT_TRUE(cursor.WasShort());
}

TEST(ByteCursor, SeekMovesFromTheStart) {
  const Bytes bytes = {1, 2, 3, 4};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  cursor.Seek(3);
  EXPECT_EQ(cursor.ReadU8(), 4U);
  cursor.Seek(1);
  EXPECT_EQ(cursor.ReadU8(), 2U);
}

TEST(ByteCursor, SeekToTheEndIsNotShort) {
  const Bytes bytes = {1, 2};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  cursor.Seek(2);
  EXPECT_FALSE(cursor.WasShort());
  EXPECT_EQ(cursor.Remaining(), 0U);
}

TEST(ByteCursor, SeekBeyondTheEndIsShort) {
  const Bytes bytes = {1, 2};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  cursor.Seek(3);
  EXPECT_TRUE(cursor.WasShort());
  EXPECT_EQ(cursor.Position(), 2U);
}

TEST(ByteCursor, SkipOfTheGreatestCountDoesNotWrap) {
  const Bytes bytes = {1, 2, 3};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  cursor.Skip(1);
  cursor.Skip(static_cast<std::size_t>(-1));
  EXPECT_TRUE(cursor.WasShort());
  EXPECT_EQ(cursor.Position(), 3U);
}

TEST(ByteCursor, BytesAreGivenWholeOrNotAtAll) {
  const Bytes bytes = {1, 2, 3};
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  EXPECT_EQ(Hex(cursor.ReadBytes(2)), "0102");
  EXPECT_FALSE(cursor.WasShort());
  EXPECT_TRUE(cursor.ReadBytes(2).empty());
  EXPECT_TRUE(cursor.WasShort());
}

}  // namespace
}  // namespace test
