#include <gtest/gtest.h>

#include "tool/ValueTable.h"
#include "values/Decoders.h"

namespace {

using test::Bytes;
using test::ValueTable;

using Angle = std::initializer_list<std::pair<std::uint32_t, std::uint32_t>>;

std::string Latitude(const Angle& angle, const char* ref) {
  return ValueTable(BLOCK_GPS).Ascii(1, ref).Rational(2, angle)[2];
}

TEST(GpsValues, PositionInDegreesMinutesAndSeconds) {
  EXPECT_EQ(Latitude({{54, 1}, {59, 1}, {228, 10}}, "N"), "54° 59' 22.8\" N (54.989667)");
  EXPECT_EQ(Latitude({{54, 1}, {59, 1}, {228, 10}}, "S"), "54° 59' 22.8\" S (-54.989667)");
  EXPECT_EQ(Latitude({{12, 1}, {305, 10}, {0, 1}}, "N"), "12° 30' 30\" N (12.508333)");
  EXPECT_EQ(Latitude({{10, 1}, {59, 1}, {599999, 10000}}, "N"), "11° 0' 0\" N (11)");
  EXPECT_EQ(Latitude({{7, 1}}, "N"), "7° 0' 0\" N (7)");
  EXPECT_EQ(Latitude({{0, 0}, {0, 0}, {0, 0}}, "N"), "0/0 0/0 0/0");
}

TEST(GpsValues, AltitudeIsAboveOrBelowSeaLevel) {
  const auto altitude = [](std::uint8_t ref) {
    return ValueTable(BLOCK_GPS).Set(5, TYPE_BYTE, {ref}).Rational(6, {{2412, 20}})[6];
  };
  EXPECT_EQ(altitude(0), "120.6 m above sea level");
  EXPECT_EQ(altitude(1), "120.6 m below sea level");
  EXPECT_EQ(ValueTable(BLOCK_GPS).Rational(6, {{5, 1}})[6], "5 m above sea level");
}

TEST(GpsValues, TimeAndDate) {
  const auto time = [](const Angle& parts) { return ValueTable(BLOCK_GPS).Rational(7, parts)[7]; };
  EXPECT_EQ(time({{14, 1}, {58, 1}, {24, 1}}), "14:58:24 UTC");
  EXPECT_EQ(time({{9, 1}, {5, 1}, {725, 100}}), "09:05:07.25 UTC");
  EXPECT_EQ(time({{104, 1}, {52, 1}, {17, 1}}), "104 52 17");
  EXPECT_EQ(ValueTable(BLOCK_GPS).Ascii(29, "2008:05:30")[29], "2008-05-30");
}

TEST(GpsValues, NeighboursGiveTheUnits) {
  EXPECT_EQ(ValueTable(BLOCK_GPS).Ascii(12, "M").Rational(13, {{30, 1}})[13], "30 mph");
  EXPECT_EQ(ValueTable(BLOCK_GPS).Ascii(14, "T").Rational(15, {{90, 1}})[15], "90° (true north)");
  EXPECT_EQ(ValueTable(BLOCK_GPS).Ascii(16, "M").Rational(17, {{295, 2}})[17],
            "147.5° (magnetic north)");
  EXPECT_EQ(ValueTable(BLOCK_GPS).Rational(17, {{90, 1}})[17], "90°");
  EXPECT_EQ(ValueTable(BLOCK_GPS).Ascii(25, "N").Rational(26, {{3, 1}})[26], "3 nautical miles");
}

TEST(GpsValues, PlaceNeedsBothAngles) {
  NodePool nodes;
  TagMap gps(nodes);
  ParseBudget budget;
  const ValueMemory memory{nodes, budget};
  const Bytes angle = test::Join({test::U32(8, kHostByteOrder), test::U32(1, kHostByteOrder)});
  SetTagValue(gps.FindOrInsert(2), 2, TYPE_RATIONAL, angle, memory);
  EXPECT_EQ(tool::Position(gps), "");
  SetTagValue(gps.FindOrInsert(4), 4, TYPE_RATIONAL, angle, memory);
  SetTagValue(gps.FindOrInsert(3), 3, TYPE_ASCII, Bytes{'E', 0}, memory);
  EXPECT_EQ(tool::Position(gps), "8°, 8° E");
}

std::string Icc(std::uint32_t key, const Bytes& bytes) {
  return ValueTable(BLOCK_ICC).Set(key, TYPE_BYTE, bytes)[key];
}

TEST(IccValues, HeaderFields) {
  EXPECT_EQ(Icc(3, {0x02, 0x10, 0, 0}), "2.1.0");
  EXPECT_EQ(Icc(3, {0x04, 0x42, 0, 0}), "4.4.2");
  EXPECT_EQ(ValueTable(BLOCK_ICC).Ascii(4, "mntr")[4], "display (mntr)");
  EXPECT_EQ(ValueTable(BLOCK_ICC).Ascii(4, "abcd")[4], "abcd");
  EXPECT_EQ(Icc(7, {0x07, 0xCE, 0, 2, 0, 9, 0, 6, 0, 49, 0, 0}), "1998-02-09 06:49:00");
  EXPECT_EQ(Icc(10, {0, 0, 0, 1}), "embedded, usable alone");
  EXPECT_EQ(Icc(10, {0, 0, 0, 2}), "not embedded, for its image alone");
  EXPECT_EQ(Icc(13, {0, 0, 0, 0, 0, 0, 0, 0}), "reflective, glossy, positive, colour");
  EXPECT_EQ(Icc(13, {0, 0, 0, 0, 0, 0, 0, 0x0F}), "transparency, matte, negative, black and white");
  EXPECT_EQ(Icc(14, {0, 0, 0, 1}), "media-relative colorimetric (1)");
  EXPECT_EQ(Icc(15, {0, 0, 0xF6, 0xD6, 0, 1, 0, 0, 0, 0, 0xD3, 0x2D}), "X 0.9642 Y 1 Z 0.8249");
  EXPECT_EQ(Icc(17, Bytes(16, 0)), "not calculated");
  EXPECT_EQ(Icc(17, Bytes(16, 0xA5)), "a5a5a5a5a5a5a5a5a5a5a5a5a5a5a5a5");
}

TEST(IccValues, CurvesByTheirCount) {
  EXPECT_EQ(Icc(260, {0, 0, 0, 0}), "linear");
  EXPECT_EQ(Icc(260, {0, 0, 0, 1, 0x02, 0x33}), "gamma 2.2");
  EXPECT_EQ(Icc(260, {0, 0, 0, 2, 0, 0, 0xFF, 0xFF}), "curve of 2 points");
  EXPECT_EQ(Icc(260, {0, 3, 0, 0, 0, 2, 0x66, 0x66}), "8 bytes");
}

std::string Xmp(std::uint32_t tag, WideStringView text) {
  return ValueTable(BLOCK_XMP).Wide(tag, text)[tag];
}

TEST(XmpValues, TextsWithUnits) {
  EXPECT_EQ(Xmp(0xAA01, LMD_W("3")), "3 of 5");
  EXPECT_EQ(Xmp(0xAA01, LMD_W("-1")), "rejected (-1)");
  EXPECT_EQ(Xmp(0xAA01, LMD_W("0")), "unrated (0)");
  EXPECT_EQ(Xmp(0xAA01, LMD_W("99")), "99");
  EXPECT_EQ(Xmp(0xAB04, LMD_W("True")), "protected by copyright (True)");
  EXPECT_EQ(Xmp(0xAB14, LMD_W("-1/3")), "-0.33 EV");
  EXPECT_EQ(Xmp(0xAB15, LMD_W("8/1")), "1/256 s (APEX 8)");
  EXPECT_EQ(Xmp(0xAB16, LMD_W("4/1")), "f/4 (APEX 4)");
  EXPECT_EQ(Xmp(0xAB17, LMD_W("50/1")), "50 mm");
  EXPECT_EQ(Xmp(0xAB17, LMD_W("50/0")), "50/0");
  EXPECT_EQ(Xmp(0xAB18, LMD_W("2")), "auto bracket (2)");
  EXPECT_EQ(Xmp(0xAB20, LMD_W("12.50")), "12.5°");
  EXPECT_EQ(Xmp(0xAB20, LMD_W("north")), "north");
  EXPECT_EQ(Xmp(0xAB19, LMD_W("equirectangular")), "equirectangular");
}

TEST(XmpValues, RegionOfAPerson) {
  const auto region = [](WideStringView text) {
    ValueTable table(BLOCK_XMP_REGIONS);
    return table.Wide(0xAB09, text)[0xAB09];
  };
  EXPECT_EQ(region(LMD_W("0.1, 0.2\nAnna\nFace")), "Anna [Face] in 0.1, 0.2");
  EXPECT_EQ(region(LMD_W("0.1, 0.2\n\nFace")), "(no name) [Face] in 0.1, 0.2");
  EXPECT_EQ(region(LMD_W("0.1, 0.2\nAnna\n")), "Anna in 0.1, 0.2");
}

TEST(IptcValues, TextsAndCodes) {
  ValueTable table(BLOCK_IPTC);
  table.Wide(22, LMD_W("lake\nevening\n"));
  table.Set(11, TYPE_LONG, {0x1B, 0, 0, 0, '%', 0, 0, 0, 'G', 0, 0, 0});
  table.Set(15, TYPE_LONG, {0, 0, 0, 0, 4, 0, 0, 0});
  EXPECT_EQ(table[22], "lake; evening");
  EXPECT_EQ(table[11], "UTF-8 (ESC % G)");
  EXPECT_EQ(table[15], "4");
  EXPECT_EQ(ValueTable(BLOCK_IPTC).Set(11, TYPE_LONG, {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0})[11],
            "1 2 3");
}

TEST(MakerNoteValues, SummaryWithUnits) {
  ValueTable table(BLOCK_MAKERNOTE_SUMMARY);
  table.Set(1, TYPE_LONG, {10, 0, 0, 0});
  table.Rational(11, {{1500000, 1000000}});
  table.Rational(12, {{24, 1}}, TYPE_SRATIONAL);
  table.Rational(14, {{28, 10}}, TYPE_SRATIONAL);
  EXPECT_EQ(table[1], "Samsung (10)");
  EXPECT_EQ(table[11], "1.5x");
  EXPECT_EQ(table[12], "24 mm");
  EXPECT_EQ(table[14], "f/2.8");
}

}  // namespace
