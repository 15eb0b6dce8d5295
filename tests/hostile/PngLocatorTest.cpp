// The walk over a PNG's chunks, and the methods that go by it.

#include <string>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "Bounds.h"
#include "com/WriteTestSupport.h"
#include "container/LocatorTest.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

constexpr std::uint64_t kBehindHeader = 8 + 12 + 13;

Located BoundedLocate(const Bytes& bytes) {
  return Bounded(InputOf(bytes.size()), [&] { return Locate(&LocatePngXmp, bytes); });
}

// What a host gets of a file: the panorama flag, the size of the packet, and the packet in a buffer
// of 100 bytes of '#'.
struct Answers {
  HRESULT panorama = S_OK;
  std::uint32_t flag = 7;
  HRESULT sizeResult = S_OK;
  std::uint32_t size = 7;
  HRESULT packetResult = S_OK;
  std::string packet;

  bool operator==(const Answers&) const = default;
};

Answers Ask(const Bytes& bytes) {
  const LumidexObject object;
  const TempFile file(bytes, ".png");
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  return Bounded(InputOf(bytes.size()), [&] {
    Answers answers;
    answers.packet.assign(100, '#');
    answers.panorama = object->IsPanorama(&answers.flag);
    answers.sizeResult = object->GetXmpPacketSize(&answers.size);
    std::uint32_t told = 7;
    answers.packetResult =
        object->GetXmpPacket(&told, reinterpret_cast<std::uint8_t*>(answers.packet.data()));
    EXPECT_EQ(told, answers.packetResult == S_OK ? answers.size : 7U);
    return answers;
  });
}

const Answers kNone = {S_OK, 0, LMD_E_NOT_FOUND, 7, LMD_E_NOT_FOUND, std::string(100, '#')};

// A panorama whose packet the file does not have.
Answers PacketBeyondTheFile(std::uint32_t size) {
  return {S_OK, 1, S_OK, size, LMD_E_READ_FAILED, std::string(100, '#')};
}

TEST(HostilePngLocator, ChunkAtTheEndOfTheFile) {
  const Bytes before = Png().Header().Build();
  for (const Bytes& end : {Bytes{}, Bytes{0}, Bytes{0, 0}, Bytes{0xFF, 0xFF, 0xFF},
                           Bytes{0, 0, 0, 0, 'I', 'E', 'N', 'D'}}) {
    const Bytes file = Join({before, end});
    EXPECT_EQ(BoundedLocate(file), NotFound(kBehindHeader));
    EXPECT_EQ(Ask(file), kNone);
  }
  // A type in the last bytes that is cut is that of no chunk.
  for (const Bytes& end :
       {Bytes{0, 0, 0, 5}, Bytes{0, 0, 0, 5, 'i', 'T'}, Bytes{0, 0, 0, 5, 'I', 'E', 'N'},
        Bytes{0, 0, 0, 5, 'i', 'T', 'X', 't'}}) {
    const Bytes file = Join({before, end});
    EXPECT_EQ(BoundedLocate(file), NotFound(kBehindHeader + 12 + 5));
    EXPECT_EQ(Ask(file), kNone);
  }
}

// In 32 bits the next chunk would stand at a place that was passed already, or be the same again.
TEST(HostilePngLocator, LengthsWhoseSumPassesFourGiB) {
  for (const std::uint32_t length :
       {0xFFFFFFFFU, 0xFFFFFFF4U, 0xFFFFFFF0U, 0xFFFFFFE0U, 0x80000000U, 0x7FFFFFFFU}) {
    SCOPED_TRACE(length);
    const Bytes file =
        Png().Xmp(kPanoramaPacket.substr(0, 10)).Header().ChunkOfLength("IDAT", length, {}).Build();
    const std::uint64_t last = 8 + (12 + 22 + 10) + (12 + 13);
    EXPECT_EQ(BoundedLocate(file), NotFound(last + 12 + length));
    EXPECT_EQ(Ask(file), kNone);
  }
  // The place to which a 32-bit position would come back: a panorama in the data of another chunk.
  const Bytes chunk = Png().Xmp(kPanoramaPacket).Build();
  const Bytes hidden(chunk.begin() + 8, chunk.end());
  const auto size = static_cast<std::uint32_t>(hidden.size());
  const Bytes trap = Png().Chunk("tEXt", hidden).ChunkOfLength("IDAT", 0U - 16U - size, {}).Build();
  EXPECT_EQ(BoundedLocate(trap), NotFound((std::uint64_t{1} << 32) + 16));
  EXPECT_EQ(Ask(trap), kNone);
}

