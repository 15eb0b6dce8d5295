#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/XmpLocators.h"
#include "support/Jpeg.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr std::string_view kNamespace = "http://ns.adobe.com/xap/1.0/";

// Where the locator ends in a file of the given bytes.
struct Located {
  HRESULT result;
  std::uint64_t position;

  bool operator==(const Located&) const = default;
};

void PrintTo(const Located& located, std::ostream* stream) {
  *stream << std::hex << located.result << std::dec << " at " << located.position;
}

Located Locate(const Bytes& bytes) {
  const TempFile file(bytes);
  FileStream stream;
  EXPECT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  Located located{E_FAIL, 999};
  located.result = LocateJpegXmp(&stream, &located.position);
  return located;
}

TEST(JpegXmpLocator, RefusesNullArguments) {
  FileStream stream;
  std::uint64_t position = 7;
  EXPECT_EQ(LocateJpegXmp(nullptr, &position), LMD_E_INVALID_ARG);
  EXPECT_EQ(LocateJpegXmp(&stream, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(position, 7U);
}

TEST(JpegXmpLocator, RefusesAFileWithoutSoi) {
  EXPECT_EQ(Locate({}).result, LMD_E_BAD_FORMAT);
  EXPECT_EQ(Locate({0xFF}).result, LMD_E_BAD_FORMAT);
  EXPECT_EQ(Locate({0xFF, 0xD9, 0xFF, 0xE1}).result, LMD_E_BAD_FORMAT);
  EXPECT_EQ(Locate({0xD8, 0xFF}).result, LMD_E_BAD_FORMAT);
}

TEST(JpegXmpLocator, WithoutSegmentsThePositionIsBehindSoi) {
  EXPECT_EQ(Locate({0xFF, 0xD8}), (Located{S_OK, 2}));
  EXPECT_EQ(Locate(Jpeg().Build()), (Located{S_OK, 2}));
  EXPECT_EQ(Locate(Jpeg().Frame(4, 3).Scan().Build()), (Located{S_OK, 2}));
}

TEST(JpegXmpLocator, OnlyAnExifSegmentMovesThePosition) {
  const Bytes exif = Join({Text("Exif"), Zeros(2), Text("II")});
  EXPECT_EQ(Locate(Jpeg().Segment(0xE0, Text("JFIF")).Build()), (Located{S_OK, 2}));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, exif).Build()), (Located{S_OK, 14}));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE0, Text("JFIF")).Segment(0xE1, exif).Build()),
            (Located{S_OK, 22}));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, exif).Segment(0xE2, Text("ICC")).Build()),
            (Located{S_OK, 14}));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, exif).Segment(0xE1, exif).Build()), (Located{S_OK, 26}));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE2, exif).Build()), (Located{S_OK, 2}));
}

TEST(JpegXmpLocator, FindsXmpBehindExif) {
  const Bytes exif = Join({Text("Exif"), Zeros(2)});
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, exif).Xmp("<x/>").Build()), (Located{LMD_E_XMP_FOUND, 12}));
  EXPECT_EQ(Locate(Jpeg().Xmp("<x/>").Build()), (Located{LMD_E_XMP_FOUND, 2}));
  EXPECT_EQ(Locate(Jpeg().Xmp("").Segment(0xE1, exif).Build()), (Located{LMD_E_XMP_FOUND, 2}));
}

TEST(JpegXmpLocator, ComparesTheWholeNamespace) {
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Text(kNamespace)).Build()).result, LMD_E_XMP_FOUND);
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Join({Text(kNamespace), Text("!")})).Build()).result,
            LMD_E_XMP_FOUND);
  const Bytes withoutSlash = Text(kNamespace.substr(0, 27));
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Join({withoutSlash, Text("!")})).Build()).result, S_OK);
  EXPECT_EQ(Locate(Jpeg().Segment(0xE1, Text("http://ns.adobe.com/xmp/extension/")).Build()).result,
            S_OK);
  EXPECT_EQ(Locate(Jpeg().Segment(0xE2, Text(kNamespace)).Build()).result, S_OK);
}

TEST(JpegXmpLocator, BodyIsReadOfAsManyBytesAsTheLengthSays) {
  EXPECT_EQ(Locate(Jpeg().SegmentOfLength(0xE1, 28, Text(kNamespace)).Build()).result,
            LMD_E_XMP_FOUND);
  EXPECT_EQ(Locate(Jpeg().SegmentOfLength(0xE1, 27, Text(kNamespace)).Build()).result, S_OK);
}

TEST(JpegXmpLocator, StopsAtAByteThatIsNoMarker) {
  EXPECT_EQ(Locate(Jpeg().Scan().Xmp("<x/>").Build()), (Located{S_OK, 2}));
  EXPECT_EQ(Locate(Jpeg().Raw({0x00}).Xmp("<x/>").Build()), (Located{S_OK, 2}));
}

TEST(JpegXmpLocator, LengthOf0Or1EndsInTheLengthFieldItself) {
  EXPECT_EQ(Locate(Jpeg().Raw({0xFF, 0xE0, 0, 0}).Xmp("<x/>").Build()), (Located{S_OK, 2}));
  EXPECT_EQ(Locate(Jpeg().Raw({0xFF, 0xE0, 0, 1}).Xmp("<x/>").Build()), (Located{S_OK, 2}));
}

TEST(JpegXmpLocator, LengthThatCannotBeReadEndsTheWalk) {
  EXPECT_EQ(Locate({0xFF, 0xD8, 0xFF, 0xD9}), (Located{S_OK, 2}));
  EXPECT_EQ(Locate({0xFF, 0xD8, 0xFF, 0xE1, 0x00}), (Located{S_OK, 2}));
  EXPECT_EQ(Locate({0xFF, 0xD8, 0xFF}), (Located{S_OK, 2}));
}

TEST(JpegXmpLocator, SegmentBeyondTheEndEndsTheWalk) {
  EXPECT_EQ(Locate(Jpeg().SegmentOfLength(0xE1, 0xFFFF, Join({Text("Exif"), Zeros(2)})).Build()),
            (Located{S_OK, 4 + 0xFFFF}));
  EXPECT_EQ(Locate(Jpeg().SegmentOfLength(0xE1, 0xFFFF, Text(kNamespace.substr(0, 20))).Build()),
            (Located{S_OK, 2}));
}

}  // namespace
}  // namespace test
