// IFD1, the thumbnails it leads to, and the scan of a JPEG thumbnail for its size.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/TiffSuite.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

class Ifd1 : public TiffSuite {
 protected:
  // A block whose second directory is `directory`, which begins at offset 14, and `data` at kData.
  Bytes Block(const Directory& directory, const Bytes& data = {}) const {
    Bytes block = tiff.Build({}, directory);
    EXPECT_LE(block.size(), kData);
    block.resize(kData);
    return Join({block, data});
  }

  static constexpr std::uint32_t kData = 400;

  const Bytes jpeg = {0xFF, 0xD8, 0xFF, 0xC0, 0,    11,   8,    0,    60,
                      0,    80,   1,    1,    0x11, 0x00, 0xFF, 0xD9, 0x77};
};
INSTANTIATE_TEST_SUITE_P(BothOrders, Ifd1, kBothOrders, OrderName);

// --- The directory ---

TEST_P(Ifd1, IsTheFirstDirectorysNext) {
  StoreFile file(tiff.Build({tiff.Short(274, {6})}, {tiff.Short(274, {1}), tiff.Short(259, {6})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), (Tags{259, 274}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD1, 274), ShortValue(274, 1));
}

TEST_P(Ifd1, NeedsNoFlag) {
  StoreFile file(tiff.Build({tiff.Short(274, {6})}, {tiff.Short(259, {6})}), 0);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), Tags{259});
}

TEST_P(Ifd1, IsPassedOverWhenNobodyWantsIt) {
  StoreFile file(tiff.Build({tiff.Short(274, {6})}, {tiff.Short(259, {6})}));
  file.Store().m_bReadsIfd1 = false;
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{274});
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD1).empty());
}

TEST_P(Ifd1, NextOf0IsNone) {
  StoreFile file(tiff.Build({tiff.Short(274, {6})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD1).empty());
}

TEST_P(Ifd1, OutsideTheSegmentIsNotRead) {
  const Bytes block = Block({tiff.Long(0x201, {kData}), tiff.Long(0x202, {2})}, {1, 2});
  const Bytes bytes = Join({Zeros(50), block});
  StoreFile inside(bytes);
  EXPECT_EQ(inside.ParseTiff(50, 40, 65), S_FALSE);
  EXPECT_EQ(Keys(inside.Store(), BLOCK_IFD1), (Tags{0x201, 0x202}));
  StoreFile outside(bytes);
  EXPECT_EQ(outside.ParseTiff(50, 40, 64), S_FALSE);
  EXPECT_TRUE(Keys(outside.Store(), BLOCK_IFD1).empty());
  EXPECT_EQ(outside.Store().m_pThumbnail, nullptr);
}

TEST_P(Ifd1, ItsOwnNextIsNotRead) {
  const Bytes first = tiff.BuildDirectory({}, 8, 14);
  const Bytes second = tiff.BuildDirectory({tiff.Short(259, {6})}, 14, 32);
  const Bytes third = tiff.BuildDirectory({tiff.Short(260, {7})}, 32);
  const Bytes header = tiff.Build({});
  StoreFile file(Join({Bytes(header.begin(), header.begin() + 8), first, second, third}));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), Tags{259});
}

TEST_P(Ifd1, PointingAtTheFirstDirectoryCopiesIt) {
  Bytes block = tiff.Build({tiff.Short(274, {6}), tiff.Long(0x8769, {8})});
  const Bytes next = Number(8);
  std::copy(next.begin(), next.end(), block.end() - 4);
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{274});
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), (Tags{274, 0x8769}));
}

TEST_P(Ifd1, PaddingIsNotStoredAndTheLastOfARepeatedTagWins) {
  StoreFile file(
      Block({tiff.Undefined(0xEA1C, Bytes(20)), tiff.Short(259, {1}), tiff.Short(259, {6})}));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), Tags{259});
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD1, 259), ShortValue(259, 6));
}

TEST_P(Ifd1, ValuesAreNotClamped) {
  StoreFile file(tiff.Build(
      {}, {tiff.Raw(1003, 3, 2000, Bytes(4000, 0x33)), tiff.Ascii(1004, std::string(2000, 'x'))}));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD1, 1003), (Stored{1003, 3, 2000, Hex(Bytes(4000, 0x33))}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD1, 1004), AsciiValue(1004, std::string(2000, 'x')));
}

