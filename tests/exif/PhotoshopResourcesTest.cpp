// Photoshop image resources in APP13, and the thumbnail among them.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/TiffSuite.h"

namespace test {
namespace {

// A JPEG stream of 80 x 60 pixels.
const Bytes kJpeg = {0xFF, 0xD8, 0xFF, 0xC0, 0, 11, 8, 0, 60, 0, 80, 1, 1, 0x11, 0, 0xFF, 0xD9};

// The fields of a thumbnail resource, in their order.
struct ThumbnailFields {
  std::uint32_t format = 1;
  std::uint32_t compressedSize = static_cast<std::uint32_t>(kJpeg.size());
  std::uint16_t bitsPerPixel = 24;
  std::uint16_t planes = 1;

  Bytes Data() const {
    // The width and height here are not those of the stream.
    return Join({U32(format), U32(999), U32(888), U32(3000), U32(9000), U32(compressedSize),
                 U16(bitsPerPixel), U16(planes), kJpeg});
  }
};

// The store of a walk over given resources.
struct Walked {
  explicit Walked(const Bytes& resources) { result = store.m_fnParsePhotoshopIRB(resources); }

  VxMetadata store;
  HRESULT result = E_UNEXPECTED;
};

// A resource with a name; `data` is padded.
Bytes NamedResource(std::uint16_t id, const Bytes& nameField, const Bytes& data) {
  Bytes resource =
      Join({Text("8BIM"), U16(id), nameField, U32(static_cast<std::uint32_t>(data.size())), data});
  if (data.size() % 2 != 0) resource.push_back(0);
  return resource;
}

// --- The walk ---

TEST(PhotoshopResources, FewerThan10BytesFail) {
  EXPECT_EQ(Walked({}).result, E_FAIL);
  EXPECT_EQ(Walked(Bytes(9, 0)).result, E_FAIL);
  EXPECT_EQ(Walked(Bytes(10, 0)).result, S_OK);
}

TEST(PhotoshopResources, OtherSignatureEndsTheWalk) {
  const Bytes thumbnail = PhotoshopResource(0x040C, ThumbnailFields().Data());
  for (const char* signature : {"8BIN", "8bim", "MeSa", "PHUT"}) {
    Bytes changed = thumbnail;
    std::copy(signature, signature + 4, changed.begin());
    Walked walked(Join({changed, thumbnail}));
    EXPECT_EQ(walked.result, S_OK);
    EXPECT_EQ(ThumbnailHex(walked.store), "none") << signature;
  }
}

TEST(PhotoshopResources, ThumbnailIsFoundBehindOthers) {
  for (const std::size_t size : {0U, 1U, 2U, 3U, 100U}) {
    Walked walked(Join({PhotoshopResource(0x03ED, Bytes(size, 0x38)),
                        PhotoshopResource(0x040C, ThumbnailFields().Data())}));
    EXPECT_EQ(walked.result, S_OK);
    EXPECT_EQ(ThumbnailHex(walked.store), Hex(kJpeg)) << size;
  }
}

TEST(PhotoshopResources, NamesArePaddedToEvenLength) {
  const Bytes data = ThumbnailFields().Data();
  const std::vector<Bytes> names = {
      {0, 0}, {1, 'a'}, {2, 'a', 'b', 0}, {3, 'a', 'b', 'c'}, {4, 'a', 'b', 'c', 'd', 0}};
  for (const Bytes& name : names) {
    Walked walked(NamedResource(0x040C, name, data));
    EXPECT_EQ(walked.result, S_OK);
    EXPECT_EQ(ThumbnailHex(walked.store), Hex(kJpeg)) << name.size();
    Walked second(
        Join({NamedResource(0x03ED, name, {7, 7, 7}), NamedResource(0x040C, name, data)}));
    EXPECT_EQ(ThumbnailHex(second.store), Hex(kJpeg)) << name.size();
  }
}

TEST(PhotoshopResources, LongestNameIsSkipped) {
  Bytes name(256, 'n');
  name[0] = 255;
  Walked walked(NamedResource(0x040C, name, ThumbnailFields().Data()));
  EXPECT_EQ(ThumbnailHex(walked.store), Hex(kJpeg));
}

TEST(PhotoshopResources, NameBeyondTheEndEndsTheWalk) {
  Bytes name(20, 'n');
  name[0] = 255;
  Walked walked(Join({Text("8BIM"), U16(0x040C), name}));
  EXPECT_EQ(walked.result, S_OK);
  EXPECT_EQ(ThumbnailHex(walked.store), "none");
}

TEST(PhotoshopResources, OtherIdsAreSkipped) {
  constexpr std::uint16_t kIds[] = {0x0409, 0x040D, 0x0C04, 0x0422};
  for (const std::uint16_t id : kIds) {
    Walked walked(PhotoshopResource(id, ThumbnailFields().Data()));
    EXPECT_EQ(walked.result, S_OK);
    EXPECT_EQ(ThumbnailHex(walked.store), "none") << id;
  }
}

TEST(PhotoshopResources, SizeBeyondTheEndEndsTheWalk) {
  const Bytes data = ThumbnailFields().Data();
  for (const std::uint32_t size : {static_cast<std::uint32_t>(data.size() + 1), 0x7FFFFFFFU,
                                   0x80000000U, 0xFFFFFFF0U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
    Walked walked(Join({Text("8BIM"), U16(0x040C), Zeros(2), U32(size), data}));
    EXPECT_EQ(walked.result, S_OK) << size;
    EXPECT_EQ(ThumbnailHex(walked.store), "none") << size;
    Walked other(Join({Text("8BIM"), U16(0x03ED), Zeros(2), U32(size), data}));
    EXPECT_EQ(other.result, S_OK) << size;
  }
}

TEST(PhotoshopResources, CutHeaderEndsTheWalk) {
  const Bytes resource = PhotoshopResource(0x040C, ThumbnailFields().Data());
  for (std::size_t size = 10; size < resource.size() - 1; ++size) {
    Walked walked(Bytes(resource.begin(), resource.begin() + static_cast<std::ptrdiff_t>(size)));
    EXPECT_EQ(walked.result, S_OK) << size;
    EXPECT_EQ(ThumbnailHex(walked.store), "none") << size;
  }
}

TEST(PhotoshopResources, MissingPadByteAtTheEndDoesNotMatter) {
  Bytes resource = PhotoshopResource(0x040C, ThumbnailFields().Data());
  ASSERT_EQ(ThumbnailFields().Data().size() % 2, 1U);
  resource.pop_back();
  Walked walked(resource);
  EXPECT_EQ(ThumbnailHex(walked.store), Hex(kJpeg));
}

TEST(PhotoshopResources, IptcIsHandedOn) {
  VxMetadata store;
  store.m_nParseFlags = PARSE_IPTC;
  const Bytes datasets = {0x1C, 2, 5, 0, 2, 'o', 'k'};
  EXPECT_EQ(store.m_fnParsePhotoshopIRB(PhotoshopResource(0x0404, datasets)), S_OK);
  EXPECT_EQ(Find(store, BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"}));
}

TEST(PhotoshopResources, IptcLargerThanTheBufferIsReadAsFarAsItGoes) {
  for (const std::uint32_t size : {8U, 1000U, 0x80000000U, 0xFFFFFFFFU}) {
    VxMetadata store;
    store.m_nParseFlags = PARSE_IPTC;
    const Bytes datasets = {0x1C, 2, 5, 0, 2, 'o', 'k'};
    EXPECT_EQ(store.m_fnParsePhotoshopIRB(
                  Join({Text("8BIM"), U16(0x0404), Zeros(2), U32(size), datasets})),
              S_OK);
    EXPECT_EQ(Find(store, BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"})) << size;
  }
}

TEST(PhotoshopResources, IptcNeedsItsFlag) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnParsePhotoshopIRB(PhotoshopResource(0x0404, {0x1C, 2, 5, 0, 2, 'o', 'k'})),
            S_OK);
  EXPECT_TRUE(Keys(store, BLOCK_IPTC).empty());
}

// --- The thumbnail ---

TEST(PhotoshopThumbnail, IsTakenWithTheSizeOfItsStream) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnParsePhotoshopThumbnail(ThumbnailFields().Data()), S_OK);
  EXPECT_EQ(store.m_nThumbnailSize, 17U);
  EXPECT_EQ(ThumbnailHex(store), Hex(kJpeg));
  EXPECT_EQ(store.m_nThumbnailWidth, 80U);
  EXPECT_EQ(store.m_nThumbnailHeight, 60U);
  EXPECT_EQ(store.m_nThumbnailFormat, 1U);
}

TEST(PhotoshopThumbnail, OtherFormatsFail) {
  const ThumbnailFields rows[] = {
      {.format = 0},       {.format = 2},        {.format = 0x01000000},
      {.bitsPerPixel = 8}, {.bitsPerPixel = 32}, {.bitsPerPixel = 0x1800},
      {.planes = 0},       {.planes = 2},        {.planes = 0x0100}};
  for (const ThumbnailFields& fields : rows) {
    VxMetadata store;
    EXPECT_EQ(store.m_fnParsePhotoshopThumbnail(fields.Data()), E_FAIL);
    EXPECT_EQ(ThumbnailHex(store), "none");
    EXPECT_EQ(store.m_nThumbnailSize, 0U);
  }
}

TEST(PhotoshopThumbnail, SmallerStreamThanTheDataIsTaken) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnParsePhotoshopThumbnail(ThumbnailFields{.compressedSize = 4}.Data()), S_OK);
  EXPECT_EQ(ThumbnailHex(store), "ffd8ffc0");
}

TEST(PhotoshopThumbnail, StreamLargerThanTheDataFails) {
  for (const std::uint32_t size :
       {18U, 1000U, 0x7FFFFFFFU, 0xFFFFFFE4U, 0xFFFFFFF5U, 0xFFFFFFFFU}) {
    VxMetadata store;
    EXPECT_EQ(store.m_fnParsePhotoshopThumbnail(ThumbnailFields{.compressedSize = size}.Data()),
              E_FAIL)
        << size;
    EXPECT_EQ(ThumbnailHex(store), "none") << size;
  }
}

TEST(PhotoshopThumbnail, CutFieldsFail) {
  const Bytes data = ThumbnailFields{.compressedSize = 0}.Data();
  for (std::size_t size = 0; size < 28; ++size) {
    VxMetadata store;
    EXPECT_EQ(store.m_fnParsePhotoshopThumbnail({data.data(), size}), E_FAIL) << size;
  }
}

TEST(PhotoshopThumbnail, FirstOneWins) {
  ThumbnailFields other;
  other.compressedSize = 3;
  Walked walked(Join({PhotoshopResource(0x040C, ThumbnailFields().Data()),
                      PhotoshopResource(0x040C, other.Data())}));
  EXPECT_EQ(walked.result, S_OK);
  EXPECT_EQ(ThumbnailHex(walked.store), Hex(kJpeg));
}

TEST(PhotoshopThumbnail, StreamWithoutAFrameLeavesTheSize) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnParsePhotoshopThumbnail(ThumbnailFields{.compressedSize = 10}.Data()), S_OK);
  EXPECT_EQ(store.m_nThumbnailWidth, 0U);
  EXPECT_EQ(store.m_nThumbnailHeight, 0U);
}

