#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "support/Jpeg.h"
#include "support/Tiff.h"
#include "tool/WriteTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;
using test::Contains;
using test::ExpectFailure;
using test::Join;
using test::Jpeg;
using test::OutputPath;
using test::RunTool;
using test::TempFile;
using test::Text;
using test::Tiff;
using test::ToolRun;

const Bytes kStart = {0xFF, 0xD8};

// A comment of 4 bytes and the end of the image.
const Bytes kRest = {0xFF, 0xFE, 0, 6, 'a', 'b', 'c', 'd', 0xFF, 0xD9};

Bytes Plain() {
  return Join({kStart, kRest});
}

Bytes WithExif(const std::string& make) {
  const Tiff tiff(ByteOrder::LittleEndian);
  return Jpeg().Exif(tiff.Build({tiff.Ascii(271, make)})).Build();
}

// The segment that --set Make=Abcd makes: IFD0 at 8, the text behind it at 26.
const Bytes kMakeSegment = {0xFF, 0xE1, 0, 39, 'E', 'x', 'i',  'f', 0,   0,   'I', 'I', 42, 0,
                            8,    0,    0, 0,  1,   0,   0x0F, 1,   2,   0,   5,   0,   0,  0,
                            26,   0,    0, 0,  0,   0,   0,    0,   'A', 'b', 'c', 'd', 0};

