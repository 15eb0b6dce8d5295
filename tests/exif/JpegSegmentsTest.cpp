// The walk over the marker segments of a JPEG file.

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/TiffSuite.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

const Stored kRating = {0xAA01, 162, 0, "35000000"};

struct Size {
  std::uint32_t width;
  std::uint32_t height;

  bool operator==(const Size&) const = default;
};

// The image size that a walk finds.
Size SizeOf(const Bytes& bytes) {
  StoreFile file(bytes);
  file.Store().m_nImageWidth = 1;
  file.Store().m_nImageHeight = 1;
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  return {file.Store().m_nImageWidth, file.Store().m_nImageHeight};
}

Bytes Orientation(std::uint16_t value, ByteOrder order = ByteOrder::LittleEndian) {
  const Tiff tiff(order);
  return tiff.Build({tiff.Short(274, {value})});
}

TEST(JpegSegments, WithoutAnOpenFileIsRefused) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnParseAppSegments(), E_POINTER);
  store.m_pFile.emplace();
  EXPECT_EQ(store.m_fnParseAppSegments(), E_POINTER);
}

TEST(JpegSegments, AnythingButAStartOfImageIsReadAsNothing) {
  const Bytes rest = Jpeg().Exif(Orientation(6)).Frame(64, 48).Build();
  for (const Bytes& start : {Bytes{0xFF, 0xD9}, Bytes{0xFE, 0xD8}, Bytes{0x89, 0x50},
                             Bytes{0x00, 0x00}, Bytes{0xD8, 0xFF}}) {
    StoreFile file(Join({start, Bytes(rest.begin() + 2, rest.end())}));
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty()) << Hex(start);
    EXPECT_EQ(file.Store().m_nImageWidth, 0U) << Hex(start);
    EXPECT_EQ(file.Store().m_nImageHeight, 0U) << Hex(start);
  }
}

TEST(JpegSegments, EmptyAndCutFilesSucceed) {
  for (const Bytes& bytes : {Bytes{}, Bytes{0xFF}, Bytes{0xFF, 0xD8}, Bytes{0xFF, 0xD8, 0xFF},
                             Bytes{0xFF, 0xD8, 0xFF, 0xE1}, Bytes{0xFF, 0xD8, 0xFF, 0xE1, 0}}) {
    StoreFile file(bytes);
    EXPECT_EQ(file.ParseJpeg(), S_OK) << Hex(bytes);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  }
}

TEST(JpegSegments, WalkBeginsAtTheStartOfTheFile) {
  StoreFile file(Jpeg().Exif(Orientation(6)).Build());
  file.Stream().Seek(11);
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
}

// --- Image size ---

TEST(JpegSegments, ImageSizeStartsAt0) {
  EXPECT_EQ(SizeOf(Jpeg().Scan().Build()), (Size{0, 0}));
}

TEST(JpegSegments, FrameMarkersAreC0ToCFButC4C8AndCC) {
  for (std::uint8_t marker = 0xC0; marker <= 0xCF; ++marker) {
    const bool frame = marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    EXPECT_EQ(SizeOf(Jpeg().Frame(640, 480, marker).Scan().Build()),
              (frame ? Size{640, 480} : Size{0, 0}))
        << int{marker};
  }
}

TEST(JpegSegments, OtherMarkersAreNoFrames) {
  constexpr std::uint8_t kMarkers[] = {0x01, 0xBF, 0xD0, 0xDA, 0xDB, 0xE0, 0xEE, 0xFE};
  for (const std::uint8_t marker : kMarkers) {
    EXPECT_EQ(SizeOf(Jpeg().Frame(640, 480, marker).Build()), (Size{0, 0})) << int{marker};
  }
}

TEST(JpegSegments, FirstFrameWins) {
  EXPECT_EQ(SizeOf(Jpeg().Frame(640, 480).Frame(64, 48, 0xC2).Build()), (Size{640, 480}));
}

