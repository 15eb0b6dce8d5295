#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/Tiff.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;
using test::Contains;
using test::Jpeg;
using test::kTiff;
using test::RunTool;
using test::TempFile;
using test::ToolRun;

std::string ReportOf(const Bytes& bytes, std::vector<std::string> options = {}) {
  const TempFile file(bytes);
  options.insert(options.begin(), "show");
  options.push_back(Argument(file));
  const ToolRun run = RunTool(options);
  EXPECT_EQ(run.exitCode, 0) << run.err;
  return run.out;
}

// Make takes 3 bytes, Model 9: the record list of IFD0 ends before Model.
TEST(Report, MarksWhatAHostGetsAndWhatIsLeftOut) {
  const Bytes block = kTiff.Build({
      kTiff.Ascii(0x010F, "AB"),
      kTiff.Ascii(0x0110, "ABCDEFGH"),
      kTiff.Short(0x0112, {6}),
  });
  const std::string report = ReportOf(Jpeg().Exif(block).Frame(4, 3).Build());
  EXPECT_TRUE(Contains(report, "\n  ABCDEFGH\n")) << report;
  EXPECT_TRUE(Contains(report, "\n  JPEG, 4 x 3 pixels, to be turned 90° right\n")) << report;
  EXPECT_TRUE(Contains(report,
                       "\n  ● 6 values reach a host through Open   ○ 2 do not: no record is made "
                       "of them\n"))
      << report;
  EXPECT_TRUE(Contains(report,
                       "\nIFD0  1 of 3\n"
                       "  ● 0x010F Make                          AB\n"
                       "  ○ 0x0110 Model                         ABCDEFGH\n"
                       "  ○ 0x0112 Orientation                   to be turned 90° right (6)\n"))
      << report;
  EXPECT_TRUE(Contains(report,
                       "\nImage  5 of 5\n"
                       "  ● 0x0100 ImageWidth                    4\n"
                       "  ● 0x0101 ImageLength                   3\n"
                       "  ● 0x0112 Orientation                   to be turned 90° right (6)\n"
                       "  ● 0x0115 SamplesPerPixel               3\n"
                       "  ● 0x000B ColorSpace                    unknown (0)\n"))
      << report;
}

TEST(Report, BlocksThatOpenDoesNotAskForAreMarked) {
  const Bytes block = kTiff.Build({}, {kTiff.Short(0x0103, {6})});
  const Bytes jpeg = Jpeg().Exif(block).Build();
  const std::string row = " 0x0103 Compression                   JPEG (6)\n";
  EXPECT_TRUE(Contains(ReportOf(jpeg), "\nIFD1 (thumbnail)  0 of 1\n  ○" + row));
  EXPECT_TRUE(
      Contains(ReportOf(jpeg, {"--mask", "0x200"}), "\nIFD1 (thumbnail)  1 of 1\n  ●" + row));
}

TEST(Report, InteroperabilityTagsStandInTheExifBlock) {
  const Bytes block = kTiff.Build({kTiff.Child(
      0x8769,
      {kTiff.Child(0xA005, {kTiff.Ascii(1, "R98"), kTiff.Undefined(2, {'0', '1', '0', '0'})})})});
  const std::string report = ReportOf(Jpeg().Exif(block).Build());
  EXPECT_TRUE(Contains(report,
                       "\nEXIF  3 of 3\n  ● 0x0001 InteroperabilityIndex         R98\n"
                       "  ● 0x0002 InteroperabilityVersion       1.0\n"))
      << report;
}

TEST(Report, SubIfdsReachNoHost) {
  const Bytes block = kTiff.Build({kTiff.Children(0x014A, {{kTiff.Short(0x0100, {7})}})});
  EXPECT_TRUE(Contains(ReportOf(Jpeg().Exif(block).Build()),
                       "\nSubIFD 0  0 of 1\n  ○ 0x0100 ImageWidth                    7\n"));
}

// A region without a type is dropped, but its place stays.
TEST(Report, RegionsFollowTheXmpBlock) {
  const std::string packet = test::Packet(
      "<rdf:Description><a:Rectangle>0.1, 0.2</a:Rectangle></rdf:Description>"
      "<rdf:Description><a:PersonDisplayName>Anna</a:PersonDisplayName>"
      "<a:Rectangle>0.3, 0.4</a:Rectangle><a:PersonTagType>Face</a:PersonTagType>"
      "</rdf:Description>");
  const std::string report = ReportOf(Jpeg().Xmp(packet).Build());
  EXPECT_TRUE(Contains(report,
                       "\nPeople regions  1 of 2\n"
                       "  ● 0      Region                        (empty)\n"
                       "  ○ 1      Region                        Anna [Face] in 0.3, 0.4\n"))
      << report;
}

