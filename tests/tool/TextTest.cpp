#include <limits>

#include <gtest/gtest.h>

#include "Text.h"
#include "support/Bytes.h"

namespace {

TEST(Text, WellFormedUtf8StaysAsItIs) {
  EXPECT_EQ(tool::CleanUtf8("a\xC3\xBC\xE5\xB1\xB1\xF0\x9F\x98\x80z"),
            "a\xC3\xBC\xE5\xB1\xB1\xF0\x9F\x98\x80z");
}

struct IllFormed {
  const char* bytes;
  const char* clean;
};

// One U+FFFD (EF BF BD) for each maximal ill-formed part.
TEST(Text, IllFormedUtf8BecomesReplacementCharacters) {
  const IllFormed rows[] = {
      {"a\xFF"
       "b",
       "a\xEF\xBF\xBD"
       "b"},
      {"\xE2\x82x", "\xEF\xBF\xBDx"},
      {"\xE2\x82", "\xEF\xBF\xBD"},
      {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xF0\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xF4\x90", "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xF0\x9F\x98\xC3\xBC", "\xEF\xBF\xBD\xC3\xBC"},
  };
  for (const IllFormed& row : rows) EXPECT_EQ(tool::CleanUtf8(row.bytes), row.clean);
}

TEST(Text, Utf16BecomesUtf8AndBack) {
  const WideString wide = LMD_W("A\u00FC\u5C71\U0001F600");
  const std::string utf8 = "A\xC3\xBC\xE5\xB1\xB1\xF0\x9F\x98\x80";
  EXPECT_EQ(tool::Utf8FromWide(wide), utf8);
  EXPECT_EQ(tool::WideFromUtf8(utf8), wide);
}

TEST(Text, UnpairedSurrogateBecomesReplacementCharacter) {
  const WideString high = {WCHAR{0xD83D}, WCHAR{'x'}};
  const WideString low = {WCHAR{0xDE00}};
  EXPECT_EQ(tool::Utf8FromWide(high), "\xEF\xBF\xBDx");
  EXPECT_EQ(tool::Utf8FromWide(low), "\xEF\xBF\xBD");
}

TEST(Text, OddLastByteOfAWideValueIsLeftOut) {
  const test::Bytes bytes = {0x41, 0x00, 0x42};
  EXPECT_EQ(tool::WideFromBytes(bytes), LMD_W("A"));
}

TEST(Text, ControlAndDirectionCharactersAreEscaped) {
  EXPECT_EQ(tool::Printable("a\nb\r\t\x1B[31m\x7F\xC2\x9B\xE2\x80\xAE\xC3\xBC"),
            "a\\nb\\r\\t\\x1B[31m\\x7F\\x9B\\u202E\xC3\xBC");
}

TEST(Text, ShortensByCodePoints) {
  EXPECT_EQ(tool::Columns("\xC3\xBC\xE5\xB1\xB1"), 2U);
  EXPECT_EQ(tool::Shorten("\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC", 5),
            "\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC");
  EXPECT_EQ(tool::Shorten("\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC", 5),
            "\xC3\xBC\xC3\xBC...");
  EXPECT_EQ(tool::Cut("123456", 6), "123456");
  EXPECT_EQ(tool::Cut("1234567", 6), "123... (7 characters)");
  EXPECT_EQ(tool::Pad("\xC3\xBC", 3), "\xC3\xBC  ");
}

TEST(Text, ExactNumbersAreReadBackAsTheSame) {
  EXPECT_EQ(tool::ExactNumber(0.5), "0.5");
  EXPECT_EQ(tool::ExactNumber(-3), "-3");
  EXPECT_EQ(tool::ExactNumber(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(tool::ExactNumber(1e300), "1e+300");
}

TEST(Text, BlanksAroundAreTaken) {
  EXPECT_EQ(tool::WithoutBlanksAround(" \t a b \r\n"), "a b");
  EXPECT_EQ(tool::WithoutBlanksAround(" \n "), "");
}

TEST(Text, FormIsAPatternOfDigits) {
  EXPECT_TRUE(tool::HasForm("2024:05:01", "0000:00:00"));
  EXPECT_FALSE(tool::HasForm("2024-05-01", "0000:00:00"));
  EXPECT_FALSE(tool::HasForm("2024:05:0a", "0000:00:00"));
  EXPECT_FALSE(tool::HasForm("2024:05:011", "0000:00:00"));
  EXPECT_FALSE(tool::HasForm("2024:05:0", "0000:00:00"));
}

TEST(Text, HexadecimalForms) {
  const test::Bytes bytes = {0x00, 0x1F, 0xA0};
  EXPECT_EQ(tool::HexBytes(bytes), "001fa0");
  EXPECT_EQ(tool::HexNumber(0x8004C001, 8), "0x8004C001");
  EXPECT_EQ(tool::HexNumber(0, 8), "0x00000000");
  EXPECT_EQ(tool::HexNumber(0x10, 4), "0x0010");
  EXPECT_EQ(tool::HexNumber(0x12345, 4), "0x12345");
}

TEST(Text, NumbersLoseZerosAtTheirEnd) {
  EXPECT_EQ(tool::Number(2.5, 2), "2.5");
  EXPECT_EQ(tool::Number(100, 2), "100");
  EXPECT_EQ(tool::Number(2.0 / 3, 4), "0.6667");
  EXPECT_EQ(tool::Number(-0.001, 2), "0");
  EXPECT_EQ(tool::Number(120, 0), "120");
  EXPECT_EQ(tool::Number(std::numeric_limits<double>::quiet_NaN(), 2), "nan");
  EXPECT_EQ(tool::Number(-std::numeric_limits<double>::infinity(), 2), "-inf");
}

}  // namespace
