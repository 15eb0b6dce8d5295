// What the writing methods write and the packet methods read back, through the interface.

#include <filesystem>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "com/WriteTestSupport.h"
#include "container/XmpPacket.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/StoreFile.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

const Bytes kPngEnd = {0, 0, 0, 0, 'I', 'E', 'N', 'D', 0xAE, 0x42, 0x60, 0x82};

constexpr char kPanorama[] = "<x>equirectangular</x>";  // 22 characters
constexpr WideStringView kForeignName = LMD_W("-\u00E9\u0416\u4E2D.jpg");

Records CameraRecords() {
  Records records;
  records.Ascii(2, 271, "Maker").Integers(4, 34855, {400}).Ascii(8, 1, "N");
  return records;
}

// The Make, the sensitivity and the latitude reference that the store reads from a file.
std::string ValuesIn(const Bytes& file) {
  StoreFile store(file);
  EXPECT_EQ(store.ParseJpeg(), S_OK);
  std::string all;
  for (const auto& [block, tag] :
       {std::pair{BLOCK_IFD0, 271}, {BLOCK_EXIF, 34855}, {BLOCK_GPS, 1}}) {
    const auto stored = Find(store.Store(), block, static_cast<std::uint32_t>(tag));
    all += (stored ? stored->hex : "-") + " ";
  }
  return all;
}

std::uint64_t AddressOf(const Bytes& bytes) {
  return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(bytes.data()));
}

TEST(WriteMetadata, ValuesAreReadBack) {
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const NewPath output;
  EXPECT_EQ(object.Write(source.Path(), output.Path(), CameraRecords()), S_OK);
  EXPECT_EQ(ValuesIn(output.Read()), "4d616b657200 9001 4e00 ");
  EXPECT_EQ(object->Open(output.Path()), S_OK);
}

TEST(WriteMetadata, ValuesOfTheOldSegmentReturn) {
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const NewPath first;
  const NewPath second;
  EXPECT_EQ(object.Write(source.Path(), first.Path(), CameraRecords()), S_OK);
  Records records;
  records.Ascii(2, 271, "Other").Ascii(2, 272, "Model");
  EXPECT_EQ(object.Write(first.Path(), second.Path(), records), LMD_E_HAS_EXIF);
  EXPECT_EQ(object.Write(first.Path(), second.Path(), records, true), S_OK);
  EXPECT_EQ(ValuesIn(second.Read()), "4d616b657200 9001 4e00 ");
}

TEST(WriteMetadata, PathsOfAnyAlphabet) {
  const LumidexObject object;
  const NewPath source(kForeignName);
  const NewPath output(kForeignName);
  const NewPath packet(kForeignName);
  WriteFile(source.Path(), Jpeg().Scan().Build());
  WriteFile(packet.Path(), Text(kShortPacket));
  const Records records = CameraRecords();
  EXPECT_EQ(object->WriteMetadata(source.Path(), output.Path(), records.Count(), records.Data(), 0,
                                  0, packet.Path(), 0),
            S_OK);
  EXPECT_EQ(ValuesIn(output.Read()), "4d616b657200 9001 4e00 ");
  std::uint32_t size = 0;
  EXPECT_EQ(object->Open(output.Path()), S_OK);
  EXPECT_EQ(object->GetXmpPacketSize(&size), S_OK);
  EXPECT_EQ(size, 12U + 31);
}

TEST(WriteMetadata, ThumbnailNeedsBothOptions) {
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const Bytes thumbnail = Jpeg().Frame(160, 120).Build();
  const auto length = static_cast<std::uint32_t>(thumbnail.size());
  const Records records = CameraRecords();
  struct Case {
    std::uint32_t opt32;
    std::uint64_t opt64;
    std::uint32_t stored;
  };
  for (const Case& row : {Case{length, AddressOf(thumbnail), length},
                          Case{0, AddressOf(thumbnail), 0}, Case{length, 0, 0}}) {
    const NewPath output;
    EXPECT_EQ(object->WriteMetadata(source.Path(), output.Path(), records.Count(), records.Data(),
                                    row.opt32, row.opt64, nullptr, 0),
              S_OK);
    StoreFile store(output.Read());
    EXPECT_EQ(store.ParseJpeg(), S_OK);
    EXPECT_EQ(store.Store().m_nThumbnailSize, row.stored);
    EXPECT_EQ(Keys(store.Store(), BLOCK_IFD1).empty(), row.stored == 0);
  }
}