TEST(Report, LongValuesAreCutOnlyWhenAsked) {
  const Bytes block = kTiff.Build({kTiff.Ascii(0x010E, std::string(300, 'x'))});
  const Bytes jpeg = Jpeg().Exif(block).Build();
  const std::string name = "ImageDescription              ";
  EXPECT_TRUE(Contains(ReportOf(jpeg), name + std::string(300, 'x') + "\n"));
  EXPECT_TRUE(Contains(ReportOf(jpeg, {"--cut", "300"}), name + std::string(300, 'x') + "\n"));
  EXPECT_TRUE(Contains(ReportOf(jpeg, {"--cut", "10"}), name + "xxxxxxx... (300 characters)\n"));
}

TEST(Report, TextsCannotReachTheTerminal) {
  const Bytes block = kTiff.Build({kTiff.Ascii(0x010E, "\x1B[2Jgone")});
  const std::string report = ReportOf(Jpeg().Exif(block).Build());
  EXPECT_FALSE(Contains(report, "\x1B"));
  EXPECT_TRUE(Contains(report, "ImageDescription              \\x1B[2Jgone\n"));
}

TEST(Report, ColourOnATerminalOnly) {
  const TempFile file(Jpeg().Frame(4, 3).Build());
  EXPECT_TRUE(Contains(RunTool({"show", Argument(file)}, true).out, "\x1B["));
  EXPECT_FALSE(Contains(RunTool({"show", Argument(file)}, false).out, "\x1B["));
}

TEST(Report, TraceIsASectionOfItsOwn) {
  const Bytes iptc = {0x1C, 3, 0, 0, 0, 0};
  const Bytes jpeg = Jpeg().Photoshop(test::PhotoshopResource(0x0404, iptc)).Build();
  EXPECT_TRUE(
      Contains(ReportOf(jpeg, {"--trace"}), "\nTrace\n  m_fnParseIPTC in\n  m_fnParseIPTC out\n"));
  EXPECT_FALSE(Contains(ReportOf(jpeg), "Trace"));
}

TEST(Report, PngSaysWhatAHostGets) {
  const std::string report = ReportOf({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A});
  EXPECT_TRUE(Contains(report, "\n  PNG\n  A PNG is not parsed: ")) << report;
}

TEST(Report, FileThatCannotBeOpenedPrintsAnErrorAlone) {
  const std::string missing = Argument(test::TempPath());
  const TempFile file(Jpeg().Frame(4, 3).Build());
  const ToolRun run = RunTool({"show", missing, Argument(file)});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_TRUE(run.out.starts_with(Argument(file) + "\n  JPEG, 4 x 3 pixels\n")) << run.out;
  EXPECT_EQ(run.err, "lumidex: " + missing +
                         ": LMD_E_SRC_NOT_FOUND (0x8004C001): the file does not exist or is not a "
                         "regular file\n");
}

TEST(Records, OneLineEachInColumns) {
  const Bytes block = kTiff.Build({
      kTiff.Ascii(0x010F, "a maker of cameras"),
      kTiff.Rational(0x011A, {{72, 1}}),
      kTiff.Undefined(0xFE00, {1, 0xAB}),
  });
  const TempFile file(Jpeg().Exif(block).Build());
  const ToolRun run = RunTool({"show", "--records", "--mask", "2", Argument(file)});
  EXPECT_EQ(run.out, Argument(file) +
                         "\n"
                         "  IFD0 (2)  0x010F  Make         ascii      \"a maker of cameras\"\n"
                         "  IFD0 (2)  0x011A  XResolution  urational  72/1\n"
                         "  IFD0 (2)  0xFE00  -            bytes      01ab\n");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(Records, LongValuesAreCutOnlyWhenAsked) {
  const Bytes block = kTiff.Build({
      kTiff.Undefined(0xFE00, Bytes(100, 0xAB)),
      kTiff.Long(0xFE01, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}),
      kTiff.Ascii(0xFE02, std::string(90, 'x')),
  });
  const Bytes jpeg = Jpeg().Exif(block).Build();
  std::string hex;
  for (int i = 0; i < 100; ++i) hex += "ab";
  const std::string whole = ReportOf(jpeg, {"--records", "--mask", "2"});
  EXPECT_TRUE(Contains(whole, "  " + hex + "\n")) << whole;
  EXPECT_TRUE(Contains(whole, "  1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\n")) << whole;
  EXPECT_TRUE(Contains(whole, "  \"" + std::string(90, 'x') + "\"\n")) << whole;
  const std::string cut = ReportOf(jpeg, {"--records", "--mask", "2", "--cut", "8"});
  EXPECT_TRUE(Contains(cut, "  ababa... (200 characters)\n")) << cut;
  EXPECT_TRUE(Contains(cut, "  1 2 3... (41 characters)\n")) << cut;
  EXPECT_TRUE(Contains(cut, "  \"xxxx... (92 characters)\n")) << cut;
}

}  // namespace
