#include <gtest/gtest.h>

#include "tool/ValueTable.h"

namespace {

using test::Bytes;
using test::Join;
using test::Text;
using test::ValueTable;
using test::Zeros;

constexpr std::uint32_t kMinusOne = 0xFFFFFFFF;

std::string Exif(std::uint32_t tag, std::uint32_t numerator, std::uint32_t denominator,
                 std::uint32_t type = TYPE_RATIONAL) {
  return ValueTable(BLOCK_EXIF).Rational(tag, {{numerator, denominator}}, type)[tag];
}

std::string ExifShort(std::uint32_t tag, std::uint16_t value) {
  return ValueTable(BLOCK_EXIF).Short(tag, value)[tag];
}

TEST(ExifValues, ExposureTime) {
  EXPECT_EQ(Exif(0x829A, 1, 250), "1/250 s");
  EXPECT_EQ(Exif(0x829A, 10, 2500), "1/250 s");
  EXPECT_EQ(Exif(0x829A, 3906, 1000000), "1/256 s");
  EXPECT_EQ(Exif(0x829A, 2, 15), "1/7.5 s");
  EXPECT_EQ(Exif(0x829A, 1, 2), "0.5 s");
  EXPECT_EQ(Exif(0x829A, 30, 1), "30 s");
  EXPECT_EQ(Exif(0x829A, 0, 1), "0 s");
  EXPECT_EQ(Exif(0x829A, 0, 0), "0/0");
}

TEST(ExifValues, Aperture) {
  EXPECT_EQ(Exif(0x829D, 28, 10), "f/2.8");
  EXPECT_EQ(Exif(0x829D, 4000000, 1000000), "f/4");
  EXPECT_EQ(Exif(0x9202, 4, 1), "f/4 (APEX 4)");
  EXPECT_EQ(Exif(0x9202, 100000, 1), "100000");
}

TEST(ExifValues, ShutterSpeedIsALogarithm) {
  EXPECT_EQ(Exif(0x9201, 8, 1, TYPE_SRATIONAL), "1/256 s (APEX 8)");
  EXPECT_EQ(Exif(0x9201, static_cast<std::uint32_t>(-5), 1, TYPE_SRATIONAL), "32 s (APEX -5)");
}

TEST(ExifValues, ExposureBiasHasASign) {
  EXPECT_EQ(Exif(0x9204, kMinusOne, 3, TYPE_SRATIONAL), "-0.33 EV");
  EXPECT_EQ(Exif(0x9204, 1, 3, TYPE_SRATIONAL), "+0.33 EV");
  EXPECT_EQ(Exif(0x9204, 0, 10, TYPE_SRATIONAL), "0 EV");
  EXPECT_EQ(Exif(0x9203, 52, 10, TYPE_SRATIONAL), "5.2 EV");
}

TEST(ExifValues, Lengths) {
  EXPECT_EQ(Exif(0x920A, 50, 1), "50 mm");
  EXPECT_EQ(ExifShort(0xA405, 75), "75 mm");
  EXPECT_EQ(Exif(0x9206, 5, 2), "2.5 m");
  EXPECT_EQ(Exif(0x9206, 0, 1), "unknown");
  EXPECT_EQ(Exif(0x9206, kMinusOne, 1), "infinity");
}

TEST(ExifValues, Sensitivity) {
  EXPECT_EQ(ExifShort(0x8827, 400), "ISO 400");
  EXPECT_EQ(ExifShort(0x8827, 65535), "ISO 65535");
}

TEST(ExifValues, ZoomAndLens) {
  EXPECT_EQ(Exif(0xA404, 3, 2), "1.5x");
  EXPECT_EQ(Exif(0xA404, 0, 0), "not used");
  const auto lens = [](std::initializer_list<std::pair<std::uint32_t, std::uint32_t>> values) {
    return ValueTable(BLOCK_EXIF).Rational(0xA432, values)[0xA432];
  };
  EXPECT_EQ(lens({{24, 1}, {70, 1}, {28, 10}, {28, 10}}), "24-70 mm f/2.8");
  EXPECT_EQ(lens({{18, 1}, {55, 1}, {35, 10}, {56, 10}}), "18-55 mm f/3.5-5.6");
  EXPECT_EQ(lens({{50, 1}, {50, 1}, {0, 0}, {0, 0}}), "50 mm");
}

TEST(ExifValues, EnumerationsInWords) {
  EXPECT_EQ(ExifShort(0x8822, 3), "aperture priority (3)");
  EXPECT_EQ(ExifShort(0x9207, 5), "pattern (5)");
  EXPECT_EQ(ExifShort(0x9207, 255), "other (255)");
  EXPECT_EQ(ExifShort(0x9208, 21), "D65 (21)");
  EXPECT_EQ(ExifShort(0xA001, 65535), "uncalibrated (65535)");
  EXPECT_EQ(ExifShort(0x0112, 8), "to be turned 90° left (8)");
  EXPECT_EQ(ExifShort(0x0112, 9), "9");
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Undefined(0xA300, {3})[0xA300], "digital still camera (3)");
}

