// Marker segments whose lengths say too little or too much, and the last bytes of a file.

#include <cstdint>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

const Bytes kIptcTitle = Join({{0x1C, 2, 5, 0, 2}, Text("ok")});

// What the recognised segments begin with.
Bytes ExifStart() {
  const Tiff tiff(ByteOrder::LittleEndian);
  return Join({Text("Exif"), Zeros(2), tiff.Build({tiff.Short(274, {6})})});
}
Bytes XmpStart() {
  return Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1), Text("<x:xmpmeta/>")});
}
Bytes IccStart() {
  return Join({Text("ICC_PROFILE"), Zeros(1), {1, 1}, Bytes(128, 0x41)});
}
Bytes PhotoshopStart() {
  return Join({Text("Photoshop 3.0"), Zeros(1), PhotoshopResource(0x0404, kIptcTitle)});
}

struct Start {
  std::uint8_t marker;
  Bytes payload;
  std::int32_t block;  // that gets values when the segment is whole
};

std::vector<Start> Starts() {
  return {{0xE1, ExifStart(), BLOCK_IFD0},
          {0xE1, XmpStart(), 0},
          {0xE2, IccStart(), BLOCK_ICC},
          {0xED, PhotoshopStart(), BLOCK_IPTC},
          {0xC0, {8, 0x01, 0xE0, 0x02, 0x80, 1, 1, 0x11, 0}, 0}};
}

std::size_t StoredCount(VxMetadata& store, std::int32_t block) {
  return block == 0 ? 0 : Keys(store, block).size();
}

// Nothing follows the payload, and the length says up to 64 KiB more.
TEST(HostileSegments, EverySegmentClaimsMoreThanTheFile) {
  for (const Start& start : Starts()) {
    for (const std::uint16_t length : Shorts{0x1000, 0x7FFF, 0x8000, 0xFFFF}) {
      Bytes bytes = Join({{0xFF, 0xD8, 0xFF, start.marker}, U16(length), start.payload});
      const auto file = BoundedJpeg(bytes);
      EXPECT_EQ(StoredCount(file->Store(), start.block) != 0, start.block != 0) << +start.marker;
      EXPECT_EQ(file->Store().m_nImageWidth, start.marker == 0xC0 ? 640U : 0U);
      ExpectSound(file->Store());
    }
  }
}

// A length of 0 or 1 leads back into the length field, whose first byte is 0: the walk ends there
// and never sees the frame header. The readers have met the payload by then, each by its own rule.
TEST(HostileSegments, LengthsOfNothingEndTheWalk) {
  for (const Start& start : Starts()) {
    for (const std::uint16_t length : Shorts{0, 1}) {
      const auto file = BoundedJpeg(Jpeg()
                                        .SegmentOfLength(start.marker, length, start.payload)
                                        .Frame(320, 200)
                                        .Scan()
                                        .Build());
      VxMetadata& store = file->Store();
      EXPECT_EQ(store.m_nImageWidth, start.marker == 0xC0 ? 640U : 0U) << +start.marker;
      EXPECT_TRUE(Keys(store, BLOCK_ICC).empty());
      EXPECT_TRUE(Keys(store, BLOCK_IPTC).empty());
      EXPECT_TRUE(Keys(store, BLOCK_XMP).empty());
    }
  }
}

// Every length up to that of the whole payload: fewer bytes than a signature, L - 2, L - 14 and
// L - 27 below zero, and a value cut at each place.
TEST(HostileSegments, EveryLengthOfEverySegment) {
  for (const Start& start : Starts()) {
    const auto whole = static_cast<std::uint16_t>(start.payload.size() + 2);
    std::size_t before = 0;
    for (std::uint16_t length = 2; length <= whole; ++length) {
      Jpeg jpeg;
      jpeg.SegmentOfLength(start.marker, length,
                           First(start.payload, static_cast<std::size_t>(length - 2)));
      const auto file = BoundedJpeg(jpeg.Frame(320, 200).Scan().Build());
      VxMetadata& store = file->Store();
      ExpectSound(store);
      if (start.marker == 0xC0 && length >= 7) {
        EXPECT_EQ(store.m_nImageWidth, 640U) << length;
      } else if (start.marker != 0xC0) {
        EXPECT_EQ(store.m_nImageWidth, 320U) << +start.marker << " " << length;
      }
      if (start.block == BLOCK_ICC) {
        EXPECT_GE(StoredCount(store, BLOCK_ICC), before) << length;
        before = StoredCount(store, BLOCK_ICC);
      }
    }
  }
}

// 0xFF, a marker, a length: cut after each byte. Nothing follows SOI, so nothing is found.
TEST(HostileSegments, FileEndsInsideASegmentsHeader) {
  for (const std::uint8_t marker : Bytes{0xE1, 0xE2, 0xED, 0xC0, 0xDA, 0xFF, 0x00}) {
    const Bytes bytes = {0xFF, 0xD8, 0xFF, marker, 0x00, 0x08};
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
      const auto file = BoundedJpeg(First(bytes, size));
      EXPECT_TRUE(Keys(file->Store(), BLOCK_IFD0).empty());
      EXPECT_EQ(file->Store().m_nImageWidth, 0U);
    }
  }
}

// The last segment ends so that 0, 1, 2 or 3 bytes are left, and also just behind the end.
TEST(HostileSegments, WalkEndsAtTheLastBytesOfTheFile) {
  const Bytes head = Jpeg().Frame(640, 480).Segment(0xE1, ExifStart()).Build();
  for (const Bytes& tail : {Bytes{}, Bytes{0xFF}, Bytes{0xFF, 0xE1}, Bytes{0xFF, 0xE1, 0x00},
                            Bytes{0xFF, 0xE1, 0xFF, 0xFF}, Bytes{0xFF, 0xED, 0x00, 0x00}}) {
    const auto file = BoundedJpeg(Join({First(head, head.size() - 2), tail}));
    EXPECT_EQ(file->Store().m_nImageWidth, 640U);
    EXPECT_EQ(Keys(file->Store(), BLOCK_IFD0), Tags{274});
  }
  for (const std::uint16_t beyond : Shorts{1, 2, 3}) {
    const Bytes payload = {1, 2, 3, 4};
    const auto length = static_cast<std::uint16_t>(payload.size() + 2 + beyond);
    Jpeg jpeg;
    const Bytes bytes = jpeg.Frame(640, 480).SegmentOfLength(0xE4, length, payload).Build();
    const auto file = BoundedJpeg(First(bytes, bytes.size() - 2));
    EXPECT_EQ(file->Store().m_nImageWidth, 640U);
  }
}

// The shortest segments there are, and nothing else: 4 bytes each.
TEST(HostileSegments, ManyEmptySegments) {
  for (const std::uint8_t marker : Bytes{0xE0, 0xE1, 0xE2, 0xED}) {
    const auto parse = [&](std::size_t count) {
      StoreFile file(Jpeg().Raw(Repeat({0xFF, marker, 0, 2}, count)).Frame(640, 480).Build());
      file.ParseJpeg();
      return file.Store().m_nImageWidth;
    };
    EXPECT_EQ(Bounded(kSmallInput, [&] { return parse(16'000); }), 640U) << +marker;
    ExpectLinear(16'000, parse);
  }
}

}  // namespace
}  // namespace test
