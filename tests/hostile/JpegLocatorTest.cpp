// The walks over a JPEG's segments that look for a packet or an EXIF segment without parsing, and
// the methods that go by them.

#include <string>

#include <gtest/gtest.h>

#include <lumidex/ResultCodes.h>

#include "Bounds.h"
#include "com/WriteTestSupport.h"
#include "container/ExifLocator.h"
#include "container/LocatorTest.h"
#include "support/Jpeg.h"

namespace test {
namespace {

const Bytes kNamespace = Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1)});

Located BoundedXmp(const Bytes& bytes) {
  return Bounded(InputOf(bytes.size()), [&] { return Locate(&LocateJpegXmp, bytes); });
}

Located BoundedExif(const Bytes& bytes) {
  const auto locate = [](FileStream* stream, std::uint64_t* position) {
    return LocateJpegExif(*stream, position);
  };
  return Bounded(InputOf(bytes.size()), [&] { return Locate(locate, bytes); });
}

Records OneRecord() {
  Records records;
  records.Ascii(2, 271, "Cam");
  return records;
}

// A segment's head in the last bytes of the file, whole or in part.
TEST(HostileJpegLocator, HeadAtTheEndOfTheFile) {
  const Bytes before = Join({{0xFF, 0xD8, 0xFF, 0xE0, 0, 4, 1, 2}});
  for (const Bytes& end :
       {Bytes{}, Bytes{0xFF}, Bytes{0xFF, 0xE1}, Bytes{0xFF, 0xE1, 0xFF}, Bytes{0xFF, 0xE1, 0, 0},
        Bytes{0xFF, 0xE1, 0, 1}, Bytes{0xFF, 0xE1, 0, 2}, Bytes{0xFF, 0xE1, 0xFF, 0xFF},
        Bytes{0xFF, 0xE1, 0xFF, 0xFF, 'E', 'x', 'i'}, Bytes{0xFF, 0xE1, 0xFF, 0xFF, 'h', 't'},
        Bytes{0xFF, 0xD9}, Bytes{0xFF, 0xDA}, Bytes{0, 0}}) {
    SCOPED_TRACE(Hex(end));
    const Bytes file = Join({before, end});
    EXPECT_EQ(BoundedXmp(file), NotFound(2));
    EXPECT_EQ(BoundedExif(file), NotFound(2));
    const Bytes alone = Join({{0xFF, 0xD8}, end});
    EXPECT_EQ(BoundedXmp(alone), NotFound(2));
    EXPECT_EQ(BoundedExif(alone), NotFound(2));
  }
}

// The place for a packet is then behind the end of the file, which no copy reaches.
TEST(HostileJpegLocator, ExifSegmentBeyondTheFile) {
  const Bytes file = {0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xFF, 'E', 'x', 'i', 'f'};
  EXPECT_EQ(BoundedXmp(file), NotFound(2 + 2 + 0xFFFF));
  EXPECT_EQ(BoundedExif(file), (Located{LMD_E_HAS_EXIF, 2}));

  const LumidexObject object;
  const TempFile source(file);
  const TempFile packet(Text("<x/>"), ".xmp");
  const NewPath embedded;
  const NewPath written;
  EXPECT_EQ(object->EmbedXmpFile(source.Path(), embedded.Path(), packet.Path()), LMD_E_READ_FAILED);
  EXPECT_EQ(
      object->WriteMetadata(source.Path(), written.Path(), 0, nullptr, 0, 0, packet.Path(), 0),
      LMD_E_READ_FAILED);
  EXPECT_EQ(source.Read(), file);
  std::uint32_t size = 7;
  EXPECT_EQ(object->GetXmpPacketSize(&size), LMD_E_NOT_FOUND);
  EXPECT_EQ(size, 7U);
}

// The namespace stands there, but the segment does not reach over it.
TEST(HostileJpegLocator, LengthBelowTheNamespace) {
  for (std::uint16_t length = 0; length < 28; ++length) {
    const Bytes file = Jpeg().SegmentOfLength(0xE1, length, kNamespace).Build();
    EXPECT_EQ(BoundedXmp(file), NotFound(2)) << length;
  }
}

// The packet is read where this module puts it. A segment there that is shorter than the head of a
// packet would be a packet of four billion bytes.
TEST(HostileJpegLocator, PacketWhoseLengthUnderflows) {
  const LumidexObject object;
  for (std::uint16_t length = 2; length < 34; ++length) {
    SCOPED_TRACE(length);
    const TempFile file(Jpeg().Segment(0xE0, Zeros(length - 2U)).Xmp("<x/>").Scan().Build());
    ASSERT_EQ(object->Open(file.Path()), S_OK);
    std::uint32_t size = 7;
    Bytes buffer(100, '#');
    EXPECT_EQ(object->GetXmpPacket(&size, buffer.data()), length < 31 ? LMD_E_BAD_FORMAT : S_OK);
    EXPECT_EQ(size, length < 31 ? 7U : length - 29U);
    const std::size_t written = length < 31 ? 0 : length - 31U;
    EXPECT_EQ(Bytes(buffer.begin() + static_cast<std::ptrdiff_t>(written), buffer.end()),
              Bytes(100 - written, '#'));
    EXPECT_EQ(object->GetXmpPacketSize(&size), S_OK);
    EXPECT_EQ(size, length);
  }
}