TEST(JpegSegments, FrameOfUnknownHeightGivesWayToTheNext) {
  EXPECT_EQ(SizeOf(Jpeg().Frame(640, 0).Frame(64, 48).Build()), (Size{64, 48}));
  EXPECT_EQ(SizeOf(Jpeg().Frame(0, 480).Frame(64, 48).Build()), (Size{64, 48}));
  EXPECT_EQ(SizeOf(Jpeg().Frame(640, 0).Build()), (Size{640, 0}));
}

TEST(JpegSegments, CutFrameGivesZeros) {
  const Bytes whole = Jpeg().Frame(640, 480).Build();
  for (std::ptrdiff_t size = 2; size < 11; ++size) {
    const Size expected = {0, size < 9 ? 0U : 480U};
    EXPECT_EQ(SizeOf(Bytes(whole.begin(), whole.begin() + size)), expected) << size;
  }
}

TEST(JpegSegments, LargestSizeIsUnsigned) {
  EXPECT_EQ(SizeOf(Jpeg().Frame(65535, 65534).Build()), (Size{65535, 65534}));
}

TEST(JpegSegments, FrameAfterMetadataIsFound) {
  EXPECT_EQ(
      SizeOf(Jpeg().Exif(Orientation(6)).Segment(0xFE, Text("comment")).Frame(64, 48).Build()),
      (Size{64, 48}));
}

// --- How segments follow each other ---

TEST(JpegSegments, ScanDataEndsTheWalk) {
  EXPECT_EQ(SizeOf(Jpeg().Scan().Frame(64, 48).Build()), (Size{0, 0}));
}

TEST(JpegSegments, ScanWithoutDataDoesNot) {
  EXPECT_EQ(SizeOf(Jpeg().Segment(0xDA, {1, 1, 0, 0, 63, 0}).Frame(64, 48).Build()),
            (Size{64, 48}));
}

TEST(JpegSegments, LengthOf0Or1EndsTheWalk) {
  for (const std::uint16_t length : {std::uint16_t{0}, std::uint16_t{1}}) {
    EXPECT_EQ(SizeOf(Jpeg().SegmentOfLength(0xE0, length, {}).Frame(64, 48).Build()), (Size{0, 0}));
    EXPECT_EQ(SizeOf(Jpeg().SegmentOfLength(0xE1, length, {0xFF, 0xFF}).Frame(64, 48).Build()),
              (Size{0, 0}));
  }
}

TEST(JpegSegments, LengthOf2IsAnEmptySegment) {
  EXPECT_EQ(SizeOf(Jpeg().Segment(0xE0, {}).Segment(0xE1, {}).Frame(64, 48).Build()),
            (Size{64, 48}));
}

TEST(JpegSegments, FillBytesAreNotSkipped) {
  // The second 0xFF is taken for a marker, and what follows for its length.
  EXPECT_EQ(SizeOf(Jpeg().Raw({0xFF}).Frame(64, 48).Build()), (Size{0, 0}));
}

TEST(JpegSegments, MarkersWithoutSegmentAreNotKnown) {
  // A restart marker's length is read from the two bytes after it.
  EXPECT_EQ(SizeOf(Jpeg().Raw({0xFF, 0xD0}).Frame(64, 48).Build()), (Size{0, 0}));
  EXPECT_EQ(SizeOf(Jpeg().Raw({0xFF, 0xD0, 0, 2}).Frame(64, 48).Build()), (Size{64, 48}));
}

TEST(JpegSegments, LengthThatCannotBeReadEndsTheWalk) {
  EXPECT_EQ(SizeOf({0xFF, 0xD8, 0xFF, 0xD9}), (Size{0, 0}));
  EXPECT_EQ(SizeOf({0xFF, 0xD8, 0xFF, 0xD9, 0x00}), (Size{0, 0}));
  EXPECT_EQ(SizeOf(Jpeg().Frame(64, 48).Build()), (Size{64, 48}));
}

