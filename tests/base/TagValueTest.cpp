#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "base/TagValue.h"
#include "base/TypeSizes.h"
#include "support/Bytes.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr ByteOrder kII = ByteOrder::LittleEndian;
constexpr ByteOrder kMM = ByteOrder::BigEndian;
constexpr std::uint32_t kTag = 0x1234;

// What m_fnStoreTagValue makes of a file that holds nothing but a value.
class StoredValue {
 public:
  StoredValue(const Bytes& file, std::uint32_t type, std::uint32_t count, ByteOrder order = kII)
      : m_file(file) {
    EXPECT_TRUE(m_stream.Open(m_file.Path(), LMD_W("rb")));
    Store(0, type, count, order);
  }
  StoredValue(const StoredValue&) = delete;
  StoredValue& operator=(const StoredValue&) = delete;

  void Store(std::uint64_t position, std::uint32_t type, std::uint32_t count, ByteOrder order) {
    m_stream.Seek(position);
    m_fnStoreTagValue(m_entry, kTag, m_stream, type, count, order, m_pool);
  }

  // "type count size hex"
  std::string Text() const {
    return std::to_string(m_entry.m_nType) + " " + std::to_string(m_entry.m_nCount) + " " +
           std::to_string(m_entry.m_nSize) + " " + Hex(TagBytes(m_entry));
  }

  const TagEntry& Entry() const { return m_entry; }
  FileStream& Stream() { return m_stream; }

 private:
  TempFile m_file;
  FileStream m_stream;
  NodePool m_pool;
  TagEntry m_entry;
};

struct Row {
  const char* name;
  std::uint32_t type;
  std::uint32_t count;
  Bytes littleEndian;
  Bytes bigEndian;
  const char* expected;
};

void PrintTo(const Row& row, std::ostream* stream) {
  *stream << row.name;
}

std::string RowName(const testing::TestParamInfo<Row>& test) {
  return test.param.name;
}

class TagValueOfType : public testing::TestWithParam<Row> {};

TEST_P(TagValueOfType, IsStoredInHostOrder) {
  const Row& row = GetParam();
  EXPECT_EQ(StoredValue(row.littleEndian, row.type, row.count, kII).Text(), row.expected);
  EXPECT_EQ(StoredValue(row.bigEndian, row.type, row.count, kMM).Text(), row.expected);
}

TEST_P(TagValueOfType, KeepsItsTag) {
  const Row& row = GetParam();
  EXPECT_EQ(StoredValue(row.bigEndian, row.type, row.count, kMM).Entry().m_nTag, kTag);
}

class TagValueInsideAFile : public testing::TestWithParam<Row> {};

// The bytes that follow a value are no part of it.
TEST_P(TagValueInsideAFile, IsStoredAlike) {
  const Row& row = GetParam();
  const Bytes others(64, 0xA5);
  EXPECT_EQ(StoredValue(Join({row.littleEndian, others}), row.type, row.count, kII).Text(),
            row.expected);
  EXPECT_EQ(StoredValue(Join({row.bigEndian, others}), row.type, row.count, kMM).Text(),
            row.expected);
}

const Bytes kRaw = {0x81, 0x02, 0x03, 0x04, 0x05};
const Bytes kLittle = {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF};
const Bytes kBig = {0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 0xFF, 0xFF, 0xFF, 0xFE};

// clang-format off
// At the edge of what an entry holds itself, and behind it.
constexpr const char* kTextOf31 =
    "2 31 32 6161616161616161616161616161616161616161616161616161616161616100";
constexpr const char* kTextOf32 =
    "2 32 33 616161616161616161616161616161616161616161616161616161616161616100";