TEST(HostilePngLocator, EmbeddingBehindTheEndOfTheFile) {
  const LumidexObject object;
  const Bytes contents = Png().Header().ChunkOfLength("IDAT", 0xFFFFFFFF, Zeros(50)).Build();
  const TempFile file(contents, ".png");
  const TempFile packet(Text("<x/>"), ".xmp");
  const NewPath output(LMD_W(".png"));
  const auto embed = [&] {
    RemoveFile(output.Path());
    return object->EmbedXmpFile(file.Path(), output.Path(), packet.Path());
  };
  EXPECT_EQ(Bounded(kSmallInput, embed), LMD_E_READ_FAILED);
  EXPECT_EQ(object->EmbedXmpFile(file.Path(), file.Path(), packet.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(file.Read(), contents);
}

TEST(HostilePngLocator, FileWithoutAnEnd) {
  const Bytes contents = Png().Header().Chunk("IDAT", Zeros(9)).Build();
  EXPECT_EQ(BoundedLocate(contents), NotFound(contents.size()));
  EXPECT_EQ(Ask(contents), kNone);

  // A copy gets the packet at its end; in place there is no end to put it before.
  const LumidexObject object;
  const TempFile file(contents, ".png");
  const TempFile packet(Text("<x/>"), ".xmp");
  const NewPath output(LMD_W(".png"));
  EXPECT_EQ(object->EmbedXmpFile(file.Path(), output.Path(), packet.Path()), S_OK);
  EXPECT_EQ(output.Read(), Png().Header().Chunk("IDAT", Zeros(9)).Xmp("<x/>").Build());
  EXPECT_EQ(object->EmbedXmpFile(file.Path(), file.Path(), packet.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(file.Read(), contents);
}

// The file goes on with all of a panorama packet, but the chunk does not.
TEST(HostilePngLocator, TextChunkShorterThanItsHead) {
  for (std::uint32_t length = 0; length <= 22; ++length) {
    SCOPED_TRACE(length);
    const Bytes file =
        Png().Header().ChunkOfLength("iTXt", length, XmpChunkData(kPanoramaPacket)).Build();
    EXPECT_EQ(BoundedLocate(file).result, S_OK);
    EXPECT_EQ(Ask(file), kNone);
  }
  // One byte of text, which is not the word either.
  const Bytes file =
      Png().Header().ChunkOfLength("iTXt", 23, XmpChunkData(kPanoramaPacket)).Build();
  EXPECT_EQ(Ask(file), kNone);
}

// The text is looked at as far as the file has it; nothing is allocated for the rest.
TEST(HostilePngLocator, TextChunkThatTheFileEnds) {
  for (const std::uint32_t length : {0xFFFFFFFFU, 0x80000000U, 0x7FFFFFFFU, 100U}) {
    SCOPED_TRACE(length);
    const Bytes with =
        Png().Header().ChunkOfLength("iTXt", length, XmpChunkData(kPanoramaPacket)).Build();
    EXPECT_EQ(BoundedLocate(with), Found(kBehindHeader));
    EXPECT_EQ(Ask(with), PacketBeyondTheFile(length - 22));
    const Bytes without =
        Png().Header().ChunkOfLength("iTXt", length, XmpChunkData("flat")).Build();
    EXPECT_EQ(BoundedLocate(without), NotFound(kBehindHeader + 12 + length));
    EXPECT_EQ(Ask(without), kNone);
  }
}

// Only a plain text counts; nothing is decompressed.
TEST(HostilePngLocator, CompressedTextChunk) {
  for (const Bytes& between : {Bytes{0, 1, 0, 0, 0}, Bytes{0, 1, 1, 0, 0}, Bytes{0, 0, 1, 0, 0},
                               Bytes{0, 0xFF, 0xFF, 0, 0}, Bytes{0, 0, 0, 'e', 0}}) {
    Png png;
    png.Header().Chunk("iTXt", XmpChunkData(std::string(60'000, 'x') + std::string(kPanoramaPacket),
                                            "XML:com.adobe.xmp", between));
    EXPECT_EQ(BoundedLocate(png.Build()), NotFound(png.NextOffset()));
    EXPECT_EQ(Ask(png.End().Build()), kNone);
  }
}

// The word stands behind a text in which it nearly does, over and over.
TEST(HostilePngLocator, LongTextOfBeginnings) {
  std::string text;
  while (text.size() < 60'000) text += "equirectangula";
  const Bytes without = Png().Header().Xmp(text).End().Build();
  EXPECT_EQ(BoundedLocate(without), NotFound(kBehindHeader + 12 + 22 + text.size()));
  const Bytes with = Png().Header().Xmp(text + "r").End().Build();
  EXPECT_EQ(BoundedLocate(with), Found(kBehindHeader));
  EXPECT_EQ(BoundedLocate(Png().Header().Xmp(std::string(60'000, 'e')).End().Build()).result, S_OK);
}

// Files of very many chunks, empty ones and ones that nearly count.
TEST(HostilePngLocator, FloodOfChunks) {
  for (const Bytes& data : {Bytes{}, XmpChunkData(""), XmpChunkData("equirectangula")}) {
    const std::uint64_t size = 12 + data.size();
    const auto make = [&](std::size_t count) {
      Png png;
      for (std::size_t i = 0; i < count; ++i) png.Chunk("iTXt", data);
      return png.End().Build();
    };
    const std::size_t few = 65'000 / size;
    EXPECT_EQ(BoundedLocate(make(few)), NotFound(8 + few * size));
    EXPECT_EQ(Ask(make(few)), kNone);

    constexpr std::size_t kParts = 2'000;
    const TempFile small(make(kParts));
    const TempFile large(make(kParts * kTimes));
    ExpectLinear(kParts, [&](std::size_t count) {
      FileStream stream;
      EXPECT_TRUE(stream.Open(count == kParts ? small.Path() : large.Path(), LMD_W("rb")));
      std::uint64_t position = 0;
      EXPECT_EQ(LocatePngXmp(&stream, &position), S_OK);
      EXPECT_EQ(position, 8 + count * size);
      return position;
    });
  }
}

TEST(HostilePngLocator, FileThatEndsAnywhere) {
  const Bytes whole = Png().Header().Xmp(kPanoramaPacket).End().Build();
  constexpr std::size_t kWordEnd = kBehindHeader + 30 + 18;
  constexpr std::size_t kTextEnd = kBehindHeader + 30 + 22;
  for (std::size_t size = 8; size < whole.size(); ++size) {
    SCOPED_TRACE(size);
    const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
    if (size < kWordEnd) {
      EXPECT_EQ(Ask(file), kNone);
    } else if (size < kTextEnd) {
      EXPECT_EQ(Ask(file), PacketBeyondTheFile(22));
    } else {
      EXPECT_EQ(Ask(file), (Answers{S_OK, 1, S_OK, 22, S_OK,
                                    std::string(kPanoramaPacket) + std::string(78, '#')}));
    }
  }
}

}  // namespace
}  // namespace test
