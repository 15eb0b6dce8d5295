#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "container/XmpPacket.h"
#include "container/XmpPacketReader.h"
#include "core/VxMetadataWrapper.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr std::uint32_t kUntouched = 4711;
constexpr char kPanorama[] = "<x>equirectangular</x>";  // 22 characters

struct Answer {
  HRESULT result;
  std::uint32_t size;

  bool operator==(const Answer&) const = default;
};

Answer SizeOf(const Bytes& contents, std::uint32_t fileType) {
  const TempFile file(contents);
  Answer answer = {S_OK, kUntouched};
  answer.result = ReadXmpPacketSize(file.Path(), fileType, &answer.size);
  return answer;
}

// The packet into a buffer of 100 bytes of '#'.
Answer PacketOf(const Bytes& contents, std::uint32_t fileType, Bytes* buffer,
                std::uint32_t room = 100) {
  const TempFile file(contents);
  buffer->assign(100, '#');
  Answer answer = {S_OK, kUntouched};
  answer.result = ReadXmpPacket(file.Path(), fileType, &answer.size, buffer->data(), room);
  return answer;
}

Bytes Padded(const Bytes& packet) {
  return Join({packet, Bytes(100 - packet.size(), '#')});
}

TEST(XmpPacketReader, SizeOfAJpegPacketIsTheSegmentLength) {
  EXPECT_EQ(SizeOf(Jpeg().Xmp("<x/>").Scan().Build(), FILETYPE_JPEG), (Answer{S_OK, 35}));
  EXPECT_EQ(SizeOf(Jpeg().Exif({}).Xmp("<x/>").Build(), FILETYPE_JPEG), (Answer{S_OK, 35}));
}

TEST(XmpPacketReader, JpegPacketIsToldTwoBytesLonger) {
  Bytes buffer;
  EXPECT_EQ(PacketOf(Jpeg().Exif({}).Xmp("<x/>").Build(), FILETYPE_JPEG, &buffer),
            (Answer{S_OK, 6}));
  EXPECT_EQ(buffer, Padded(Text("<x/>")));
}

TEST(XmpPacketReader, EmptyJpegPacketIsRead) {
  Bytes buffer;
  EXPECT_EQ(SizeOf(Jpeg().Xmp("").Build(), FILETYPE_JPEG), (Answer{S_OK, 31}));
  EXPECT_EQ(PacketOf(Jpeg().Xmp("").Build(), FILETYPE_JPEG, &buffer), (Answer{S_OK, 2}));
  EXPECT_EQ(buffer, Padded({}));
}

// Both answers come from what stands behind SOI or EXIF, wherever the packet was found.
TEST(XmpPacketReader, JpegPacketIsReadWhereThisModulePutsIt) {
  const Bytes contents = Jpeg().Segment(0xE0, Bytes(40, 'a')).Xmp("<x/>").Build();
  Bytes buffer;
  EXPECT_EQ(SizeOf(contents, FILETYPE_JPEG), (Answer{S_OK, 42}));
  EXPECT_EQ(PacketOf(contents, FILETYPE_JPEG, &buffer), (Answer{S_OK, 13}));
  EXPECT_EQ(buffer, Padded(Bytes(11, 'a')));
}

TEST(XmpPacketReader, JpegLengthBelowTheSignatureIsBroken) {
  for (const std::size_t payload : {14U, 28U}) {
    const Bytes contents = Jpeg().Segment(0xE0, Zeros(payload)).Xmp("<x/>").Build();
    Bytes buffer;
    EXPECT_EQ(SizeOf(contents, FILETYPE_JPEG),
              (Answer{S_OK, static_cast<std::uint32_t>(payload) + 2}));
    EXPECT_EQ(PacketOf(contents, FILETYPE_JPEG, &buffer), (Answer{LMD_E_BAD_FORMAT, kUntouched}));
    EXPECT_EQ(buffer, Padded({}));
  }
  const Bytes smallest = Jpeg().Segment(0xE0, Zeros(29)).Xmp("<x/>").Build();
  Bytes buffer;
  EXPECT_EQ(PacketOf(smallest, FILETYPE_JPEG, &buffer), (Answer{S_OK, 2}));
}

TEST(XmpPacketReader, JpegThatEndsInsideThePacketIsAFailedRead) {
  Bytes contents = Jpeg().Xmp("<x:xmpmeta/>").Build();
  contents.resize(contents.size() - 3);  // without EOI and one byte of the packet
  Bytes buffer;
  EXPECT_EQ(SizeOf(contents, FILETYPE_JPEG), (Answer{S_OK, 43}));
  EXPECT_EQ(PacketOf(contents, FILETYPE_JPEG, &buffer), (Answer{LMD_E_READ_FAILED, kUntouched}));
  EXPECT_EQ(buffer, Padded({}));
}

TEST(XmpPacketReader, PngPacketIsToldAsItIs) {
  const Bytes contents = Png().Header().Xmp(kPanorama).End().Build();
  Bytes buffer;
  EXPECT_EQ(SizeOf(contents, FILETYPE_PNG), (Answer{S_OK, 22}));
  EXPECT_EQ(PacketOf(contents, FILETYPE_PNG, &buffer), (Answer{S_OK, 22}));
  EXPECT_EQ(buffer, Padded(Text(kPanorama)));
}