TEST(JpegSegments, LengthBeyondTheFileEndsTheWalk) {
  StoreFile file(Jpeg().Frame(64, 48).SegmentOfLength(0xE1, 0xFFFF, Text("Exif")).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(file.Store().m_nImageWidth, 64U);
}

TEST(JpegSegments, ManyEmptySegmentsEnd) {
  Jpeg jpeg;
  for (int i = 0; i < 5000; ++i) jpeg.Segment(0xE5, {});
  EXPECT_EQ(SizeOf(jpeg.Frame(64, 48).Build()), (Size{64, 48}));
}

// --- EXIF ---

class JpegExif : public TiffSuite {};
INSTANTIATE_TEST_SUITE_P(BothOrders, JpegExif, kBothOrders, OrderName);

TEST_P(JpegExif, SegmentIsRead) {
  StoreFile file(Jpeg().Exif(Orientation(6, GetParam())).Frame(64, 48).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
}

TEST_P(JpegExif, TwoBytesAfterTheNameAreNotTested) {
  StoreFile file(Jpeg().Segment(0xE1, Join({Text("ExifXY"), Orientation(6, GetParam())})).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
}

TEST_P(JpegExif, NameIsCaseSensitiveAndInApp1Only) {
  const Bytes block = Orientation(6, GetParam());
  const Bytes lower = Join({Text("exif"), Zeros(2), block});
  const Bytes upper = Join({Text("Exif"), Zeros(2), block});
  for (const Bytes& bytes :
       {Jpeg().Segment(0xE1, lower).Build(), Jpeg().Segment(0xE0, upper).Build(),
        Jpeg().Segment(0xE2, upper).Build()}) {
    StoreFile file(bytes);
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  }
}

TEST_P(JpegExif, SecondSegmentWritesOverTheFirst) {
  const Bytes first = tiff.Build({tiff.Short(274, {1}), tiff.Ascii(271, "First"),
                                  tiff.Child(0x8769, {tiff.Short(0x8827, {100})})});
  const Bytes second = tiff.Build({tiff.Short(274, {8}), tiff.Ascii(272, "Second")});
  StoreFile file(Jpeg().Exif(first).Exif(second).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), (Tags{271, 272, 274}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 8));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "First"));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 0x8827), ShortValue(0x8827, 100));
}

TEST_P(JpegExif, BadSegmentDoesNotEndTheWalk) {
  StoreFile file(Jpeg()
                     .Exif(Text("no TIFF header at all"))
                     .Exif(Orientation(3, GetParam()))
                     .Frame(64, 48)
                     .Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 3));
  EXPECT_EQ(file.Store().m_nImageWidth, 64U);
}

TEST_P(JpegExif, Magic26StopsTheSegmentsAfterItToo) {
  StoreFile file(Jpeg()
                     .Exif(tiff.Build({tiff.Short(274, {1})}, {}, 26))
                     .Exif(Orientation(6, GetParam()))
                     .Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(JpegExif, SegmentBoundsValuesAndDirectories) {
  // The segment's payload begins at 6, the TIFF block at 12.
  const Bytes block =
      tiff.Build({tiff.AtOffset(1001, 7, 5, 0U - 6U), tiff.AtOffset(1002, 7, 5, 0U - 5U),
                  tiff.AtOffset(1003, 7, 5, 61), tiff.AtOffset(1004, 7, 5, 62)});
  ASSERT_EQ(block.size(), 62U);
  StoreFile file(Jpeg().Exif(block).Raw(Text("behind")).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), (Tags{1002, 1003}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1002),
            (Stored{1002, 7, 5, Hex(Join({Text("xif"), Zeros(2)}))}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1003),
            (Stored{1003, 7, 5, Hex(Join({Zeros(1), Text("behi")}))}));
}

TEST_P(JpegExif, NextDirectoryOutsideTheSegmentIsNotRead) {
  const Bytes directory = tiff.BuildDirectory({tiff.Long(0x201, {8}), tiff.Long(0x202, {4})}, 0);
  Bytes block = Orientation(6, GetParam());
  ASSERT_EQ(block.size(), 26U);
  const Bytes next = Number(26);
  block.resize(22);
  StoreFile file(Jpeg().Exif(Join({block, next})).Raw(directory).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{274});
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD1).empty());
  EXPECT_EQ(file.Store().m_pThumbnail, nullptr);
}

