// A photograph with everything in it, cut at every length, and with every byte changed.

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/TiffSuite.h"

namespace test {
namespace {

const Bytes kThumbnail = {0xFF, 0xD8, 0xFF, 0xC0, 0,    11, 8,    0,   60,
                          0,    80,   1,    1,    0x11, 0,  0xFF, 0xD9};

Bytes TiffBlock(ByteOrder order) {
  const Tiff tiff(order);
  Bytes leafName = Text("ShootObj_back_type");
  leafName.resize(40);
  const Bytes leaf =
      Join({U32(0x504B5453, order), Zeros(4), leafName, U32(3, order), Text("11\n")});
  const Directory interop = {tiff.Ascii(1, "R98"), tiff.Undefined(2, Text("0100"))};
  const Directory exif = {tiff.Rational(0x829A, {{1, 250}}), tiff.Undefined(0x927C, Bytes(20, 9)),
                          tiff.Raw(0x9204, 10, 1, Join({U32(1, order), U32(3, order)})),
                          tiff.Child(0xA005, interop)};
  const Directory gps = {tiff.Ascii(1, "N"), tiff.Rational(2, {{48, 1}, {8, 1}, {30, 1}})};
  const Directory ifd0 = {tiff.Ascii(271, "Maker"),
                          tiff.Ascii(272, "Model"),
                          tiff.Short(274, {6}),
                          tiff.Children(330, {{tiff.Short(256, {1})}, {tiff.Short(256, {2})}}),
                          tiff.Undefined(0x8606, leaf),
                          tiff.Child(0x8769, exif),
                          tiff.Child(0x8825, gps)};
  Bytes block = tiff.Build(ifd0, {tiff.Long(0x201, {600}), tiff.Long(0x202, {17})});
  EXPECT_LE(block.size(), 600U);
  block.resize(600);
  return Join({block, kThumbnail});
}

Bytes Photograph(ByteOrder order) {
  Bytes icc = Join({Bytes(128, 0x41), U32(1), Text("desc"), U32(144), U32(17), Text("desc"),
                    Zeros(4), U32(5), Text("sRGB"), Zeros(1)});
  const Bytes thumbnail =
      Join({U32(1), U32(80), U32(60), U32(240), U32(14400), U32(17), U16(24), U16(1), kThumbnail});
  const Bytes iptc = {0x1C, 2, 5, 0, 2, 'o', 'k'};
  return Jpeg()
      .Photoshop(Join({PhotoshopResource(0x0404, iptc), PhotoshopResource(0x040C, thumbnail)}))
      .Exif(TiffBlock(order))
      .Icc(icc)
      .Frame(640, 480)
      .Scan()
      .Build();
}

// Every entry has as many bytes as its size says, and the thumbnail what the file can hold.
void ExpectSound(VxMetadata& store, std::size_t fileSize) {
  for (std::int32_t block = 1; block <= kBlockCount; ++block) {
    for (const auto& [key, entry] : *store.m_fnGetBlock(block)) {
      EXPECT_EQ(TagBytes(entry).size(), entry.m_nSize) << block << " " << key;
      EXPECT_EQ(entry.m_nTag, key) << block;
    }
  }
  for (const auto& [number, table] : store.m_mapSubIfd) {
    EXPECT_EQ(number & kSubIfdBlock, kSubIfdBlock);
    for (const auto& [key, entry] : table) EXPECT_EQ(TagBytes(entry).size(), entry.m_nSize) << key;
  }
  EXPECT_LE(store.m_nThumbnailSize, fileSize);
  if (store.m_nThumbnailSize != 0) {
    EXPECT_TRUE(store.m_pThumbnail != nullptr);
  }
}

class Truncation : public TiffSuite {};
INSTANTIATE_TEST_SUITE_P(BothOrders, Truncation, kBothOrders, OrderName);

TEST_P(Truncation, WholePhotographIsReadWhole) {
  const Bytes photograph = Photograph(GetParam());
  StoreFile file(photograph);
  EXPECT_EQ(file.ParseJpeg(), S_OK);
  VxMetadata& store = file.Store();
  ExpectSound(store, photograph.size());
  EXPECT_EQ(Keys(store, BLOCK_IFD0), (Tags{271, 272, 274}));
  EXPECT_EQ(Keys(store, BLOCK_EXIF), (Tags{1, 2, 0x829A, 0x9204, 0x927C, 0xA005}));
  EXPECT_EQ(Keys(store, BLOCK_GPS), (Tags{1, 2}));
  EXPECT_EQ(Keys(store, BLOCK_IFD1), (Tags{0x201, 0x202}));
  EXPECT_EQ(Keys(store, BLOCK_IPTC), Tags{31});
  EXPECT_EQ(Keys(store, BLOCK_ICC).size(), 18U);
  EXPECT_EQ(Keys(store, 0x1001), Tags{256});
  EXPECT_EQ(store.m_nImageWidth, 640U);
  EXPECT_EQ(store.m_nThumbnailSize, 17U);
  EXPECT_EQ(store.m_nThumbnailWidth, 80U);
}

TEST_P(Truncation, EveryCutPhotographIsReadAsFarAsItGoes) {
  const Bytes photograph = Photograph(GetParam());
  std::size_t before = 0;
  for (std::size_t size = 0; size <= photograph.size(); ++size) {
    StoreFile file(
        Bytes(photograph.begin(), photograph.begin() + static_cast<std::ptrdiff_t>(size)));
    ASSERT_EQ(file.ParseJpeg(), S_OK) << size;
    ExpectSound(file.Store(), size);
    ASSERT_FALSE(HasFailure()) << size;
    const std::size_t icc = Keys(file.Store(), BLOCK_ICC).size();
    EXPECT_GE(icc, before) << size;
    before = icc;
  }
  EXPECT_EQ(before, 18U);
}

TEST_P(Truncation, EveryCutBlockIsReadAsFarAsItGoes) {
  const Bytes block = TiffBlock(GetParam());
  for (std::size_t size = 0; size <= block.size(); ++size) {
    StoreFile file(Bytes(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(size)));
    const HRESULT result = file.ParseTiff();
    if (size < 2) {
      EXPECT_EQ(result, E_FAIL) << size;
    } else if (size >= 8 && size < 10) {
      EXPECT_EQ(result, S_FALSE) << size;
    } else {
      EXPECT_EQ(result, S_OK) << size;
    }
    ExpectSound(file.Store(), size);
    ASSERT_FALSE(HasFailure()) << size;
  }
}

TEST_P(Truncation, EveryChangedByteIsHarmless) {
  const Bytes block = TiffBlock(GetParam());
  for (std::size_t at = 0; at < block.size(); ++at) {
    for (const std::uint8_t value : {std::uint8_t{0x00}, std::uint8_t{0x7F}, std::uint8_t{0xFF}}) {
      Bytes changed = block;
      changed[at] = value;
      StoreFile file(Jpeg().Exif(changed).Frame(640, 480).Build());
      ASSERT_EQ(file.ParseJpeg(), S_OK) << at;
      EXPECT_EQ(file.Store().m_nImageWidth, 640U) << at;
      EXPECT_EQ(file.Store().m_nImageHeight, 480U) << at;
      ExpectSound(file.Store(), changed.size() + 100);
      ASSERT_FALSE(HasFailure()) << at;
    }
  }
}

}  // namespace
}  // namespace test