const auto kWholeValues = testing::Values(
    Row{"Byte",          1, 5, kRaw, kRaw, "1 5 5 8102030405"},
    Row{"SByteAsByte",   6, 5, kRaw, kRaw, "1 5 5 8102030405"},
    Row{"AsciiWithZero", 2, 4, {'a', 'b', 'c', 0}, {'a', 'b', 'c', 0}, "2 4 4 61626300"},
    Row{"AsciiWithout",  2, 3, {'a', 'b', 'c', 0}, {'a', 'b', 'c', 0}, "2 3 4 61626300"},
    Row{"AsciiZeroInside", 2, 3, {'a', 0, 'c'}, {'a', 0, 'c'}, "2 3 4 61006300"},
    Row{"Short",         3, 2, {1, 2, 0xFF, 0xFE}, {2, 1, 0xFE, 0xFF}, "3 2 4 0102fffe"},
    Row{"SShort",        8, 2, {1, 2, 0xFF, 0xFE}, {2, 1, 0xFE, 0xFF}, "8 2 4 0102fffe"},
    Row{"Long",          4, 2, kLittle, kBig, "4 2 8 0100000002000000"},
    Row{"SLong",         9, 4, kLittle, kBig, "9 4 16 010000000200000003000000feffffff"},
    Row{"Ifd",          13, 1, kLittle, kBig, "13 1 4 01000000"},
    Row{"Rational",      5, 1, kLittle, kBig, "5 1 8 0100000002000000"},
    Row{"Rationals",     5, 2, kLittle, kBig, "5 2 16 010000000200000003000000feffffff"},
    Row{"SRational",    10, 2, kLittle, kBig, "10 2 16 010000000200000003000000feffffff"},
    Row{"Undefined",     7, 5, kRaw, kRaw, "7 5 5 8102030405"},
    Row{"FloatAsOneByte", 11, 1, kRaw, kRaw, "7 1 1 81"},
    Row{"FloatsAsBytes", 11, 3, kRaw, kRaw, "7 3 3 810203"},
    Row{"DoubleAsOneByte", 12, 1, kRaw, kRaw, "7 1 1 81"},
    Row{"Type0",         0, 3, kRaw, kRaw, "7 3 3 810203"},
    Row{"Type14",       14, 3, kRaw, kRaw, "7 3 3 810203"},
    Row{"Type15",       15, 3, kRaw, kRaw, "7 3 3 810203"},
    Row{"Type162IsUnknownInAFile", 162, 3, kRaw, kRaw, "7 3 3 810203"},
    Row{"Type65535", 65535, 3, kRaw, kRaw, "7 3 3 810203"},
    Row{"TextOf31", 2, 31, Bytes(31, 'a'), Bytes(31, 'a'), kTextOf31},
    Row{"TextOf32", 2, 32, Bytes(32, 'a'), Bytes(32, 'a'), kTextOf32});

INSTANTIATE_TEST_SUITE_P(Types, TagValueOfType, kWholeValues, RowName);
INSTANTIATE_TEST_SUITE_P(Types, TagValueInsideAFile, kWholeValues, RowName);

INSTANTIATE_TEST_SUITE_P(
    CountOfZero, TagValueOfType,
    testing::Values(
        Row{"Byte",       1, 0, kRaw, kRaw, "1 0 0 "},
        Row{"AsciiIsOneZero", 2, 0, kRaw, kRaw, "2 0 1 00"},
        Row{"Short",      3, 0, kRaw, kRaw, "3 0 0 "},
        Row{"Long",       4, 0, kRaw, kRaw, "4 0 0 "},
        Row{"Rational",   5, 0, kRaw, kRaw, "5 0 0 "},
        Row{"SByte",      6, 0, kRaw, kRaw, "1 0 0 "},
        Row{"Undefined",  7, 0, kRaw, kRaw, "7 0 0 "},
        Row{"SShort",     8, 0, kRaw, kRaw, "8 0 0 "},
        Row{"SLong",      9, 0, kRaw, kRaw, "9 0 0 "},
        Row{"SRational", 10, 0, kRaw, kRaw, "10 0 0 "},
        Row{"Float",     11, 0, kRaw, kRaw, "7 0 0 "},
        Row{"Double",    12, 0, kRaw, kRaw, "7 0 0 "},
        Row{"Ifd",       13, 0, kRaw, kRaw, "13 0 0 "},
        Row{"Type14",    14, 0, kRaw, kRaw, "7 0 0 "}),
    RowName);

// The file ends inside the value: numbers that are cut are 0 as a whole, bytes that are missing are 0.
INSTANTIATE_TEST_SUITE_P(
    ShortRead, TagValueOfType,
    testing::Values(
        Row{"Bytes",      1, 4, {9, 8}, {9, 8}, "1 4 4 09080000"},
        Row{"Undefined",  7, 4, {9, 8}, {9, 8}, "7 4 4 09080000"},
        Row{"AsciiEndsInAMissingByte", 2, 4, {'a', 'b'}, {'a', 'b'}, "2 4 4 61620000"},
        Row{"AsciiOfNothing", 2, 3, {}, {}, "2 3 3 000000"},
        Row{"CutShort",   3, 2, {1, 2, 3}, {2, 1, 3}, "3 2 4 01020000"},
        Row{"CutSShort",  8, 1, {1}, {1}, "8 1 2 0000"},
        Row{"CutLong",    4, 2, {1, 2, 3, 4, 5, 6, 7}, {4, 3, 2, 1, 5, 6, 7},
            "4 2 8 0102030400000000"},
        Row{"CutSLong",   9, 1, {1, 2, 3}, {1, 2, 3}, "9 1 4 00000000"},
        Row{"CutIfd",    13, 1, {1, 2, 3}, {1, 2, 3}, "13 1 4 00000000"},
        Row{"CutDenominator", 5, 1, {1, 2, 3, 4, 5, 6}, {4, 3, 2, 1, 5, 6},
            "5 1 8 0102030400000000"},
        Row{"CutNumerator", 10, 1, {1, 2, 3}, {1, 2, 3}, "10 1 8 0000000000000000"},
        Row{"NothingAtAll", 4, 3, {}, {}, "4 3 12 000000000000000000000000"}),
    RowName);
