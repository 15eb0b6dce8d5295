#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "tool/ToolTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;
using test::Jpeg;
using test::RunTool;
using test::TempFile;
using test::ToolRun;

const Bytes kPngSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

std::string Description(const std::string& attributes) {
  return test::Packet(
      "<rdf:Description xmlns:xmp='http://ns.adobe.com/xap/1.0/' "
      "xmlns:GPano='http://ns.google.com/photos/1.0/panorama/' " +
      attributes + "/>");
}

TEST(TypeCommand, SaysWhatAHostIsTold) {
  const TempFile jpeg(Jpeg().Build());
  const TempFile jpegByContent(Jpeg().Frame(1, 1).Build(), ".dat");
  const TempFile tiff(Bytes{'M', 'M', 0, 0x2A, 0, 0, 0, 8}, ".tif");
  const TempFile png(kPngSignature, ".png");
  const TempFile text(test::Text("just a text"), ".txt");
  const ToolRun run = RunTool({"type", Argument(jpeg), Argument(jpegByContent), Argument(tiff),
                               Argument(png), Argument(text)});
  // SOI and EOI alone are four bytes, fewer than a type needs.
  EXPECT_EQ(run.out, Argument(jpeg) + ": unknown (0)\n" + Argument(jpegByContent) + ": JPEG (1)\n" +
                         Argument(tiff) + ": TIFF (2)\n" + Argument(png) + ": PNG (5)\n" +
                         Argument(text) + ": unknown (0)\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(TypeCommand, MissingFileIsAnErrorAndTheNextFileIsStillRead) {
  const std::string missing = Argument(test::TempPath());
  const TempFile png(kPngSignature);
  const ToolRun run = RunTool({"type", missing, Argument(png)});
  EXPECT_EQ(run.out, Argument(png) + ": PNG (5)\n");
  EXPECT_EQ(run.err, "lumidex: " + missing +
                         ": LMD_E_SRC_NOT_FOUND (0x8004C001): the file does not exist or is not a "
                         "regular file\n");
  EXPECT_EQ(run.exitCode, 1);
}

TEST(PanoramaCommand, PrintsFlagAndPose) {
  const TempFile file(Jpeg()
                          .Xmp(Description("GPano:ProjectionType='equirectangular' "
                                           "GPano:PoseHeadingDegrees='12.5' "
                                           "GPano:PosePitchDegrees='-3'"))
                          .Build());
  const ToolRun run = RunTool({"panorama", Argument(file)});
  EXPECT_EQ(run.out, Argument(file) + ": panorama, heading 12.5°, pitch -3°\n");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(PanoramaCommand, NoPanoramaIsAnAnswer) {
  const TempFile rated(Jpeg().Xmp(Description("xmp:Rating='3'")).Build());
  const TempFile plain(Jpeg().Frame(4, 3).Build());
  const TempFile png(kPngSignature);
  const ToolRun run = RunTool({"panorama", Argument(rated), Argument(plain), Argument(png)});
  EXPECT_EQ(run.out, Argument(rated) +
                         ": no panorama, LMD_E_NOT_PANORAMA (0x8004C026): XMP is present but "
                         "carries no projection type\n" +
                         Argument(plain) +
                         ": no panorama, LMD_E_NOT_FOUND (0x8004C025): the value is not present\n" +
                         Argument(png) + ": no panorama\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST(PanoramaCommand, FileThatCannotBeOpenedIsAnError) {
  const TempFile text(test::Text("just a text"));
  const ToolRun run = RunTool({"panorama", Argument(text)});
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "lumidex: " + Argument(text) +
                         ": LMD_E_BAD_FORMAT (0x8004C022): the file type is not supported here\n");
  EXPECT_EQ(run.exitCode, 1);
}

TEST(MarkCommand, AppendsTheTrailerOnce) {
  const Bytes before = Jpeg().Segment(0xFE, test::Zeros(100)).Build();
  const TempFile file(before);
  const ToolRun first = RunTool({"mark", Argument(file)});
  EXPECT_EQ(first.out, Argument(file) + ": marked\n");
  EXPECT_EQ(first.exitCode, 0);
  EXPECT_EQ(file.Read().size(), before.size() + 64);

  const ToolRun second = RunTool({"mark", Argument(file)});
  EXPECT_EQ(second.out, "");
  EXPECT_EQ(second.err, "lumidex: " + Argument(file) +
                            ": LMD_E_ALREADY_MARKED (0x8004C032): the file already ends with the "
                            "trailer block\n");
  EXPECT_EQ(second.exitCode, 1);
  EXPECT_EQ(file.Read().size(), before.size() + 64);
}

TEST(MarkCommand, ShortFileIsAnError) {
  const TempFile file(Jpeg().Build());
  const ToolRun run = RunTool({"mark", Argument(file)});
  EXPECT_EQ(run.err, "lumidex: " + Argument(file) +
                         ": LMD_E_READ_FAILED (0x8004C004): a read returned fewer bytes than "
                         "asked\n");
  EXPECT_EQ(run.exitCode, 1);
}

}  // namespace
