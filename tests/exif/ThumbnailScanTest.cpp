// The scan of a JPEG thumbnail's markers for its size in pixels.

#include <algorithm>
#include <cstdint>
#include <memory>

#include <gtest/gtest.h>

#include "exif/VxMetadata.h"
#include "support/Bytes.h"

namespace test {
namespace {

// The size found, or 7 x 5 when the scan left it as it was.
struct ScannedSize {
  std::uint32_t width;
  std::uint32_t height;

  bool operator==(const ScannedSize&) const = default;
};
constexpr ScannedSize kUntouched = {7, 5};

ScannedSize Scan(const Bytes& thumbnail) {
  VxMetadata store;
  store.m_pThumbnail = std::make_unique<std::uint8_t[]>(thumbnail.size());
  std::copy(thumbnail.begin(), thumbnail.end(), store.m_pThumbnail.get());
  store.m_nThumbnailSize = static_cast<std::uint32_t>(thumbnail.size());
  store.m_nThumbnailWidth = kUntouched.width;
  store.m_nThumbnailHeight = kUntouched.height;
  store.m_fnScanThumbnailSize();
  return {store.m_nThumbnailWidth, store.m_nThumbnailHeight};
}

// The nine bytes of a frame header that the scan reads: 0x0102 high, 0x0304 wide.
Bytes Frame(std::uint8_t marker) {
  return {0xFF, marker, 0, 11, 8, 1, 2, 3, 4};
}

const Bytes kStart = {0xFF, 0xD8};

TEST(ThumbnailScan, WithoutThumbnailLeavesTheSize) {
  VxMetadata store;
  store.m_nThumbnailWidth = 7;
  store.m_fnScanThumbnailSize();
  EXPECT_EQ(store.m_nThumbnailWidth, 7U);
}

TEST(ThumbnailScan, TakesTheSizeFromTheFrameHeader) {
  EXPECT_EQ(Scan(Join({kStart, Frame(0xC0), Zeros(20)})), (ScannedSize{0x0304, 0x0102}));
}

TEST(ThumbnailScan, FrameMarkersAreC0ToCFButC4AndCC) {
  for (std::uint8_t marker = 0xC0; marker <= 0xCF; ++marker) {
    const bool frame = marker != 0xC4 && marker != 0xCC;
    const Bytes other = {0xFF, 0xE0, 0x40, 0};
    const ScannedSize size = Scan(Join({kStart, Frame(marker), Zeros(4), other, Zeros(20)}));
    EXPECT_EQ(size, (frame ? ScannedSize{0x0304, 0x0102} : kUntouched)) << int{marker};
  }
}

TEST(ThumbnailScan, OtherSegmentsAreSkippedByTheirLength) {
  const Bytes tables = {0xFF, 0xC4, 0, 5, 1, 2, 3};
  const Bytes comment = {0xFF, 0xFE, 0, 2};
  EXPECT_EQ(Scan(Join({kStart, tables, comment, Frame(0xC2), Zeros(20)})),
            (ScannedSize{0x0304, 0x0102}));
}

TEST(ThumbnailScan, MarkersD0ToD9HaveNoLength) {
  for (std::uint8_t marker = 0xD0; marker <= 0xD9; ++marker) {
    EXPECT_EQ(Scan(Join({{0xFF, marker}, Frame(0xC0), Zeros(20)})), (ScannedSize{0x0304, 0x0102}))
        << int{marker};
  }
}

TEST(ThumbnailScan, MarkerDAHasALength) {
  EXPECT_EQ(Scan(Join({kStart, {0xFF, 0xDA, 0, 4, 9, 9}, Frame(0xC0), Zeros(20)})),
            (ScannedSize{0x0304, 0x0102}));
}

TEST(ThumbnailScan, FirstFrameHeaderWins) {
  const Bytes second = {0xFF, 0xC0, 0, 11, 8, 9, 9, 9, 9};
  EXPECT_EQ(Scan(Join({kStart, Frame(0xC0), Zeros(4), second, Zeros(20)})),
            (ScannedSize{0x0304, 0x0102}));
}

TEST(ThumbnailScan, FrameHeaderMayBeTheFirstMarker) {
  EXPECT_EQ(Scan(Join({Frame(0xC0), Zeros(20)})), (ScannedSize{0x0304, 0x0102}));
}

TEST(ThumbnailScan, HeaderThatEndsTheThumbnailIsRead) {
  EXPECT_EQ(Scan(Join({kStart, Frame(0xC0)})), (ScannedSize{0x0304, 0x0102}));
}

TEST(ThumbnailScan, HeaderInTheLast8BytesIsNot) {
  Bytes thumbnail = Join({kStart, Frame(0xC0)});
  thumbnail.pop_back();
  EXPECT_EQ(Scan(thumbnail), kUntouched);
}

TEST(ThumbnailScan, AnyShorterThumbnailIsGivenUp) {
  const Bytes whole = Join({kStart, {0xFF, 0xE0, 0, 4, 1, 2}, Frame(0xC0)});
  for (std::size_t size = 1; size < whole.size(); ++size) {
    EXPECT_EQ(Scan(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))),
              kUntouched)
        << size;
  }
}

TEST(ThumbnailScan, SegmentThatLeadsBeyondTheEndIsGivenUp) {
  EXPECT_EQ(Scan(Join({kStart, {0xFF, 0xE0, 0xFF, 0xFF}, Frame(0xC0), Zeros(20)})), kUntouched);
}

TEST(ThumbnailScan, SegmentOfLength0AdvancesByItsMarker) {
  const Bytes thumbnail = {0xFF, 0xD8, 0xFF, 0xE0, 0, 0};
  EXPECT_EQ(Scan(Join({thumbnail, Zeros(40)})), kUntouched);
}

}  // namespace
}  // namespace test