TEST(ExifValues, FlashByItsBits) {
  EXPECT_EQ(ExifShort(0x9209, 0x00), "did not fire (0)");
  EXPECT_EQ(ExifShort(0x9209, 0x10), "did not fire, always off (16)");
  EXPECT_EQ(ExifShort(0x9209, 0x19), "fired, auto (25)");
  EXPECT_EQ(ExifShort(0x9209, 0x0D), "fired, return light not detected, always on (13)");
  EXPECT_EQ(ExifShort(0x9209, 0x5F), "fired, return light detected, auto, red-eye reduction (95)");
  EXPECT_EQ(ExifShort(0x9209, 0x20), "no flash function (32)");
  EXPECT_EQ(ExifShort(0x9209, 0xFFFF), "65535");
}

TEST(ExifValues, ResolutionHasTheUnitOfItsNeighbour) {
  const auto resolution = [](std::uint16_t unit) {
    return ValueTable(BLOCK_IFD0).Rational(0x011A, {{72, 1}}).Short(0x0128, unit)[0x011A];
  };
  EXPECT_EQ(resolution(1), "72 (no unit)");
  EXPECT_EQ(resolution(2), "72 per inch");
  EXPECT_EQ(resolution(3), "72 per cm");
  EXPECT_EQ(ValueTable(BLOCK_IFD0).Rational(0x011A, {{300, 1}})[0x011A], "300 per inch");
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Rational(0xA20E, {{100, 1}}).Short(0xA210, 3)[0xA20E],
            "100 per cm");
}

TEST(ExifValues, DatesAndVersions) {
  EXPECT_EQ(ValueTable(BLOCK_IFD0).Ascii(0x0132, "2008:05:30 15:56:01")[0x0132],
            "2008-05-30 15:56:01");
  EXPECT_EQ(ValueTable(BLOCK_IFD0).Ascii(0x0132, "    :  :     :  :  ")[0x0132], ":  :     :  :");
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Undefined(0x9000, Text("0232"))[0x9000], "2.32");
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Undefined(0x9000, Text("0220"))[0x9000], "2.2");
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Undefined(0xA000, Text("0100"))[0xA000], "1.0");
  EXPECT_EQ(ValueTable(BLOCK_IFD0).Set(0xC612, TYPE_BYTE, {1, 4, 0, 0})[0xC612], "1.4.0.0");
}

TEST(ExifValues, ComponentsByName) {
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Undefined(0x9101, {1, 2, 3, 0})[0x9101], "Y Cb Cr");
  EXPECT_EQ(ValueTable(BLOCK_EXIF).Undefined(0x9101, {4, 5, 6, 0})[0x9101], "R G B");
}

TEST(ExifValues, CommentBehindItsCharacterCode) {
  const auto comment = [](const Bytes& bytes) {
    return ValueTable(BLOCK_EXIF).Undefined(0x9286, bytes)[0x9286];
  };
  EXPECT_EQ(comment(Join({Text("ASCII"), Zeros(3), Text("Hello   ")})), "Hello");
  EXPECT_EQ(comment(Join({Text("UNICODE"), Zeros(1), {'H', 0, 'i', 0}})), "Hi");
  EXPECT_EQ(comment(Join({Text("UNICODE"), Zeros(1), {0, 'H', 0, 'i'}})), "Hi");
  EXPECT_EQ(comment(Join({Text("UNICODE"), Zeros(1), {0xFE, 0xFF, 0x5C, 0x71}})), "\xE5\xB1\xB1");
  EXPECT_EQ(comment(Join({Zeros(8), Text("plain")})), "plain");
  EXPECT_EQ(comment(Join({Text("ASCII"), Zeros(3), Text("   ")})), "(empty)");
}

