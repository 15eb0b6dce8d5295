#include <array>
#include <cstdint>

#include <gtest/gtest.h>

#include "base/TypeSizes.h"

namespace {

struct TypeRow {
  std::uint32_t type;
  std::uint32_t size;
};

// clang-format off
constexpr std::array kTypeRows = {
    TypeRow{0, 1},
    TypeRow{TYPE_BYTE, 1},
    TypeRow{TYPE_ASCII, 1},
    TypeRow{TYPE_SHORT, 2},
    TypeRow{TYPE_LONG, 4},
    TypeRow{TYPE_RATIONAL, 8},
    TypeRow{TYPE_SBYTE, 1},
    TypeRow{TYPE_UNDEFINED, 1},
    TypeRow{TYPE_SSHORT, 2},
    TypeRow{TYPE_SLONG, 4},
    TypeRow{TYPE_SRATIONAL, 8},
    TypeRow{TYPE_FLOAT, 4},
    TypeRow{TYPE_DOUBLE, 8},
    TypeRow{TYPE_IFD, 4},
    TypeRow{14, 1},
    TypeRow{15, 1},
    TypeRow{TYPE_WIDE_TEXT, 1},
    TypeRow{0xFFFF, 1},
    TypeRow{0xFFFFFFFF, 1},
};
// clang-format on

TEST(TypeSizes, EveryTypeHasItsSizeAndUnknownTypesCountOneByte) {
  for (const TypeRow& row : kTypeRows) EXPECT_EQ(TypeSize(row.type), row.size) << row.type;
}

TEST(TypeSizes, TypeNumbersAreThoseOfTheFormat) {
  EXPECT_EQ(TYPE_BYTE, 1U);
  EXPECT_EQ(TYPE_UNDEFINED, 7U);
  EXPECT_EQ(TYPE_SRATIONAL, 10U);
  EXPECT_EQ(TYPE_DOUBLE, 12U);
  EXPECT_EQ(TYPE_IFD, 13U);
  EXPECT_EQ(TYPE_WIDE_TEXT, 162U);
}

TEST(TypeSizes, ProductDoesNotWrapAt32Bits) {
  EXPECT_EQ(ValueSize(TYPE_RATIONAL, 0x20000000), 0x100000000U);
  EXPECT_EQ(ValueSize(TYPE_LONG, 0x40000000), 0x100000000U);
  EXPECT_EQ(ValueSize(TYPE_SHORT, 0x80000000), 0x100000000U);
  EXPECT_EQ(ValueSize(TYPE_DOUBLE, 0xFFFFFFFF), 0x7FFFFFFF8U);
}

TEST(TypeSizes, CountOfZeroTakesNoBytes) {
  EXPECT_EQ(ValueSize(TYPE_DOUBLE, 0), 0U);
}

}  // namespace
