// Values that are shorter than what is read from them, and maker-note values outside their bounds.

#include <cstdint>
#include <memory>

#include <gtest/gtest.h>

#include "HostileFile.h"
#include "makernote/MakerNoteInfo.h"
#include "makernote/VxMakerNoteParser.h"
#include "support/SamsungPhoto.h"

namespace test {
namespace {

constexpr std::uint16_t kOrientation = 274;
constexpr std::uint16_t kLensIdTag = 0xA003;
constexpr std::uint16_t kStyleTag = 0x0021;
constexpr std::uint32_t kLensIdKey = 4;

class HostileValues : public TiffSuite {
 protected:
  std::unique_ptr<StoreFile> Photograph(const Directory& ifd0, const Directory& ifd1 = {}) const {
    return BoundedJpeg(Jpeg().Exif(tiff.Build(ifd0, ifd1)).Frame(640, 480).Scan().Build());
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, HostileValues, kBothOrders, OrderName);

// The byte that is missing counts as 0.
TEST_P(HostileValues, OneByteReadAsAShort) {
  for (const std::uint16_t type : Shorts{1, 6, 7, 11, 99}) {
    const auto file = Photograph({tiff.Raw(kOrientation, type, 1, {0x86})});
    std::uint32_t value = 0;
    EXPECT_EQ(file->Store().m_fnGetTagShort(BLOCK_IFD0, kOrientation, &value), S_OK) << type;
    EXPECT_EQ(value, 0x86U) << type;
  }
}

TEST_P(HostileValues, NoByteReadAsAShort) {
  for (const std::uint16_t type : Shorts{1, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 99}) {
    const auto file = Photograph({tiff.Raw(kOrientation, type, 0, {6, 6, 6, 6})});
    EXPECT_EQ(Keys(file->Store(), BLOCK_IFD0), Tags{kOrientation});
    std::uint32_t value = 77;
    EXPECT_EQ(file->Store().m_fnGetTagShort(BLOCK_IFD0, kOrientation, &value), E_FAIL) << type;
    EXPECT_EQ(value, 77U) << type;
  }
}

// An empty text has its final zero.
TEST_P(HostileValues, EmptyTextReadAsAShort) {
  const auto file = Photograph({tiff.Raw(kOrientation, 2, 0, {})});
  std::uint32_t value = 77;
  EXPECT_EQ(file->Store().m_fnGetTagShort(BLOCK_IFD0, kOrientation, &value), S_OK);
  EXPECT_EQ(value, 0U);
}

TEST_P(HostileValues, ShortValuesReadAsAThumbnailsLong) {
  for (std::uint32_t size = 0; size <= 4; ++size) {
    const auto file = Photograph({tiff.Short(274, {1})}, {tiff.Raw(0x201, 7, size, {1, 2, 3, 4})});
    const std::uint32_t expected[] = {77, 0x01, 0x0201, 0x030201, 0x04030201};
    std::uint32_t value = 77;
    const HRESULT result = file->Store().m_fnGetThumbTagLong(0x201, &value);
    EXPECT_EQ(result, size == 0 ? E_FAIL : S_OK) << size;
    EXPECT_EQ(value, expected[size]) << size;
  }
}

TEST_P(HostileValues, EmptyValuesReadAsAThumbnailsInteger) {
  for (const std::uint16_t type : Shorts{1, 3, 4, 6, 8, 9}) {
    const auto file = Photograph({tiff.Short(274, {1})}, {tiff.Raw(0x100, type, 0, {1, 2, 3, 4})});
    std::uint32_t value = 77;
    EXPECT_EQ(file->Store().m_fnGetThumbTagInteger(0x100, &value), E_FAIL) << type;
    EXPECT_EQ(value, 0x7FFFFFFFU) << type;
  }
}

// --- Maker notes ---

TEST(HostileMakerNoteBounds, LensIdOfOneByteAndOfNone) {
  const auto one =
      BoundedJpeg(SamsungJpeg({kNote.Byte(kStyleTag, {3}), kNote.Byte(kLensIdTag, {7})}));
  EXPECT_EQ(Find(one->Store(), BLOCK_MAKERNOTE_SUMMARY, kLensIdKey), LongValue(kLensIdKey, 7));
  const auto none = BoundedJpeg(SamsungJpeg(
      {kNote.Raw(kStyleTag, 1, 0, {3, 3, 3, 3}), kNote.Raw(kLensIdTag, 3, 0, {0, 7, 0, 7})}));
  EXPECT_EQ(Keys(none->Store(), BLOCK_MAKERNOTE_SUMMARY), Tags{1});
  EXPECT_EQ(Keys(none->Store(), BLOCK_MAKERNOTE), (Tags{kStyleTag, kLensIdTag}));
}

// Offsets count from the note's first byte and must lie behind it and in front of the segment's
// end, which here is the end of the note.
TEST(HostileMakerNoteBounds, OffsetsOutsideTheBounds) {
  const auto isKept = [](std::uint32_t offset) {
    const auto file = BoundedJpeg(SamsungJpeg({kNote.AtOffset(kLensIdTag, 3, 4, offset)}));
    return Find(file->Store(), BLOCK_MAKERNOTE, kLensIdTag).has_value();
  };
  constexpr std::uint32_t kNoteSize = 2 + 12 + 4;
  EXPECT_FALSE(isKept(0));
  EXPECT_TRUE(isKept(1));
  EXPECT_TRUE(isKept(kNoteSize - 1));
  EXPECT_FALSE(isKept(kNoteSize));
  EXPECT_FALSE(isKept(0x7FFFFFFF));
  EXPECT_FALSE(isKept(0x80000000));
  EXPECT_FALSE(isKept(0xFFFFFFFE));
  EXPECT_FALSE(isKept(0xFFFFFFFF));
}

// By path there are no bounds: offsets count from the file's start, and what the file does not have
// is zeros.
TEST(HostileMakerNoteBounds, OffsetsWithoutBounds) {
  for (const std::uint32_t offset : {0U, 1U, 100'000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    const Bytes note = kNote.BuildDirectory({kNote.AtOffset(kLensIdTag, 3, 4, offset)}, 0);
    const TempFile file(Join({U16(1), Zeros(6), note}));
    const auto lens = Bounded(kSmallInput, [&] {
      CVxMakerNoteParser parser(0);
      EXPECT_TRUE(parser.SetCameraInfo("SAMSUNG", "NX10"));
      const auto info = parser.ParseMakerNote(file.Path(), 8, 0, ByteOrder::LittleEndian);
      EXPECT_TRUE(info != nullptr);
      EXPECT_TRUE(parser.FirstEntry());
      EXPECT_TRUE(parser.CurrentEntry() != nullptr && parser.CurrentEntry()->m_nSize == 8);
      return info == nullptr ? 77U : info->nLensId;
    });
    EXPECT_EQ(lens, offset == 0 ? 1U : offset == 1 ? 0x0100U : 0U) << offset;
  }
}

// A note at the very end of the file, cut at every byte.
TEST(HostileMakerNoteBounds, NoteEndsAtEveryByte) {
  const Bytes note = kNote.BuildDirectory({kNote.Short(kLensIdTag, {7})}, 0);
  for (std::size_t size = 0; size <= note.size(); ++size) {
    const TempFile file(First(note, size));
    const bool isRead = Bounded(kSmallInput, [&] {
      CVxMakerNoteParser parser(0);
      parser.SetCameraInfo("SAMSUNG", "NX10");
      return parser.ParseMakerNote(file.Path(), 0, 0, ByteOrder::LittleEndian) != nullptr;
    });
    EXPECT_EQ(isRead, size >= 2) << size;
  }
}

}  // namespace
}  // namespace test
