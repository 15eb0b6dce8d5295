#include <cstring>
#include <limits>

#include <gtest/gtest.h>

#include "core/DebugLog.h"
#include "show/Show.h"
#include "support/Jpeg.h"
#include "support/Tiff.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;
using test::Jpeg;
using test::JsonText;
using test::kTiff;
using test::RunTool;
using test::TempFile;
using test::ToolRun;

std::string JsonOf(const TempFile& file, std::vector<std::string> options) {
  options.insert(options.begin(), {"show", "--json"});
  options.push_back(Argument(file));
  const ToolRun run = RunTool(options);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err, "");
  return run.out;
}

// The line of a file that is a JPEG, around its records and what follows them.
std::string Line(const TempFile& file, const std::string& records, const std::string& more = "") {
  return "{\"file\":" + JsonText(Argument(file)) + ",\"type\":1,\"result\":\"0x00000000\"," +
         "\"records\":[" + records + "]" + more + "}\n";
}

std::string Basics(int width, int height) {
  const std::string head = "{\"group\":1,\"id\":";
  const std::string kind = ",\"type\":4097,\"size\":4,\"value\":[";
  return head + "256,\"name\":\"ImageWidth\"" + kind + std::to_string(width) + "]}," + head +
         "257,\"name\":\"ImageLength\"" + kind + std::to_string(height) + "]}," + head +
         "274,\"name\":\"Orientation\"" + kind + "1]}," + head +
         "277,\"name\":\"SamplesPerPixel\"" + kind + "3]}," + head + "11,\"name\":\"ColorSpace\"" +
         kind + "0]}";
}

TEST(ShowJson, ImageBasicsOfAJpegWithoutExif) {
  const TempFile file(Jpeg().Frame(640, 480).Build());
  EXPECT_EQ(JsonOf(file, {"--mask", "0x001"}), Line(file, Basics(640, 480)));
  EXPECT_EQ(JsonOf(file, {}), Line(file, Basics(640, 480)));
}

// The first value is the largest, so that every value gets a record.
TEST(ShowJson, ValuesByRecordType) {
  const Bytes block = kTiff.Build({
      kTiff.Ascii(0x010E, "a description"),
      kTiff.Short(0x0111, {1, 65535}),
      kTiff.Long(0xFE00, {4294967295}),
      kTiff.Raw(0xFE01, 8, 1, {0xFE, 0xFF}),
      kTiff.Raw(0xFE02, 9, 1, {0xFF, 0xFF, 0xFF, 0xFF}),
      kTiff.Rational(0xFE03, {{1, 3}}),
      kTiff.Raw(0xFE04, 10, 1, {0xFF, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0}),
      kTiff.Undefined(0xFE05, {1, 2, 0xAB}),
  });
  const TempFile file(Jpeg().Exif(block).Build());
  EXPECT_EQ(
      JsonOf(file, {"--mask", "2"}),
      Line(file,
           "{\"group\":2,\"id\":270,\"name\":\"ImageDescription\",\"type\":4,\"size\":14,"
           "\"value\":\"a description\"},"
           "{\"group\":2,\"id\":273,\"name\":\"StripOffsets\",\"type\":4097,\"size\":8,"
           "\"value\":[1,65535]},"
           "{\"group\":2,\"id\":65024,\"name\":null,\"type\":4097,\"size\":4,"
           "\"value\":[4294967295]},"
           "{\"group\":2,\"id\":65025,\"name\":null,\"type\":1,\"size\":4,\"value\":[-2]},"
           "{\"group\":2,\"id\":65026,\"name\":null,\"type\":1,\"size\":4,\"value\":[-1]},"
           "{\"group\":2,\"id\":65027,\"name\":null,\"type\":4098,\"size\":8,\"value\":[[1,3]]},"
           "{\"group\":2,\"id\":65028,\"name\":null,\"type\":2,\"size\":8,\"value\":[[-1,3]]},"
           "{\"group\":2,\"id\":65029,\"name\":null,\"type\":6,\"size\":3,\"value\":\"0102ab\"}"));
}

TEST(ShowJson, RawAddsTheExactBytes) {
  const Bytes block = kTiff.Build({kTiff.Ascii(0x010F,
                                               "a\xFF"
                                               "b")});
  const TempFile file(Jpeg().Exif(block).Build());
  EXPECT_EQ(JsonOf(file, {"--mask", "2", "--raw"}),
            Line(file,
                 "{\"group\":2,\"id\":271,\"name\":\"Make\",\"type\":4,\"size\":4,"
                 "\"value\":\"a\xEF\xBF\xBD"
                 "b\",\"hex\":\"61ff6200\"}"));
}