TEST(WriteMetadata, PacketAloneNeedsNoRecords) {
  const LumidexObject object;
  const Bytes rest = {0xFF, 0xE0, 0, 3, 1, 0xFF, 0xDA, 0, 2, 1, 2, 0xFF, 0xD9};
  const TempFile source(Join({{0xFF, 0xD8}, rest}));
  const TempFile packet(Text(kShortPacket), ".xmp");
  const NewPath output;
  EXPECT_EQ(object->WriteMetadata(source.Path(), output.Path(), 5, nullptr, 0, 0, packet.Path(), 0),
            S_OK);
  EXPECT_EQ(output.Read(), Join({{0xFF, 0xD8}, MakeXmpSegment(Text(kShortPacket)), rest}));
}

TEST(WriteMetadata, ObjectThenServesTheSource) {
  const LumidexObject object;
  const TempFile source(Jpeg().Xmp("<x/>").Scan().Build());
  const NewPath output;
  EXPECT_EQ(object.Write(source.Path(), output.Path(), CameraRecords()), S_OK);
  std::uint32_t size = 0;
  EXPECT_EQ(object->GetXmpPacketSize(&size), S_OK);
  EXPECT_EQ(size, 35U);
}

TEST(EmbedXmpFile, PacketOfAJpegIsReadBack) {
  const LumidexObject object;
  const TempFile source(Jpeg().Scan().Build());
  const TempFile packet(Text(kShortPacket), ".xmp");
  const NewPath output;
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), output.Path(), packet.Path()), S_OK);
  EXPECT_EQ(object->Open(output.Path()), S_OK);

  std::uint32_t size = 0;
  EXPECT_EQ(object->GetXmpPacketSize(&size), S_OK);
  EXPECT_EQ(size, 12U + 31);
  Bytes buffer(size, '#');
  size = 0;
  EXPECT_EQ(object->GetXmpPacket(&size, buffer.data()), S_OK);
  EXPECT_EQ(size, 12U + 2);
  EXPECT_EQ(buffer, Join({Text(kShortPacket), Bytes(31, '#')}));
}

TEST(EmbedXmpFile, PacketOfAPngIsReadBack) {
  const LumidexObject object;
  const TempFile source(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kPanorama), ".xmp");
  const NewPath output(LMD_W(".png"));
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), output.Path(), packet.Path()), S_OK);
  EXPECT_EQ(object->Open(output.Path()), S_OK);

  std::uint32_t size = 0;
  EXPECT_EQ(object->GetXmpPacketSize(&size), S_OK);
  EXPECT_EQ(size, 22U);
  Bytes buffer(size);
  EXPECT_EQ(object->GetXmpPacket(&size, buffer.data()), S_OK);
  EXPECT_EQ(size, 22U);
  EXPECT_EQ(buffer, Text(kPanorama));
  EXPECT_EQ(object->EmbedXmpFile(output.Path(), output.Path(), packet.Path()), LMD_E_XMP_FOUND);
}

TEST(EmbedXmpFile, PngIsWrittenInPlaceUnderItsOwnName) {
  const LumidexObject object;
  const TempFile image(Png().Header().End().Build(), ".png");
  const TempFile packet(Text(kPanorama), ".xmp");
  EXPECT_EQ(object->EmbedXmpFile(image.Path(), image.Path(), packet.Path()), S_OK);
  EXPECT_EQ(image.Read(), Join({Png().Header().Build(), MakeXmpChunk(Text(kPanorama)), kPngEnd}));
  std::uint32_t flag = 0;
  EXPECT_EQ(object->IsPanorama(&flag), S_OK);
  EXPECT_EQ(flag, 1U);
}

