// The tags of the first directory that are followed or handed on instead of being stored.

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/Jpeg.h"
#include "support/TiffSuite.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

constexpr std::uint16_t kEmbeddedJpeg = 0x002E;
constexpr std::uint16_t kXmp = 0x02BC;
constexpr std::uint16_t kIptc = 0x83BB;
constexpr std::uint16_t kLeafMarker = 0x85FF;
constexpr std::uint16_t kLeafData = 0x8606;
constexpr std::uint16_t kPhotoshop = 0x8649;
constexpr std::uint16_t kIcc = 0x8773;
constexpr std::uint16_t kDngPrivate = 0xC634;

// Record version 4 (its two bytes widened), then an object name.
const Bytes kDatasets = {0x1C, 2, 0, 0, 2, 0, 4, 0x1C, 2, 5, 0, 2, 'o', 'k'};

class Ifd0 : public TiffSuite {
 protected:
  // A Photoshop thumbnail resource of a JPEG stream of 12 bytes without a frame.
  static Bytes ThumbnailResource() {
    const Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xFE, 0, 6, 1, 2, 3, 4, 0xFF, 0xD9};
    return PhotoshopResource(
        0x040C, Join({U32(1), U32(1), U32(1), U32(3), U32(3), U32(12), U16(24), U16(1), jpeg}));
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, Ifd0, kBothOrders, OrderName);

// --- 0x002E ---

TEST_P(Ifd0, EmbeddedJpegPositionIsNotedAndNotStored) {
  const Bytes block = tiff.Build({tiff.AtOffset(kEmbeddedJpeg, 7, 100, 0x60)});
  StoreFile file(Join({Zeros(10), block}));
  EXPECT_EQ(file.ParseTiff(10), S_OK);
  EXPECT_EQ(file.Store().m_nEmbeddedJpegPos, 0x6AU);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(Ifd0, EmbeddedJpegOfFourBytesLiesInTheEntry) {
  StoreFile file(tiff.Build({tiff.Undefined(kEmbeddedJpeg, {1, 2, 3, 4})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(file.Store().m_nEmbeddedJpegPos, 18U);
}

TEST_P(Ifd0, EmbeddedJpegOfAnotherTypeIsNeitherNotedNorStored) {
  constexpr std::uint16_t kTypes[] = {1, 2, 3, 4, 6, 8, 14};
  for (const std::uint16_t type : kTypes) {
    StoreFile file(tiff.Build({tiff.AtOffset(kEmbeddedJpeg, type, 100, 0x60)}));
    EXPECT_EQ(file.ParseTiff(), S_OK);
    EXPECT_EQ(file.Store().m_nEmbeddedJpegPos, 0U) << type;
    EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty()) << type;
  }
}

TEST_P(Ifd0, EmbeddedJpegOutsideTheSegmentIsSkipped) {
  const Bytes block = tiff.Build({tiff.AtOffset(kEmbeddedJpeg, 7, 100, 5000)});
  StoreFile file(Join({Zeros(10), block}));
  EXPECT_EQ(file.ParseTiff(10, 4, 100), S_OK);
  EXPECT_EQ(file.Store().m_nEmbeddedJpegPos, 0U);
}

// --- 0x02BC, 0x83BB, 0x8773 and their flags ---

TEST_P(Ifd0, XmpIsReadWithItsFlagAndNotStored) {
  StoreFile file(tiff.Build({tiff.Byte(kXmp, Text(kRatingPacket))}), PARSE_XMP);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(Find(file.Store(), BLOCK_XMP, 0xAA01), (Stored{0xAA01, 162, 0, "35000000"}));
}

TEST_P(Ifd0, XmpWithoutItsFlagIsNeitherReadNorStored) {
  StoreFile file(tiff.Build({tiff.Byte(kXmp, Text(kRatingPacket))}), kReadAll & ~PARSE_XMP);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_XMP).empty());
}

TEST_P(Ifd0, IptcIsReadWithItsFlagAndNotStored) {
  StoreFile file(tiff.Build({tiff.Undefined(kIptc, kDatasets)}), PARSE_IPTC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"}));
}

TEST_P(Ifd0, IptcSizeCountsTheTypesSize) {
  Bytes padded = kDatasets;
  padded.resize(16);
  StoreFile file(tiff.Build({tiff.Raw(kIptc, 4, 4, padded)}), PARSE_IPTC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"}));
}

TEST_P(Ifd0, IptcWithoutItsFlagIsNeitherReadNorStored) {
  StoreFile file(tiff.Build({tiff.Undefined(kIptc, kDatasets)}), kReadAll & ~PARSE_IPTC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IPTC).empty());
}

TEST_P(Ifd0, IccIsReadWithItsFlagAndNotStored) {
  StoreFile file(tiff.Build({tiff.Undefined(kIcc, Bytes(128, 0x41))}), PARSE_ICC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(Keys(file.Store(), BLOCK_ICC).size(), 17U);
}

TEST_P(Ifd0, IccWithoutItsFlagIsNeitherReadNorStored) {
  StoreFile file(tiff.Build({tiff.Undefined(kIcc, Bytes(128, 0x41))}), kReadAll & ~PARSE_ICC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_ICC).empty());
}

TEST_P(Ifd0, EmbeddedBlocksAreNotClampedTo1024) {
  Bytes datasets;
  for (int i = 0; i < 300; ++i) datasets = Join({datasets, {0x1C, 2, 200, 0, 1, 'x'}});
  datasets = Join({datasets, {0x1C, 2, 5, 0, 2, 'o', 'k'}});
  StoreFile file(tiff.Build({tiff.Undefined(kIptc, datasets)}), PARSE_IPTC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"}));
}

TEST_P(Ifd0, EmbeddedBlockOfGreatestCountIsOnlyWhatTheFileHas) {
  for (const std::uint16_t tag : {kXmp, kIptc, kPhotoshop, kIcc}) {
    StoreFile file(Join(
        {tiff.Build({tiff.AtOffset(tag, 4, 0xFFFFFFFF, 26), tiff.Short(0xF000, {1})}), Zeros(10)}));
    EXPECT_EQ(file.ParseTiff(), S_OK) << tag;
    EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xF000}) << tag;
  }
}

// --- 0x85FF, 0x8606 ---

TEST_P(Ifd0, LeafTagMakesTheMaker) {
  for (const std::uint16_t tag : {kLeafMarker, kLeafData}) {
    StoreFile file(tiff.Build({tiff.Undefined(tag, Bytes(8, 1))}));
    EXPECT_EQ(file.ParseTiff(), S_OK);
    EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{271}) << tag;
    EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), MadeUpText(271, "Leaf")) << tag;
  }
}

