#include <gtest/gtest.h>

#include "LocatorTest.h"
#include "support/Jpeg.h"

namespace test {
namespace {

constexpr std::string_view kNamespace = "http://ns.adobe.com/xap/1.0/";

Located Jpg(const Bytes& bytes) {
  return Locate(&LocateJpegXmp, bytes);
}

Located Jpg(const Jpeg& jpeg) {
  return Jpg(jpeg.Build());
}

TEST(JpegXmpLocator, NullArgumentsAreRefused) {
  FileStream stream;
  std::uint64_t position = kNoPosition;
  EXPECT_EQ(LocateJpegXmp(nullptr, &position), LMD_E_INVALID_ARG);
  EXPECT_EQ(LocateJpegXmp(&stream, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(LocateJpegXmp(nullptr, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(position, kNoPosition);
}

TEST(JpegXmpLocator, FileWithoutStartOfImageIsABadFormat) {
  for (const Bytes& bytes : {Bytes{}, Bytes{0xFF}, Bytes{0xFF, 0xD9, 0xFF, 0xE1},
                             Bytes{0xFE, 0xD8, 0xFF, 0xE1}, Text("text")}) {
    EXPECT_EQ(Jpg(bytes).result, LMD_E_BAD_FORMAT);
  }
}

TEST(JpegXmpLocator, FileOfNothingButStartOfImageHasNone) {
  EXPECT_EQ(Jpg(Bytes{0xFF, 0xD8}), NotFound(2));
}

TEST(JpegXmpLocator, PositionWithoutExifIsBehindStartOfImage) {
  EXPECT_EQ(Jpg(Jpeg().Frame(8, 8).Scan()), NotFound(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE0, Text("JFIF")).Icc(Zeros(4)).Frame(8, 8).Scan()), NotFound(2));
}

TEST(JpegXmpLocator, PositionIsBehindTheLastExifSegment) {
  Jpeg jpeg;
  jpeg.Segment(0xE0, Text("JFIF")).Exif(Zeros(10));
  EXPECT_EQ(Jpg(jpeg), NotFound(2 + 8 + 20));
  jpeg.Segment(0xED, Text("Photoshop")).Exif(Zeros(3));
  const std::uint32_t behind = jpeg.NextOffset();
  jpeg.Segment(0xE1, Text("other")).Frame(8, 8).Scan();
  EXPECT_EQ(behind, 30U + 13 + 13);
  EXPECT_EQ(Jpg(jpeg), NotFound(behind));
}

TEST(JpegXmpLocator, FoundSegmentIsReportedWithThePositionBehindExif) {
  EXPECT_EQ(Jpg(Jpeg().Xmp("packet").Frame(8, 8).Scan()), Found(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE0, Text("JFIF")).Xmp("packet")), Found(2));
  EXPECT_EQ(Jpg(Jpeg().Exif(Zeros(10)).Xmp("packet")), Found(22));
  EXPECT_EQ(Jpg(Jpeg().Exif(Zeros(10)).Segment(0xE2, Zeros(7)).Xmp("packet")), Found(22));
  EXPECT_EQ(Jpg(Jpeg().Exif(Zeros(10)).Exif(Zeros(2)).Xmp("packet")), Found(34));
}

TEST(JpegXmpLocator, ExifBehindTheXmpDoesNotMoveThePosition) {
  EXPECT_EQ(Jpg(Jpeg().Xmp("packet").Exif(Zeros(10))), Found(2));
  EXPECT_EQ(Jpg(Jpeg().Exif(Zeros(2)).Xmp("packet").Exif(Zeros(10))), Found(14));
}

TEST(JpegXmpLocator, PacketItselfIsNotLookedAt) {
  EXPECT_EQ(Jpg(Jpeg().Xmp("")), Found(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, Text(kNamespace))), Found(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, Join({Text(kNamespace), Text("x not a zero")}))), Found(2));
}

TEST(JpegXmpLocator, ExifIsKnownByFourCharactersAlone) {
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, Text("Exif"))), NotFound(10));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, Text("ExifXYZ"))), NotFound(13));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, Text("EXIF\0\0"))), NotFound(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, Text("Exi"))), NotFound(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE2, Text("Exif"))), NotFound(2));
}

TEST(JpegXmpLocator, AllTwentyEightCharactersOfTheNamespaceCount) {
  for (std::size_t i = 0; i < kNamespace.size(); ++i) {
    SCOPED_TRACE(i);
    Bytes payload = Join({Text(kNamespace), Zeros(1), Text("packet")});
    payload[i] ^= 0x01;
    EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, payload)), NotFound(2));
  }
}

TEST(JpegXmpLocator, OtherMarkersDoNotCarryXmp) {
  const Bytes payload = Join({Text(kNamespace), Zeros(1)});
  for (const std::uint8_t marker : Bytes{0xE0, 0xE2, 0xED, 0xEF, 0xFE, 0xC0}) {
    EXPECT_EQ(Jpg(Jpeg().Segment(marker, payload)), NotFound(2));
  }
}