TEST(HostileJpegLocator, FloodOfEmptySegments) {
  Jpeg jpeg;
  for (int i = 0; i < 16'000; ++i) jpeg.Segment(0xE1, {});
  EXPECT_EQ(BoundedXmp(jpeg.Build()), NotFound(2));
  EXPECT_EQ(BoundedExif(jpeg.Build()), NotFound(2));
}

// Each moves the place for a packet.
TEST(HostileJpegLocator, FloodOfExifSegments) {
  const auto make = [](std::size_t count) {
    Jpeg jpeg;
    for (std::size_t i = 0; i < count; ++i) jpeg.Exif({});
    return jpeg.Build();
  };
  EXPECT_EQ(BoundedXmp(make(6'500)), NotFound(2 + 10 * 6'500));
  EXPECT_EQ(BoundedExif(make(6'500)), (Located{LMD_E_HAS_EXIF, 2}));

  constexpr std::size_t kParts = 5'000;
  const TempFile small(make(kParts));
  const TempFile large(make(kParts * kTimes));
  ExpectLinear(kParts, [&](std::size_t count) {
    FileStream stream;
    EXPECT_TRUE(stream.Open(count == kParts ? small.Path() : large.Path(), LMD_W("rb")));
    std::uint64_t position = 0;
    EXPECT_EQ(LocateJpegXmp(&stream, &position), S_OK);
    EXPECT_EQ(position, 2 + 10 * count);
    return position;
  });
}

// Segments that begin like one with a packet and are none.
TEST(HostileJpegLocator, FloodOfOtherNamespaces) {
  Jpeg jpeg;
  for (int i = 0; i < 1'900; ++i) jpeg.Segment(0xE1, Text("http://ns.adobe.com/xap/1.1/"));
  const Bytes flood = jpeg.Build();
  EXPECT_EQ(BoundedXmp(flood), NotFound(2));

  const LumidexObject object;
  const TempFile source(flood);
  const TempFile packet(Text("<x/>"), ".xmp");
  const NewPath output;
  EXPECT_EQ(Bounded(kSmallInput,
                    [&] {
                      RemoveFile(output.Path());
                      return object->EmbedXmpFile(source.Path(), output.Path(), packet.Path());
                    }),
            S_OK);
  EXPECT_EQ(output.Read().size(), flood.size() + 33 + 4);
}

// Everything that a host may do with a file that lies at every byte.
TEST(HostileJpegLocator, FileThatEndsAnywhere) {
  const LumidexObject object;
  const Bytes whole = Jpeg().Exif(Zeros(8)).Xmp("<x/>").Scan().Build();
  const TempFile packet(Text("<y/>"), ".xmp");
  constexpr std::size_t kXmpSegment = 2 + 4 + 6 + 8;
  constexpr std::size_t kNamespaceEnd = kXmpSegment + 4 + 28;
  constexpr std::size_t kPacketEnd = kXmpSegment + 33 + 4;
  for (std::size_t size = 8; size < whole.size(); ++size) {
    SCOPED_TRACE(size);
    const TempFile file(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    const NewPath embedded;
    const NewPath written;
    ASSERT_EQ(object->Open(file.Path()), S_OK);
    const bool found = size >= kNamespaceEnd;
    std::uint32_t flag = 7;
    EXPECT_EQ(object->IsPanorama(&flag), found ? LMD_E_NOT_PANORAMA : LMD_E_NOT_FOUND);
    EXPECT_EQ(flag, 0U);
    std::uint32_t told = 7;
    EXPECT_EQ(object->GetXmpPacketSize(&told), found ? S_OK : LMD_E_NOT_FOUND);
    EXPECT_EQ(told, found ? 35U : 7U);
    Bytes buffer(40, '#');
    const bool complete = size >= kPacketEnd;
    EXPECT_EQ(object->GetXmpPacket(&told, buffer.data()), complete ? S_OK
                                                          : found  ? LMD_E_READ_FAILED
                                                                   : LMD_E_NOT_FOUND);
    EXPECT_EQ(buffer, complete ? Join({Text("<x/>"), Bytes(36, '#')}) : Bytes(40, '#'));

    // The place for a packet is behind the EXIF segment, which may be cut.
    const bool hasExif = size >= 10;
    const HRESULT embedding = found                           ? LMD_E_XMP_FOUND
                              : hasExif && size < kXmpSegment ? LMD_E_READ_FAILED
                                                              : S_OK;
    EXPECT_EQ(object->EmbedXmpFile(file.Path(), embedded.Path(), packet.Path()), embedding);
    EXPECT_EQ(object.Write(file.Path(), written.Path(), OneRecord(), true), S_OK);
  }
}

}  // namespace
}  // namespace test
