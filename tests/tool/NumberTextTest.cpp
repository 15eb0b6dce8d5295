#include <gtest/gtest.h>

#include "write/NumberText.h"

namespace {

constexpr tool::NumberRange kUnsigned = {0, 0xFFFFFFFF};
constexpr tool::NumberRange kSigned = {-0x80000000LL, 0x7FFFFFFF};

std::string Whole(std::string_view text, const tool::NumberRange& range = kUnsigned) {
  const auto value = tool::ParseWhole(text, range);
  return value ? std::to_string(*value) : "none";
}

std::string Fraction(std::string_view text, const tool::NumberRange& range = kUnsigned) {
  const auto value = tool::ParseFraction(text, range);
  return value ? std::to_string(value->numerator) + "/" + std::to_string(value->denominator)
               : "none";
}

TEST(NumberText, WholeNumberIsDigitsWithASign) {
  EXPECT_EQ(Whole("0"), "0");
  EXPECT_EQ(Whole("+12"), "12");
  EXPECT_EQ(Whole("007"), "7");
  EXPECT_EQ(Whole("-12", kSigned), "-12");
  for (const char* text : {"", "-", "+", "1.0", "1e3", "0x10", " 1", "1 ", "+-1", "1,5", "a"}) {
    EXPECT_EQ(Whole(text, kSigned), "none") << text;
  }
}

TEST(NumberText, WholeNumberStaysInItsRange) {
  EXPECT_EQ(Whole("4294967295"), "4294967295");
  EXPECT_EQ(Whole("4294967296"), "none");
  EXPECT_EQ(Whole("-1"), "none");
  EXPECT_EQ(Whole("-0"), "0");
  EXPECT_EQ(Whole("99999999999999999999"), "none");
  EXPECT_EQ(Whole("2147483647", kSigned), "2147483647");
  EXPECT_EQ(Whole("2147483648", kSigned), "none");
  EXPECT_EQ(Whole("-2147483648", kSigned), "-2147483648");
  EXPECT_EQ(Whole("-2147483649", kSigned), "none");
}

TEST(NumberText, FractionStaysAsItStands) {
  EXPECT_EQ(Fraction("28/10"), "28/10");
  EXPECT_EQ(Fraction("1 / 250"), "1/250");
  EXPECT_EQ(Fraction("0/0"), "0/0");
  EXPECT_EQ(Fraction("4294967295/4294967295"), "4294967295/4294967295");
  EXPECT_EQ(Fraction("-1/3", kSigned), "-1/3");
  EXPECT_EQ(Fraction("+1/3", kSigned), "1/3");
}

TEST(NumberText, DecimalsBecomeTenths) {
  EXPECT_EQ(Fraction("2.8"), "28/10");
  EXPECT_EQ(Fraction("50"), "50/1");
  EXPECT_EQ(Fraction("50.00"), "5000/100");
  EXPECT_EQ(Fraction(".5"), "5/10");
  EXPECT_EQ(Fraction("5."), "5/1");
  EXPECT_EQ(Fraction("-0.25", kSigned), "-25/100");
  EXPECT_EQ(Fraction("+0.25", kSigned), "25/100");
}

TEST(NumberText, WhatIsNoFractionIsNone) {
  for (const char* text : {"", ".", "-", "/", "1/", "/2", "1/-2", "1/+2", "1/2/3", "1.5/2", "1..2",
                           "1.2.3", "1,5", "1e3", "nan", "inf", "0x10", "- 1"}) {
    EXPECT_EQ(Fraction(text, kSigned), "none") << text;
  }
  EXPECT_EQ(Fraction("-0.5"), "none");
  EXPECT_EQ(Fraction("-1/2"), "none");
  EXPECT_EQ(Fraction("4294967296"), "none");
  EXPECT_EQ(Fraction("1/4294967296"), "none");
  EXPECT_EQ(Fraction("2147483648.0", kSigned), "none");
}

// A tenth decimal does not fit beside a denominator of 10 to the ninth.
TEST(NumberText, DecimalsWithoutRoomAreRounded) {
  EXPECT_EQ(Fraction("3.14159265358979"), "3141592654/1000000000");
  EXPECT_EQ(Fraction("3.14159265358979", kSigned), "314159265/100000000");
  EXPECT_EQ(Fraction("0.12345678949"), "123456789/1000000000");
  EXPECT_EQ(Fraction("2.9999999999"), "3000000000/1000000000");
  EXPECT_EQ(Fraction("4294967295.9"), "4294967295/1");
  EXPECT_EQ(Fraction("-2147483648.9", kSigned), "-2147483648/1");
}

TEST(NumberText, RoundingNeverMakesAZero) {
  EXPECT_EQ(Fraction("0.0000000001"), "none");
  EXPECT_EQ(Fraction("0.0000000005"), "1/1000000000");
  EXPECT_EQ(Fraction("0.0000000000"), "0/1000000000");
}

TEST(NumberText, PartsLoseTheBlanksAround) {
  using Parts = std::vector<std::string_view>;
  EXPECT_EQ(tool::SplitParts("1, 2 ,3", ','), (Parts{"1", "2", "3"}));
  EXPECT_EQ(tool::SplitParts(" 1 2 ", ','), Parts{"1 2"});
  EXPECT_EQ(tool::SplitParts("", ','), Parts{""});
  EXPECT_EQ(tool::SplitParts("1,,", ','), (Parts{"1", "", ""}));
  EXPECT_EQ(tool::TrimBlanks("   "), "");
}

}  // namespace
