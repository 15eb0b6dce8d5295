#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/ExifLocator.h"
#include "support/Jpeg.h"
#include "support/TempFile.h"

namespace test {
namespace {

struct Located {
  HRESULT result;
  std::uint64_t position;

  bool operator==(const Located&) const = default;
};

constexpr std::uint64_t kUntouched = 99;

Located Locate(const Bytes& bytes) {
  const TempFile file(bytes);
  FileStream stream;
  EXPECT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  Located located = {S_OK, kUntouched};
  located.result = LocateJpegExif(stream, &located.position);
  return located;
}

TEST(ExifLocator, FindsTheMarkerOfTheFirstExifSegment) {
  EXPECT_EQ(Locate(Jpeg().Exif({}).Scan().Build()), (Located{LMD_E_HAS_EXIF, 2}));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE0, Zeros(14)).Exif({}).Exif({}).Scan().Build()),
            (Located{LMD_E_HAS_EXIF, 20}));
}

TEST(ExifLocator, OtherSegmentsAreWalkedPast) {
  const Bytes file = Jpeg().Xmp("Exif").Segment(0xE2, Text("Exif")).Scan().Build();
  EXPECT_EQ(Locate(file), (Located{S_OK, 2}));
  EXPECT_EQ(Locate(Jpeg().Scan().Build()), (Located{S_OK, 2}));
}

TEST(ExifLocator, WalkEndsBehindTheScanHeader) {
  EXPECT_EQ(Locate(Jpeg().Scan().Exif({}).Build()), (Located{S_OK, 2}));
}

TEST(ExifLocator, OnlyFourLettersMakeAnExifSegment) {
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Text("Exif")).Build()).result, LMD_E_HAS_EXIF);
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Text("Exi")).Build()).result, S_OK);
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Text("exif")).Build()).result, S_OK);
}

TEST(ExifLocator, CutFilesEndTheWalk) {
  const Bytes whole = Jpeg().Segment(0xE0, Zeros(14)).Exif(Zeros(20)).Build();
  for (std::size_t size = 2; size < whole.size(); ++size) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    const Located expected = size < 28 ? Located{S_OK, 2} : Located{LMD_E_HAS_EXIF, 20};
    EXPECT_EQ(Locate(cut), expected) << size;
  }
}

TEST(ExifLocator, FileMustBeginAsAJpeg) {
  EXPECT_EQ(Locate({}), (Located{LMD_E_BAD_FORMAT, kUntouched}));
  EXPECT_EQ(Locate({0xFF}), (Located{LMD_E_BAD_FORMAT, kUntouched}));
  EXPECT_EQ(Locate({0xFF, 0xD9, 0xFF, 0xE1}), (Located{LMD_E_BAD_FORMAT, kUntouched}));
}

TEST(ExifLocator, SegmentWithoutALengthEndsTheWalk) {
  EXPECT_EQ(Locate(Join({{0xFF, 0xD8, 0xFF, 0xE1, 0, 0}, Text("Exif")})),
            (Located{LMD_E_HAS_EXIF, 2}));
  EXPECT_EQ(Locate(Join({{0xFF, 0xD8, 0xFF, 0xE0, 0, 0, 0xFF, 0xE1, 0, 6}, Text("Exif")})),
            (Located{S_OK, 2}));
}

}  // namespace
}  // namespace test
