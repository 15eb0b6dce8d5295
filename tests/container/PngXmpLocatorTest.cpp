#include <gtest/gtest.h>

#include "LocatorTest.h"
#include "support/Png.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

constexpr std::uint64_t kBehindSignature = 8;
constexpr std::uint64_t kBehindHeader = 8 + 12 + 13;

Located At(const Bytes& bytes) {
  return Locate(&LocatePngXmp, bytes);
}

Located At(const Png& png) {
  return At(png.Build());
}

// A file with one chunk of such data behind its header, and whether XMP is found there. Where it is
// not, the walk goes on to IEND.
void ExpectChunk(std::string_view type, const Bytes& data, bool isFound) {
  const Located expected =
      isFound ? Found(kBehindHeader) : NotFound(kBehindHeader + 12 + data.size());
  EXPECT_EQ(At(Png().Header().Chunk(type, data).End()), expected);
}

TEST(PngXmpLocator, NullArgumentsAreRefused) {
  FileStream stream;
  std::uint64_t position = kNoPosition;
  EXPECT_EQ(LocatePngXmp(nullptr, &position), LMD_E_INVALID_ARG);
  EXPECT_EQ(LocatePngXmp(&stream, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(LocatePngXmp(nullptr, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(position, kNoPosition);
}

TEST(PngXmpLocator, EveryByteOfTheSignatureCounts) {
  for (std::size_t i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    Bytes bytes = Png().Header().End().Build();
    bytes[i] ^= 0x01;
    EXPECT_EQ(At(bytes).result, LMD_E_BAD_FORMAT);
  }
}

TEST(PngXmpLocator, CutSignatureIsABadFormat) {
  const Bytes signature = Png().Build();
  for (std::size_t size = 0; size < signature.size(); ++size) {
    const Bytes cut(signature.begin(), signature.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(At(cut).result, LMD_E_BAD_FORMAT) << size;
  }
}

TEST(PngXmpLocator, FileOfNothingButItsSignatureHasNone) {
  EXPECT_EQ(At(Png()), NotFound(kBehindSignature));
}

TEST(PngXmpLocator, PositionIsTheStartOfTheEnd) {
  EXPECT_EQ(At(Png().End()), NotFound(kBehindSignature));
  EXPECT_EQ(At(Png().Header().End()), NotFound(kBehindHeader));
  EXPECT_EQ(At(Png().Header().Chunk("IDAT", Zeros(10)).End()), NotFound(kBehindHeader + 22));
}

TEST(PngXmpLocator, PositionWithoutAnEndIsBehindTheLastChunk) {
  EXPECT_EQ(At(Png().Header()), NotFound(kBehindHeader));
  EXPECT_EQ(At(Png().Header().Chunk("IDAT", Zeros(10))), NotFound(kBehindHeader + 22));
}

TEST(PngXmpLocator, FoundChunkIsReportedWithItsStart) {
  EXPECT_EQ(At(Png().Xmp(kPanoramaPacket).End()), Found(kBehindSignature));
  EXPECT_EQ(At(Png().Header().Xmp(kPanoramaPacket).End()), Found(kBehindHeader));
  EXPECT_EQ(At(Png().Header().Chunk("IDAT", Zeros(3)).Xmp(kPanoramaPacket)),
            Found(kBehindHeader + 15));
}

TEST(PngXmpLocator, NothingIsLookedForBehindTheEnd) {
  EXPECT_EQ(At(Png().Header().End().Xmp(kPanoramaPacket)), NotFound(kBehindHeader));
}

TEST(PngXmpLocator, WordMayStandAnywhereInTheText) {
  ExpectChunk("iTXt", XmpChunkData("equirectangular"), true);
  ExpectChunk("iTXt", XmpChunkData("equirectangular and more"), true);
  ExpectChunk("iTXt", XmpChunkData("this is equirectangular"), true);
  ExpectChunk("iTXt", XmpChunkData("equirectequirectangular"), true);
}

TEST(PngXmpLocator, TextWithoutTheWordIsNotFound) {
  ExpectChunk("iTXt", XmpChunkData(""), false);
  ExpectChunk("iTXt", XmpChunkData("<x>cylindrical</x>"), false);
  ExpectChunk("iTXt", XmpChunkData("equirectangula"), false);
  ExpectChunk("iTXt", XmpChunkData("quirectangular"), false);
  ExpectChunk("iTXt", XmpChunkData("Equirectangular"), false);
  ExpectChunk("iTXt", XmpChunkData("EQUIRECTANGULAR"), false);
}

TEST(PngXmpLocator, TextEndsAtItsFirstZero) {
  constexpr std::string_view kBehind("text\0equirectangular", 20);
  constexpr std::string_view kInside("equirect\0angular", 16);
  constexpr std::string_view kFirst("\0equirectangular", 16);
  constexpr std::string_view kBefore("equirectangular\0text", 20);
  ExpectChunk("iTXt", XmpChunkData(kBehind), false);
  ExpectChunk("iTXt", XmpChunkData(kInside), false);
  ExpectChunk("iTXt", XmpChunkData(kFirst), false);
  ExpectChunk("iTXt", XmpChunkData(kBefore), true);
}

TEST(PngXmpLocator, KeywordMustBeThatOfXmp) {
  constexpr std::string_view kKeyword = "XML:com.adobe.xmp";
  for (std::size_t i = 0; i < kKeyword.size(); ++i) {
    SCOPED_TRACE(i);
    Bytes data = XmpChunkData(kPanoramaPacket);
    data[i] ^= 0x20;
    ExpectChunk("iTXt", data, false);
  }
  ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, "Comment"), false);
}

// Compression flag and method, language and translated keyword each end in the five bytes behind
// the keyword.
TEST(PngXmpLocator, OnlyTheUncompressedChunkWithoutLanguageAndTranslationCounts) {
  constexpr std::string_view kKeyword = "XML:com.adobe.xmp";
  ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, kKeyword, {0, 0, 0, 0, 0}), true);
  ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, kKeyword, {1, 0, 0, 0, 0}), false);
  ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, kKeyword, {0, 1, 0, 0, 0}), false);
  ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, kKeyword, {0, 0, 0, 'e', 'n', 0, 0}), false);
  ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, kKeyword, {0, 0, 0, 0, 'k', 0}), false);
  for (std::size_t i = 0; i < 5; ++i) {
    Bytes between(5);
    between[i] = 'x';
    ExpectChunk("iTXt", XmpChunkData(kPanoramaPacket, kKeyword, between), false);
  }
}