TEST(XmpPacketReader, PngPacketBehindAnotherOneIsFound) {
  const Bytes contents =
      Png().Header().Xmp("<x/>").Chunk("tEXt", Text("ab")).Xmp(kPanorama).End().Build();
  Bytes buffer;
  EXPECT_EQ(PacketOf(contents, FILETYPE_PNG, &buffer), (Answer{S_OK, 22}));
  EXPECT_EQ(buffer, Padded(Text(kPanorama)));
}

TEST(XmpPacketReader, PngPacketWithoutAPanoramaIsNotFound) {
  const Bytes contents = Png().Header().Xmp("<x/>").End().Build();
  Bytes buffer;
  EXPECT_EQ(SizeOf(contents, FILETYPE_PNG), (Answer{LMD_E_NOT_FOUND, kUntouched}));
  EXPECT_EQ(PacketOf(contents, FILETYPE_PNG, &buffer), (Answer{LMD_E_NOT_FOUND, kUntouched}));
  EXPECT_EQ(buffer, Padded({}));
}

TEST(XmpPacketReader, PngThatEndsInsideThePacketIsAFailedRead) {
  Bytes contents = Png().Header().Xmp(kPanorama).Build();
  contents.resize(contents.size() - 5);  // without the CRC and one byte of the packet
  Bytes buffer;
  EXPECT_EQ(SizeOf(contents, FILETYPE_PNG), (Answer{S_OK, 22}));
  EXPECT_EQ(PacketOf(contents, FILETYPE_PNG, &buffer), (Answer{LMD_E_READ_FAILED, kUntouched}));
  EXPECT_EQ(buffer, Padded({}));
}

// The bytes count that are written, not those that are told.
TEST(XmpPacketReader, PacketLargerThanItsRoomIsNotRead) {
  const Bytes jpeg = Jpeg().Xmp("<x/>").Build();
  const Bytes png = Png().Header().Xmp(kPanorama).End().Build();
  Bytes buffer;
  EXPECT_EQ(PacketOf(jpeg, FILETYPE_JPEG, &buffer, 4), (Answer{S_OK, 6}));
  EXPECT_EQ(PacketOf(png, FILETYPE_PNG, &buffer, 22), (Answer{S_OK, 22}));
  EXPECT_EQ(PacketOf(jpeg, FILETYPE_JPEG, &buffer, 3),
            (Answer{LMD_E_BUFFER_TOO_SMALL, kUntouched}));
  EXPECT_EQ(buffer, Padded({}));
  EXPECT_EQ(PacketOf(png, FILETYPE_PNG, &buffer, 21), (Answer{LMD_E_BUFFER_TOO_SMALL, kUntouched}));
  EXPECT_EQ(buffer, Padded({}));
}

TEST(XmpPacketReader, FileWithoutAPacketHasNone) {
  EXPECT_EQ(SizeOf(Jpeg().Exif({}).Scan().Build(), FILETYPE_JPEG),
            (Answer{LMD_E_NOT_FOUND, kUntouched}));
  EXPECT_EQ(SizeOf(Png().Header().End().Build(), FILETYPE_PNG),
            (Answer{LMD_E_NOT_FOUND, kUntouched}));
}

TEST(XmpPacketReader, OtherFileTypesHaveNone) {
  const Bytes contents = Jpeg().Xmp("<x/>").Build();
  for (const std::uint32_t type : {0U, 2U, 3U, 99U}) {
    EXPECT_EQ(SizeOf(contents, type), (Answer{LMD_E_NOT_FOUND, kUntouched}));
  }
}

TEST(XmpPacketReader, FileThatIsNoLongerOfItsTypeIsBroken) {
  EXPECT_EQ(SizeOf(Text("a text"), FILETYPE_JPEG), (Answer{LMD_E_BAD_FORMAT, kUntouched}));
  EXPECT_EQ(SizeOf(Text("a text"), FILETYPE_PNG), (Answer{LMD_E_BAD_FORMAT, kUntouched}));
}

TEST(XmpPacketReader, FileMustOpen) {
  const WideString missing = TempPath();
  std::uint32_t size = kUntouched;
  std::uint8_t byte = 0;
  for (const std::uint32_t type : {0U, 1U, 5U}) {
    EXPECT_EQ(ReadXmpPacketSize(missing.c_str(), type, &size), LMD_E_OPEN_FAILED);
    EXPECT_EQ(ReadXmpPacket(missing.c_str(), type, &size, &byte, 1), LMD_E_OPEN_FAILED);
  }
  EXPECT_EQ(size, kUntouched);
}

// Every cut of a file gives an answer and leaves nothing outside the buffer touched.
TEST(XmpPacketReader, CutFilesGiveAnAnswer) {
  const Bytes jpeg = Jpeg().Exif(Zeros(20)).Xmp(kPanorama).Build();
  const Bytes png = Png().Header().Xmp(kPanorama).End().Build();
  for (const auto& [whole, type] :
       {std::pair{&jpeg, FILETYPE_JPEG}, std::pair{&png, FILETYPE_PNG}}) {
    for (std::size_t size = 0; size < whole->size(); ++size) {
      const Bytes cut(whole->begin(), whole->begin() + static_cast<std::ptrdiff_t>(size));
      Bytes buffer;
      const Answer answer = PacketOf(cut, type, &buffer);
      if (answer.result == S_OK) continue;
      EXPECT_EQ(answer.size, kUntouched);
      EXPECT_EQ(buffer, Padded({})) << size;
    }
  }
}

}  // namespace
}  // namespace test
