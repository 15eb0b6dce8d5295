#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/FileCopy.h"
#include "container/XmpEmbedding.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/TempFile.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

const Bytes kPngEnd = {0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};

Bytes XmpSegment(const Bytes& packet) {
  return Join({{0xFF, 0xE1},
               U16(static_cast<std::uint16_t>(packet.size() + 31)),
               Text("http://ns.adobe.com/xap/1.0/"),
               {0},
               packet});
}

Bytes XmpChunk(const Bytes& packet) {
  const Bytes alone = Png().Chunk("iTXt", Join({XmpChunkData(""), packet})).Build();
  return {alone.begin() + 8, alone.end()};  // without the signature of the file
}

using Embed = HRESULT (*)(FileStream& source, const WCHAR* output, const WCHAR* packet);

// What embedding a packet made of a source: its result and the output, empty when there is none.
struct Embedded {
  HRESULT result;
  Bytes output;
};

Embedded EmbedWith(Embed embed, const Bytes& source, const Bytes& packet) {
  const TempFile sourceFile(source);
  const TempFile packetFile(packet, ".xmp");
  const WideString output = TempPath();
  Embedded embedded = {};
  {
    FileStream stream;
    EXPECT_TRUE(OpenForCopy(stream, sourceFile.Path(), LMD_W("rb")));
    embedded.result = embed(stream, output.c_str(), packetFile.Path());
  }
  EXPECT_EQ(sourceFile.Read(), source);
  if (GetFileAttributesW(output.c_str()) != INVALID_FILE_ATTRIBUTES) {
    embedded.output = ReadFile(output);
  }
  RemoveFile(output);
  return embedded;
}