// clang-format on

TEST(TagValue, RawTypesAreStoredUpTo65535Bytes) {
  for (const std::uint32_t type : {0U, 7U, 11U, 12U, 14U, 200U}) {
    const StoredValue value(Bytes(70000, 0x5A), type, 65535);
    EXPECT_EQ(value.Entry().m_nType, TYPE_UNDEFINED) << type;
    EXPECT_EQ(value.Entry().m_nCount, 65535U) << type;
    EXPECT_EQ(Bytes(TagBytes(value.Entry()).begin(), TagBytes(value.Entry()).end()),
              Bytes(65535, 0x5A));
  }
}

TEST(TagValue, MoreThan65535RawBytesAreNotStored) {
  for (const std::uint32_t type : {0U, 7U, 11U, 12U, 14U, 200U}) {
    const StoredValue value(Bytes(70000, 0x5A), type, 65536);
    EXPECT_EQ(value.Entry().m_nTag, kTag) << type;
    EXPECT_EQ(value.Entry().m_pData, nullptr) << type;
    EXPECT_EQ(value.Entry().m_nSize, 0U) << type;
  }
}

TEST(TagValue, OtherTypesHaveNoLimitOf65535) {
  const StoredValue bytes(Bytes(70000, 0x5A), TYPE_BYTE, 70000);
  EXPECT_EQ(bytes.Entry().m_nSize, 70000U);
  const StoredValue shorts(Bytes(140000, 0x5A), TYPE_SHORT, 70000);
  EXPECT_EQ(shorts.Entry().m_nSize, 140000U);
}

TEST(TagValue, SecondValueReplacesTheFirst) {
  StoredValue value({1, 2, 3, 4, 0xAA, 0xBB}, TYPE_LONG, 1);
  EXPECT_EQ(value.Text(), "4 1 4 01020304");
  value.Store(4, TYPE_SHORT, 1, kMM);
  EXPECT_EQ(value.Text(), "3 1 2 bbaa");
}

TEST(TagValue, ReplacedByTooManyRawBytesTheOldDataIsGone) {
  StoredValue value({1, 2, 3, 4}, TYPE_LONG, 1);
  value.Store(0, TYPE_UNDEFINED, 65536, kII);
  EXPECT_EQ(value.Entry().m_pData, nullptr);
  EXPECT_TRUE(TagBytes(value.Entry()).empty());
}

TEST(TagValue, ReadsFromTheStreamsPosition) {
  StoredValue value({1, 2, 3, 4, 5, 6}, TYPE_BYTE, 1);
  value.Store(2, TYPE_BYTE, 3, kII);
  EXPECT_EQ(value.Text(), "1 3 3 030405");
}

TEST(TagValue, HugeCountsEndWithoutData) {
  for (const std::uint32_t type : {1U, 2U, 3U, 4U, 5U, 8U, 9U, 10U, 13U}) {
    const StoredValue value({1, 2, 3, 4}, type, 0xFFFFFFFF);
    EXPECT_EQ(value.Entry().m_nTag, kTag) << type;
    EXPECT_EQ(value.Entry().m_pData, nullptr) << type;
  }
}

TEST(TagValue, BeyondTheBudgetHasItsSizeAndNoData) {
  for (const std::uint32_t type : {TYPE_ASCII, TYPE_BYTE}) {
    StoredValue value({'a', 'b', 'c', 'd'}, type, 1);
    ASSERT_TRUE(value.Stream().Budget().TakeBytes(kMaxStoredBytes - 2));
    value.Store(0, type, 4, kII);
    EXPECT_EQ(value.Entry().m_nCount, 4U) << type;
    EXPECT_EQ(value.Entry().m_nSize, type == TYPE_ASCII ? 5U : 4U) << type;
    EXPECT_EQ(value.Entry().m_pData, nullptr) << type;
  }
}

}  // namespace
}  // namespace test
