#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "support/Jpeg.h"
#include "support/Png.h"
#include "tool/WriteTestSupport.h"

namespace {

using test::Argument;
using test::Bytes;
using test::ExpectFailure;
using test::Jpeg;
using test::OutputPath;
using test::Png;
using test::RunTool;
using test::TempFile;
using test::Text;
using test::ToolRun;

constexpr std::string_view kPanorama = "<x>equirectangular</x>\r\n";

// Embeds a packet and returns what `xmp` then prints.
std::string RoundTrip(const Bytes& source, const std::string& packet,
                      const std::string& extension) {
  const TempFile file(source, extension);
  const TempFile packetFile(Text(packet), ".xmp");
  const OutputPath output(extension);
  const ToolRun embed = RunTool({"embed", Argument(file), Argument(packetFile), output.Argument()});
  EXPECT_EQ(embed.out, output.Argument() + ": written\n");
  EXPECT_EQ(embed.err, "");
  EXPECT_EQ(embed.exitCode, 0);
  EXPECT_EQ(file.Read(), source);
  const ToolRun xmp = RunTool({"xmp", output.Argument()});
  EXPECT_EQ(xmp.err, "");
  EXPECT_EQ(xmp.exitCode, 0);
  return xmp.out;
}

TEST(PacketCommands, PacketOfAJpegComesBackByteByByte) {
  const Bytes plain = Jpeg().Frame(4, 3).Build();
  const std::string bytes("\0\r\n\xFF\x80<x/>\0", 10);
  EXPECT_EQ(RoundTrip(plain, "<x/>", ".jpg"), "<x/>");
  EXPECT_EQ(RoundTrip(plain, bytes, ".jpg"), bytes);
  EXPECT_EQ(RoundTrip(plain, "", ".jpg"), "");
  EXPECT_EQ(RoundTrip(plain, std::string(65504, 'x'), ".jpg"), std::string(65504, 'x'));
}

TEST(PacketCommands, PacketOfAPngComesBackByteByByte) {
  const Bytes plain = Png().Header().End().Build();
  const std::string bytes = std::string(kPanorama) + std::string("\0\xFF", 2);
  EXPECT_EQ(RoundTrip(plain, std::string(kPanorama), ".png"), kPanorama);
  EXPECT_EQ(RoundTrip(plain, bytes, ".png"), bytes);
}

TEST(PacketCommands, PacketBehindTheExifSegmentIsFound) {
  const Bytes tiff = {'I', 'I', 42, 0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  const TempFile file(Jpeg().Exif(tiff).Xmp("<x/>").Frame(4, 3).Build());
  EXPECT_EQ(RunTool({"xmp", Argument(file)}).out, "<x/>");
}

TEST(PacketCommands, FileWithoutAPacketIsAnError) {
  const TempFile jpeg(Jpeg().Frame(4, 3).Build());
  const TempFile png(Png().Header().Xmp("<x/>").End().Build(), ".png");
  const TempFile text(Text("just a text"));
  const std::string missing = Argument(test::TempPath());
  ExpectFailure({"xmp", Argument(jpeg)}, Argument(jpeg), LMD_E_NOT_FOUND);
  ExpectFailure({"xmp", Argument(png)}, Argument(png), LMD_E_NOT_FOUND);
  ExpectFailure({"xmp", Argument(text)}, Argument(text), LMD_E_BAD_FORMAT);
  ExpectFailure({"xmp", missing}, missing, LMD_E_SRC_NOT_FOUND);
}

// The chunk claims a million bytes that the file does not have.
TEST(PacketCommands, PacketThatIsCutOffIsAnError) {
  const Bytes data = test::XmpChunkData(kPanorama);
  const TempFile png(Png().Header().ChunkOfLength("iTXt", 1000000, data).Build(), ".png");
  ExpectFailure({"xmp", Argument(png)}, Argument(png), LMD_E_READ_FAILED);
}

TEST(EmbedCommand, PutsTheSegmentBehindTheStart) {
  const Bytes rest = {0xFF, 0xFE, 0, 6, 'a', 'b', 'c', 'd', 0xFF, 0xD9};
  const TempFile source(test::Join({{0xFF, 0xD8}, rest}));
  const TempFile packet(Text("<x/>"), ".xmp");
  const OutputPath output;
  EXPECT_EQ(RunTool({"embed", Argument(source), Argument(packet), output.Argument()}).exitCode, 0);
  EXPECT_EQ(output.Read(), test::Join({{0xFF, 0xD8, 0xFF, 0xE1, 0, 35},
                                       Text("http://ns.adobe.com/xap/1.0/"),
                                       {0},
                                       Text("<x/>"),
                                       rest}));
}

TEST(EmbedCommand, ShowPrintsTheResult) {
  const TempFile source(Jpeg().Frame(4, 3).Build());
  const TempFile packet(
      Text(test::Packet("<rdf:Description xmlns:xmp='http://ns.adobe.com/xap/1.0/' "
                        "xmp:Rating='3'/>")),
      ".xmp");
  const OutputPath output;
  const ToolRun run =
      RunTool({"embed", Argument(source), Argument(packet), output.Argument(), "--show"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out, RunTool({"show", output.Argument()}).out);
  EXPECT_NE(run.out.find("3 of 5"), std::string::npos) << run.out;
}

TEST(EmbedCommand, PngMayBeWrittenInPlace) {
  const TempFile file(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kPanorama), ".xmp");
  const ToolRun run =
      RunTool({"embed", Argument(file), Argument(packet), Argument(file), "--show"});
  EXPECT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(file.Read(), Png().Header().Xmp(kPanorama).End().Build());
  EXPECT_EQ(RunTool({"xmp", Argument(file)}).out, kPanorama);
  ExpectFailure({"embed", Argument(file), Argument(packet), Argument(file)}, Argument(file),
                LMD_E_XMP_FOUND);
}

TEST(EmbedCommand, JpegIsNeverWrittenInPlace) {
  const Bytes plain = Jpeg().Frame(4, 3).Build();
  const TempFile file(plain);
  const TempFile packet(Text("<x/>"), ".xmp");
  ExpectFailure({"embed", Argument(file), Argument(packet), Argument(file)}, Argument(file),
                LMD_E_DST_EXISTS);
  EXPECT_EQ(file.Read(), plain);
}

TEST(EmbedCommand, FailureNamesTheFileThatItIsAbout) {
  const TempFile jpeg(Jpeg().Frame(4, 3).Build());
  const TempFile rated(Jpeg().Xmp("<y/>").Build());
  const TempFile packet(Text("<x/>"), ".xmp");
  const TempFile large(test::Zeros(65506), ".xmp");
  const OutputPath output;
  const std::string missing = Argument(test::TempPath());
  const std::string elsewhere = missing + "/b.jpg";

  ExpectFailure({"embed", missing, Argument(packet), output.Argument()}, missing,
                LMD_E_SRC_NOT_FOUND);
  ExpectFailure({"embed", Argument(jpeg), missing, output.Argument()}, missing,
                LMD_E_SRC_NOT_FOUND);
  ExpectFailure({"embed", Argument(packet), Argument(packet), output.Argument()}, Argument(packet),
                LMD_E_BAD_FORMAT);
  ExpectFailure({"embed", Argument(jpeg), Argument(packet), Argument(rated)}, Argument(rated),
                LMD_E_DST_EXISTS);
  ExpectFailure({"embed", Argument(rated), Argument(packet), output.Argument()}, Argument(rated),
                LMD_E_XMP_FOUND);
  ExpectFailure({"embed", Argument(jpeg), Argument(large), output.Argument()}, Argument(large),
                LMD_E_BUFFER_TOO_SMALL);
  ExpectFailure({"embed", Argument(jpeg), Argument(packet), elsewhere}, elsewhere,
                LMD_E_OPEN_FAILED);
  EXPECT_FALSE(output.Exists());
}

}  // namespace
