#include <gtest/gtest.h>

#include "LocatorTest.h"
#include "container/ExifLocator.h"
#include "support/Jpeg.h"

namespace test {
namespace {

Located Exif(const Bytes& bytes) {
  const auto locate = [](FileStream* stream, std::uint64_t* position) {
    return LocateJpegExif(*stream, position);
  };
  return Locate(locate, bytes);
}

TEST(ExifLocator, FindsTheMarkerOfTheFirstExifSegment) {
  EXPECT_EQ(Exif(Jpeg().Exif({}).Scan().Build()), (Located{LMD_E_HAS_EXIF, 2}));
  EXPECT_EQ(Exif(Jpeg().Segment(0xE0, Zeros(14)).Exif({}).Exif({}).Scan().Build()),
            (Located{LMD_E_HAS_EXIF, 20}));
}

TEST(ExifLocator, OtherSegmentsAreWalkedPast) {
  const Bytes file = Jpeg().Xmp("Exif").Segment(0xE2, Text("Exif")).Scan().Build();
  EXPECT_EQ(Exif(file), (Located{S_OK, 2}));
  EXPECT_EQ(Exif(Jpeg().Scan().Build()), (Located{S_OK, 2}));
}

TEST(ExifLocator, WalkEndsBehindTheScanHeader) {
  EXPECT_EQ(Exif(Jpeg().Scan().Exif({}).Build()), (Located{S_OK, 2}));
}

TEST(ExifLocator, OnlyFourLettersMakeAnExifSegment) {
  EXPECT_EQ(Exif(Jpeg().Segment(0xE1, Text("Exif")).Build()).result, LMD_E_HAS_EXIF);
  EXPECT_EQ(Exif(Jpeg().Segment(0xE1, Text("Exi")).Build()).result, S_OK);
  EXPECT_EQ(Exif(Jpeg().Segment(0xE1, Text("exif")).Build()).result, S_OK);
}

TEST(ExifLocator, CutFilesEndTheWalk) {
  const Bytes whole = Jpeg().Segment(0xE0, Zeros(14)).Exif(Zeros(20)).Build();
  for (std::size_t size = 2; size < whole.size(); ++size) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    const Located expected = size < 28 ? Located{S_OK, 2} : Located{LMD_E_HAS_EXIF, 20};
    EXPECT_EQ(Exif(cut), expected) << size;
  }
}

TEST(ExifLocator, FileMustBeginAsAJpeg) {
  EXPECT_EQ(Exif({}), (Located{LMD_E_BAD_FORMAT, kNoPosition}));
  EXPECT_EQ(Exif({0xFF}), (Located{LMD_E_BAD_FORMAT, kNoPosition}));
  EXPECT_EQ(Exif({0xFF, 0xD9, 0xFF, 0xE1}), (Located{LMD_E_BAD_FORMAT, kNoPosition}));
}

TEST(ExifLocator, SegmentWithoutALengthEndsTheWalk) {
  EXPECT_EQ(Exif(Join({{0xFF, 0xD8, 0xFF, 0xE1, 0, 0}, Text("Exif")})),
            (Located{LMD_E_HAS_EXIF, 2}));
  EXPECT_EQ(Exif(Join({{0xFF, 0xD8, 0xFF, 0xE0, 0, 0, 0xFF, 0xE1, 0, 6}, Text("Exif")})),
            (Located{S_OK, 2}));
}

}  // namespace
}  // namespace test