TEST(PngXmpLocator, OtherChunkTypesDoNotCarryXmp) {
  for (const std::string_view type : {"tEXt", "zTXt", "ITXt", "iTXT", "itXt", "IDAT"}) {
    ExpectChunk(type, XmpChunkData(kPanoramaPacket), false);
  }
}

TEST(PngXmpLocator, ChunkWithoutRoomForATextIsWalkedPast) {
  const Bytes data = XmpChunkData("");
  EXPECT_EQ(data.size(), 22U);
  for (std::size_t size = 0; size <= data.size(); ++size) {
    ExpectChunk("iTXt", Bytes(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(size)),
                false);
  }
}

TEST(PngXmpLocator, LaterChunkIsFoundBehindOneThatDoesNotCount) {
  const std::uint64_t second = kBehindHeader + 12 + 22 + 4;
  EXPECT_EQ(At(Png().Header().Xmp("flat").Xmp(kPanoramaPacket).End()), Found(second));
}

TEST(PngXmpLocator, TwoThatCountGiveTheFirst) {
  EXPECT_EQ(At(Png().Header().Xmp(kPanoramaPacket).Xmp(kPanoramaPacket).End()),
            Found(kBehindHeader));
}

TEST(PngXmpLocator, ChecksumIsNotVerified) {
  Bytes bytes = Png().Header().Xmp(kPanoramaPacket).Build();
  bytes.back() ^= 0xFF;
  EXPECT_EQ(At(bytes), Found(kBehindHeader));
}

TEST(PngXmpLocator, TextEndsWithItsChunk) {
  Png png;
  png.Header().ChunkOfLength("iTXt", 22 + 14, XmpChunkData("equirectangular"));
  EXPECT_EQ(At(png).result, S_OK);
}

TEST(PngXmpLocator, LengthPastTheEndOfTheFileEndsTheWalkBehindIt) {
  for (const std::uint32_t length : {100U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(length);
    Png png;
    png.Header().ChunkOfLength("IDAT", length, Zeros(4));
    EXPECT_EQ(At(png), NotFound(kBehindHeader + 12 + length));
    Png text;
    text.Header().ChunkOfLength("iTXt", length, XmpChunkData("flat"));
    EXPECT_EQ(At(text), NotFound(kBehindHeader + 12 + length));
  }
}

// 0xFFFFFFF4 + 12 is 0 in 32 bits: the walk would stay on this chunk for ever.
TEST(PngXmpLocator, PositionsDoNotWrap) {
  Png png;
  png.Header().ChunkOfLength("IDAT", 0xFFFFFFF4, Zeros(4)).Xmp(kPanoramaPacket);
  EXPECT_EQ(At(png), NotFound(kBehindHeader + 0x100000000));
  Png back;
  back.Xmp("flat").ChunkOfLength("IDAT", 0xFFFFFFF4 - 38, Zeros(4)).Xmp(kPanoramaPacket);
  EXPECT_EQ(At(back), NotFound(0x100000000 + 8));
}

TEST(PngXmpLocator, XmpChunkThatTheFileCutsIsSearchedAsFarAsItGoes) {
  for (const std::uint32_t length : {1000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(length);
    Png png;
    png.Header().ChunkOfLength("iTXt", length, XmpChunkData(kPanoramaPacket));
    EXPECT_EQ(At(png), Found(kBehindHeader));
  }
}

TEST(PngXmpLocator, LengthThatCannotBeReadEndsTheWalk) {
  for (std::size_t size = 0; size < 4; ++size) {
    EXPECT_EQ(At(Png().Header().Raw(Bytes(size, 0xFF))), NotFound(kBehindHeader)) << size;
  }
}

TEST(PngXmpLocator, TypeThatCannotBeReadIsNoType) {
  EXPECT_EQ(At(Png().Header().Raw({0, 0, 0, 0})).result, S_OK);
  EXPECT_EQ(At(Png().Header().Raw({0, 0, 0, 40, 'i', 'T', 'X'})).result, S_OK);
}

}  // namespace
}  // namespace test