TEST_P(Ifd1, CountsAbove65535AreNotStored) {
  StoreFile file(tiff.Build(
      {}, {tiff.Raw(1001, 1, 65535, Bytes(65535, 0x11)),
           tiff.Raw(1002, 1, 65536, Bytes(65536, 0x22)), tiff.AtOffset(1003, 3, 65536, 8),
           tiff.AtOffset(1004, 7, 0xFFFFFFFF, 8), tiff.Short(1005, {5})}));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), (Tags{1001, 1005}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD1, 1001),
            (Stored{1001, 1, 65535, Hex(Bytes(65535, 0x11))}));
}

TEST_P(Ifd1, ValueOutsideTheSegmentIsSkipped) {
  const Bytes block = Block({tiff.AtOffset(1001, 7, 5, kData), tiff.Short(259, {6})}, Zeros(10));
  StoreFile file(Join({Zeros(50), block}));
  EXPECT_EQ(file.ParseTiff(50, 40, 50 + kData), S_FALSE);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD1), Tags{259});
}

TEST_P(Ifd1, Of513EntriesHasNoThumbnail) {
  Directory directory = {tiff.Long(0x201, {8}), tiff.Long(0x202, {2})};
  for (std::uint16_t i = 0; i < 511; ++i) {
    directory.push_back(tiff.Short(static_cast<std::uint16_t>(5000 + i), {i}));
  }
  StoreFile file(tiff.Build({}, directory));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD1).empty());
  EXPECT_EQ(file.Store().m_pThumbnail, nullptr);

  directory.pop_back();
  StoreFile fits(tiff.Build({}, directory));
  EXPECT_EQ(fits.ParseTiff(), S_FALSE);
  EXPECT_EQ(Keys(fits.Store(), BLOCK_IFD1).size(), 512U);
  EXPECT_EQ(fits.Store().m_nThumbnailSize, 2U);
}

TEST_P(Ifd1, CountsAreChecked) {
  StoreFile none(tiff.BuildDirectory({}, 0));
  EXPECT_EQ(none.Store().m_fnParseIFD1({0, GetParam(), 0, 0}), S_OK);
  StoreFile tooMany(tiff.BuildDirectory(Directory(513, tiff.Short(1, {1})), 0));
  EXPECT_EQ(tooMany.Store().m_fnParseIFD1({0, GetParam(), 0, 0}), E_FAIL);
}

// --- A JPEG thumbnail ---

TEST_P(Ifd1, JpegThumbnailIsTaken) {
  StoreFile file(Block({tiff.Long(0x201, {kData}), tiff.Long(0x202, {17})}, jpeg));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  VxMetadata& store = file.Store();
  EXPECT_EQ(store.m_nThumbnailSize, 17U);
  EXPECT_EQ(ThumbnailHex(store), "ffd8ffc0000b08003c005001011100ffd9");
  EXPECT_EQ(store.m_nThumbnailWidth, 80U);
  EXPECT_EQ(store.m_nThumbnailHeight, 60U);
  EXPECT_EQ(store.m_nThumbnailFormat, 1U);
  EXPECT_EQ(Keys(store, BLOCK_IFD1), (Tags{0x201, 0x202}));
}

TEST_P(Ifd1, JpegThumbnailMayLieOutsideTheSegment) {
  StoreFile file(
      Join({Zeros(50), Block({tiff.Long(0x201, {kData}), tiff.Long(0x202, {17})}, jpeg)}));
  EXPECT_EQ(file.ParseTiff(50, 40, 100), S_FALSE);
  EXPECT_EQ(file.Store().m_nThumbnailSize, 17U);
  EXPECT_EQ(file.Store().m_nThumbnailWidth, 80U);
}

TEST_P(Ifd1, JpegThumbnailMayLieBeforeTheHeaderByAWrappingOffset) {
  StoreFile file(Join({jpeg, Block({tiff.Long(0x201, {0U - 18U}), tiff.Long(0x202, {17})})}));
  EXPECT_EQ(file.ParseTiff(18), S_FALSE);
  EXPECT_EQ(file.Store().m_nThumbnailSize, 17U);
  EXPECT_EQ(file.Store().m_nThumbnailHeight, 60U);
}

