// The calling convention of the two code-page conversions, on whatever supplies them: the system or
// the stand-ins.

#include <array>
#include <string>

#include <gtest/gtest.h>

#include "platform/Win32.h"
#include "support/Bytes.h"

namespace {

constexpr WCHAR kUntouched = 0x7777;

std::string EncodeUtf8(const WideString& text) {
  std::array<char, 64> buffer;
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         buffer.data(), 64, nullptr, nullptr);
  return test::Hex(test::Text({buffer.data(), static_cast<std::size_t>(length)}));
}

WideString Units(std::initializer_list<unsigned> units) {
  WideString text;
  for (const unsigned unit : units) text += static_cast<WCHAR>(unit);
  return text;
}

TEST(CodePages, CapacityZeroCountsTheUnits) {
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a\xC3\xA9\xF0\x9F\x93\xB7", 7, nullptr, 0), 4);
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a\xC3\xA9", 3, nullptr, 0), 3);
}

TEST(CodePages, CapacityZeroCountsTheBytes) {
  const WideString text = LMD_W("a\u00E9\u20AC\U0001F4F7");
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, text.data(), 5, nullptr, 0, nullptr, nullptr), 10);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, text.data(), 3, nullptr, 0, nullptr, nullptr), 3);
}

TEST(CodePages, UnitsAreWrittenWithoutATerminator) {
  std::array<WCHAR, 4> buffer;
  buffer.fill(kUntouched);
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 2, buffer.data(), 4), 2);
  EXPECT_EQ(WideString(buffer.data(), 4), Units({'a', 'b', kUntouched, kUntouched}));
}

TEST(CodePages, BytesAreWrittenWithoutATerminator) {
  std::array<char, 4> buffer;
  buffer.fill('#');
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, LMD_W("abc"), 2, buffer.data(), 4, nullptr, nullptr), 2);
  EXPECT_EQ(std::string(buffer.data(), 4), "ab##");
}

TEST(CodePages, ZeroInsideTheLengthIsConvertedToo) {
  std::array<WCHAR, 4> buffer;
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "a\0b", 3, buffer.data(), 4), 3);
  EXPECT_EQ(WideString(buffer.data(), 3), Units({'a', 0, 'b'}));
}

TEST(CodePages, CapacityThatJustFitsIsEnough) {
  std::array<WCHAR, 3> units;
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, units.data(), 3), 3);
  std::array<char, 3> bytes;
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, LMD_W("\u20AC"), 1, bytes.data(), 3, nullptr, nullptr),
            3);
}

TEST(CodePages, ResultThatDoesNotFitIsZero) {
  std::array<WCHAR, 2> units;
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, units.data(), 2), 0);
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", 3, units.data(), 2), 0);
  std::array<char, 2> bytes;
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, LMD_W("\u20AC"), 1, bytes.data(), 2, nullptr, nullptr),
            0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, LMD_W("abc"), 3, bytes.data(), 2, nullptr, nullptr), 0);
}

TEST(CodePages, EmptyTextIsZero) {
  std::array<WCHAR, 2> units;
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "", 0, units.data(), 2), 0);
  EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "", 0, nullptr, 0), 0);
  std::array<char, 2> bytes;
  EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, LMD_W(""), 0, bytes.data(), 2, nullptr, nullptr), 0);
}

TEST(CodePages, NullTextIsZero) {
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, nullptr, 3, nullptr, 0), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, nullptr, 3, nullptr, 0, nullptr, nullptr), 0);
}

TEST(CodePages, UnknownCodePageIsZero) {
  constexpr UINT kUnknown = 54321;
  EXPECT_EQ(MultiByteToWideChar(kUnknown, 0, "abc", 3, nullptr, 0), 0);
  EXPECT_EQ(WideCharToMultiByte(kUnknown, 0, LMD_W("abc"), 3, nullptr, 0, nullptr, nullptr), 0);
}

TEST(CodePages, UnitsBecomeUtf8OfEachLength) {
  EXPECT_EQ(EncodeUtf8(Units({0x01, 0x7F})), "017f");
  EXPECT_EQ(EncodeUtf8(Units({0x80, 0x7FF})), "c280dfbf");
  EXPECT_EQ(EncodeUtf8(Units({0x800, 0xD7FF, 0xE000, 0xFFFF})), "e0a080ed9fbfee8080efbfbf");
  EXPECT_EQ(EncodeUtf8(Units({0xD800, 0xDC00, 0xDBFF, 0xDFFF})), "f0908080f48fbfbf");
}

TEST(CodePages, UnpairedSurrogateIsTheReplacementCharacter) {
  EXPECT_EQ(EncodeUtf8(Units({0xD83D})), "efbfbd");
  EXPECT_EQ(EncodeUtf8(Units({0xDCF7})), "efbfbd");
  EXPECT_EQ(EncodeUtf8(Units({0xD83D, 'a'})), "efbfbd61");
  EXPECT_EQ(EncodeUtf8(Units({0xD83D, 0xE000})), "efbfbdee8080");
  EXPECT_EQ(EncodeUtf8(Units({0xDCF7, 0xD83D})), "efbfbdefbfbd");
  EXPECT_EQ(EncodeUtf8(Units({0xD83D, 0xD83D, 0xDCF7})), "efbfbdf09f93b7");
}

}  // namespace
