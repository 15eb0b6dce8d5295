#include <gtest/gtest.h>

#include "names/Names.h"
#include "support/Jpeg.h"
#include "tool/WriteTestSupport.h"
#include "write/WritableTags.h"
#include "writer/AcceptedTags.h"

namespace {

// A name finds its own tag: no two accepted tags share one, and none is without.
TEST(WritableTags, EveryAcceptedTagIsFoundByItsName) {
  for (const test::AcceptedTags& row : test::AllAcceptedTags()) {
    for (const std::uint16_t tag : row.tags) {
      const tool::TagRow* name = tool::FindInGroup(row.group, tag);
      ASSERT_NE(name, nullptr) << tag;
      const auto found = tool::FindWritableTag(name->name);
      ASSERT_TRUE(found.has_value()) << name->name;
      EXPECT_EQ(found->group, row.group) << name->name;
      EXPECT_EQ(found->tag, tag) << name->name;
      EXPECT_EQ(found->type, row.type) << name->name;
    }
  }
}

TEST(WritableTags, OthersAreNotFound) {
  for (const char* name : {"LensMake", "Orientation", "ExifIFDPointer", "GPSInfoIFDPointer",
                           "GPSHPositioningError", "City", "Foo", ""}) {
    EXPECT_FALSE(tool::FindWritableTag(name).has_value()) << name;
  }
}

TEST(WritableTags, NamesOfAllTablesAreKnown) {
  for (const char* name : {"Orientation", "LensMake", "InteroperabilityIndex", "GPSLatitude",
                           "City", "SensorFormatFactor", "Info17", "ProfileDescription",
                           "GPano:ProjectionType", "SamplesPerPixel"}) {
    EXPECT_TRUE(tool::IsTagName(name)) << name;
  }
  EXPECT_FALSE(tool::IsTagName("Foo"));
  EXPECT_FALSE(tool::IsTagName(""));
}

struct Written {
  const char* name;
  const char* value;
  const char* shown;
};

// clang-format off
constexpr Written kAllTags[] = {
    {"ImageDescription", "a lake", "a lake"},
    {"Make", "Maker", "Maker"},
    {"Model", "Model 1", "Model 1"},
    {"XResolution", "72", "72 per inch"},
    {"YResolution", "300/1", "300 per inch"},
    {"ResolutionUnit", "2", "inch (2)"},
    {"Software", "1.0", "1.0"},
    {"DateTime", "2024:05:01 12:00:00", "2024-05-01 12:00:00"},
    {"Artist", "A. Painter", "A. Painter"},
    {"Copyright", "nobody", "nobody"},
    {"ExposureTime", "1/250", "1/250 s"},
    {"FNumber", "f/2.8", "f/2.8"},
    {"ExposureProgram", "3", "aperture priority (3)"},
    {"SpectralSensitivity", "red", "red"},
    {"PhotographicSensitivity", "100", "ISO 100"},
    {"SensitivityType", "2", "recommended exposure index (2)"},
    {"StandardOutputSensitivity", "110", "ISO 110"},
    {"RecommendedExposureIndex", "120", "ISO 120"},
    {"ISOSpeed", "ISO 130", "ISO 130"},
    {"ISOSpeedLatitudeyyy", "140", "ISO 140"},
    {"ISOSpeedLatitudezzz", "70000", "ISO 70000"},
    {"ExifVersion", "2.32", "2.32"},
    {"DateTimeOriginal", "2024-05-02 12:00:00", "2024-05-02 12:00:00"},
    {"DateTimeDigitized", "2024:05:03 12:00:00", "2024-05-03 12:00:00"},
    {"ShutterSpeedValue", "8", "1/256 s (APEX 8)"},
    {"ApertureValue", "4", "f/4 (APEX 4)"},
    {"BrightnessValue", "-5.25", "-5.25 EV"},
    {"ExposureBiasValue", "-1/2", "-0.5 EV"},
    {"SubjectDistance", "2.5 m", "2.5 m"},
    {"MeteringMode", "5", "pattern (5)"},
    {"LightSource", "9", "fine weather (9)"},
    {"Flash", "32", "no flash function (32)"},
    {"FocalLength", "50 mm", "50 mm"},
    {"SubjectArea", "10,20,5", "circle around 10, 20, diameter 5"},
    {"UserComment", "Gr\u00FC\u00DFe", "Gr\u00FC\u00DFe"},
    {"SubSecTimeOriginal", "042", "042"},
    {"SubSecTimeDigitized", "43", "43"},
    {"ColorSpace", "1", "sRGB (1)"},
    {"PixelXDimension", "4000", "4000"},
    {"PixelYDimension", "3000", "3000"},
    {"FlashEnergy", "12.5", "12.5"},
    {"SpatialFrequencyResponse", "1,2,3,4,5", "5 bytes"},
    {"FocalPlaneXResolution", "3443.9", "3443.9 per inch"},
    {"FocalPlaneYResolution", "3442", "3442 per inch"},
    {"FocalPlaneResolutionUnit", "2", "inch (2)"},
    {"SubjectLocation", "30,40", "30 40"},
    {"ExposureIndex", "200", "200"},
    {"SensingMethod", "2", "one-chip colour area sensor (2)"},
    {"FileSource", "3", "digital still camera (3)"},
    {"SceneType", "1", "directly photographed (1)"},
    {"CFAPattern", "2,0,2,0,0,1,1,2", "02 00 02 00 00 01 01 02"},
    {"CustomRendered", "1", "custom process (1)"},
    {"ExposureMode", "1", "manual (1)"},
    {"WhiteBalance", "0", "auto (0)"},
    {"DigitalZoomRatio", "1.5x", "1.5x"},
    {"FocalLengthIn35mmFilm", "75 mm", "75 mm"},
    {"SceneCaptureType", "1", "landscape (1)"},
    {"GainControl", "1", "low gain up (1)"},
    {"Contrast", "2", "hard (2)"},
    {"Saturation", "1", "low (1)"},
    {"Sharpness", "1", "soft (1)"},
    {"SubjectDistanceRange", "3", "distant view (3)"},
    {"BodySerialNumber", "B1", "B1"},
    {"LensSpecification", "24,70,2.8,4", "24-70 mm f/2.8-4"},
    {"LensModel", "24-70", "24-70"},
    {"LensSerialNumber", "L1", "L1"},
    {"GPSVersionID", "2.3.0.0", "2.3.0.0"},
    {"GPSLatitudeRef", "S", "S"},
    {"GPSLatitude", "48.8584", "48° 51' 30.24\" S (-48.8584)"},
    {"GPSLongitudeRef", "E", "E"},
    {"GPSLongitude", "2,17,40.2", "2° 17' 40.2\" E (2.2945)"},
    {"GPSAltitudeRef", "1", "below sea level (1)"},
    {"GPSAltitude", "120.5", "120.5 m below sea level"},
    {"GPSTimeStamp", "12:34:56.5", "12:34:56.5 UTC"},
    {"GPSSatellites", "7", "7"},
    {"GPSStatus", "A", "A"},
    {"GPSMeasureMode", "3", "3"},
    {"GPSDOP", "1.5", "1.5"},
    {"GPSSpeedRef", "K", "K"},
    {"GPSSpeed", "12", "12 km/h"},
    {"GPSTrackRef", "T", "T"},
    {"GPSTrack", "123.4", "123.4° (true north)"},
    {"GPSImgDirectionRef", "M", "M"},
    {"GPSImgDirection", "45", "45° (magnetic north)"},
    {"GPSMapDatum", "WGS-84", "WGS-84"},
    {"GPSDestLatitudeRef", "N", "N"},
    {"GPSDestLatitude", "1", "1° 0' 0\" N (1)"},
    {"GPSDestLongitudeRef", "W", "W"},
    {"GPSDestLongitude", "0.5", "0° 30' 0\" W (-0.5)"},
    {"GPSDestBearingRef", "T", "T"},
    {"GPSDestBearing", "90", "90° (true north)"},
    {"GPSDestDistanceRef", "K", "K"},
    {"GPSDestDistance", "3.2", "3.2 km"},
    {"GPSProcessingMethod", "GPS", "GPS"},
    {"GPSAreaInformation", "Elsewhere", "Elsewhere"},
    {"GPSDateStamp", "2024:05:04", "2024-05-04"},
    {"GPSDifferential", "1", "corrected (1)"},
};
// clang-format on

TEST(WritableTags, TableHoldsEveryAcceptedTag) {
  std::size_t accepted = 0;
  for (const test::AcceptedTags& row : test::AllAcceptedTags()) accepted += row.tags.size();
  EXPECT_EQ(std::size(kAllTags), accepted);
  for (const Written& row : kAllTags) EXPECT_TRUE(tool::FindWritableTag(row.name)) << row.name;
}

TEST(WritableTags, ValuesOfAllTagsAreShownAsTheyWereSet) {
  const test::TempFile source(test::Jpeg().Frame(4, 3).Build());
  const test::OutputPath output;
  std::vector<std::string> arguments = {"write", test::Argument(source), output.Argument(),
                                        "--show"};
  for (const Written& row : kAllTags) {
    arguments.push_back("--set");
    arguments.push_back(std::string(row.name) + "=" + row.value);
  }
  const test::ToolRun run = test::RunTool(arguments);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
  for (const Written& row : kAllTags) {
    const std::string line = " " + tool::Pad(row.name, 28) + "  " + row.shown + "\n";
    EXPECT_NE(run.out.find(line), std::string::npos) << row.name << "\n" << run.out;
  }
}

}  // namespace
