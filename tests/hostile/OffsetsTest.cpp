// Counts, sizes and offsets whose products and sums do not fit into 32 bits, or lie beyond the
// file.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

class HostileOffsets : public TiffSuite {
 protected:
  static Bytes Photograph(const Bytes& block) {
    return Jpeg().Exif(block).Frame(640, 480).Scan().Build();
  }

  // A block of one entry whose value field holds `offset`, read as the block at position 100.
  std::unique_ptr<StoreFile> ReadAt100(std::uint32_t offset) const {
    const Directory ifd0 = {tiff.AtOffset(271, 4, 2, offset)};
    return BoundedTiff(Join({Bytes(100, 0x55), tiff.Build(ifd0)}), 100);
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, HostileOffsets, kBothOrders, OrderName);

// 8 bytes times 0x20000000 are 4 GiB, which is 0 in 32 bits and would look like a value in place.
// The count is cut to 1024 values, of which the file has a few; the position is the offset's.
TEST_P(HostileOffsets, RationalsWhoseSizeWrapsToNothing) {
  const Directory ifd0 = {tiff.AtOffset(282, 5, 0x20000000, 26), tiff.Short(283, {7})};
  const Bytes block = tiff.Build(ifd0);
  const auto file = BoundedTiff(block, 0, 0, 0);
  const auto stored = Find(file->Store(), BLOCK_IFD0, 282);
  ASSERT_TRUE(stored.has_value());
  EXPECT_EQ(stored->type, 5U);
  EXPECT_EQ(stored->count, 1024U);
  EXPECT_EQ(stored->hex.size(), 2U * 8192);
  EXPECT_EQ(Find(file->Store(), BLOCK_IFD0, 283), ShortValue(283, 7));
}

// The same inside the bounds of a segment: the offset 0x7FFFFFFF is outside, so nothing is stored,
// where a size that wraps would take the value field for the value.
TEST_P(HostileOffsets, SizesThatWrapAreNoValuesInPlace) {
  Directory ifd0;
  for (const auto& [type, count] : {std::pair{3, 0x80000000U},
                                    {4, 0x40000000U},
                                    {4, 0x40000001U},
                                    {5, 0x20000000U},
                                    {10, 0x20000000U},
                                    {11, 0x40000000U},
                                    {12, 0x20000000U},
                                    {13, 0x40000000U}}) {
    const auto tag = static_cast<std::uint16_t>(1000 + ifd0.size());
    ifd0.push_back(tiff.AtOffset(tag, static_cast<std::uint16_t>(type), count, 0x7FFFFFFF));
  }
  ifd0.push_back(tiff.Short(1100, {7}));
  const auto file = BoundedJpeg(Photograph(tiff.Build(ifd0)));
  EXPECT_EQ(Keys(file->Store(), BLOCK_IFD0), Tags{1100});
}

// Not cut in IFD1 and in maker notes, but left out there from 65536 values on.
TEST_P(HostileOffsets, GreatestCountsInTheThumbnailsDirectory) {
  Directory ifd1;
  for (const std::uint16_t type : Shorts{1, 2, 3, 4, 5, 7, 12, 13}) {
    ifd1.push_back(tiff.AtOffset(static_cast<std::uint16_t>(1000 + type), type, 0xFFFFFFFF, 26));
    ifd1.push_back(tiff.AtOffset(static_cast<std::uint16_t>(1100 + type), type, 0x20000000, 26));
    ifd1.push_back(tiff.AtOffset(static_cast<std::uint16_t>(1200 + type), type, 65536, 26));
  }
  ifd1.push_back(tiff.AtOffset(1301, 1, 65535, 26));
  const auto file = BoundedJpeg(Photograph(tiff.Build({tiff.Short(274, {6})}, ifd1)));
  EXPECT_EQ(Keys(file->Store(), BLOCK_IFD1), Tags{1301});
  EXPECT_EQ(StoredBytes(file->Store(), BLOCK_IFD1), 65535U);
}

// The complete parse holds the store's values and their records at once; as 32-bit numbers SHORTs
// take twice their room. So a small file may not store what a large one may.
TEST_P(HostileOffsets, LargeShortsOfTheThumbnailsDirectory) {
  Directory ifd1;
  for (std::uint16_t i = 0; i < 512; ++i) {
    ifd1.push_back(tiff.AtOffset(static_cast<std::uint16_t>(1000 + i), 3, 65535, 26));
  }
  const auto file = BoundedJpeg(Photograph(tiff.Build({tiff.Short(274, {6})}, ifd1)));
  EXPECT_EQ(file->Store().m_fnGetBlock(BLOCK_IFD1)->Count(), 512U);
  EXPECT_EQ(Find(file->Store(), BLOCK_IFD1, 1000)->hex.size(), 2U * 131'070);
  EXPECT_LE(StoredBytes(file->Store(), BLOCK_IFD1), 3U * 1024 * 1024);
  ExpectSound(file->Store());
}

// Base 100 and an offset of 2 to the 32nd power less 60 make 40: without bounds the value is there.
TEST_P(HostileOffsets, SumThatWrapsLeadsBackIntoTheFile) {
  const auto file = ReadAt100(0U - 60U);
  EXPECT_EQ(Find(file->Store(), BLOCK_IFD0, 271), (Stored{271, 4, 2, Hex(Bytes(8, 0x55))}));
}

// No file of this test has these positions, so the value is zeros; where a file position is a
// signed 32-bit number, they would be negative.
TEST_P(HostileOffsets, PositionsAboveTheSignedRange) {
  for (const std::uint32_t offset :
       {0x7FFFFFFFU - 100, 0x80000000U - 100, 0x80000000U, 0xFFFFFFFFU - 100}) {
    const auto file = ReadAt100(offset);
    EXPECT_EQ(Find(file->Store(), BLOCK_IFD0, 271), (Stored{271, 4, 2, Hex(Zeros(8))})) << offset;
  }
}

// With bounds, a sum that wraps is outside unless it lies between them.
TEST_P(HostileOffsets, SumsAreHeldAgainstTheBounds) {
  const auto read = [&](std::uint32_t offset) {
    const Directory ifd0 = {tiff.AtOffset(271, 4, 2, offset)};
    const Bytes bytes = Join({Bytes(100, 0x55), tiff.Build(ifd0), Zeros(100)});
    const auto file = BoundedTiff(bytes, 100, 90, 150);
    return Find(file->Store(), BLOCK_IFD0, 271).has_value();
  };
  EXPECT_FALSE(read(0U - 60U));
  EXPECT_FALSE(read(0U - 10U));
  EXPECT_TRUE(read(0U - 9U));
  EXPECT_TRUE(read(49));
  EXPECT_FALSE(read(50));
  EXPECT_FALSE(read(0x7FFFFFFF));
  EXPECT_FALSE(read(0x80000000));
  EXPECT_FALSE(read(0xFFFFFFFF - 100));
}

TEST_P(HostileOffsets, FirstDirectoryAtTheEdgesOfTheRange) {
  for (const std::uint32_t offset :
       {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U, 0xFFFFFFFFU - kExifBase}) {
    const Bytes mark = Text(GetParam() == ByteOrder::BigEndian ? "MM" : "II");
    const auto file = BoundedJpeg(Photograph(Join({mark, Word(42), Number(offset), Zeros(40)})));
    EXPECT_TRUE(Keys(file->Store(), BLOCK_IFD0).empty()) << offset;
    EXPECT_EQ(file->Store().m_nImageWidth, 640U) << offset;
  }
}

// At the wrapped position 0 stands SOI: 0xFFD8 or 0xD8FF entries are too many.
TEST_P(HostileOffsets, FirstDirectoryAtTheFilesStart) {
  const Bytes mark = Text(GetParam() == ByteOrder::BigEndian ? "MM" : "II");
  const Bytes block = Join({mark, Word(42), Number(0U - kExifBase), Zeros(40)});
  const auto file = BoundedJpeg(Photograph(block));
  EXPECT_TRUE(Keys(file->Store(), BLOCK_IFD0).empty());
}

TEST_P(HostileOffsets, DirectoryPointersAtTheEdgesOfTheRange) {
  for (const std::uint32_t offset : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U, 0U - kExifBase}) {
    const Directory ifd0 = {tiff.Short(274, {6}), tiff.Long(0x8769, {offset}),
                            tiff.Long(kGpsPointer, {offset}), tiff.Long(0x014A, {offset})};
    Bytes block = tiff.Build(ifd0);
    const Bytes next = Number(offset);
    std::copy(next.begin(), next.end(), block.begin() + 8 + 2 + 12 * 4);
    const auto file = BoundedJpeg(Photograph(block));
    VxMetadata& store = file->Store();
    EXPECT_EQ(Keys(store, BLOCK_IFD0), Tags{274}) << offset;
    EXPECT_TRUE(Keys(store, BLOCK_EXIF).empty()) << offset;
    EXPECT_TRUE(Keys(store, BLOCK_GPS).empty()) << offset;
    EXPECT_TRUE(Keys(store, BLOCK_IFD1).empty()) << offset;
    EXPECT_TRUE(Keys(store, 0x1000).empty()) << offset;
  }
}

// --- Embedded blocks that claim more bytes than the file has ---

// Each block stands at the end of a file without bounds; its readers see what is there.
class HostileBlocks : public HostileOffsets {
 protected:
  std::unique_ptr<StoreFile> Block(std::uint16_t tag, std::uint32_t count,
                                   const Bytes& bytes) const {
    const Directory ifd0 = {tiff.AtOffset(tag, 7, count, 26)};
    return BoundedTiff(Join({tiff.Build(ifd0), bytes}));
  }

