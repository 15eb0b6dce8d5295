#include <string>

#include <gtest/gtest.h>

#include "support/Bytes.h"
#include "writer/FieldValue.h"

namespace test {
namespace {

// 1, 2, 3, ...
Bytes Counting(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i + 1);
  return bytes;
}

std::uint32_t CountOf(TagType type, std::size_t size) {
  const Bytes bytes = Counting(size);
  return FieldValue{type, bytes}.count;
}

bool InPlace(TagType type, std::size_t size) {
  const Bytes bytes = Counting(size);
  return FieldValue{type, bytes}.IsInPlace();
}

std::string StoredHex(TagType type, std::size_t size) {
  const Bytes bytes = Counting(size);
  const FieldValue value = {type, bytes};
  Bytes out(value.StoredSize());
  value.Store(out);
  return Hex(out);
}

TEST(FieldValue, CountsWholeValues) {
  for (const TagType type : {TYPE_BYTE, TYPE_ASCII, TYPE_UNDEFINED}) {
    EXPECT_EQ(CountOf(type, 1), 1U);
    EXPECT_EQ(CountOf(type, 5), 5U);
  }
  for (const TagType type : {TYPE_SHORT, TYPE_SSHORT, TYPE_LONG, TYPE_SLONG}) {
    EXPECT_EQ(CountOf(type, 3), 0U);
    EXPECT_EQ(CountOf(type, 4), 1U);
    EXPECT_EQ(CountOf(type, 7), 1U);
    EXPECT_EQ(CountOf(type, 8), 2U);
  }
  for (const TagType type : {TYPE_RATIONAL, TYPE_SRATIONAL}) {
    EXPECT_EQ(CountOf(type, 7), 0U);
    EXPECT_EQ(CountOf(type, 8), 1U);
    EXPECT_EQ(CountOf(type, 15), 1U);
    EXPECT_EQ(CountOf(type, 16), 2U);
  }
}

TEST(FieldValue, UpToFourStoredBytesStandInPlace) {
  for (const TagType type : {TYPE_BYTE, TYPE_ASCII, TYPE_UNDEFINED}) {
    EXPECT_TRUE(InPlace(type, 1));
    EXPECT_TRUE(InPlace(type, 4));
    EXPECT_FALSE(InPlace(type, 5));
  }
  for (const TagType type : {TYPE_SHORT, TYPE_SSHORT}) {
    EXPECT_TRUE(InPlace(type, 4));
    EXPECT_TRUE(InPlace(type, 8));
    EXPECT_FALSE(InPlace(type, 12));
  }
  for (const TagType type : {TYPE_LONG, TYPE_SLONG}) {
    EXPECT_TRUE(InPlace(type, 4));
    EXPECT_FALSE(InPlace(type, 8));
  }
  EXPECT_FALSE(InPlace(TYPE_RATIONAL, 8));
  EXPECT_FALSE(InPlace(TYPE_SRATIONAL, 8));
}

// A single value always stands in its entry, where a reader looks for it.
TEST(FieldValue, BytesBehindTheLastWholeValueDoNotCount) {
  EXPECT_TRUE(InPlace(TYPE_LONG, 7));
  EXPECT_EQ(StoredHex(TYPE_LONG, 7), "01020304");
  EXPECT_EQ(StoredHex(TYPE_SHORT, 11), "01020506");
  EXPECT_EQ(StoredHex(TYPE_RATIONAL, 15), "0102030405060708");
}

TEST(FieldValue, ShortsAreTheLowHalvesOfTheirSlots) {
  EXPECT_EQ(StoredHex(TYPE_SHORT, 4), "0102");
  EXPECT_EQ(StoredHex(TYPE_SHORT, 12), "01020506090a");
  EXPECT_EQ(StoredHex(TYPE_SSHORT, 8), "01020506");
}

TEST(FieldValue, OtherValuesAreCopied) {
  EXPECT_EQ(StoredHex(TYPE_BYTE, 2), "0102");
  EXPECT_EQ(StoredHex(TYPE_ASCII, 5), "0102030405");
  EXPECT_EQ(StoredHex(TYPE_UNDEFINED, 3), "010203");
  EXPECT_EQ(StoredHex(TYPE_LONG, 8), "0102030405060708");
  EXPECT_EQ(StoredHex(TYPE_SRATIONAL, 8), "0102030405060708");
}

}  // namespace
}  // namespace test
