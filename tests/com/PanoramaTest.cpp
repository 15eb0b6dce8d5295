// IsPanorama, for each file type and state of the object.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "RecordsTest.h"
#include "support/Jpeg.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

constexpr std::uint32_t kProjectionType = 0xAB19;

Bytes XmpJpeg(std::string_view packet) {
  return Jpeg().Xmp(packet).Frame(8, 8).Scan().Build();
}

Bytes PanoramaPng() {
  return Png().Header().Xmp("<x>equirectangular</x>").End().Build();
}

class PanoramaTest : public RecordsTest {
 protected:
  void Expect(HRESULT expected, std::uint32_t flag = 0) {
    m_flag = 99;
    EXPECT_EQ(m_object->IsPanorama(&m_flag), expected);
    EXPECT_EQ(m_flag, flag);
  }

  void Open(const TempFile& file) { ASSERT_EQ(m_object->Open(file.Path()), S_OK); }
  void Open(const WideString& path) { ASSERT_EQ(m_object->Open(path.c_str()), S_OK); }

  std::uint32_t m_flag = 99;
};

TEST_F(PanoramaTest, NoFileIsNotFoundAndClearsTheFlag) {
  Expect(LMD_E_NOT_FOUND);
}

TEST_F(PanoramaTest, ParseResultWithoutAFileTypeIsNotFound) {
  Give({{kXmpGroup, kProjectionType, 5, WideBytes(LMD_W("equirectangular"))}});
  Expect(LMD_E_NOT_FOUND);
}

TEST_F(PanoramaTest, NullFlagIsRefusedFirst) {
  EXPECT_EQ(m_object->IsPanorama(nullptr), LMD_E_INVALID_ARG);
  const TempFile jpeg(SmallJpeg());
  Open(jpeg);
  EXPECT_EQ(m_object->IsPanorama(nullptr), LMD_E_INVALID_ARG);
  const TempFile png(PanoramaPng(), ".png");
  Open(png);
  EXPECT_EQ(m_object->IsPanorama(nullptr), LMD_E_INVALID_ARG);
}

TEST_F(PanoramaTest, TiffIsNotFoundAlthoughAParseResultRemains) {
  const TempFile jpeg(XmpJpeg(XmpPacket("GPano:ProjectionType=\"equirectangular\"")));
  Open(jpeg);
  Expect(S_OK, 1);
  const TempFile tiff({'I', 'I', 0x2A, 0, 8, 0, 0, 0}, ".tif");
  EXPECT_EQ(m_object->Open(tiff.Path()), LMD_E_BAD_FORMAT);
  Expect(LMD_E_NOT_FOUND);
}

// --- PNG ---

TEST_F(PanoramaTest, PngWithTheWordInItsXmpIsMarked) {
  const TempFile file(PanoramaPng(), ".png");
  Open(file);
  Expect(S_OK, 1);
}

TEST_F(PanoramaTest, PngWithoutThatWordOrWithoutXmpIsNotMarked) {
  const TempFile other(Png().Header().Xmp("<x>cylindrical</x>").End().Build(), ".png");
  Open(other);
  Expect(S_OK, 0);
  const TempFile plain(Png().Header().End().Build(), ".png");
  Open(plain);
  Expect(S_OK, 0);
}

TEST_F(PanoramaTest, PngThatIsGoneIsNotFound) {
  const WideString path = TempPath(".png");
  WriteFile(path, PanoramaPng());
  Open(path);
  RemoveFile(path);
  Expect(LMD_E_NOT_FOUND);
}

TEST_F(PanoramaTest, PngThatHasBecomeSomethingElseIsABadFormat) {
  const TempFile file(PanoramaPng(), ".png");
  Open(file);
  WriteFile(file.Path(), Text("no longer a PNG"));
  Expect(LMD_E_BAD_FORMAT);
}

TEST_F(PanoramaTest, PngIsReadAfreshAndClosedEachTime) {
  const WideString path = TempPath(".png");
  WriteFile(path, Png().Header().End().Build());
  Open(path);
  Expect(S_OK, 0);
  WriteFile(path, PanoramaPng());
  Expect(S_OK, 1);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
}

TEST_F(PanoramaTest, PngDoesNotAskForAParseResult) {
  Give({});
  m_info.state = 0;
  const TempFile file(PanoramaPng(), ".png");
  IImageInfo* none = nullptr;
  ASSERT_EQ(m_object->ParseBasic(file.Path(), &none), S_OK);
  Expect(S_OK, 1);
}

// --- JPEG ---

TEST_F(PanoramaTest, JpegWithAnyProjectionTypeIsMarked) {
  for (const char* value : {"equirectangular", "cylindrical", ""}) {
    const TempFile file(XmpJpeg(XmpPacket("GPano:ProjectionType=\"" + std::string(value) + "\"")));
    Open(file);
    Expect(S_OK, 1);
  }
}

TEST_F(PanoramaTest, JpegWithOtherXmpValuesIsNoPanorama) {
  const TempFile file(XmpJpeg(XmpPacket("xmp:Rating=\"3\"", kXmpBasic)));
  Open(file);
  Expect(LMD_E_NOT_PANORAMA);
}

