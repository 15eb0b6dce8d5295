// Thumbnails whose lengths and strips do not fit the file.

#include <cstdint>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

constexpr std::uint16_t kOffsetTag = 0x201;
constexpr std::uint16_t kLengthTag = 0x202;
constexpr std::uint16_t kStripOffsets = 0x111;
constexpr std::uint16_t kStripByteCounts = 0x117;

// A frame header of 60 rows and 80 columns.
const Bytes kThumbnail = {0xFF, 0xC0, 0x00, 0x0B, 8, 0, 60, 0, 80, 1};

class HostileThumbnails : public TiffSuite {
 protected:
  // A block of an empty IFD0 and an IFD1, filled up to position 500, and `data` there.
  Bytes Block(const Directory& ifd1, const Bytes& data) const {
    Bytes block = tiff.Build({tiff.Short(274, {1})}, ifd1);
    EXPECT_LE(block.size(), kData);
    block.resize(kData);
    return Join({block, data});
  }

  Directory Rgb(const Entry& offsets, const Entry& byteCounts) const {
    return {tiff.Short(0x100, {80}),
            tiff.Short(0x101, {60}),
            tiff.Short(0x103, {1}),
            tiff.Short(0x106, {2}),
            offsets,
            byteCounts};
  }

  static constexpr std::uint32_t kData = 500;
};
INSTANTIATE_TEST_SUITE_P(BothOrders, HostileThumbnails, kBothOrders, OrderName);

// The scan needs 9 bytes; with fewer, the sizes stay as they are.
TEST_P(HostileThumbnails, ScanOfNoneToTenBytes) {
  for (std::uint32_t size = 0; size <= kThumbnail.size(); ++size) {
    const auto file = BoundedTiff(
        Block({tiff.Long(kOffsetTag, {kData}), tiff.Long(kLengthTag, {size})}, kThumbnail));
    VxMetadata& store = file->Store();
    EXPECT_EQ(store.m_nThumbnailSize, size);
    EXPECT_EQ(store.m_nThumbnailWidth, size >= 9 ? 80U : 0U) << size;
    EXPECT_EQ(store.m_nThumbnailHeight, size >= 9 ? 60U : 0U) << size;
  }
}

