#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Bytes.h"
#include "xmp/TextConversion.h"

namespace {

using namespace std::string_literals;
using testing::AnyOf;

constexpr std::uint32_t kAnsi = 0;
constexpr std::uint32_t kUtf8 = 65001;
constexpr bool kIsWindows = std::is_same_v<WCHAR, wchar_t>;

// Code units as hexadecimal numbers, "00e9 fffd", in which a failing comparison can be read.
std::string UnitText(WideStringView units) {
  std::string text;
  for (const WCHAR unit : units) {
    if (!text.empty()) text += ' ';
    text += test::Hex(test::U16(static_cast<std::uint16_t>(unit)));
  }
  return text;
}

std::string ByteText(std::string_view bytes) {
  const test::Bytes copy = test::Text(bytes);
  return test::Hex(copy);
}

// A byte text and the code units that it gives. The last column has those of Wine 8 where they are
// others: it takes a lead byte and any continuation byte after it for one ill-formed part, also
// when no character begins so, and a sequence with fewer bytes left than its lead asks for reaches
// to the end. On Windows such a row accepts both.
struct DecodeRow {
  const char* name;
  std::uint32_t codePage;
  std::string bytes;
  std::string units;
  std::string unitsUnderWine = {};
};

void PrintTo(const DecodeRow& row, std::ostream* stream) {
  *stream << ByteText(row.bytes);
}

class TextConversionDecodes : public testing::TestWithParam<DecodeRow> {};

TEST_P(TextConversionDecodes, ToItsCodeUnits) {
  const DecodeRow& row = GetParam();
  WideString wide = LMD_W("before");
  EXPECT_EQ(ConvertToWide(row.bytes, &wide, row.codePage), S_OK);
  if (kIsWindows && !row.unitsUnderWine.empty()) {
    EXPECT_THAT(UnitText(wide), AnyOf(row.units, row.unitsUnderWine));
  } else {
    EXPECT_EQ(UnitText(wide), row.units);
  }
  EXPECT_EQ(ToWideString(row.bytes, row.codePage), wide);
}

template <typename Row>
std::string RowName(const testing::TestParamInfo<Row>& info) {
  return info.param.name;
}

// clang-format off
const DecodeRow kWindows1252Rows[] = {
    {"Ascii",                    kAnsi, "Az ~",                 "0041 007a 0020 007e"},
    {"Controls",                 kAnsi, "\x01\t\n\x1F\x7F",     "0001 0009 000a 001f 007f"},
    {"Latin1Range",              kAnsi, "\xA0\xE9\xFF",         "00a0 00e9 00ff"},
    {"Bytes80To87",              kAnsi, "\x80\x81\x82\x83\x84\x85\x86\x87",
                                        "20ac 0081 201a 0192 201e 2026 2020 2021"},
    {"Bytes88To8F",              kAnsi, "\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F",
                                        "02c6 2030 0160 2039 0152 008d 017d 008f"},
    {"Bytes90To97",              kAnsi, "\x90\x91\x92\x93\x94\x95\x96\x97",
                                        "0090 2018 2019 201c 201d 2022 2013 2014"},
    {"Bytes98To9F",              kAnsi, "\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F",
                                        "02dc 2122 0161 203a 0153 009d 017e 0178"},
    {"UndefinedBytesStayNumbers", kAnsi, "\x81\x8D\x8F\x90\x9D", "0081 008d 008f 0090 009d"},
    {"Utf8IsTwoCharacters",      kAnsi, "\xC3\xA9",             "00c3 00a9"},
    {"EmbeddedZeroEndsTheText",  kAnsi, "a\0b"s,                "0061"},
    {"Empty",                    kAnsi, "",                     ""},
};

const DecodeRow kUtf8Rows[] = {
    {"Ascii",                    kUtf8, "Az ~",                 "0041 007a 0020 007e"},
    {"Controls",                 kUtf8, "\x01\t\n\x1F\x7F",     "0001 0009 000a 001f 007f"},
    {"LowestOfTwoBytes",         kUtf8, "\xC2\x80",             "0080"},
    {"Latin1Range",              kUtf8, "\xC2\xA0\xC3\xA9\xC3\xBF", "00a0 00e9 00ff"},
    {"HighestOfTwoBytes",        kUtf8, "\xDF\xBF",             "07ff"},
    {"LowestOfThreeBytes",       kUtf8, "\xE0\xA0\x80",         "0800"},
    {"EuroSign",                 kUtf8, "\xE2\x82\xAC",         "20ac"},
    {"LastBeforeTheSurrogates",  kUtf8, "\xED\x9F\xBF",         "d7ff"},
    {"FirstAfterTheSurrogates",  kUtf8, "\xEE\x80\x80",         "e000"},
    {"HighestOfThreeBytes",      kUtf8, "\xEF\xBF\xBF",         "ffff"},
    {"ByteOrderMarkIsKept",      kUtf8, "\xEF\xBB\xBF" "A",     "feff 0041"},
    {"ReplacementItself",        kUtf8, "\xEF\xBF\xBD",         "fffd"},
    {"LowestOfFourBytes",        kUtf8, "\xF0\x90\x80\x80",     "d800 dc00"},
    {"CameraSign",               kUtf8, "\xF0\x9F\x93\xB7",     "d83d dcf7"},
    {"HighestOfFourBytes",       kUtf8, "\xF4\x8F\xBF\xBF",     "dbff dfff"},
    {"MixedLengths",             kUtf8, "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x93\xB7" "z",
                                        "0061 00e9 20ac d83d dcf7 007a"},

    {"OverlongZero",             kUtf8, "\xC0\x80",             "fffd fffd"},
    {"OverlongTwoBytes",         kUtf8, "\xC1\xBF",             "fffd fffd"},
    {"OverlongThreeBytes",       kUtf8, "\xE0\x80\x80",         "fffd fffd fffd", "fffd fffd"},
    {"LastOverlongThreeBytes",   kUtf8, "\xE0\x9F\xBF",         "fffd fffd fffd", "fffd fffd"},
    {"OverlongFourBytes",        kUtf8, "\xF0\x80\x80\x80",     "fffd fffd fffd fffd",
                                        "fffd fffd fffd"},
    {"LastOverlongFourBytes",    kUtf8, "\xF0\x8F\xBF\xBF",     "fffd fffd fffd fffd",
                                        "fffd fffd fffd"},
    {"HighSurrogate",            kUtf8, "\xED\xA0\x80",         "fffd fffd fffd", "fffd fffd"},
    {"LowSurrogate",             kUtf8, "\xED\xBF\xBF",         "fffd fffd fffd", "fffd fffd"},
    {"SurrogatePair",            kUtf8, "\xED\xA0\xBD\xED\xB3\xB7",
                                        "fffd fffd fffd fffd fffd fffd", "fffd fffd fffd fffd"},
    {"FirstAboveUnicode",        kUtf8, "\xF4\x90\x80\x80",     "fffd fffd fffd fffd",
                                        "fffd fffd fffd"},
    {"LeadAboveUnicode",         kUtf8, "\xF5\x80\x80\x80",     "fffd fffd fffd fffd"},
    {"BytesNeverUsed",           kUtf8, "\xF8\xFE\xFF",         "fffd fffd fffd"},

    {"LoneContinuation",         kUtf8, "\x80",                 "fffd"},
    {"ContinuationInText",       kUtf8, "A\xBF" "B",            "0041 fffd 0042"},
    {"ContinuationAfterSequence", kUtf8, "\xC3\xA9\xA9",        "00e9 fffd"},
    {"TwoBytesCutAfterOne",      kUtf8, "\xC3",                 "fffd"},
    {"ThreeBytesCutAfterOne",    kUtf8, "\xE2",                 "fffd"},
    {"ThreeBytesCutAfterTwo",    kUtf8, "\xE2\x82",             "fffd"},
    {"FourBytesCutAfterOne",     kUtf8, "\xF0",                 "fffd"},
    {"FourBytesCutAfterTwo",     kUtf8, "\xF0\x9F",             "fffd"},
    {"FourBytesCutAfterThree",   kUtf8, "\xF0\x9F\x93",         "fffd"},
    {"TwoBytesBrokenOff",        kUtf8, "\xC3" "A",             "fffd 0041"},
    {"ThreeBytesBrokenOff",      kUtf8, "\xE2\x82" "A",         "fffd 0041"},
    {"FourBytesBrokenOff",       kUtf8, "\xF0\x9F\x93" "A",     "fffd 0041"},
    {"BrokenOffShortlyBeforeTheEnd", kUtf8, "\xE2" "A",     "fffd 0041", "fffd"},
    {"BrokenOffByASequence",     kUtf8, "\xE2\x82\xC3\xA9",     "fffd 00e9"},
    {"CutOverlong",              kUtf8, "\xE0\x80",             "fffd fffd", "fffd"},
    {"SeveralBrokenSequences",   kUtf8, "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF" "A",
                                        "fffd fffd fffd fffd 0041", "fffd fffd fffd fffd"},
    {"SeveralOverlongSequences", kUtf8, "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82" "A",
                                        "fffd fffd fffd fffd fffd fffd fffd fffd 0041",
                                        "fffd fffd fffd fffd fffd fffd 0041"},

    {"EmbeddedZeroEndsTheText",  kUtf8, "\xC3\xA9\0b"s,         "00e9"},
    {"ZeroAfterACutSequence",    kUtf8, "\xE2\x82\0b"s,         "fffd"},
    {"LeadingZero",              kUtf8, "\0ab"s,                ""},
    {"Empty",                    kUtf8, "",                     ""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Windows1252, TextConversionDecodes, testing::ValuesIn(kWindows1252Rows),
                         RowName<DecodeRow>);
INSTANTIATE_TEST_SUITE_P(Utf8, TextConversionDecodes, testing::ValuesIn(kUtf8Rows),
                         RowName<DecodeRow>);

// A UTF-16 text and its bytes in the ANSI code page. Windows maps some characters that the code
// page lacks to similar ones ("best fit"); those bytes stand in the last column.
struct EncodeRow {
  const char* name;
  WideString text;
  std::string bytes;
  std::string bytesOnWindows = {};
};

void PrintTo(const EncodeRow& row, std::ostream* stream) {
  *stream << UnitText(row.text);
}

class TextConversionEncodes : public testing::TestWithParam<EncodeRow> {};

TEST_P(TextConversionEncodes, ToItsAnsiBytes) {
  const EncodeRow& row = GetParam();
  const bool differs = kIsWindows && !row.bytesOnWindows.empty();
  EXPECT_EQ(ByteText(ToAnsiString(row.text)), differs ? row.bytesOnWindows : row.bytes);
}

WideString Units(std::initializer_list<unsigned> units) {
  WideString text;
  for (const unsigned unit : units) text += static_cast<WCHAR>(unit);
  return text;
}

// clang-format off
const EncodeRow kEncodeRows[] = {
    {"Ascii",                   LMD_W("Az ~"),                    "417a207e"},
    {"Controls",                Units({1, 9, 10, 0x1F, 0x7F}),    "01090a1f7f"},
    {"Latin1Range",             Units({0xA0, 0xE9, 0xFF}),        "a0e9ff"},
    {"Bytes80To8F",             Units({0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6,
                                       0x2030, 0x0160, 0x2039, 0x0152, 0x017D}),
                                "808283848586878889" "8a8b8c8e"},
    {"Bytes90To9F",             Units({0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC,
                                       0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178}),
                                "919293949596979899" "9a9b9c9e9f"},
    {"UndefinedBytesStayNumbers", Units({0x81, 0x8D, 0x8F, 0x90, 0x9D}), "818d8f909d"},
    {"ControlOfADefinedByte",   Units({0x80}),                    "3f"},
    {"Ideograph",               Units({0x4E2D}),                  "3f"},
    {"Replacement",             Units({0xFFFD}),                  "3f"},
    {"PairIsTwoDefaults",       Units({0xD83D, 0xDCF7}),          "3f3f"},
    {"UnpairedHighSurrogate",   Units({0xD83D, 'a'}),             "3f61"},
    {"UnpairedLowSurrogate",    Units({'a', 0xDCF7}),             "613f"},
    {"MacronIsDroppedByBestFit", Units({0x0100}),                 "3f", "41"},
    {"FullWidthLetter",         Units({0xFF21}),                  "3f", "41"},
    {"PrimeIsAnApostrophe",     Units({0x2032}),                  "3f", "27"},
    {"EmbeddedZeroEndsTheText", Units({'a', 0, 'b'}),             "61"},
    {"LeadingZero",             Units({0, 'a'}),                  ""},
    {"Empty",                   {},                               ""},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Windows1252, TextConversionEncodes, testing::ValuesIn(kEncodeRows),
                         RowName<EncodeRow>);

TEST(TextConversion, EmptyTextConvertsToTheEmptyText) {
  for (const std::uint32_t codePage : {kAnsi, kUtf8}) {
    WideString wide = LMD_W("before");
    EXPECT_EQ(ConvertToWide("", &wide, codePage), S_OK);
    EXPECT_TRUE(wide.empty());
  }
}

TEST(TextConversion, ZeroInsideATextEndsTheResult) {
  WideString wide;
  EXPECT_EQ(ConvertToWide("ab\0cd"s, &wide, kUtf8), S_OK);
  EXPECT_EQ(wide, LMD_W("ab"));
  EXPECT_EQ(ToWideString("ab\0cd"s, kAnsi), LMD_W("ab"));
}

TEST(TextConversion, MissingOutStringIsAPointerError) {
  EXPECT_EQ(ConvertToWide("abc", nullptr, kUtf8), E_POINTER);
  EXPECT_EQ(ConvertToWide("", nullptr, kAnsi), E_POINTER);
}

TEST(TextConversion, UnknownCodePageGivesTheEmptyText) {
  constexpr std::uint32_t kUnknown = 54321;
  WideString wide = LMD_W("before");
  EXPECT_EQ(ConvertToWide("abc", &wide, kUnknown), S_OK);
  EXPECT_TRUE(wide.empty());
  EXPECT_TRUE(ToWideString("abc", kUnknown).empty());
}

TEST(TextConversion, EveryAnsiByteComesBackAsItWas) {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  EXPECT_EQ(ByteText(ToAnsiString(ToWideString(bytes, kAnsi))), ByteText(bytes));
}

TEST(TextConversion, LongTextIsConvertedWhole) {
  constexpr std::size_t kLength = 1U << 20;
  const WideString wide = ToWideString(std::string(kLength, 'x'), kUtf8);
  EXPECT_EQ(wide, WideString(kLength, LMD_W('x')));
  EXPECT_EQ(ToAnsiString(wide), std::string(kLength, 'x'));
}

struct EntityRow {
  const char* name;
  WideString text;
  WideString decoded;
};

void PrintTo(const EntityRow& row, std::ostream* stream) {
  *stream << UnitText(row.text);
}

class XmlEntities : public testing::TestWithParam<EntityRow> {};

TEST_P(XmlEntities, AreDecoded) {
  EXPECT_EQ(UnitText(DecodeXmlEntities(GetParam().text)), UnitText(GetParam().decoded));
}

// clang-format off
const EntityRow kEntityRows[] = {
    {"Quot",                        LMD_W("&quot;"),              LMD_W("\"")},
    {"Apos",                        LMD_W("&apos;"),              LMD_W("'")},
    {"Lt",                          LMD_W("&lt;"),                LMD_W("<")},
    {"Gt",                          LMD_W("&gt;"),                LMD_W(">")},
    {"Amp",                         LMD_W("&amp;"),               LMD_W("&")},
    {"AmpBetweenLetters",           LMD_W("a&amp;b"),             LMD_W("a&b")},
    {"AllInARow",                   LMD_W("&quot;&apos;&lt;&gt;&amp;"), LMD_W("\"'<>&")},
    {"AmpWithoutSemicolonStays",    LMD_W("a&amp b"),             LMD_W("a&amp b")},
    {"AmpWithoutSemicolonAtTheEndStays", LMD_W("&amp"),           LMD_W("&amp")},
    {"LtWithoutSemicolonAtTheEndStays", LMD_W("a&lt"),            LMD_W("a&lt")},
    {"LoneAmpersandAtTheEndStays",  LMD_W("a&"),                  LMD_W("a&")},
    {"LoneAmpersandStays",          LMD_W("a & b"),               LMD_W("a & b")},
    {"AmpersandBeforeAnEntity",     LMD_W("&&lt;"),               LMD_W("&<")},
    {"EscapedEntityStaysText",      LMD_W("&amp;lt;"),            LMD_W("&lt;")},
    {"TwiceEscapedEntity",          LMD_W("&amp;amp;lt;"),        LMD_W("&amp;lt;")},
    {"DecimalReferenceStays",       LMD_W("&#65;"),               LMD_W("&#65;")},
    {"HexadecimalReferenceStays",   LMD_W("&#x41;"),              LMD_W("&#x41;")},
    {"OtherEntityStays",            LMD_W("&nbsp;&eacute;"),      LMD_W("&nbsp;&eacute;")},
    {"UpperCaseStays",              LMD_W("&LT;&Amp;"),           LMD_W("&LT;&Amp;")},
    {"NoEntity",                    LMD_W("plain; text"),         LMD_W("plain; text")},
    {"Empty",                       LMD_W(""),                    LMD_W("")},
    {"ZeroEndsTheText",             Units({'a', 0, '&', 'l', 't', ';'}), LMD_W("a")},
    {"ZeroInsideAnEntity",          Units({'&', 'l', 't', 0, ';'}), LMD_W("&lt")},
    {"OtherUnitsStay",              Units({0xE9, 0xD83D, 0xDCF7, 0xFFFF}),
                                    Units({0xE9, 0xD83D, 0xDCF7, 0xFFFF})},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Table, XmlEntities, testing::ValuesIn(kEntityRows), RowName<EntityRow>);

}  // namespace