TEST_F(PanoramaTest, JpegWhoseXmpGivesNoValuesIsNoPanorama) {
  const TempFile file(XmpJpeg(XmpPacket("xmp:Nothing=\"1\"", kXmpBasic)));
  Open(file);
  Expect(LMD_E_NOT_PANORAMA);
}

TEST_F(PanoramaTest, JpegWithoutXmpIsNotFound) {
  const TempFile file(SmallJpeg());
  Open(file);
  Expect(LMD_E_NOT_FOUND);
}

// By design: the records of a table end at the first value larger than the table's first one. The
// rating's text of 4 bytes hides the projection type of 32.
TEST_F(PanoramaTest, ShorterValueInFrontHidesTheProjectionType) {
  const std::string declarations = std::string(kGPano) + " " + std::string(kXmpBasic);
  const std::string_view attributes = "xmp:Rating=\"3\" GPano:ProjectionType=\"equirectangular\"";
  const TempFile file(XmpJpeg(XmpPacket(attributes, declarations)));
  Open(file);
  Expect(LMD_E_NOT_PANORAMA);
}

// The parser takes an XMP segment by 27 characters of the namespace, the locator by all 28.
TEST_F(PanoramaTest, XmpSegmentWithAnotherLastNamespaceCharacterIsNotLocated) {
  const auto file = [](std::string_view packet) {
    const Bytes payload = Join({Text("http://ns.adobe.com/xap/1.0?"), Zeros(1), Text(packet)});
    return Jpeg().Segment(0xE1, payload).Frame(8, 8).Scan().Build();
  };
  const TempFile without(file(XmpPacket("xmp:Nothing=\"1\"", kXmpBasic)));
  Open(without);
  Expect(LMD_E_NOT_FOUND);
  const TempFile with(file(XmpPacket("GPano:ProjectionType=\"equirectangular\"")));
  Open(with);
  Expect(S_OK, 1);
}

TEST_F(PanoramaTest, JpegThatIsGoneIsAnsweredFromItsRecordsAlone) {
  const WideString path = TempPath();
  WriteFile(path, XmpJpeg(XmpPacket("GPano:ProjectionType=\"equirectangular\"")));
  Open(path);
  RemoveFile(path);
  Expect(S_OK, 1);
  WriteFile(path, XmpJpeg(XmpPacket("xmp:Rating=\"3\"", kXmpBasic)));
  Open(path);
  RemoveFile(path);
  Expect(LMD_E_NOT_PANORAMA);
}

TEST_F(PanoramaTest, JpegWithoutXmpRecordsThatIsGoneIsNotFound) {
  const WideString path = TempPath();
  WriteFile(path, XmpJpeg("no packet"));
  Open(path);
  Expect(LMD_E_NOT_PANORAMA);
  RemoveFile(path);
  Expect(LMD_E_NOT_FOUND);
}

TEST_F(PanoramaTest, JpegThatHasBecomeSomethingElseIsNotFound) {
  const TempFile file(XmpJpeg("no packet"));
  Open(file);
  WriteFile(file.Path(), Text("no longer a JPEG"));
  Expect(LMD_E_NOT_FOUND);
}

TEST_F(PanoramaTest, JpegWithoutAParseResultIsRefused) {
  const TempFile file(XmpJpeg(XmpPacket("GPano:ProjectionType=\"equirectangular\"")));
  Ref<IImageInfo> info;
  ASSERT_EQ(m_object->ParseBasic(file.Path(), info.Out()), S_OK);
  Expect(LMD_E_INVALID_ARG);
}

TEST_F(PanoramaTest, JpegWithAnotherStateIsRefused) {
  const TempFile file(SmallJpeg());
  Open(file);
  Give({{kXmpGroup, kProjectionType, 5, {}}});
  for (const std::int32_t state : {0, 2, -1}) {
    m_info.state = state;
    Expect(LMD_E_INVALID_ARG);
  }
  m_info.state = 1;
  Expect(S_OK, 1);
}

TEST_F(PanoramaTest, ProjectionTypeCountsWhateverItsRecordType) {
  const TempFile file(SmallJpeg());
  Open(file);
  for (const std::uint32_t type : kRecordTypes) {
    Give({{1, 256, 4097, Zeros(4)},
          {kXmpGroup, 0xAA01, 5, {}},
          {kXmpGroup, kProjectionType, type, {}}});
    Expect(S_OK, 1);
  }
}

TEST_F(PanoramaTest, ProjectionTypeOfAnotherGroupDoesNotCount) {
  const TempFile file(SmallJpeg());
  Open(file);
  Give({{1024, kProjectionType, 5, {}}});
  Expect(LMD_E_NOT_FOUND);
  Give({{1024, kProjectionType, 5, {}}, {kXmpGroup, 0xAB20, 5, {}}});
  Expect(LMD_E_NOT_PANORAMA);
}

TEST_F(PanoramaTest, NoRecordsAtAllLeaveTheAnswerToTheFile) {
  const TempFile with(XmpJpeg("no packet"));
  Open(with);
  Give({});
  Expect(LMD_E_NOT_PANORAMA);
  m_info.list.m_nCount = 5;
  Expect(LMD_E_NOT_PANORAMA);
  const TempFile without(SmallJpeg());
  Open(without);
  Give({});
  Expect(LMD_E_NOT_FOUND);
}

}  // namespace
}  // namespace test