TEST(ShowJson, WideTextBecomesUtf8) {
  const std::string packet = test::Packet(
      "<rdf:Description xmlns:xmp='http://ns.adobe.com/xap/1.0/' xmp:Label='Gr\xC3\xBCn'/>");
  const TempFile file(Jpeg().Xmp(packet).Build());
  EXPECT_EQ(JsonOf(file, {"--mask", "0x40"}),
            Line(file,
                 "{\"group\":64,\"id\":43523,\"name\":\"xmp:Label\",\"type\":5,\"size\":10,"
                 "\"value\":\"Gr\xC3\xBCn\"}"));
}

std::string ValueOf(std::uint32_t type, const Bytes& bytes) {
  tool::Photo photo;
  const CInfoRecord* record = photo.records.Add(2, 271, type, bytes.size());
  if (!bytes.empty()) std::memcpy(record->m_pData, bytes.data(), bytes.size());
  const std::string line = tool::JsonLine(photo, tool::Options{});
  const auto value = line.find("\"value\":") + 8;
  return line.substr(value, line.size() - value - std::string("}]}\n").size());
}

Bytes DoubleBytes(double value) {
  Bytes bytes(sizeof(value));
  std::memcpy(bytes.data(), &value, sizeof(value));
  return bytes;
}

TEST(ShowJson, DoublesThatAreNoNumbersAreNull) {
  EXPECT_EQ(ValueOf(LMD_RECORD_DOUBLE, DoubleBytes(1.5)), "[1.5]");
  EXPECT_EQ(ValueOf(LMD_RECORD_DOUBLE, DoubleBytes(std::numeric_limits<double>::infinity())),
            "[null]");
  EXPECT_EQ(ValueOf(LMD_RECORD_DOUBLE, DoubleBytes(std::numeric_limits<double>::quiet_NaN())),
            "[null]");
}

// Such a record comes from a SHORT value of odd size; the missing bytes are 0.
TEST(ShowJson, BytesThatAreMissingCountAsZero) {
  EXPECT_EQ(ValueOf(LMD_RECORD_UINT32, {1, 0, 0, 0, 0x34, 0x12}), "[1,4660]");
  EXPECT_EQ(ValueOf(LMD_RECORD_INT32, {0xFE}), "[254]");
  EXPECT_EQ(ValueOf(LMD_RECORD_URATIONAL, {1, 0, 0, 0, 2}), "[[1,2]]");
}

TEST(ShowJson, EmptyValues) {
  EXPECT_EQ(ValueOf(LMD_RECORD_UINT32, {}), "[]");
  EXPECT_EQ(ValueOf(LMD_RECORD_ASCII, {}), "\"\"");
  EXPECT_EQ(ValueOf(LMD_RECORD_WIDE_TEXT, {}), "\"\"");
  EXPECT_EQ(ValueOf(LMD_RECORD_BYTES, {}), "\"\"");
}

TEST(ShowJson, OnlyTheFinalZeroOfATextIsTaken) {
  EXPECT_EQ(ValueOf(LMD_RECORD_ASCII, {'a', 0, 'b', 0, 0}), "\"a\\u0000b\\u0000\"");
  EXPECT_EQ(ValueOf(LMD_RECORD_ASCII, {'a', 'b'}), "\"ab\"");
  EXPECT_EQ(ValueOf(LMD_RECORD_WIDE_TEXT, {0x3D, 0xD8, 'x', 0, 0, 0}), "\"\xEF\xBF\xBDx\"");
}

TEST(ShowJson, EveryFileGetsALine) {
  const std::string missing = Argument(test::TempPath());
  const TempFile tiff(Bytes{'I', 'I', 0x2A, 0, 8, 0, 0, 0, 0, 0});
  const TempFile png(Bytes{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A});
  const TempFile empty(Bytes{});
  const TempFile jpeg(Jpeg().Frame(4, 3).Build());
  const ToolRun run = RunTool({"show", "--json", "--mask", "2", missing, Argument(tiff),
                               Argument(png), Argument(empty), Argument(jpeg)});
  EXPECT_EQ(run.exitCode, 1);
  const auto line = [](const std::string& file, int type, const char* result) {
    return "{\"file\":" + JsonText(file) + ",\"type\":" + std::to_string(type) + ",\"result\":\"" +
           result + "\",\"records\":[]}\n";
  };
  EXPECT_EQ(run.out, line(missing, 0, "0x8004C001") + line(Argument(tiff), 2, "0x8004C022") +
                         line(Argument(png), 5, "0x00000000") +
                         line(Argument(empty), 0, "0x8004C022") +
                         line(Argument(jpeg), 1, "0x00000000"));
  const std::string badFormat =
      ": LMD_E_BAD_FORMAT (0x8004C022): the file type is not supported here\n";
  EXPECT_EQ(run.err, "lumidex: " + missing +
                         ": LMD_E_SRC_NOT_FOUND (0x8004C001): the file does not exist or is not a "
                         "regular file\n" +
                         "lumidex: " + Argument(tiff) + badFormat + "lumidex: " + Argument(empty) +
                         badFormat);
}