// Lengths of 0 and 1 move the scan by 2 and 3 bytes, and a length beyond the end ends it.
TEST_P(HostileThumbnails, ScanOfLengthsThatLeadNowhere) {
  for (const std::uint16_t length : Shorts{0, 1, 0x7FFF, 0x8000, 0xFFFF}) {
    const Bytes data = Repeat(Join({{0xFF, 0xE0}, U16(length)}), 10'000);
    const auto size = static_cast<std::uint32_t>(data.size());
    const auto file =
        BoundedTiff(Block({tiff.Long(kOffsetTag, {kData}), tiff.Long(kLengthTag, {size})}, data));
    EXPECT_EQ(file->Store().m_nThumbnailSize, size) << length;
    EXPECT_EQ(file->Store().m_nThumbnailWidth, 0U) << length;
  }
}

TEST_P(HostileThumbnails, LengthsBeyondTheFile) {
  for (const std::uint32_t length : {11U, 0x10000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    const auto file = BoundedTiff(
        Block({tiff.Long(kOffsetTag, {kData}), tiff.Long(kLengthTag, {length})}, kThumbnail));
    EXPECT_EQ(file->Store().m_nThumbnailSize, kThumbnail.size()) << length;
    EXPECT_EQ(file->Store().m_nThumbnailWidth, 80U) << length;
  }
}

TEST_P(HostileThumbnails, OffsetsBeyondTheFile) {
  for (const std::uint32_t offset : {kData + 10, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    for (const std::uint32_t length : {1U, 0x80000000U, 0xFFFFFFFFU}) {
      const auto file = BoundedTiff(
          Block({tiff.Long(kOffsetTag, {offset}), tiff.Long(kLengthTag, {length})}, kThumbnail));
      EXPECT_EQ(file->Store().m_nThumbnailSize, 0U) << offset << " " << length;
      EXPECT_EQ(file->Store().m_nThumbnailWidth, 0U) << offset << " " << length;
    }
  }
}

// In 32 bits the strips are 1 byte together. The first takes what the file has.
TEST_P(HostileThumbnails, StripSumsThatWrap) {
  const auto file = BoundedTiff(Block(
      Rgb(tiff.Long(kStripOffsets, {kData, kData}), tiff.Long(kStripByteCounts, {0xFFFFFFFF, 2})),
      kThumbnail));
  VxMetadata& store = file->Store();
  EXPECT_EQ(store.m_nThumbnailSize, kThumbnail.size() + 2);
  EXPECT_EQ(Hex({store.m_pThumbnail.get(), store.m_nThumbnailSize}),
            Hex(Join({kThumbnail, {0xFF, 0xC0}})));
  EXPECT_EQ(store.m_nThumbnailFormat, 2U);
  EXPECT_EQ(store.m_nThumbnailWidth, 80U);
}

TEST_P(HostileThumbnails, StripSumsThatWrapToNothing) {
  const auto file = BoundedTiff(Block(Rgb(tiff.Long(kStripOffsets, {kData, kData}),
                                          tiff.Long(kStripByteCounts, {0x80000000, 0x80000000})),
                                      kThumbnail));
  EXPECT_EQ(file->Store().m_nThumbnailSize, 2 * kThumbnail.size());
}

// Strips of another type count as 0x7FFFFFFF: no file of a test reaches there as an offset, and as
// a length it takes what the file has.
TEST_P(HostileThumbnails, StripsThatAreNoIntegers) {
  const auto offsets = BoundedTiff(Block(Rgb(tiff.Rational(kStripOffsets, {{kData, 1}, {kData, 1}}),
                                             tiff.Long(kStripByteCounts, {4, 4})),
                                         kThumbnail));
  EXPECT_EQ(offsets->Store().m_nThumbnailSize, 0U);
  EXPECT_EQ(offsets->Store().m_nThumbnailFormat, 2U);
  const auto lengths = BoundedTiff(Block(Rgb(tiff.Long(kStripOffsets, {kData, kData + 4}),
                                             tiff.Rational(kStripByteCounts, {{1, 1}, {1, 1}})),
                                         kThumbnail));
  EXPECT_EQ(lengths->Store().m_nThumbnailSize, 2 * kThumbnail.size() - 4);
}

TEST_P(HostileThumbnails, StripsBeyondTheFile) {
  for (const std::uint32_t offset : {kData + 10, 0x80000000U, 0xFFFFFFFFU}) {
    const auto file =
        BoundedTiff(Block(Rgb(tiff.Long(kStripOffsets, {offset, kData, offset}),
                              tiff.Long(kStripByteCounts, {0xFFFFFFFF, 3, 0x80000000})),
                          kThumbnail));
    EXPECT_EQ(file->Store().m_nThumbnailSize, 3U) << offset;
  }
}

// 65535 strips of 257 bytes: what all blocks of a file have together is four times the file.
TEST_P(HostileThumbnails, ManyStripsThatShareTheirBytes) {
  const Bytes block = Block(Rgb(tiff.AtOffset(kStripOffsets, 3, 65535, kData),
                                tiff.AtOffset(kStripByteCounts, 3, 65535, kData)),
                            Bytes(60'000, 0x01));
  const auto file = BoundedTiff(block);
  // The last strips of the table lie beyond the file: their offset and length are 0.
  const std::size_t strips = std::min<std::size_t>(4 * block.size() / 257, 60'000 / 2);
  EXPECT_EQ(file->Store().m_nThumbnailSize, 257 * strips);
  ExpectSound(file->Store());
}

// Segments enough to take the file's bytes as a thumbnail again and again.
TEST_P(HostileThumbnails, ManySegmentsOfOneThumbnail) {
  Jpeg jpeg;
  const Bytes start = tiff.Build({tiff.Short(274, {1})},
                                 {tiff.Long(kOffsetTag, {0}), tiff.Long(kLengthTag, {0xFFFFFFFF})});
  for (int i = 0; i < 700; ++i) jpeg.Exif(start);
  const auto file = BoundedJpeg(jpeg.Frame(640, 480).Build());
  EXPECT_EQ(Keys(file->Store(), BLOCK_IFD1), (Tags{kOffsetTag, kLengthTag}));
  EXPECT_LE(file->Store().m_nThumbnailSize, 64U * 1024);
  ExpectSound(file->Store());
  EXPECT_EQ(file->Store().m_nImageWidth, 640U);
}

}  // namespace
}  // namespace test