// --- In a JPEG file ---

Bytes ExifWithThumbnail() {
  const Tiff tiff(ByteOrder::BigEndian);
  Bytes block = tiff.Build({}, {tiff.Long(0x201, {60}), tiff.Long(0x202, {4})});
  block.resize(60);
  return Join({block, {0xFF, 0xD8, 0xEE, 0xEE}});
}

TEST(PhotoshopSegment, ThumbnailIsRead) {
  StoreFile file(Jpeg().Photoshop(PhotoshopResource(0x040C, ThumbnailFields().Data())).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(ThumbnailHex(file.Store()), Hex(kJpeg));
  EXPECT_EQ(file.Store().m_nThumbnailWidth, 80U);
}

TEST(PhotoshopSegment, LaterExifThumbnailReplacesIt) {
  StoreFile file(Jpeg()
                     .Photoshop(PhotoshopResource(0x040C, ThumbnailFields().Data()))
                     .Exif(ExifWithThumbnail())
                     .Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(ThumbnailHex(file.Store()), "ffd8eeee");
}

TEST(PhotoshopSegment, EarlierExifThumbnailStays) {
  StoreFile file(Jpeg()
                     .Exif(ExifWithThumbnail())
                     .Photoshop(PhotoshopResource(0x040C, ThumbnailFields().Data()))
                     .Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(ThumbnailHex(file.Store()), "ffd8eeee");
}

TEST(PhotoshopSegment, ZeroAfterTheNameIsNotTested) {
  const Bytes resources = PhotoshopResource(0x040C, ThumbnailFields().Data());
  StoreFile file(Jpeg().Segment(0xED, Join({Text("Photoshop 3.0X"), resources})).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(ThumbnailHex(file.Store()), Hex(kJpeg));
}

TEST(PhotoshopSegment, OtherNamesAndMarkersAreSkipped) {
  const Bytes resources = PhotoshopResource(0x040C, ThumbnailFields().Data());
  const Bytes named = Join({Text("Photoshop 3.0"), Zeros(1), resources});
  for (const Bytes& bytes :
       {Jpeg().Segment(0xED, Join({Text("Photoshop 3.1"), Zeros(1), resources})).Build(),
        Jpeg().Segment(0xED, Join({Text("Adobe_Photoshop2.5:"), resources})).Build(),
        Jpeg().Segment(0xEC, named).Build()}) {
    StoreFile file(bytes);
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_EQ(ThumbnailHex(file.Store()), "none");
  }
}

TEST(PhotoshopSegment, TwoBytesAfterTheSegmentBelongToTheResources) {
  // The data of the resource ends 0 to 3 bytes after the segment.
  for (std::uint16_t beyond = 0; beyond <= 3; ++beyond) {
    const Bytes payload = Join({Text("Photoshop 3.0"), Zeros(1), Text("8BIM"), U16(0x040C),
                                Zeros(2), U32(45), ThumbnailFields().Data()});
    ASSERT_EQ(payload.size(), 14U + 12U + 45U);
    const auto length = static_cast<std::uint16_t>(payload.size() + 2 - beyond);
    StoreFile file(Jpeg().SegmentOfLength(0xED, length, payload).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_EQ(ThumbnailHex(file.Store()), beyond <= 2 ? Hex(kJpeg) : "none") << beyond;
  }
}

TEST(PhotoshopSegment, OfLength24OrLessIsIgnored) {
  for (const std::size_t size : {22U, 23U, 24U}) {
    Bytes payload = Join({Text("Photoshop 3.0"), Zeros(1), Text("8BIM"), U16(0x0404), Zeros(4)});
    payload.resize(size);
    StoreFile file(Jpeg().Segment(0xED, payload).Frame(64, 48).Build());
    EXPECT_EQ(file.ParseJpeg(), S_OK);
    EXPECT_TRUE(Keys(file.Store(), BLOCK_IPTC).empty()) << size;
    EXPECT_EQ(file.Store().m_nImageWidth, 64U) << size;
  }
}

TEST(PhotoshopSegment, IptcIsReadFromASegment) {
  StoreFile file(Jpeg().Photoshop(PhotoshopResource(0x0404, {0x1C, 2, 5, 0, 2, 'o', 'k'})).Build());
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"}));
}

}  // namespace
}  // namespace test