TEST(EmbedXmpFile, PngWithAnotherEndIsLeftAlone) {
  const LumidexObject object;
  const Bytes contents = Join({Png().Header().End().Build(), {0}});
  const TempFile image(contents, ".png");
  const TempFile packet(Text(kPanorama), ".xmp");
  EXPECT_EQ(object->EmbedXmpFile(image.Path(), image.Path(), packet.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(image.Read(), contents);
}

TEST(EmbedXmpFile, PathsOfAnyAlphabet) {
  const LumidexObject object;
  const NewPath source(kForeignName);
  const NewPath output(kForeignName);
  const NewPath packet(kForeignName);
  WriteFile(source.Path(), Jpeg().Scan().Build());
  WriteFile(packet.Path(), Text(kShortPacket));
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), output.Path(), packet.Path()), S_OK);
  EXPECT_EQ(output.Read(), Join({{0xFF, 0xD8},
                                 MakeXmpSegment(Text(kShortPacket)),
                                 {0xFF, 0xDA},
                                 U16(8),
                                 {1, 1, 0, 0, 63, 0, 0x12, 0x34, 0x56, 0xFF, 0xD9}}));
}

// A size that only 64 bits hold must not pass for a small one.
TEST(EmbedXmpFile, HugePacketFileIsRefused) {
  const LumidexObject object;
  const TempFile jpeg(Jpeg().Scan().Build());
  const TempFile png(Png().Header().End().Build(), ".png");
  const TempFile packet({}, ".xmp");
  const NewPath output;
  for (const std::uint64_t size : {0x80000000ULL, 0x100000010ULL}) {
    std::filesystem::resize_file(std::filesystem::path(packet.Path()), size);
    EXPECT_EQ(object->EmbedXmpFile(jpeg.Path(), output.Path(), packet.Path()),
              LMD_E_BUFFER_TOO_SMALL);
    EXPECT_EQ(object->EmbedXmpFile(png.Path(), png.Path(), packet.Path()), LMD_E_BUFFER_TOO_SMALL);
    EXPECT_EQ(object->WriteMetadata(jpeg.Path(), output.Path(), 0, nullptr, 0, 0, packet.Path(), 0),
              LMD_E_BUFFER_TOO_SMALL);
  }
  EXPECT_FALSE(output.Exists());
  EXPECT_EQ(png.Read(), Png().Header().End().Build());
}

TEST(GetXmpPacket, NeedsAFileAndPointers) {
  const LumidexObject object;
  std::uint32_t size = 7;
  std::uint8_t byte = 8;
  EXPECT_EQ(object->GetXmpPacketSize(&size), LMD_E_INVALID_ARG);
  EXPECT_EQ(object->GetXmpPacket(&size, &byte), LMD_E_INVALID_ARG);

  const TempFile file(Jpeg().Xmp("<x/>").Scan().Build());
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  EXPECT_EQ(object->GetXmpPacketSize(nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(object->GetXmpPacket(nullptr, &byte), LMD_E_INVALID_ARG);
  EXPECT_EQ(object->GetXmpPacket(&size, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(size, 7U);
  EXPECT_EQ(byte, 8);
}

constexpr std::uint32_t kUntouched = 4711;

// A result with the size that came with it.
using Told = std::pair<HRESULT, std::uint32_t>;

Told AskSize(const LumidexObject& object) {
  std::uint32_t size = kUntouched;
  const HRESULT result = object->GetXmpPacketSize(&size);
  return {result, size};
}

// The packet into a buffer of '#'.
Told AskPacket(const LumidexObject& object, Bytes* buffer) {
  std::uint32_t size = kUntouched;
  buffer->assign(100, '#');
  const HRESULT result = object->GetXmpPacket(&size, buffer->data());
  return {result, size};
}

Bytes JpegOfPacket(std::size_t size) {
  return Jpeg().Xmp(std::string(size, 'x')).Scan().Build();
}

// A host's buffer has the size that it was told. For a JPEG that is 31 more than the packet had.
TEST(GetXmpPacket, PacketThatHasGrownIsNotRead) {
  const LumidexObject object;
  const NewPath file;
  WriteFile(file.Path(), JpegOfPacket(4));
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  EXPECT_EQ(AskSize(object), Told(S_OK, 35));

  Bytes buffer;
  WriteFile(file.Path(), JpegOfPacket(35));
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 37));
  EXPECT_EQ(buffer, Join({Bytes(35, 'x'), Bytes(65, '#')}));
  WriteFile(file.Path(), JpegOfPacket(36));
  EXPECT_EQ(AskPacket(object, &buffer), Told(LMD_E_BUFFER_TOO_SMALL, kUntouched));
  EXPECT_EQ(buffer, Bytes(100, '#'));

  EXPECT_EQ(AskSize(object), Told(S_OK, 67));
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 38));
}