TEST(ExifValues, CopyrightOfTwoParts) {
  const auto copyright = [](const Bytes& bytes) {
    return ValueTable(BLOCK_IFD0).Set(0x8298, TYPE_ASCII, bytes)[0x8298];
  };
  EXPECT_EQ(copyright(Join({Text("Anna"), Zeros(1)})), "Anna");
  EXPECT_EQ(copyright(Join({Text("Anna"), Zeros(1), Text("Ben"), Zeros(1)})), "Anna; edited: Ben");
  EXPECT_EQ(copyright(Join({Text(" "), Zeros(1), Text("Ben"), Zeros(1)})), "edited: Ben");
}

TEST(ExifValues, WideTextInBytes) {
  EXPECT_EQ(ValueTable(BLOCK_IFD0).Set(0x9C9B, TYPE_BYTE, {'H', 0, 0xFC, 0, 0, 0})[0x9C9B],
            "H\xC3\xBC");
}

TEST(ExifValues, SubjectAreaByItsForm) {
  const auto area = [](const Bytes& bytes) {
    return ValueTable(BLOCK_EXIF).Set(0x9214, TYPE_SHORT, bytes)[0x9214];
  };
  EXPECT_EQ(area({10, 0, 20, 0}), "point at 10, 20");
  EXPECT_EQ(area({10, 0, 20, 0, 5, 0}), "circle around 10, 20, diameter 5");
  EXPECT_EQ(area({10, 0, 20, 0, 5, 0, 6, 0}), "rectangle around 10, 20, 5 x 6");
}

TEST(ExifValues, UnknownTagsArePrintedByType) {
  const auto plain = [](std::uint32_t type, const Bytes& bytes) {
    return ValueTable(BLOCK_IFD0).Set(0xFE00, type, bytes)[0xFE00];
  };
  EXPECT_EQ(plain(TYPE_SHORT, {1, 0, 0xFF, 0xFF}), "1 65535");
  EXPECT_EQ(plain(TYPE_SSHORT, {0xFE, 0xFF}), "-2");
  EXPECT_EQ(plain(TYPE_SLONG, {0xFF, 0xFF, 0xFF, 0xFF}), "-1");
  EXPECT_EQ(plain(TYPE_RATIONAL, {1, 0, 0, 0, 4, 0, 0, 0}), "0.25");
  EXPECT_EQ(plain(TYPE_SHORT, {1, 0, 2}), "1 2");
  EXPECT_EQ(plain(TYPE_UNDEFINED, {0, 0xAB}), "00 ab");
  EXPECT_EQ(plain(TYPE_UNDEFINED, Text("abc")), "abc");
  EXPECT_EQ(plain(TYPE_ASCII, {0}), "(empty)");
}

TEST(ExifValues, UnknownTagsArePrintedInFull) {
  const auto plain = [](std::uint32_t type, const Bytes& bytes) {
    return ValueTable(BLOCK_IFD0).Set(0xFE00, type, bytes)[0xFE00];
  };
  const auto times = [](std::size_t count, const std::string& part) {
    std::string text = part;
    for (std::size_t i = 1; i < count; ++i) text += " " + part;
    return text;
  };
  EXPECT_EQ(plain(TYPE_UNDEFINED, Bytes(1000, 7)), times(1000, "07"));
  EXPECT_EQ(plain(TYPE_BYTE, Bytes(1000, 7)), times(1000, "07"));
  EXPECT_EQ(plain(TYPE_SHORT, Bytes(2000, 1)), times(1000, "257"));
  EXPECT_EQ(plain(TYPE_ASCII, Bytes(1000, 'x')), std::string(1000, 'x'));
}

TEST(ExifValues, ValueWithoutDataSaysSo) {
  NodePool nodes;
  TagMap table(nodes);
  TagEntry& entry = table.FindOrInsert(0x010F);
  entry.m_nTag = 0x010F;
  entry.m_nType = TYPE_ASCII;
  entry.m_nSize = 10;
  EXPECT_EQ(tool::ValueText(BLOCK_IFD0, entry, table), "(no data)");
  entry.m_nSize = 0;
}

}  // namespace
