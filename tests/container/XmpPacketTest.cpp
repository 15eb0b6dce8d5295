#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/PngCrc.h"
#include "container/XmpPacket.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr char kSignature[] = "http://ns.adobe.com/xap/1.0/";
constexpr char kKeyword[] = "XML:com.adobe.xmp";

struct ReadResult {
  HRESULT result;
  PacketBytes bytes;
};

using Reader = HRESULT (*)(FileStream& packet, PacketBytes* bytes);

ReadResult ReadFileAs(Reader reader, const Bytes& packet) {
  const TempFile file(packet, ".xmp");
  FileStream stream;
  EXPECT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  ReadResult read = {S_OK, {}};
  read.result = reader(stream, &read.bytes);
  return read;
}

TEST(XmpPacket, SegmentIsMarkerLengthSignatureAndPacket) {
  const Bytes expected = Join({{0xFF, 0xE1, 0x00, 0x23}, Text(kSignature), {0}, Text("<x/>")});
  EXPECT_EQ(MakeXmpSegment(Text("<x/>")), expected);  // 0x23 = 4 + 31
  EXPECT_EQ(expected.size(), 37U);                    // 4 + 33
}

TEST(XmpPacket, EmptyPacketMakesASegment) {
  EXPECT_EQ(MakeXmpSegment({}), Join({{0xFF, 0xE1, 0x00, 0x1F}, Text(kSignature), {0}}));
}

// The CRC was worked out by zlib.
TEST(XmpPacket, ChunkIsLengthTypeHeaderPacketAndCrc) {
  const Bytes expected =
      Join({U32(26), Text("iTXt"), Text(kKeyword), Zeros(5), Text("<x/>"), U32(0x96A77763)});
  EXPECT_EQ(MakeXmpChunk(Text("<x/>")), expected);
  EXPECT_EQ(expected.size(), 38U);  // 4 + 34
}

TEST(XmpPacket, EmptyPacketMakesAChunk) {
  EXPECT_EQ(MakeXmpChunk({}),
            Join({U32(22), Text("iTXt"), Text(kKeyword), Zeros(5), U32(0x68467E1A)}));
}

TEST(XmpPacket, LargestSegmentHasTheLargestLength) {
  const ReadResult read = ReadFileAs(&ReadAsXmpSegment, Bytes(65504, 'x'));
  EXPECT_EQ(read.result, S_OK);
  ASSERT_EQ(read.bytes.size(), 65537U);
  EXPECT_EQ(Hex(std::span(read.bytes).first(4)), "ffe1ffff");
  EXPECT_EQ(read.bytes.back(), 'x');
}

TEST(XmpPacket, LargerSegmentsAreRefused) {
  for (const std::size_t size : {65505U, 65506U, 70000U}) {
    const ReadResult read = ReadFileAs(&ReadAsXmpSegment, Bytes(size, 'x'));
    EXPECT_EQ(read.result, LMD_E_BUFFER_TOO_SMALL) << size;
    EXPECT_TRUE(read.bytes.empty());
  }
}

TEST(XmpPacket, LargestChunkIsOneByteLarger) {
  for (const std::size_t size : {65504U, 65505U}) {
    const ReadResult read = ReadFileAs(&ReadAsXmpChunk, Bytes(size, 'x'));
    EXPECT_EQ(read.result, S_OK);
    ASSERT_EQ(read.bytes.size(), size + 34);
    const std::span<const std::uint8_t> bytes(read.bytes);
    EXPECT_EQ(LoadU32(bytes, ByteOrder::BigEndian), size + 22);
    EXPECT_EQ(LoadU32(bytes.last(4), ByteOrder::BigEndian),
              PngCrc(bytes.subspan(4, bytes.size() - 8)));
  }
}

TEST(XmpPacket, LargerChunksAreRefused) {
  for (const std::size_t size : {65506U, 70000U}) {
    EXPECT_EQ(ReadFileAs(&ReadAsXmpChunk, Bytes(size, 'x')).result, LMD_E_BUFFER_TOO_SMALL) << size;
  }
}

TEST(XmpPacket, EmptyFileIsAPacket) {
  EXPECT_EQ(ReadFileAs(&ReadAsXmpSegment, {}).bytes.size(), 33U);
  EXPECT_EQ(ReadFileAs(&ReadAsXmpChunk, {}).bytes.size(), 34U);
}

TEST(XmpPacket, IsNotLookedInto) {
  const Bytes packet = {0x00, 0xFF, 0xD9, 'n', 'o', ' ', 'X', 'M', 'L', 0x00};
  const ReadResult read = ReadFileAs(&ReadAsXmpSegment, packet);
  EXPECT_EQ(Bytes(read.bytes.begin() + 33, read.bytes.end()), packet);
}

}  // namespace
}  // namespace test