// --- XMP ---

TEST(JpegXmp, SegmentIsRead) {
  StoreFile file(Jpeg().Xmp(kRatingPacket).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_XMP, 0xAA01), kRating);
}

TEST(JpegXmp, SignatureIs27BytesOnly) {
  for (const char* ending : {"/", "X", "?", " ", "/more/"}) {
    const Bytes payload =
        Join({Text("http://ns.adobe.com/xap/1.0"), Text(ending), Zeros(1), Text(kRatingPacket)});
    StoreFile file(Jpeg().Segment(0xE1, payload).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_EQ(Find(file.Store(), BLOCK_XMP, 0xAA01), kRating) << ending;
  }
}

TEST(JpegXmp, OtherSignaturesAreSkipped) {
  for (const char* signature :
       {"http://ns.adobe.com/xmp/extension/", "http://ns.adobe.com/xap/1.1/",
        "http://ns.adobe.com/xap/1,0/", "https://ns.adobe.com/xap/1.0/",
        "HTTP://ns.adobe.com/xap/1.0/", "http"}) {
    StoreFile file(Jpeg()
                       .Segment(0xE1, Join({Text(signature), Zeros(1), Text(kRatingPacket)}))
                       .Frame(64, 48)
                       .Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_XMP).empty()) << signature;
    EXPECT_EQ(file.Store().m_nImageWidth, 64U) << signature;
  }
}

TEST(JpegXmp, TwoBytesAfterTheSegmentBelongToThePacket) {
  // The last tag of a cut packet ends 0 to 3 bytes after the segment.
  const std::string_view cut = kRatingPacket.substr(0, kRatingPacket.find("</xmp:Rating>") + 13);
  const Bytes payload = Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1), Text(cut)});
  for (std::uint16_t beyond = 0; beyond <= 3; ++beyond) {
    const auto length = static_cast<std::uint16_t>(payload.size() + 2 - beyond);
    StoreFile file(Jpeg().SegmentOfLength(0xE1, length, payload).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_EQ(Find(file.Store(), BLOCK_XMP, 0xAA01),
              beyond <= 2 ? std::optional(kRating) : std::nullopt)
        << beyond;
  }
}

TEST(JpegXmp, OtherMarkersAreSkipped) {
  const Bytes payload = Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1), Text(kRatingPacket)});
  StoreFile file(Jpeg().Segment(0xE3, payload).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_XMP).empty());
}

// --- All kinds in one file ---

TEST(JpegSegments, EveryKindOfSegmentIsReadFromOneFile) {
  const Bytes icc = Bytes(128, 0x41);
  const Bytes resources = PhotoshopResource(0x0404, {0x1C, 2, 5, 0, 2, 'o', 'k'});
  StoreFile file(Jpeg()
                     .Exif(Orientation(6))
                     .Xmp(kRatingPacket)
                     .Icc(icc)
                     .Photoshop(resources)
                     .Frame(64, 48)
                     .Scan()
                     .Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{274});
  EXPECT_EQ(Keys(file.Store(), BLOCK_XMP), Tags{0xAA01});
  EXPECT_EQ(Keys(file.Store(), BLOCK_ICC).size(), 17U);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IPTC), Tags{31});
  EXPECT_EQ(file.Store().m_nImageHeight, 48U);
}

}  // namespace
}  // namespace test