TEST_P(Ifd1, JpegThumbnailHoldsOnlyWhatTheFileHas) {
  for (const std::uint32_t length : {19U, 100000U, 0xFFFFFFFFU}) {
    StoreFile file(Block({tiff.Long(0x201, {kData}), tiff.Long(0x202, {length})}, jpeg));
    EXPECT_EQ(file.ParseTiff(), S_FALSE);
    EXPECT_EQ(file.Store().m_nThumbnailSize, 18U) << length;
    EXPECT_EQ(ThumbnailHex(file.Store()), Hex(jpeg)) << length;
  }
}

TEST_P(Ifd1, JpegThumbnailBeyondTheFileIsNone) {
  for (const std::uint32_t offset : {5000U, 0x80000000U, 0xFFFFFFFFU}) {
    StoreFile file(Block({tiff.Long(0x201, {offset}), tiff.Long(0x202, {17})}));
    EXPECT_EQ(file.ParseTiff(), S_FALSE);
    EXPECT_EQ(file.Store().m_nThumbnailSize, 0U) << offset;
    EXPECT_EQ(file.Store().m_nThumbnailWidth, 0U) << offset;
  }
}

TEST_P(Ifd1, JpegThumbnailTakesTheFirst32BitsOfAnyType) {
  StoreFile file(Block({tiff.Raw(0x201, 7, 4, U32(kData, kHostByteOrder)),
                        tiff.Raw(0x202, 5, 1, Join({Number(17), Number(1)}))},
                       jpeg));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(file.Store().m_nThumbnailSize, 17U);
  EXPECT_EQ(file.Store().m_nThumbnailWidth, 80U);
}

TEST_P(Ifd1, JpegThumbnailReplacesAnEarlierOne) {
  StoreFile file(Block({tiff.Long(0x201, {kData}), tiff.Long(0x202, {17})}, jpeg));
  file.Store().m_pThumbnail = std::make_unique<std::uint8_t[]>(40);
  file.Store().m_nThumbnailSize = 40;
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(file.Store().m_nThumbnailSize, 17U);
  EXPECT_EQ(file.Store().m_nThumbnailWidth, 80U);
}

TEST_P(Ifd1, OneJpegTagAloneIsNoThumbnail) {
  StoreFile offset(Block({tiff.Long(0x201, {kData})}, jpeg));
  EXPECT_EQ(offset.ParseTiff(), S_FALSE);
  EXPECT_EQ(offset.Store().m_pThumbnail, nullptr);
  StoreFile length(Block({tiff.Long(0x202, {17})}, jpeg));
  EXPECT_EQ(length.ParseTiff(), S_FALSE);
  EXPECT_EQ(length.Store().m_pThumbnail, nullptr);
}

// --- An uncompressed thumbnail ---

class RgbThumbnail : public Ifd1 {
 protected:
  // The tags of a thumbnail of 2 x 1 pixels in two strips, kData and kData + 10.
  Directory Strips() const {
    return {tiff.Long(0x100, {2}),
            tiff.Long(0x101, {1}),
            tiff.Short(0x103, {1}),
            tiff.Short(0x106, {2}),
            tiff.Long(0x111, {kData, kData + 10}),
            tiff.Short(0x117, {4, 2})};
  }

  const Bytes pixels = {1, 2, 3, 4, 0, 0, 0, 0, 0, 0, 5, 6, 7};
};
INSTANTIATE_TEST_SUITE_P(BothOrders, RgbThumbnail, kBothOrders, OrderName);

TEST_P(RgbThumbnail, StripsAreJoined) {
  StoreFile file(Block(Strips(), pixels));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  VxMetadata& store = file.Store();
  EXPECT_EQ(ThumbnailHex(store), "010203040506");
  EXPECT_EQ(store.m_nThumbnailWidth, 2U);
  EXPECT_EQ(store.m_nThumbnailHeight, 1U);
  EXPECT_EQ(store.m_nThumbnailFormat, 2U);
}

TEST_P(RgbThumbnail, StripsMayLieOutsideTheSegment) {
  StoreFile file(Join({Zeros(50), Block(Strips(), pixels)}));
  EXPECT_EQ(file.ParseTiff(50, 40, 50 + kData), S_FALSE);
  EXPECT_EQ(ThumbnailHex(file.Store()), "010203040506");
}

TEST_P(RgbThumbnail, SingleStripOfBytesCounts) {
  Directory directory = Strips();
  directory[4] = tiff.Short(0x111, {kData});
  directory[5] = tiff.Byte(0x117, {4});
  StoreFile file(Block(directory, pixels));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(ThumbnailHex(file.Store()), "01020304");
}