TEST_P(Ifd0, LeafTagLeavesAMakerThatIsThere) {
  for (const std::uint16_t tag : {kLeafMarker, kLeafData}) {
    StoreFile file(tiff.Build({tiff.Ascii(271, "Other"), tiff.Undefined(tag, Bytes(8, 1))}));
    EXPECT_EQ(file.ParseTiff(), S_OK);
    EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Other")) << tag;
  }
}

TEST_P(Ifd0, MakerAfterALeafTagReplacesIt) {
  StoreFile file(tiff.Build({tiff.Byte(kLeafMarker, {1}), tiff.Ascii(271, "Other")}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Other"));
}

TEST_P(Ifd0, LeafTagOutsideTheSegmentMakesNoMaker) {
  const Bytes block = tiff.Build({tiff.AtOffset(kLeafMarker, 7, 8, 5000)});
  StoreFile file(Join({Zeros(10), block}));
  EXPECT_EQ(file.ParseTiff(10, 4, 100), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(Ifd0, LeafDataGivesTheModel) {
  const Bytes record = Join({Number(0x504B5453), Zeros(4), Text("ShootObj_back_type"), Zeros(22),
                             Number(3), Text("11\n")});
  StoreFile file(tiff.Build({tiff.Undefined(kLeafData, record)}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), (Tags{271, 272}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 272), MadeUpText(272, "Aptus 17"));
}

// --- 0x8649 ---

TEST_P(Ifd0, PhotoshopResourcesAreWalkedWithoutAnyFlag) {
  StoreFile file(tiff.Build({tiff.Undefined(kPhotoshop, ThumbnailResource())}), 0);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(file.Store().m_nThumbnailSize, 12U);
}

TEST_P(Ifd0, PhotoshopResourcesInTiffMayHoldIptc) {
  const Bytes resources = PhotoshopResource(0x0404, kDatasets);
  StoreFile file(tiff.Build({tiff.Undefined(kPhotoshop, resources)}), PARSE_IPTC);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IPTC, 31), (Stored{31, 162, 0, "6f006b000000"}));
}

// --- 0x8769, 0x8825 ---

TEST_P(Ifd0, DirectoryPointersAreNotStored) {
  StoreFile file(tiff.Build({tiff.Child(kExifPointer, {tiff.Short(0x8827, {100})}),
                             tiff.Child(kGpsPointer, {tiff.Byte(0, {2, 3, 0, 0})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 0x8827), ShortValue(0x8827, 100));
  EXPECT_EQ(Find(file.Store(), BLOCK_GPS, 0), (Stored{0, 1, 4, "02030000"}));
}

TEST_P(Ifd0, DirectoryPointersAreNotStoredWithoutTheirFlagsEither) {
  StoreFile file(tiff.Build({tiff.Child(kExifPointer, {tiff.Short(0x8827, {100})}),
                             tiff.Child(kGpsPointer, {tiff.Byte(0, {2, 3, 0, 0})})}),
                 0);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  for (const std::int32_t block : {BLOCK_IFD0, BLOCK_EXIF, BLOCK_GPS}) {
    EXPECT_TRUE(Keys(file.Store(), block).empty()) << block;
  }
}

TEST_P(Ifd0, DirectoryPointerOf0IsIgnored) {
  StoreFile file(tiff.Build(
      {tiff.Long(kExifPointer, {0}), tiff.Long(kGpsPointer, {0}), tiff.Short(0xF000, {1})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xF000});
  EXPECT_TRUE(Keys(file.Store(), BLOCK_EXIF).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_GPS).empty());
}

TEST_P(Ifd0, OffsetOf0IsNoDirectoryEvenWhenOneStandsThere) {
  StoreFile file(tiff.BuildDirectory(
      {tiff.Short(274, {6}), tiff.Long(kExifPointer, {0}), tiff.Long(kGpsPointer, {0})}, 0, 0));
  EXPECT_EQ(file.Store().m_fnParseIFD0({0, GetParam(), 0, 0}), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{274});
  for (const std::int32_t block : {BLOCK_EXIF, BLOCK_GPS, BLOCK_IFD1}) {
    EXPECT_TRUE(Keys(file.Store(), block).empty()) << block;
  }
}

TEST_P(Ifd0, DirectoryPointerFollowsTheSegmentRule) {
  const Bytes directory = tiff.BuildDirectory({tiff.Short(1, {5})}, 0);
  for (const auto& [tag, block] :
       {std::pair{kExifPointer, BLOCK_EXIF}, std::pair{kGpsPointer, BLOCK_GPS}}) {
    const Bytes start = tiff.Build({tiff.Long(tag, {100})});
    Bytes bytes = Join({Zeros(50), start});
    bytes.resize(150);
    bytes = Join({bytes, directory});
    StoreFile inside(bytes);
    EXPECT_EQ(inside.ParseTiff(50, 40, 151), S_OK);
    EXPECT_EQ(Find(inside.Store(), block, 1), ShortValue(1, 5)) << tag;
    StoreFile outside(bytes);
    EXPECT_EQ(outside.ParseTiff(50, 40, 150), S_OK);
    EXPECT_TRUE(Keys(outside.Store(), block).empty()) << tag;
  }
}

TEST_P(Ifd0, DirectoryPointerOfTwoValuesIsReadAtItsOffset) {
  const Bytes directory = tiff.BuildDirectory({tiff.Short(1, {5})}, 0);
  Bytes bytes = tiff.Build({tiff.AtOffset(kExifPointer, 4, 2, 40)});
  bytes.resize(40);
  StoreFile file(Join({bytes, Number(48), Number(0), directory}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 1), ShortValue(1, 5));
}

TEST_P(Ifd0, WalkGoesOnAfterAPointerToABadDirectory) {
  StoreFile file(tiff.Build({tiff.Long(kExifPointer, {0x80000000}),
                             tiff.Long(kGpsPointer, {0xFFFFFFFF}), tiff.Short(0xF000, {1})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xF000});
}

// --- 0xC634 ---

TEST_P(Ifd0, DngPrivateDataIsNotStored) {
  StoreFile file(tiff.Build({tiff.Byte(kDngPrivate, Bytes(20, 1)), tiff.Short(0xF000, {1})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xF000});
}

}  // namespace
}  // namespace test
