#include <gtest/gtest.h>

#include "support/Bytes.h"
#include "write/Assignments.h"
#include "write/NumberValues.h"

namespace {

// "group/tag type: bytes" of every record, or what is wrong.
std::string Assigned(std::string_view text) {
  OwnedRecords records;
  const std::string error = tool::AddAssignment(text, records);
  if (!error.empty()) return records.empty() ? error : "records beside an error";
  std::string out;
  for (const CInfoRecord& record : records) {
    if (!out.empty()) out += "; ";
    out += std::to_string(record.m_nGroup) + "/" + std::to_string(record.m_nId) + " " +
           std::to_string(record.m_nType) + ": " + test::Hex({record.m_pData, record.m_nSize});
  }
  return out;
}

TEST(Assignments, TextGetsAFinalZero) {
  EXPECT_EQ(Assigned("Make=Ab"), "2/271 4: 416200");
  EXPECT_EQ(Assigned("Artist="), "2/315 4: 00");
  EXPECT_EQ(Assigned("ImageDescription= a=b, c "), "2/270 4: 20613d622c20632000");
  EXPECT_EQ(Assigned("LensModel=\xC3\xBC\xE5\xB1\xB1"), "4/42036 4: c3bce5b1b100");
  EXPECT_EQ(Assigned("GPSLatitudeRef=N"), "8/1 4: 4e00");
}

TEST(Assignments, IntegersTakeFourBytes) {
  EXPECT_EQ(Assigned("ExposureProgram=3"), "4/34850 4097: 03000000");
  EXPECT_EQ(Assigned("ColorSpace=65535"), "4/40961 4097: ffff0000");
  EXPECT_EQ(Assigned("PixelXDimension=4294967295"), "4/40962 4097: ffffffff");
  EXPECT_EQ(Assigned("PhotographicSensitivity=ISO 100"), "4/34855 4097: 64000000");
  EXPECT_EQ(Assigned("PhotographicSensitivity=100, 200"), "4/34855 4097: 64000000c8000000");
  EXPECT_EQ(Assigned("SubjectLocation=1,256"), "4/41492 4097: 0100000000010000");
  EXPECT_EQ(Assigned("FocalLengthIn35mmFilm=75 mm"), "4/41989 4097: 4b000000");
  EXPECT_EQ(Assigned("GPSDifferential=1"), "8/30 1: 01000000");
  EXPECT_EQ(Assigned("GPSDifferential=-32768"), "8/30 1: 0080ffff");
}

TEST(Assignments, RationalsTakeFractionsAndDecimals) {
  EXPECT_EQ(Assigned("ExposureTime=1/250"), "4/33434 4098: 01000000fa000000");
  EXPECT_EQ(Assigned("ExposureTime=1/250 s"), "4/33434 4098: 01000000fa000000");
  EXPECT_EQ(Assigned("ExposureTime=0.5s"), "4/33434 4098: 050000000a000000");
  EXPECT_EQ(Assigned("FNumber=f/2.8"), "4/33437 4098: 1c0000000a000000");
  EXPECT_EQ(Assigned("FNumber=28/10"), "4/33437 4098: 1c0000000a000000");
  EXPECT_EQ(Assigned("FNumber=2.8"), "4/33437 4098: 1c0000000a000000");
  EXPECT_EQ(Assigned("FocalLength=50 mm"), "4/37386 4098: 3200000001000000");
  EXPECT_EQ(Assigned("SubjectDistance=2.5 m"), "4/37382 4098: 190000000a000000");
  EXPECT_EQ(Assigned("DigitalZoomRatio=1.5x"), "4/41988 4098: 0f0000000a000000");
  EXPECT_EQ(Assigned("XResolution=72"), "2/282 4098: 4800000001000000");
  EXPECT_EQ(Assigned("GPSAltitude=120.5 m"), "8/6 4098: b50400000a000000");
}

TEST(Assignments, SignedRationalsMayBeNegative) {
  EXPECT_EQ(Assigned("ExposureBiasValue=-1/3"), "4/37380 2: ffffffff03000000");
  EXPECT_EQ(Assigned("ExposureBiasValue=+0.33 EV"), "4/37380 2: 2100000064000000");
  EXPECT_EQ(Assigned("BrightnessValue=-2.5"), "4/37379 2: e7ffffff0a000000");
  EXPECT_EQ(Assigned("ShutterSpeedValue=8"), "4/37377 2: 0800000001000000");
}

TEST(Assignments, ListsHaveAsManyNumbersAsTheTagAsksFor) {
  EXPECT_EQ(Assigned("LensSpecification=24,70,2.8,0/0"),
            "4/42034 4098: 18000000010000004600000001000000"
            "1c0000000a0000000000000000000000");
  EXPECT_EQ(Assigned("SubjectArea=1,2"), "4/37396 4097: 0100000002000000");
  EXPECT_EQ(Assigned("SubjectArea=1,2,3,4"), "4/37396 4097: 01000000020000000300000004000000");
  EXPECT_EQ(Assigned("SubjectArea=1"),
            "SubjectArea: '1' is not 2 to 4 numbers separated by commas");
  EXPECT_EQ(Assigned("SubjectArea=1,2,3,4,5"),
            "SubjectArea: '1,2,3,4,5' is not 2 to 4 numbers separated by commas");
  EXPECT_EQ(Assigned("LensSpecification=24,70"),
            "LensSpecification: '24,70' is not 4 numbers separated by commas");
  EXPECT_EQ(Assigned("FNumber=2,8"), "FNumber: '2,8' is more than one number");
}

TEST(Assignments, BytesAreNumbersOfAByteEach) {
  EXPECT_EQ(Assigned("FileSource=3"), "4/41728 6: 03");
  EXPECT_EQ(Assigned("CFAPattern=2,0,2,0,0,1,1,2"), "4/41730 6: 0200020000010102");
  EXPECT_EQ(Assigned("GPSAltitudeRef=1"), "8/5 6: 01");
}

TEST(Assignments, VersionsAsInTheFileAndAsPrinted) {
  EXPECT_EQ(Assigned("ExifVersion=0232"), "4/36864 6: 30323332");
  EXPECT_EQ(Assigned("ExifVersion=2.32"), "4/36864 6: 30323332");
  EXPECT_EQ(Assigned("ExifVersion=2.3"), "4/36864 6: 30323330");
  EXPECT_EQ(Assigned("GPSVersionID=2.3.0.0"), "8/0 6: 02030000");
  EXPECT_EQ(Assigned("GPSVersionID=2,3,0,0"), "8/0 6: 02030000");
  for (const char* version : {"", "232", "2.321", "v2.3", "2,32"}) {
    EXPECT_EQ(Assigned(std::string("ExifVersion=") + version),
              "ExifVersion: '" + std::string(version) + "' is no version, such as 0232 or 2.32");
  }
  for (const char* version : {"", "2.3", "2.3.0.0.0", "2.3.0.256", "2.3..0"}) {
    EXPECT_EQ(Assigned(std::string("GPSVersionID=") + version),
              "GPSVersionID: '" + std::string(version) + "' is no version, such as 2.3.0.0");
  }
}

TEST(Assignments, CommentsSayHowTheyAreEncoded) {
  EXPECT_EQ(Assigned("UserComment=Hi"), "4/37510 6: 41534349490000004869");
  EXPECT_EQ(Assigned("UserComment="), "4/37510 6: 4153434949000000");
  EXPECT_EQ(Assigned("UserComment=A\xC3\xBC"), "4/37510 6: 554e49434f4445004100fc00");
  EXPECT_EQ(Assigned("GPSProcessingMethod=\xF0\x9F\x98\x80"), "8/27 6: 554e49434f4445003dd800de");
}

TEST(Assignments, DatesAreDaysOfTheCalendar) {
  const std::string original = "4/36867 4: 323032343a30353a30312031323a33343a353600";
  EXPECT_EQ(Assigned("DateTimeOriginal=2024:05:01 12:34:56"), original);
  EXPECT_EQ(Assigned("DateTimeOriginal=2024-05-01 12:34:56"), original);
  EXPECT_EQ(Assigned("GPSDateStamp=2024:02:29"), "8/29 4: 323032343a30323a323900");
  EXPECT_EQ(Assigned("GPSDateStamp=2024-02-29"), "8/29 4: 323032343a30323a323900");
  for (const char* date :
       {"", "2024:05:01", "2024:05:01 12:34", "2024:05-01 12:34:56", "2024:13:01 12:34:56",
        "2024:00:01 12:34:56", "2023:02:29 12:34:56", "2024:05:00 12:34:56", "2024:05:01 24:00:00",
        "2024:05:01 12:60:00", "2024:05:01 12:34:60", "2024:05:01T12:34:56", "24:05:01 12:34:56",
        "2024:05:01 12:34:56 "}) {
    EXPECT_EQ(
        Assigned(std::string("DateTime=") + date),
        "DateTime: '" + std::string(date) + "' is no date and time, such as 2024:05:01 12:00:00");
  }
  EXPECT_EQ(Assigned("GPSDateStamp=2023:02:29"),
            "GPSDateStamp: '2023:02:29' is no date, such as 2024:05:01");
}

TEST(Assignments, TimeOfTheDayIsThreeNumbers) {
  const std::string stamp = "8/7 4098: 0c000000010000002200000001000000";
  EXPECT_EQ(Assigned("GPSTimeStamp=12:34:56"), stamp + "3800000001000000");
  EXPECT_EQ(Assigned("GPSTimeStamp=12:34:56.5"), stamp + "350200000a000000");
  EXPECT_EQ(Assigned("GPSTimeStamp=12, 34, 113/2"), stamp + "7100000002000000");
  for (const char* time : {"", "12:34", "24:00:00", "12:60:00", "12:34:60", "12:34:1/0", "12.5:0:0",
                           "12:34:56:78", "-1:00:00"}) {
    EXPECT_EQ(Assigned(std::string("GPSTimeStamp=") + time),
              "GPSTimeStamp: '" + std::string(time) + "' is no time of the day, such as 12:34:56");
  }
}

// 48.8584 degrees: 0.8584 x 60 = 51.504 minutes, 0.504 x 60 = 30.24 seconds.
constexpr const char* kLatitude = "30000000010000003300000001000000d00b000064000000";
// 2.2945 degrees: 0.2945 x 60 = 17.67 minutes, 0.67 x 60 = 40.2 seconds.
constexpr const char* kLongitude = "02000000010000001100000001000000920100000a000000";

TEST(Assignments, AnglesAreDecimalDegreesOrThreeNumbers) {
  EXPECT_EQ(Assigned("GPSLatitude=48.8584"), std::string("8/2 4098: ") + kLatitude);
  EXPECT_EQ(Assigned("GPSLatitude=48,51,30.24"), std::string("8/2 4098: ") + kLatitude);
  EXPECT_EQ(Assigned("GPSDestLongitude=2.2945"), std::string("8/22 4098: ") + kLongitude);
  EXPECT_EQ(Assigned("GPSLongitude=180"),
            "8/4 4098: b4000000010000000000000001000000"
            "0000000001000000");
  EXPECT_EQ(Assigned("GPSLatitude=90.1"),
            "GPSLatitude: '90.1' is no angle from -90 to 90 in decimal degrees");
  EXPECT_EQ(Assigned("GPSDestLatitude=-1"),
            "GPSDestLatitude: '-1' is negative; the side is a matter of the reference");
  EXPECT_EQ(Assigned("GPSLongitude=1/0"),
            "GPSLongitude: '1/0' is no angle from -180 to 180 in decimal degrees");
  EXPECT_EQ(Assigned("GPSLatitude=48,51"),
            "GPSLatitude: '48,51' is not 3 numbers separated by commas");
}

std::string Position(const char* latitudeRef, const char* longitudeRef) {
  return std::string("8/1 4: ") + latitudeRef + "00; 8/2 4098: " + kLatitude +
         "; 8/3 4: " + longitudeRef + "00; 8/4 4098: " + kLongitude;
}

TEST(Assignments, PositionIsTwoAnglesWithTheirReferences) {
  EXPECT_EQ(Assigned("GPSPosition=48.8584,2.2945"), Position("4e", "45"));
  EXPECT_EQ(Assigned("GPSPosition=48.8584, -2.2945"), Position("4e", "57"));
  EXPECT_EQ(Assigned("GPSPosition=-48.8584,+2.2945"), Position("53", "45"));
  EXPECT_EQ(Assigned("GPSPosition=-48.8584,-2.2945"), Position("53", "57"));
}

TEST(Assignments, EquatorAndZeroMeridianLieNorthAndEast) {
  const std::string zero = "000000000100000000000000010000000000000001000000";
  EXPECT_EQ(Assigned("GPSPosition=-0.0,0"),
            "8/1 4: 4e00; 8/2 4098: " + zero + "; 8/3 4: 4500; 8/4 4098: " + zero);
}

// A third of a degree is 20 minutes sharp, a seventh 8 minutes 34.285714... seconds.
TEST(Assignments, SecondsAreRoundedToMillionths) {
  EXPECT_EQ(Assigned("GPSLatitude=1/3"),
            "8/2 4098: 00000000010000001400000001000000"
            "0000000001000000");
  EXPECT_EQ(Assigned("GPSLatitude=1/7"),
            "8/2 4098: 00000000010000000800000001000000"
            "92280b0240420f00");
}

TEST(Assignments, WrongPositionGivesNoRecordAtAll) {
  const std::string form = " is no position, such as 48.8584,2.2945";
  EXPECT_EQ(Assigned("GPSPosition="), "GPSPosition: ''" + form);
  EXPECT_EQ(Assigned("GPSPosition=1"), "GPSPosition: '1'" + form);
  EXPECT_EQ(Assigned("GPSPosition=1,2,3"), "GPSPosition: '1,2,3'" + form);
  EXPECT_EQ(Assigned("GPSPosition=1,181"),
            "GPSPosition: '181' is no angle from -180 to 180 in decimal degrees");
  EXPECT_EQ(Assigned("GPSPosition=N 1,2"),
            "GPSPosition: 'N 1' is no angle from -90 to 90 in decimal degrees");
}

TEST(Assignments, NumberThatDoesNotFitItsTypeIsRefused) {
  EXPECT_EQ(Assigned("WhiteBalance=65536"),
            "WhiteBalance: '65536' is no whole number from 0 to 65535");
  EXPECT_EQ(Assigned("WhiteBalance=auto"),
            "WhiteBalance: 'auto' is no whole number from 0 to 65535");
  EXPECT_EQ(Assigned("ISOSpeed=100.5"),
            "ISOSpeed: '100.5' is no whole number from 0 to 4294967295");
  EXPECT_EQ(Assigned("FileSource=256"), "FileSource: '256' is no whole number from 0 to 255");
  EXPECT_EQ(Assigned("GPSDifferential=32768"),
            "GPSDifferential: '32768' is no whole number from -32768 to 32767");
  EXPECT_EQ(Assigned("ExposureTime=-1/250"),
            "ExposureTime: '-1/250' is no number from 0 to 4294967295, such as 2.8 or 28/10");
  EXPECT_EQ(
      Assigned("ExposureBiasValue=2147483648"),
      "ExposureBiasValue: '2147483648' is no number from -2147483648 to 2147483647, such as 2.8 or "
      "28/10");
  EXPECT_EQ(Assigned("SubjectLocation=1,"),
            "SubjectLocation: '' is no whole number from 0 to 65535");
  EXPECT_EQ(Assigned("FNumber="),
            "FNumber: '' is no number from 0 to 4294967295, such as 2.8 or 28/10");
}

// An aperture in APEX steps is another number than the f-number that `show` prints for it.
TEST(Assignments, UnitOfAnotherTagIsRefused) {
  EXPECT_EQ(Assigned("ApertureValue=f/4"),
            "ApertureValue: 'f/4' is no number from 0 to 4294967295, such as 2.8 or 28/10");
  EXPECT_EQ(Assigned("FocalLength=50 m"),
            "FocalLength: '50 m' is no number from 0 to 4294967295, such as 2.8 or 28/10");
}

TEST(Assignments, UnknownNamesAndTagsThatAreNotWrittenAreToldApart) {
  EXPECT_EQ(Assigned("Foo=1"), "'Foo' is no tag that show names");
  EXPECT_EQ(Assigned("make=x"), "'make' is no tag that show names");
  EXPECT_EQ(Assigned("=x"), "'' is no tag that show names");
  for (const char* name : {"LensMake", "Orientation", "GPSHPositioningError", "ExifIFDPointer",
                           "GPSInfoIFDPointer", "City", "InteroperabilityIndex"}) {
    EXPECT_EQ(Assigned(std::string(name) + "=1"),
              "'" + std::string(name) + "' is a tag that is not written");
  }
}

TEST(Assignments, FormIsNameEqualsValue) {
  EXPECT_EQ(Assigned("Make"), "'Make' is not NAME=VALUE");
  EXPECT_EQ(Assigned(""), "'' is not NAME=VALUE");
  EXPECT_EQ(Assigned("Make=\xFF"), "'Make=\xEF\xBF\xBD' is no UTF-8 text");
}

TEST(Assignments, RecordsAreAppended) {
  OwnedRecords records;
  EXPECT_EQ(tool::AddAssignment("Make=A", records), "");
  EXPECT_EQ(tool::AddAssignment("GPSPosition=1,200", records),
            "GPSPosition: '200' is no angle from -180 to 180 in decimal degrees");
  EXPECT_EQ(tool::AddAssignment("Model=B", records), "");
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].m_nId, 271U);
  EXPECT_EQ(records[1].m_nId, 272U);
}

TEST(NumberValues, TypeThatTheWriterDoesNotWriteIsRefused) {
  EXPECT_EQ(tool::ParseNumbers("1", TYPE_FLOAT, nullptr).error,
            "values of this type are not written");
}

}  // namespace