constexpr const char* kNoBlocks =
    "\"2\":{},\"3\":{},\"4\":{},\"5\":{},\"6\":{},\"7\":{},\"8\":{},\"9\":{},\"10\":{}}";

TEST(ShowJson, StoreIsShownWhole) {
  const Bytes block = kTiff.Build({
      kTiff.Ascii(0x010F, "Cam"),
      kTiff.Children(0x014A, {{kTiff.Short(0x0100, {7})}}),
  });
  const Bytes thumbnail = test::Join({test::U32(1),
                                      test::U32(2),
                                      test::U32(3),
                                      test::U32(8),
                                      test::U32(24),
                                      test::U32(4),
                                      test::U16(24),
                                      test::U16(1),
                                      {0xFF, 0xD8, 0xFF, 0xD9}});
  const TempFile file(
      Jpeg().Exif(block).Photoshop(test::PhotoshopResource(0x040C, thumbnail)).Frame(2, 1).Build());
  EXPECT_EQ(JsonOf(file, {"--mask", "0", "--store"}),
            Line(file, "",
                 ",\"store\":{\"blocks\":{\"1\":{\"271\":{\"tag\":271,\"type\":2,\"count\":4,"
                 "\"size\":4,\"data\":\"43616d00\"}}," +
                     std::string(kNoBlocks) +
                     ",\"subifds\":{\"4096\":{\"256\":{\"tag\":256,\"type\":3,\"count\":1,"
                     "\"size\":2,\"data\":\"0700\"}}},\"image\":[2,1],"
                     "\"thumbnail\":\"ffd8ffd9\",\"thumbnail_fields\":[4,0,0,1],"
                     "\"tiff_magic\":0,\"embedded_jpeg_pos\":0}"));
}

TEST(ShowJson, StoreOfAFileThatIsNotParsedIsEmpty) {
  const TempFile file(Bytes{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A});
  EXPECT_EQ(JsonOf(file, {"--store", "--trace"}),
            "{\"file\":" + JsonText(Argument(file)) +
                ",\"type\":5,\"result\":\"0x00000000\",\"records\":[],\"log\":[],"
                "\"store\":{\"blocks\":{\"1\":{}," +
                kNoBlocks +
                ",\"subifds\":{},\"image\":[0,0],\"thumbnail\":null,"
                "\"thumbnail_fields\":[0,0,0,1],\"tiff_magic\":0,\"embedded_jpeg_pos\":0}}\n");
}

// The two lines of the reader end in a line feed of their own, which stays.
TEST(ShowJson, TraceHoldsTheLogLinesOfOneParse) {
  const Bytes iptc = {0x1C, 3, 0, 0, 0, 0};
  const TempFile file(Jpeg().Photoshop(test::PhotoshopResource(0x0404, iptc)).Build());
  EXPECT_EQ(JsonOf(file, {"--mask", "0x10", "--trace"}),
            Line(file, "", ",\"log\":[\"m_fnParseIPTC in \\n\",\"m_fnParseIPTC out\\n\"]"));
  EXPECT_EQ(JsonOf(file, {"--mask", "0", "--trace"}), Line(file, "", ",\"log\":[]"));
  EXPECT_EQ(g_bDebugLogEnabled, 0);
}

TEST(ShowJson, MaskIsTheParseFlagsToo) {
  const Bytes block = kTiff.Build({kTiff.Child(0x8769, {kTiff.Short(0x8827, {200})})});
  const TempFile file(Jpeg().Exif(block).Build());
  const std::string iso =
      "{\"group\":4,\"id\":34855,\"name\":\"PhotographicSensitivity\",\"type\":4097,\"size\":4,"
      "\"value\":[200]}";
  EXPECT_EQ(JsonOf(file, {"--mask", "4"}), Line(file, iso));
  EXPECT_EQ(JsonOf(file, {"--mask", "8", "--store"}).find("34855"), std::string::npos);
}

}  // namespace