TEST(JpegXmpLocator, ExtendedXmpIsWalkedPast) {
  const Bytes extended = Join({Text("http://ns.adobe.com/xmp/extension/"), Zeros(1)});
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, extended)), NotFound(2));
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE1, extended).Xmp("packet")), Found(2));
}

// The length counts its own two bytes, but as many bytes as it says are looked at, so the last two
// of the namespace may stand behind the segment.
TEST(JpegXmpLocator, LengthOfTwentyEightReachesTheWholeNamespace) {
  EXPECT_EQ(Jpg(Jpeg().SegmentOfLength(0xE1, 28, Text(kNamespace))), Found(2));
  EXPECT_EQ(Jpg(Jpeg().SegmentOfLength(0xE1, 30, Text(kNamespace))), Found(2));
}

TEST(JpegXmpLocator, LengthBelowTwentyEightDoesNotReachTheNamespace) {
  for (std::uint16_t length = 0; length < 28; ++length) {
    SCOPED_TRACE(length);
    EXPECT_EQ(Jpg(Jpeg().SegmentOfLength(0xE1, length, Text(kNamespace))), NotFound(2));
  }
}

TEST(JpegXmpLocator, SegmentThatTheFileCutsIsFoundWhenTheNamespaceIsWhole) {
  const Bytes whole = Join({{0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xFF}, Text(kNamespace)});
  EXPECT_EQ(Jpg(whole), Found(2));
  EXPECT_EQ(Jpg(Bytes(whole.begin(), whole.end() - 1)), NotFound(2));
}

TEST(JpegXmpLocator, PositionBehindAnExifSegmentMayLieBehindTheFile) {
  const Bytes cut = Join({{0xFF, 0xD8, 0xFF, 0xE1, 0x10, 0x00}, Text("Exif")});
  EXPECT_EQ(Jpg(cut), NotFound(4 + 0x1000));
  const Bytes longest = Join({{0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xFF}, Text("Exif"), Zeros(2)});
  EXPECT_EQ(Jpg(longest), NotFound(4 + 0xFFFF));
}

TEST(JpegXmpLocator, LengthOfZeroOrOneEndsTheWalkInTheLengthField) {
  for (std::uint16_t length = 0; length < 2; ++length) {
    SCOPED_TRACE(length);
    EXPECT_EQ(Jpg(Jpeg().SegmentOfLength(0xE0, length, Zeros(4)).Xmp("packet")), NotFound(2));
    EXPECT_EQ(Jpg(Jpeg().SegmentOfLength(0xE1, length, Text("Exif")).Xmp("packet")),
              NotFound(4U + length));
  }
}

TEST(JpegXmpLocator, LengthOfTwoIsAnEmptySegment) {
  EXPECT_EQ(Jpg(Jpeg().Segment(0xE0, {}).Xmp("packet")), Found(2));
}

TEST(JpegXmpLocator, LengthThatCannotBeReadEndsTheWalk) {
  for (const Bytes& tail : {Bytes{0xFF}, Bytes{0xFF, 0xE1}, Bytes{0xFF, 0xE1, 0x00},
                            Bytes{0xFF, 0xD9}, Bytes{0xFF, 0xD9, 0x00}}) {
    EXPECT_EQ(Jpg(Join({{0xFF, 0xD8}, tail})), NotFound(2));
    EXPECT_EQ(Jpg(Join({{0xFF, 0xD8, 0xFF, 0xE1, 0, 6}, Text("Exif"), tail})), NotFound(10));
  }
}

TEST(JpegXmpLocator, WalkEndsWhereNoMarkerStands) {
  EXPECT_EQ(Jpg(Jpeg().Raw({0x00}).Xmp("packet")), NotFound(2));
  EXPECT_EQ(Jpg(Jpeg().Exif(Zeros(2)).Raw({0xFE}).Xmp("packet")), NotFound(14));
  EXPECT_EQ(Jpg(Jpeg().Scan().Xmp("packet")), NotFound(2));
}

// 0xFF is taken as a marker of its own, and the marker behind it as the first byte of a length.
TEST(JpegXmpLocator, FillByteIsNotSkipped) {
  EXPECT_EQ(Jpg(Jpeg().Raw({0xFF}).Xmp("packet")), NotFound(2));
}

TEST(JpegXmpLocator, StandAloneMarkerIsReadAsASegment) {
  // The restart marker's "length" 0x0004 leads past two bytes to the XMP segment.
  EXPECT_EQ(Jpg(Jpeg().Raw({0xFF, 0xD0, 0x00, 0x04, 0, 0}).Xmp("packet")), Found(2));
}

}  // namespace
}  // namespace test