  static constexpr std::uint32_t kCounts[] = {1000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
};
INSTANTIATE_TEST_SUITE_P(BothOrders, HostileBlocks, kBothOrders, OrderName);

TEST_P(HostileBlocks, XmpBeyondTheFile) {
  const Bytes packet = Text(
      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
      "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description "
      "xmlns:GPano=\"http://ns.google.com/photos/1.0/panorama/\" "
      "GPano:PoseHeadingDegrees=\"12.5\"/></rdf:RDF></x:xmpmeta>");
  const auto size = static_cast<std::uint32_t>(packet.size());
  const auto whole = Block(kXmpTag, size, packet);
  const Tags expected = Keys(whole->Store(), BLOCK_XMP);
  EXPECT_EQ(expected.size(), 1U);
  for (const std::uint32_t count : kCounts) {
    const auto file = Block(kXmpTag, count, packet);
    EXPECT_EQ(Keys(file->Store(), BLOCK_XMP), expected) << count;
    EXPECT_TRUE(Keys(file->Store(), BLOCK_IFD0).empty()) << count;
  }
}

TEST_P(HostileBlocks, IptcBeyondTheFile) {
  const Bytes records = Join({{0x1C, 2, 5, 0, 2}, Text("ok"), {0x1C, 2, 25, 0, 3}, Text("key")});
  for (const std::uint32_t count : kCounts) {
    const auto file = Block(kIptcTag, count, records);
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), (Tags{22, 31})) << count;
    EXPECT_EQ(Find(file->Store(), BLOCK_IPTC, 31),
              (Stored{31, 162, 0, Hex(WideBytes(LMD_W("ok")))}));
  }
}