TEST(GetXmpPacket, PngPacketThatHasGrownIsNotRead) {
  const LumidexObject object;
  const NewPath file(LMD_W(".png"));
  WriteFile(file.Path(), Png().Header().Xmp(kPanorama).End().Build());
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  EXPECT_EQ(AskSize(object), Told(S_OK, 22));

  Bytes buffer;
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 22));
  WriteFile(file.Path(), Png().Header().Xmp(std::string(kPanorama) + "!").End().Build());
  EXPECT_EQ(AskPacket(object, &buffer), Told(LMD_E_BUFFER_TOO_SMALL, kUntouched));
  EXPECT_EQ(buffer, Bytes(100, '#'));
  EXPECT_EQ(AskSize(object), Told(S_OK, 23));
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 23));
}

// An answer holds for its file, until there is another; also when other files come between.
TEST(GetXmpPacket, SizeToldOfAnotherFileDoesNotCount) {
  const LumidexObject object;
  const NewPath small;
  const TempFile large(JpegOfPacket(90));
  WriteFile(small.Path(), JpegOfPacket(4));
  EXPECT_EQ(object->Open(small.Path()), S_OK);
  EXPECT_EQ(AskSize(object), Told(S_OK, 35));

  Bytes buffer;
  EXPECT_EQ(object->Open(large.Path()), S_OK);
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 92));
  WriteFile(small.Path(), JpegOfPacket(80));
  EXPECT_EQ(object->Open(small.Path()), S_OK);
  EXPECT_EQ(AskPacket(object, &buffer), Told(LMD_E_BUFFER_TOO_SMALL, kUntouched));

  EXPECT_EQ(object->Open(large.Path()), S_OK);
  EXPECT_EQ(AskSize(object), Told(S_OK, 121));
  EXPECT_EQ(object->Open(small.Path()), S_OK);
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 82));
}

// A failure tells no size.
TEST(GetXmpPacket, SizeThatCouldNotBeToldChangesNothing) {
  const LumidexObject object;
  const NewPath file;
  WriteFile(file.Path(), JpegOfPacket(4));
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  EXPECT_EQ(AskSize(object), Told(S_OK, 35));
  WriteFile(file.Path(), Jpeg().Scan().Build());
  EXPECT_EQ(AskSize(object), Told(LMD_E_NOT_FOUND, kUntouched));

  Bytes buffer;
  WriteFile(file.Path(), JpegOfPacket(36));
  EXPECT_EQ(AskPacket(object, &buffer), Told(LMD_E_BUFFER_TOO_SMALL, kUntouched));
  WriteFile(file.Path(), JpegOfPacket(35));
  EXPECT_EQ(AskPacket(object, &buffer), Told(S_OK, 37));
}

TEST(GetXmpPacket, FileThatVanishedCannotBeOpened) {
  const LumidexObject object;
  const NewPath file;
  WriteFile(file.Path(), Jpeg().Xmp("<x/>").Scan().Build());
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  RemoveFile(file.Path());
  std::uint32_t size = 7;
  std::uint8_t byte = 8;
  EXPECT_EQ(object->GetXmpPacketSize(&size), LMD_E_OPEN_FAILED);
  EXPECT_EQ(object->GetXmpPacket(&size, &byte), LMD_E_OPEN_FAILED);
}

TEST(GetXmpPacket, TypeOfALaterRefusedFileCounts) {
  const LumidexObject object;
  const TempFile file(Jpeg().Xmp("<x/>").Scan().Build());
  const TempFile text(Text("not an image"));
  std::uint32_t size = 7;
  EXPECT_EQ(object->Open(file.Path()), S_OK);
  EXPECT_EQ(object->Open(text.Path()), LMD_E_BAD_FORMAT);
  EXPECT_EQ(object->GetXmpPacketSize(&size), LMD_E_NOT_FOUND);
}

}  // namespace
}  // namespace test