TEST(WriteCommand, WritesTheValuesBeforeTheRestOfTheSource) {
  const TempFile source(Plain());
  const OutputPath output;
  const ToolRun run = RunTool({"write", Argument(source), output.Argument(), "--set", "Make=Abcd"});
  EXPECT_EQ(run.out, output.Argument() + ": written\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(output.Read(), Join({kStart, kMakeSegment, kRest}));
  EXPECT_EQ(source.Read(), Plain());
}

TEST(WriteCommand, LaterValueOfATagCounts) {
  const TempFile source(Plain());
  const OutputPath output;
  RunTool(
      {"write", Argument(source), output.Argument(), "--set", "Make=Other", "--set", "Make=Abcd"});
  EXPECT_EQ(output.Read(), Join({kStart, kMakeSegment, kRest}));
}

TEST(WriteCommand, PathsAreUtf8) {
  const OutputPath source("-\u00FC\u5C71.jpg");
  test::WriteFile(tool::WideFromUtf8(source.Argument()), Plain());
  const OutputPath output("-\u00FC\u5C71.jpg");
  const ToolRun run =
      RunTool({"write", source.Argument(), output.Argument(), "--set", "Make=Abcd"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(output.Read(), Join({kStart, kMakeSegment, kRest}));
}

TEST(WriteCommand, PacketFollowsTheValues) {
  const TempFile source(Plain());
  const TempFile packet(Text("<x/>"), ".xmp");
  const OutputPath output;
  const ToolRun run = RunTool({"write", Argument(source), output.Argument(), "--set", "Make=Abcd",
                               "--xmp", Argument(packet)});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  const Bytes segment =
      Join({{0xFF, 0xE1, 0, 35}, Text("http://ns.adobe.com/xap/1.0/"), {0}, Text("<x/>")});
  EXPECT_EQ(output.Read(), Join({kStart, kMakeSegment, segment, kRest}));
}

TEST(WriteCommand, PacketAloneIsEnough) {
  const TempFile source(WithExif("Old"));
  const TempFile packet(Text("<x/>"), ".xmp");
  const OutputPath output;
  const ToolRun run =
      RunTool({"write", Argument(source), output.Argument(), "--xmp", Argument(packet)});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(RunTool({"xmp", output.Argument()}).out, "<x/>");
}

TEST(WriteCommand, ThumbnailIsWrittenWhole) {
  const TempFile source(Plain());
  const Bytes image = Jpeg().Frame(2, 1).Build();
  const TempFile thumbnail(image);
  const OutputPath output;
  const ToolRun run = RunTool({"write", Argument(source), output.Argument(), "--set", "Make=A",
                               "--thumbnail", Argument(thumbnail), "--show"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  const std::string size = std::to_string(image.size());
  EXPECT_TRUE(Contains(run.out, "  2 x 1 pixels, JPEG, " + size + " bytes\n")) << run.out;
  const Bytes written = output.Read();
  // The block ends with the thumbnail.
  EXPECT_EQ(Bytes(written.end() - static_cast<std::ptrdiff_t>(kRest.size() + image.size()),
                  written.end() - static_cast<std::ptrdiff_t>(kRest.size())),
            image);
}

TEST(WriteCommand, ShowPrintsTheResultInsteadOfALine) {
  const TempFile source(Plain());
  const OutputPath output;
  const ToolRun run = RunTool({"write", Argument(source), output.Argument(), "--set",
                               "GPSPosition=48.8584,-2.2945", "--show"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out, RunTool({"show", output.Argument()}).out);
  EXPECT_TRUE(Contains(run.out, "48° 51' 30.24\" N (48.8584)")) << run.out;
  EXPECT_TRUE(Contains(run.out, "2° 17' 40.2\" W (-2.2945)")) << run.out;
}

TEST(WriteCommand, ExistingOutputNeedsOverwrite) {
  const TempFile source(Plain());
  const TempFile output(Text("something else"));
  const std::vector<std::string> arguments = {"write", Argument(source), Argument(output), "--set",
                                              "Make=Abcd"};
  ExpectFailure(arguments, Argument(output), LMD_E_DST_EXISTS);
  EXPECT_EQ(output.Read(), Text("something else"));

  auto allowed = arguments;
  allowed.push_back("--overwrite");
  EXPECT_EQ(RunTool(allowed).exitCode, 0);
  EXPECT_EQ(output.Read(), Join({kStart, kMakeSegment, kRest}));
}

TEST(WriteCommand, SourceIsNeverItsOwnOutput) {
  const TempFile source(Plain());
  ExpectFailure({"write", Argument(source), Argument(source), "--set", "Make=A", "--overwrite"},
                Argument(source), LMD_E_DST_EXISTS);
  EXPECT_EQ(source.Read(), Plain());
}

TEST(WriteCommand, SourceWithExifNeedsOverwrite) {
  const TempFile source(WithExif("Old"));
  const OutputPath output;
  ExpectFailure({"write", Argument(source), output.Argument(), "--set", "Make=Abcd"},
                Argument(source), LMD_E_HAS_EXIF);
  EXPECT_FALSE(output.Exists());
}

// By design the source's own EXIF segment follows the new one and is read after it.
TEST(WriteCommand, OldExifFollowsTheNewAndIsWhatShowSees) {
  const TempFile source(WithExif("Old"));
  const OutputPath output;
  const ToolRun run = RunTool({"write", Argument(source), output.Argument(), "--set", "Make=Abcd",
                               "--overwrite", "--show"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  const Bytes old = WithExif("Old");
  EXPECT_EQ(output.Read(), Join({kStart, kMakeSegment, Bytes(old.begin() + 2, old.end())}));
  EXPECT_TRUE(Contains(run.out, " " + tool::Pad("Make", 28) + "  Old\n")) << run.out;
}

TEST(WriteCommand, FailureNamesTheFileThatItIsAbout) {
  const TempFile source(Plain());
  const TempFile packet(Text("<x/>"), ".xmp");
  const TempFile text(Text("just a text"), ".txt");
  const OutputPath output;
  const std::string missing = Argument(test::TempPath());
  const std::string elsewhere = missing + "/b.jpg";

  ExpectFailure({"write", missing, output.Argument(), "--set", "Make=A"}, missing,
                LMD_E_SRC_NOT_FOUND);
  ExpectFailure({"write", Argument(text), output.Argument(), "--set", "Make=A"}, Argument(text),
                LMD_E_BAD_FORMAT);
  ExpectFailure({"write", Argument(source), output.Argument(), "--xmp", missing}, missing,
                LMD_E_SRC_NOT_FOUND);
  ExpectFailure({"write", Argument(source), elsewhere, "--set", "Make=A"}, elsewhere,
                LMD_E_OPEN_FAILED);
  ExpectFailure({"write", Argument(source), elsewhere, "--xmp", Argument(packet)}, elsewhere,
                LMD_E_OPEN_FAILED);
  EXPECT_FALSE(output.Exists());
}

TEST(WriteCommand, ThumbnailMustBeAJpeg) {
  const TempFile source(Plain());
  const TempFile text(Text("just a text"), ".txt");
  const OutputPath output;
  const std::string missing = Argument(test::TempPath());
  ExpectFailure({"write", Argument(source), output.Argument(), "--set", "Make=A", "--thumbnail",
                 Argument(text)},
                Argument(text), LMD_E_BAD_FORMAT);
  ExpectFailure(
      {"write", Argument(source), output.Argument(), "--set", "Make=A", "--thumbnail", missing},
      missing, LMD_E_OPEN_FAILED);
  EXPECT_FALSE(output.Exists());
}

TEST(WriteCommand, WhatIsTooLargeIsNamed) {
  const TempFile source(Plain());
  const TempFile thumbnail(Join({Plain(), test::Zeros(64000)}));
  const TempFile packet(test::Zeros(65505), ".xmp");
  const OutputPath output;
  const std::vector<std::string> arguments = {"write", Argument(source), output.Argument(), "--set",
                                              "Make=A"};
  auto withThumbnail = arguments;
  withThumbnail.insert(withThumbnail.end(), {"--thumbnail", Argument(thumbnail)});
  ExpectFailure(withThumbnail, Argument(thumbnail), LMD_E_BUFFER_TOO_SMALL);

  auto withPacket = withThumbnail;
  withPacket.insert(withPacket.end(), {"--xmp", Argument(packet)});
  ExpectFailure(withPacket, Argument(packet), LMD_E_BUFFER_TOO_SMALL);

  ExpectFailure(
      {"write", Argument(source), output.Argument(), "--set", "Make=" + std::string(64000, 'x')},
      Argument(source), LMD_E_BUFFER_TOO_SMALL);
  EXPECT_FALSE(output.Exists());
}

TEST(WriteCommand, SourceWithAPacketTakesNoOther) {
  const TempFile source(Jpeg().Xmp("<y/>").Build());
  const TempFile packet(Text("<x/>"), ".xmp");
  const OutputPath output;
  ExpectFailure(
      {"write", Argument(source), output.Argument(), "--set", "Make=A", "--xmp", Argument(packet)},
      Argument(source), LMD_E_XMP_FOUND);
  EXPECT_FALSE(output.Exists());
}

}  // namespace