TEST_P(HostileBlocks, PhotoshopResourcesBeyondTheFile) {
  const Bytes resources = PhotoshopResource(0x0404, Join({{0x1C, 2, 5, 0, 2}, Text("ok")}));
  for (const std::uint32_t count : kCounts) {
    const auto file = Block(kPhotoshopTag, count, resources);
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC), Tags{31}) << count;
  }
}

TEST_P(HostileBlocks, IccProfileBeyondTheFile) {
  for (const std::uint32_t count : kCounts) {
    const auto file = Block(kIccTag, count, Bytes(128, 0x41));
    const Tags keys = Keys(file->Store(), BLOCK_ICC);
    EXPECT_EQ(keys.size(), 17U) << count;
    EXPECT_EQ(Find(file->Store(), BLOCK_ICC, 2), (Stored{2, 2, 5, "4141414100"})) << count;
  }
}

// 512 tags that all claim the whole file: the blocks read are at most four times the file.
TEST_P(HostileBlocks, ManyPointersToOneLargeBlock) {
  for (const std::uint16_t tag : Shorts{kXmpTag, kIptcTag, kPhotoshopTag, kIccTag}) {
    const Directory pointers(512, tiff.AtOffset(tag, 7, 0xFFFFFFFF, 8 + 2 + 12 * 512 + 4));
    const Bytes data = Repeat(Join({{0x1C, 2, 25, 0, 4}, Text("word")}), 6000);
    const auto file = BoundedTiff(Join({tiff.Build(pointers), data}));
    EXPECT_TRUE(Keys(file->Store(), BLOCK_IFD0).empty()) << tag;
    EXPECT_EQ(Keys(file->Store(), BLOCK_IPTC).size(), tag == kIptcTag ? 1U : 0U) << tag;
  }
}

}  // namespace
}  // namespace test
