#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/Numbers.h"

namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

TEST(ParseInteger, ReadsDigitsUpToTheFirstOtherCharacter) {
  EXPECT_EQ(ParseInteger("400"), 400);
  EXPECT_EQ(ParseInteger("400 800"), 400);
  EXPECT_EQ(ParseInteger("12abc"), 12);
  EXPECT_EQ(ParseInteger("7.9"), 7);
  EXPECT_EQ(ParseInteger("1e3"), 1);
  EXPECT_EQ(ParseInteger("0x1F"), 0);
  EXPECT_EQ(ParseInteger("007"), 7);
  EXPECT_EQ(ParseInteger(std::string_view("12\0"
                                          "34",
                                          5)),
            12);
}

TEST(ParseInteger, SkipsBlanksInFrontAndTakesOneSign) {
  EXPECT_EQ(ParseInteger(" \t\n\v\f\r42"), 42);
  EXPECT_EQ(ParseInteger("+5"), 5);
  EXPECT_EQ(ParseInteger("  -5"), -5);
  EXPECT_EQ(ParseInteger("- 5"), 0);
  EXPECT_EQ(ParseInteger("+-5"), 0);
  EXPECT_EQ(ParseInteger("-+5"), 0);
  EXPECT_EQ(ParseInteger("--5"), 0);
  EXPECT_EQ(ParseInteger("\xA0"
                         "5"),
            0);
}

TEST(ParseInteger, GivesZeroWithoutDigits) {
  EXPECT_EQ(ParseInteger(""), 0);
  EXPECT_EQ(ParseInteger(std::string_view()), 0);
  EXPECT_EQ(ParseInteger("   "), 0);
  EXPECT_EQ(ParseInteger("-"), 0);
  EXPECT_EQ(ParseInteger("abc"), 0);
  EXPECT_EQ(ParseInteger("/5"), 0);
}

TEST(ParseInteger, SaturatesAt32Bits) {
  EXPECT_EQ(ParseInteger("2147483647"), kMax);
  EXPECT_EQ(ParseInteger("2147483648"), kMax);
  EXPECT_EQ(ParseInteger("4294967295"), kMax);
  EXPECT_EQ(ParseInteger("4294967296"), kMax);
  EXPECT_EQ(ParseInteger("99999999999999999999999"), kMax);
  EXPECT_EQ(ParseInteger("-2147483647"), -kMax);
  EXPECT_EQ(ParseInteger("-2147483648"), kMin);
  EXPECT_EQ(ParseInteger("-2147483649"), kMin);
  EXPECT_EQ(ParseInteger("-99999999999999999999999"), kMin);
  EXPECT_EQ(ParseInteger("00000000000000000000000012"), 12);
}

TEST(ParseDecimal, ReadsFractionAndExponent) {
  EXPECT_EQ(ParseDecimal("12.5"), 12.5);
  EXPECT_EQ(ParseDecimal("5."), 5.0);
  EXPECT_EQ(ParseDecimal(".5"), 0.5);
  EXPECT_EQ(ParseDecimal("1e3"), 1000.0);
  EXPECT_EQ(ParseDecimal("1E+3"), 1000.0);
  EXPECT_EQ(ParseDecimal("25e-2"), 0.25);
  EXPECT_EQ(ParseDecimal("0.1"), 0.1);
  EXPECT_EQ(ParseDecimal("350.25 degrees"), 350.25);
}

TEST(ParseDecimal, SkipsBlanksInFrontAndTakesOneSign) {
  EXPECT_EQ(ParseDecimal(" \t\n\v\f\r-12.5"), -12.5);
  EXPECT_EQ(ParseDecimal("+12.5"), 12.5);
  EXPECT_EQ(ParseDecimal("-.5"), -0.5);
  EXPECT_EQ(ParseDecimal("+-1"), 0.0);
  EXPECT_EQ(ParseDecimal("--1"), 0.0);
  EXPECT_EQ(ParseDecimal("- 1"), 0.0);
  EXPECT_TRUE(std::signbit(ParseDecimal("-0")));
}

TEST(ParseDecimal, EndsAtTheFirstCharacterOutsideTheNumber) {
  EXPECT_EQ(ParseDecimal("1.5.5"), 1.5);
  EXPECT_EQ(ParseDecimal("1,5"), 1.0);
  EXPECT_EQ(ParseDecimal("1e"), 1.0);
  EXPECT_EQ(ParseDecimal("1e+"), 1.0);
  EXPECT_EQ(ParseDecimal("1e+-2"), 1.0);
  EXPECT_EQ(ParseDecimal("2 e3"), 2.0);
}