TEST(EmbedIntoJpeg, SegmentFollowsSoi) {
  const Bytes rest = Join({Jpeg().Segment(0xE0, Zeros(14)).Frame(8, 8).Scan().Build()});
  const Embedded embedded = EmbedWith(&EmbedIntoJpeg, rest, Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(
      embedded.output,
      Join({{0xFF, 0xD8}, XmpSegment(Text(kShortPacket)), Bytes(rest.begin() + 2, rest.end())}));
}

TEST(EmbedIntoJpeg, SegmentFollowsTheLastExifSegment) {
  const Bytes before = Join({{0xFF, 0xD8},
                             {0xFF, 0xE0, 0, 3, 1},
                             {0xFF, 0xE1, 0, 6},
                             Text("Exif"),
                             {0xFF, 0xE1, 0, 7},
                             Text("Exif"),
                             {0}});
  const Bytes after = {0xFF, 0xE2, 0, 2, 0xFF, 0xDA, 0, 2, 1, 2, 3, 0xFF, 0xD9};
  const Embedded embedded = EmbedWith(&EmbedIntoJpeg, Join({before, after}), Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output, Join({before, XmpSegment(Text(kShortPacket)), after}));
}

TEST(EmbedIntoJpeg, LargeFileIsCopiedWhole) {
  const Bytes source = Jpeg().Exif(Zeros(60000)).Scan().Raw(Bytes(300000, 7)).Build();
  const Embedded embedded = EmbedWith(&EmbedIntoJpeg, source, Bytes(65504, 'x'));
  EXPECT_EQ(embedded.result, S_OK);
  const auto place = source.begin() + 2 + 2 + 60008;
  EXPECT_EQ(embedded.output, Join({Bytes(source.begin(), place), XmpSegment(Bytes(65504, 'x')),
                                   Bytes(place, source.end())}));
}

TEST(EmbedIntoJpeg, PresentPacketIsFoundAndNothingWritten) {
  const Embedded embedded =
      EmbedWith(&EmbedIntoJpeg, Jpeg().Xmp("<x/>").Build(), Text(kShortPacket));
  EXPECT_EQ(embedded.result, LMD_E_XMP_FOUND);
  EXPECT_TRUE(embedded.output.empty());
}

TEST(EmbedIntoJpeg, PacketFileMustFitASegment) {
  const Bytes source = Jpeg().Scan().Build();
  EXPECT_EQ(EmbedWith(&EmbedIntoJpeg, source, Bytes(65504, 'x')).result, S_OK);
  for (const std::size_t size : {65505U, 65506U}) {
    const Embedded embedded = EmbedWith(&EmbedIntoJpeg, source, Bytes(size, 'x'));
    EXPECT_EQ(embedded.result, LMD_E_BUFFER_TOO_SMALL);
    EXPECT_TRUE(embedded.output.empty());
  }
}

TEST(EmbedIntoJpeg, PresentPacketIsFoundBeforeTheSizeIsLookedAt) {
  EXPECT_EQ(EmbedWith(&EmbedIntoJpeg, Jpeg().Xmp("<x/>").Build(), Bytes(70000, 'x')).result,
            LMD_E_XMP_FOUND);
}

TEST(EmbedIntoJpeg, SourceMustBeginWithSoi) {
  const Embedded embedded = EmbedWith(&EmbedIntoJpeg, Text("no image"), Text(kShortPacket));
  EXPECT_EQ(embedded.result, LMD_E_BAD_FORMAT);
  EXPECT_TRUE(embedded.output.empty());
}

TEST(EmbedIntoJpeg, SourceThatEndsInsideItsExifSegmentIsAFailedRead) {
  const Bytes source = Join({{0xFF, 0xD8, 0xFF, 0xE1, 0, 100}, Text("Exif"), Zeros(20)});
  EXPECT_EQ(EmbedWith(&EmbedIntoJpeg, source, Text(kShortPacket)).result, LMD_E_READ_FAILED);
}

TEST(EmbedIntoJpeg, FilesMustOpen) {
  const TempFile source(Jpeg().Scan().Build());
  const TempFile packet(Text(kShortPacket), ".xmp");
  const WideString missing = TempPath();
  const WideString nowhere = missing + LMD_W("/x.jpg");
  const WideString output = TempPath();
  FileStream stream;
  ASSERT_TRUE(OpenForCopy(stream, source.Path(), LMD_W("rb")));
  EXPECT_EQ(EmbedIntoJpeg(stream, output.c_str(), missing.c_str()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(EmbedIntoJpeg(stream, output.c_str(), nullptr), LMD_E_OPEN_FAILED);
  EXPECT_EQ(EmbedIntoJpeg(stream, nowhere.c_str(), packet.Path()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(GetFileAttributesW(output.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(EmbedIntoPng, ChunkStandsBeforeTheEnd) {
  const Embedded embedded =
      EmbedWith(&EmbedIntoPng, Png().Header().End().Build(), Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output, Join({Png().Header().Build(), XmpChunk(Text(kShortPacket)), kPngEnd}));
}

TEST(EmbedIntoPng, BytesBehindTheEndChunkAreKept) {
  const Bytes source = Join({Png().Header().End().Build(), Text("trailer")});
  const Embedded embedded = EmbedWith(&EmbedIntoPng, source, Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output,
            Join({Png().Header().Build(), XmpChunk(Text(kShortPacket)), kPngEnd, Text("trailer")}));
}

TEST(EmbedIntoPng, OnlyAPanoramaPacketIsFound) {
  const Bytes panorama = Png().Header().Xmp("<x>equirectangular</x>").End().Build();
  const Embedded refused = EmbedWith(&EmbedIntoPng, panorama, Text(kShortPacket));
  EXPECT_EQ(refused.result, LMD_E_XMP_FOUND);
  EXPECT_TRUE(refused.output.empty());

  const Embedded embedded =
      EmbedWith(&EmbedIntoPng, Png().Header().Xmp("<x/>").End().Build(), Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output,
            Join({Png().Header().Xmp("<x/>").Build(), XmpChunk(Text(kShortPacket)), kPngEnd}));
}

TEST(EmbedIntoPng, PacketFileMayBeOneByteLarger) {
  const Embedded embedded =
      EmbedWith(&EmbedIntoPng, Png().Header().End().Build(), Bytes(65505, 'x'));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output, Join({Png().Header().Build(), XmpChunk(Bytes(65505, 'x')), kPngEnd}));
  EXPECT_EQ(EmbedWith(&EmbedIntoPng, Png().Header().End().Build(), Bytes(65506, 'x')).result,
            LMD_E_BUFFER_TOO_SMALL);
}

TEST(EmbedIntoPng, FileWithoutAnEndChunkGetsThePacketAtItsEnd) {
  const Embedded embedded = EmbedWith(&EmbedIntoPng, Png().Header().Build(), Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output, Join({Png().Header().Build(), XmpChunk(Text(kShortPacket))}));
}

TEST(EmbedIntoPng, SourceThatEndsInsideAChunkIsAFailedRead) {
  Bytes source = Png().Header().Build();
  source.pop_back();
  EXPECT_EQ(EmbedWith(&EmbedIntoPng, source, Text(kShortPacket)).result, LMD_E_READ_FAILED);
}

// The result of embedding into the file itself and what it then holds.
Embedded EmbedInPlace(const Bytes& image, const Bytes& packet) {
  const TempFile imageFile(image, ".png");
  const TempFile packetFile(packet, ".xmp");
  const HRESULT result = EmbedIntoSamePng(imageFile.Path(), packetFile.Path());
  return {result, imageFile.Read()};
}

TEST(EmbedIntoSamePng, ChunkStandsBeforeTheEnd) {
  const Embedded embedded = EmbedInPlace(Png().Header().End().Build(), Text(kShortPacket));
  EXPECT_EQ(embedded.result, S_OK);
  EXPECT_EQ(embedded.output, Join({Png().Header().Build(), XmpChunk(Text(kShortPacket)), kPngEnd}));
}

TEST(EmbedIntoSamePng, FileMustEndWithTheEndChunk) {
  Bytes wrongCrc = Png().Header().End().Build();
  wrongCrc.back() = 0x83;
  for (const Bytes& image :
       {wrongCrc, Join({Png().Header().End().Build(), {0}}), Png().Header().Build(),
        Bytes{0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A}}) {
    const Embedded embedded = EmbedInPlace(image, Text(kShortPacket));
    EXPECT_EQ(embedded.result, LMD_E_BAD_FORMAT);
    EXPECT_EQ(embedded.output, image);
  }
}

TEST(EmbedIntoSamePng, RefusalsLeaveTheFile) {
  const Bytes panorama = Png().Header().Xmp("equirectangular").End().Build();
  const Embedded found = EmbedInPlace(panorama, Text(kShortPacket));
  EXPECT_EQ(found.result, LMD_E_XMP_FOUND);
  EXPECT_EQ(found.output, panorama);

  const Embedded tooLarge = EmbedInPlace(Png().Header().End().Build(), Bytes(65506, 'x'));
  EXPECT_EQ(tooLarge.result, LMD_E_BUFFER_TOO_SMALL);
  EXPECT_EQ(tooLarge.output, Png().Header().End().Build());
}

TEST(EmbedIntoSamePng, FilesMustOpen) {
  const TempFile image(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kShortPacket), ".xmp");
  const WideString missing = TempPath();
  EXPECT_EQ(EmbedIntoSamePng(missing.c_str(), packet.Path()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(EmbedIntoSamePng(image.Path(), missing.c_str()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(EmbedIntoSamePng(image.Path(), nullptr), LMD_E_OPEN_FAILED);
  EXPECT_EQ(image.Read(), Png().Header().End().Build());
}

}  // namespace
}  // namespace test
