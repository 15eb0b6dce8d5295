#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/XmpLocators.h"
#include "support/Png.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr std::string_view kPanorama =
    "<GPano:ProjectionType>equirectangular</GPano:ProjectionType>";

HRESULT Locate(const Bytes& bytes, std::uint64_t* position) {
  const TempFile file(bytes, ".png");
  FileStream stream;
  EXPECT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  return LocatePngXmp(&stream, position);
}

HRESULT Locate(const Bytes& bytes) {
  std::uint64_t position = 0;
  return Locate(bytes, &position);
}

TEST(PngXmpLocator, RefusesNullArguments) {
  FileStream stream;
  std::uint64_t position = 7;
  EXPECT_EQ(LocatePngXmp(nullptr, &position), LMD_E_INVALID_ARG);
  EXPECT_EQ(LocatePngXmp(&stream, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(position, 7U);
}

TEST(PngXmpLocator, RefusesAnotherSignature) {
  const Bytes bytes = Png().Header().End().Build();
  for (std::size_t i = 0; i < 8; ++i) {
    Bytes damaged = bytes;
    damaged[i] ^= 0x20;
    EXPECT_EQ(Locate(damaged), LMD_E_BAD_FORMAT) << i;
    EXPECT_EQ(Locate(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(i))),
              LMD_E_BAD_FORMAT)
        << i;
  }
}

TEST(PngXmpLocator, PositionIsTheStartOfTheEndChunk) {
  const Png head = Png().Header();
  std::uint64_t position = 0;
  EXPECT_EQ(Locate(Png().Header().End().Build(), &position), S_OK);
  EXPECT_EQ(position, 33U);
  EXPECT_EQ(head.NextOffset(), 33U);
}

TEST(PngXmpLocator, FindsAPanoramaPacketAndItsPosition) {
  std::uint64_t position = 0;
  EXPECT_EQ(Locate(Png().Header().Xmp(kPanorama).End().Build(), &position), LMD_E_XMP_FOUND);
  EXPECT_EQ(position, 33U);
}

TEST(PngXmpLocator, OtherXmpIsWalkedPast) {
  const Png png = Png().Header().Xmp("<x:xmpmeta/>");
  std::uint64_t position = 0;
  EXPECT_EQ(Locate(Png(png).End().Build(), &position), S_OK);
  EXPECT_EQ(position, png.NextOffset());
  EXPECT_EQ(Locate(Png(png).Xmp(kPanorama).End().Build(), &position), LMD_E_XMP_FOUND);
  EXPECT_EQ(position, png.NextOffset());
}

TEST(PngXmpLocator, WordIsComparedExactly) {
  EXPECT_EQ(Locate(Png().Header().Xmp("equirectangular").End().Build()), LMD_E_XMP_FOUND);
  EXPECT_EQ(Locate(Png().Header().Xmp("Equirectangular").End().Build()), S_OK);
  EXPECT_EQ(Locate(Png().Header().Xmp("equirectangula").End().Build()), S_OK);
}

TEST(PngXmpLocator, ChunkMustBeUncompressedWithoutLanguageAndTranslation) {
  for (std::size_t i = 0; i < 5; ++i) {
    Bytes between = Zeros(5);
    between[i] = 1;
    const Bytes data = XmpChunkData(kPanorama, "XML:com.adobe.xmp", between);
    EXPECT_EQ(Locate(Png().Header().Chunk("iTXt", data).End().Build()), S_OK) << i;
  }
  const Bytes other = XmpChunkData(kPanorama, "XML:com.adobe.xmq");
  EXPECT_EQ(Locate(Png().Header().Chunk("iTXt", other).End().Build()), S_OK);
  const Bytes right = XmpChunkData(kPanorama);
  EXPECT_EQ(Locate(Png().Header().Chunk("tEXt", right).End().Build()), S_OK);
  EXPECT_EQ(Locate(Png().Header().Chunk("iTXt", right).End().Build()), LMD_E_XMP_FOUND);
}

TEST(PngXmpLocator, TextEndsAtItsFirstZero) {
  const Bytes data = Join({XmpChunkData("a"), Zeros(1), Text(kPanorama)});
  EXPECT_EQ(Locate(Png().Header().Chunk("iTXt", data).End().Build()), S_OK);
}

TEST(PngXmpLocator, ShortChunksHoldNoPacket) {
  const Bytes whole = XmpChunkData("");
  ASSERT_EQ(whole.size(), 22U);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const Bytes data(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(Locate(Png().Header().Chunk("iTXt", data).End().Build()), S_OK) << length;
  }
}

TEST(PngXmpLocator, NothingBehindTheEndChunkIsRead) {
  EXPECT_EQ(Locate(Png().Header().End().Xmp(kPanorama).Build()), S_OK);
}

TEST(PngXmpLocator, FileWithoutAnEndChunkEndsTheWalkWhereTheLastChunkEnds) {
  std::uint64_t position = 0;
  EXPECT_EQ(Locate(Png().Header().Build(), &position), S_OK);
  EXPECT_EQ(position, 33U);
  EXPECT_EQ(Locate(Png().Build(), &position), S_OK);
  EXPECT_EQ(position, 8U);
}

TEST(PngXmpLocator, LengthsBeyondTheFileEndTheWalk) {
  for (const std::uint32_t length : {100U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    std::uint64_t position = 0;
    EXPECT_EQ(Locate(Png().ChunkOfLength("IDAT", length, Zeros(4)).Build(), &position), S_OK);
    EXPECT_EQ(position, std::uint64_t{8} + 12 + length);
  }
}

TEST(PngXmpLocator, CutPacketIsSearchedAsFarAsItGoes) {
  const Bytes data = XmpChunkData(kPanorama);
  EXPECT_EQ(Locate(Png().ChunkOfLength("iTXt", 0xFFFFFFFF, data).Build()), LMD_E_XMP_FOUND);
  EXPECT_EQ(Locate(Png().ChunkOfLength("iTXt", 0xFFFFFFFF, XmpChunkData("equi")).Build()), S_OK);
}

}  // namespace
}  // namespace test