TEST(ParseDecimal, TakesOnlyDecimalDigitsForNumbers) {
  EXPECT_EQ(ParseDecimal("0x10"), 0.0);
  EXPECT_EQ(ParseDecimal("inf"), 0.0);
  EXPECT_EQ(ParseDecimal("-infinity"), 0.0);
  EXPECT_EQ(ParseDecimal("nan"), 0.0);
  EXPECT_EQ(ParseDecimal("NAN(1)"), 0.0);
  EXPECT_EQ(ParseDecimal(""), 0.0);
  EXPECT_EQ(ParseDecimal("."), 0.0);
  EXPECT_EQ(ParseDecimal("-."), 0.0);
  EXPECT_EQ(ParseDecimal(".e5"), 0.0);
  EXPECT_EQ(ParseDecimal("e5"), 0.0);
  EXPECT_EQ(ParseDecimal("abc"), 0.0);
}

TEST(ParseDecimal, TurnsWhatIsTooLargeIntoAnInfinity) {
  EXPECT_EQ(ParseDecimal("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(ParseDecimal("1e309"), HUGE_VAL);
  EXPECT_EQ(ParseDecimal("-1e309"), -HUGE_VAL);
  EXPECT_EQ(ParseDecimal("0.0018e312"), HUGE_VAL);
  EXPECT_EQ(ParseDecimal("1e99999999999999999999"), HUGE_VAL);
  EXPECT_EQ(ParseDecimal("1" + std::string(400, '0')), HUGE_VAL);
  EXPECT_EQ(ParseDecimal("1" + std::string(400, '0') + ".5e5"), HUGE_VAL);
}

TEST(ParseDecimal, TurnsWhatIsTooSmallIntoZero) {
  EXPECT_EQ(ParseDecimal("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(ParseDecimal("1e-400"), 0.0);
  EXPECT_TRUE(std::signbit(ParseDecimal("-1e-400")));
  EXPECT_EQ(ParseDecimal("1000e-400"), 0.0);
  EXPECT_EQ(ParseDecimal("1e-99999999999999999999"), 0.0);
  EXPECT_EQ(ParseDecimal("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(ParseDecimal("0e99999999999999999999"), 0.0);
}

// Halfway cases that a conversion through rounded intermediate values gets wrong.
TEST(ParseDecimal, RoundsToTheNearestDouble) {
  EXPECT_EQ(ParseDecimal("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(ParseDecimal("9007199254740993.00000000000000000000000001"), 9007199254740994.0);
  EXPECT_EQ(ParseDecimal("9007199254740995"), 9007199254740996.0);
}

TEST(FormatOneDecimal, PrintsOneDigitAfterThePoint) {
  EXPECT_EQ(FormatOneDecimal(0.0), "0.0");
  EXPECT_EQ(FormatOneDecimal(-0.0), "-0.0");
  EXPECT_EQ(FormatOneDecimal(24.0), "24.0");
  EXPECT_EQ(FormatOneDecimal(-2.5), "-2.5");
  EXPECT_EQ(FormatOneDecimal(4294967296.0), "4294967296.0");
}

TEST(FormatOneDecimal, RoundsTheExactValueAndTiesToEven) {
  EXPECT_EQ(FormatOneDecimal(2.75), "2.8");
  EXPECT_EQ(FormatOneDecimal(2.25), "2.2");
  EXPECT_EQ(FormatOneDecimal(0.35), "0.3");  // just below
  EXPECT_EQ(FormatOneDecimal(0.05), "0.1");  // just above
  EXPECT_EQ(FormatOneDecimal(9.96), "10.0");
}

TEST(FormatOneDecimal, NamesWhatIsNoFiniteNumber) {
  EXPECT_EQ(FormatOneDecimal(std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(FormatOneDecimal(-std::numeric_limits<double>::quiet_NaN()), "nan");
  EXPECT_EQ(FormatOneDecimal(HUGE_VAL), "inf");
  EXPECT_EQ(FormatOneDecimal(-HUGE_VAL), "-inf");
}

TEST(FormatOneDecimal, PrintsTheLargestNumberInFull) {
  const std::string text = FormatOneDecimal(-std::numeric_limits<double>::max());
  EXPECT_EQ(text.size(), 312U);  // sign, 309 digits, point, digit
  EXPECT_EQ(text.substr(0, 9), "-17976931");
  EXPECT_EQ(text.substr(310), ".0");
}

class CommaLocale : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"de_DE.UTF-8", "de_DE", "German_Germany.1252", "fr_FR.UTF-8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',')
        return;
    }
    GTEST_SKIP() << "no locale with a decimal comma here";
  }

  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(CommaLocale, ChangesNoNumber) {
  EXPECT_EQ(ParseDecimal("12.5"), 12.5);
  EXPECT_EQ(ParseDecimal("12,5"), 12.0);
  EXPECT_EQ(FormatOneDecimal(1234.5), "1234.5");
}

}  // namespace