TEST_P(RgbThumbnail, SignedTypesCount) {
  Directory directory = Strips();
  directory[4] = tiff.Raw(0x111, 9, 1, Number(kData));
  directory[5] = tiff.Raw(0x117, 8, 1, Word(4));
  StoreFile file(Block(directory, pixels));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(ThumbnailHex(file.Store()), "01020304");
}

TEST_P(RgbThumbnail, StripsInOneThumbnailReplaceAnEarlierOne) {
  StoreFile file(Block(Strips(), pixels));
  file.Store().m_pThumbnail = std::make_unique<std::uint8_t[]>(40);
  file.Store().m_nThumbnailSize = 40;
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(ThumbnailHex(file.Store()), "010203040506");
  EXPECT_EQ(file.Store().m_nThumbnailFormat, 2U);
}

TEST_P(RgbThumbnail, JpegTagsComeFirst) {
  Directory directory = Strips();
  directory.push_back(tiff.Long(0x201, {kData + 1}));
  directory.push_back(tiff.Long(0x202, {2}));
  StoreFile file(Block(directory, pixels));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(ThumbnailHex(file.Store()), "0203");
  EXPECT_EQ(file.Store().m_nThumbnailFormat, 1U);
}

TEST_P(RgbThumbnail, OtherCompressionsOrColoursAreNone) {
  const std::vector<std::pair<std::uint16_t, std::uint16_t>> rows = {
      {6, 2}, {0, 2}, {1, 6}, {1, 0}, {1, 1}};
  for (const auto& [compression, colours] : rows) {
    Directory directory = Strips();
    directory[2] = tiff.Short(0x103, {compression});
    directory[3] = tiff.Short(0x106, {colours});
    StoreFile file(Block(directory, pixels));
    EXPECT_EQ(file.ParseTiff(), S_FALSE);
    EXPECT_EQ(file.Store().m_pThumbnail, nullptr) << compression << " " << colours;
    EXPECT_EQ(file.Store().m_nThumbnailFormat, 1U);
  }
}

TEST_P(RgbThumbnail, MissingTagIsNone) {
  for (const std::size_t missing : {2U, 3U, 4U, 5U}) {
    Directory directory = Strips();
    directory.erase(directory.begin() + static_cast<std::ptrdiff_t>(missing));
    StoreFile file(Block(directory, pixels));
    EXPECT_EQ(file.ParseTiff(), S_FALSE);
    EXPECT_EQ(file.Store().m_pThumbnail, nullptr) << missing;
    EXPECT_EQ(file.Store().m_nThumbnailFormat, 1U) << missing;
  }
}

TEST_P(RgbThumbnail, UnequalCountsAreNone) {
  Directory directory = Strips();
  directory[5] = tiff.Short(0x117, {4});
  StoreFile fewer(Block(directory, pixels));
  EXPECT_EQ(fewer.ParseTiff(), S_FALSE);
  EXPECT_EQ(fewer.Store().m_pThumbnail, nullptr);
  EXPECT_EQ(fewer.Store().m_nThumbnailFormat, 1U);
  directory[5] = tiff.Short(0x117, {4, 2, 1});
  StoreFile more(Block(directory, pixels));
  EXPECT_EQ(more.ParseTiff(), S_FALSE);
  EXPECT_EQ(more.Store().m_pThumbnail, nullptr);
}

TEST_P(RgbThumbnail, StripsOfOtherTypesStayInsideTheFile) {
  Directory directory = Strips();
  directory[5] = tiff.Undefined(0x117, {4, 2});
  StoreFile sizes(Block(directory, pixels));
  EXPECT_EQ(sizes.ParseTiff(), S_FALSE);
  EXPECT_LE(sizes.Store().m_nThumbnailSize, 2U * (kData + 13U));
  directory = Strips();
  directory[4] = tiff.Undefined(0x111, {1, 2});
  StoreFile offsets(Block(directory, pixels));
  EXPECT_EQ(offsets.ParseTiff(), S_FALSE);
  EXPECT_LE(offsets.Store().m_nThumbnailSize, 6U);
}

TEST_P(RgbThumbnail, GreatestSizesStayInsideTheFile) {
  Directory directory = Strips();
  directory[5] = tiff.Long(0x117, {0xFFFFFFFF, 0xFFFFFFFF});
  StoreFile file(Block(directory, pixels));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_LE(file.Store().m_nThumbnailSize, 2U * (kData + 13U));
}

}  // namespace
}  // namespace test
