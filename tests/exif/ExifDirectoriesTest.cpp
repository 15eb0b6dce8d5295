// The EXIF, GPS and interoperability directories, and directories that point back to themselves.

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "support/TiffSuite.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

constexpr std::uint16_t kInterop = 0xA005;
constexpr std::uint16_t kMakerNote = 0x927C;

class ExifDirectory : public TiffSuite {
 protected:
  // The keys of the EXIF block after a parse of an EXIF directory with given flags.
  Tags KeysWithFlags(std::uint32_t flags) const {
    StoreFile file(tiff.Build({tiff.Child(kExifPointer, {tiff.Short(0x8827, {100})})}), flags);
    EXPECT_EQ(file.ParseTiff(), S_OK);
    return Keys(file.Store(), BLOCK_EXIF);
  }

  // `count` SHORT entries with the tags 1, 2, ...
  Directory Shorts(std::uint16_t count) const {
    Directory directory;
    for (std::uint16_t i = 1; i <= count; ++i) directory.push_back(tiff.Short(i, {i}));
    return directory;
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, ExifDirectory, kBothOrders, OrderName);

TEST_P(ExifDirectory, AnyOfThreeFlagsOpensIt) {
  EXPECT_EQ(KeysWithFlags(0x0004), Tags{0x8827});
  EXPECT_EQ(KeysWithFlags(0x0080), Tags{0x8827});
  EXPECT_EQ(KeysWithFlags(0x0400), Tags{0x8827});
  EXPECT_EQ(KeysWithFlags(0x0484), Tags{0x8827});
}

TEST_P(ExifDirectory, OtherFlagsDoNotOpenIt) {
  EXPECT_TRUE(KeysWithFlags(0).empty());
  EXPECT_TRUE(KeysWithFlags(~0x0484U).empty());
}

TEST_P(ExifDirectory, WithoutItsFlagsReadsNothingAndSucceeds) {
  StoreFile file(tiff.BuildDirectory(Shorts(3), 0), 0);
  EXPECT_EQ(file.Store().m_fnParseExifIFD({0, GetParam(), 0, 0}), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_EXIF).empty());
}

TEST_P(ExifDirectory, EntryCountsAreChecked) {
  StoreFile file(tiff.BuildDirectory(Shorts(512), 0));
  EXPECT_EQ(file.Store().m_fnParseExifIFD({0, GetParam(), 0, 0}), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF).size(), 512U);

  StoreFile tooMany(tiff.BuildDirectory(Shorts(513), 0));
  EXPECT_EQ(tooMany.Store().m_fnParseExifIFD({0, GetParam(), 0, 0}), E_FAIL);
  EXPECT_TRUE(Keys(tooMany.Store(), BLOCK_EXIF).empty());

  StoreFile none(tiff.BuildDirectory({}, 0));
  EXPECT_EQ(none.Store().m_fnParseExifIFD({0, GetParam(), 0, 0}), S_OK);

  StoreFile cut(Bytes{0xFF});
  EXPECT_EQ(cut.Store().m_fnParseExifIFD({0, GetParam(), 0, 0}), S_OK);
}

TEST_P(ExifDirectory, OfTooManyEntriesLeavesTheFirstDirectoryGoingOn) {
  StoreFile file(tiff.Build({tiff.Child(kExifPointer, Shorts(513)), tiff.Short(0xF000, {1})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_EXIF).empty());
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xF000});
}

TEST_P(ExifDirectory, StoresRepeatedTagsPaddingAndLongValuesAsTheOthersDo) {
  StoreFile file(tiff.Build({tiff.Child(
      kExifPointer, {tiff.Short(0x8827, {100}), tiff.Undefined(0xEA1C, Bytes(100)),
                     tiff.Undefined(0x9286, Bytes(2000, 'c')), tiff.Short(0x8827, {200})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{0x8827, 0x9286}));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 0x8827), ShortValue(0x8827, 200));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 0x9286),
            (Stored{0x9286, 7, 1024, Hex(Bytes(1024, 'c'))}));
}

TEST_P(ExifDirectory, TagsThatAreSpecialInTheFirstDirectoryAreStoredHere) {
  StoreFile file(tiff.Build({tiff.Child(
      kExifPointer, {tiff.Long(kExifPointer, {8}), tiff.Long(kGpsPointer, {8}), tiff.Long(330, {8}),
                     tiff.Undefined(0x002E, Bytes(8, 1)), tiff.Byte(0x85FF, {1}),
                     tiff.Undefined(0x8773, Bytes(8, 2)), tiff.Long(0xC634, {8})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF),
            (Tags{0x002E, 330, 0x85FF, kExifPointer, 0x8773, kGpsPointer, 0xC634}));
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_GPS).empty());
  EXPECT_EQ(file.Store().m_nEmbeddedJpegPos, 0U);
}

TEST_P(ExifDirectory, ValueOutsideTheSegmentIsSkipped) {
  const Bytes block = tiff.Build(
      {tiff.Child(kExifPointer, {tiff.AtOffset(0x829A, 5, 1, 5000), tiff.Short(0x8827, {100})})});
  StoreFile file(Join({Zeros(10), block, Zeros(6000)}));
  EXPECT_EQ(file.ParseTiff(10, 4, 100), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), Tags{0x8827});
}

// --- The interoperability directory ---

TEST_P(ExifDirectory, InteroperabilityTags1And2JoinItAndThePointerStays) {
  const Directory interop = {tiff.Ascii(1, "R98"),     tiff.Undefined(2, Text("0100")),
                             tiff.Short(3, {3}),       tiff.Ascii(0x1000, "format"),
                             tiff.Long(0x1001, {640}), tiff.Undefined(0xEA1C, {0})};
  const Bytes block = tiff.Build({tiff.Child(kExifPointer, {tiff.Child(kInterop, interop)})});
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{1, 2, kInterop}));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 1), AsciiValue(1, "R98"));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 2), (Stored{2, 7, 4, "30313030"}));
  // The first directory takes 8 to 26, the EXIF one 26 to 44.
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, kInterop), LongValue(kInterop, 44));
}

TEST_P(ExifDirectory, InteroperabilityPointerOf0IsStoredOnly) {
  StoreFile file(tiff.Build({tiff.Child(kExifPointer, {tiff.Long(kInterop, {0})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), Tags{kInterop});
}

TEST_P(ExifDirectory, InteroperabilityPointerFollowsTheSegmentRule) {
  const Bytes start = tiff.Build({tiff.Child(kExifPointer, {tiff.Long(kInterop, {100})})});
  Bytes bytes = Join({Zeros(50), start});
  bytes.resize(150);
  bytes = Join({bytes, tiff.BuildDirectory({tiff.Short(1, {5})}, 0)});
  StoreFile inside(bytes);
  EXPECT_EQ(inside.ParseTiff(50, 40, 151), S_OK);
  EXPECT_EQ(Keys(inside.Store(), BLOCK_EXIF), (Tags{1, kInterop}));
  StoreFile outside(bytes);
  EXPECT_EQ(outside.ParseTiff(50, 40, 150), S_OK);
  EXPECT_EQ(Keys(outside.Store(), BLOCK_EXIF), Tags{kInterop});
}

TEST_P(ExifDirectory, EntriesAfterInteroperabilityAreRead) {
  StoreFile file(tiff.Build({tiff.Child(
      kExifPointer, {tiff.Child(kInterop, {tiff.Ascii(1, "R03")}), tiff.Short(0xA217, {2})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{1, kInterop, 0xA217}));
}

TEST_P(ExifDirectory, InteroperabilityCountsAreChecked) {
  StoreFile tooMany(tiff.BuildDirectory(Shorts(513), 0));
  EXPECT_EQ(tooMany.Store().m_fnParseInteropIFD({0, GetParam(), 0, 0}), E_FAIL);
  EXPECT_TRUE(Keys(tooMany.Store(), BLOCK_EXIF).empty());
  StoreFile file(tiff.BuildDirectory(Shorts(512), 0));
  EXPECT_EQ(file.Store().m_fnParseInteropIFD({0, GetParam(), 0, 0}), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{1, 2}));
  StoreFile none(tiff.BuildDirectory({}, 0));
  EXPECT_EQ(none.Store().m_fnParseInteropIFD({0, GetParam(), 0, 0}), S_OK);
}

// --- The maker note's bytes ---

TEST_P(ExifDirectory, MakerNoteBytesAreStoredClamped) {
  StoreFile file(tiff.Build({tiff.Child(
      kExifPointer, {tiff.Undefined(kMakerNote, Bytes(3000, 'n')), tiff.Short(0xA217, {2})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, kMakerNote),
            (Stored{kMakerNote, 7, 1024, Hex(Bytes(1024, 'n'))}));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 0xA217), ShortValue(0xA217, 2));
}

TEST_P(ExifDirectory, MakerNoteOfFourBytesIsStoredToo) {
  StoreFile file(
      tiff.Build({tiff.Child(kExifPointer, {tiff.Undefined(kMakerNote, {1, 2, 3, 4})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, kMakerNote), (Stored{kMakerNote, 7, 4, "01020304"}));
}

// --- GPS ---

TEST_P(ExifDirectory, GpsNeedsItsFlag) {
  const Bytes block = tiff.Build({tiff.Child(kGpsPointer, {tiff.Ascii(1, "N")})});
  StoreFile with(block, 0x0008);
  EXPECT_EQ(with.ParseTiff(), S_OK);
  EXPECT_EQ(Find(with.Store(), BLOCK_GPS, 1), AsciiValue(1, "N"));
  StoreFile without(block, ~0x0008U);
  EXPECT_EQ(without.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(without.Store(), BLOCK_GPS).empty());
}

TEST_P(ExifDirectory, GpsStoresEverythingButPadding) {
  StoreFile file(tiff.Build({tiff.Child(
      kGpsPointer, {tiff.Byte(0, {2, 3, 0, 0}), tiff.Rational(2, {{48, 1}, {8, 1}, {4131, 100}}),
                    tiff.Undefined(0xEA1C, {0}), tiff.Long(0x8769, {8}), tiff.Short(30, {0}),
                    tiff.Short(30, {1})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_GPS), (Tags{0, 2, 30, 0x8769}));
  EXPECT_EQ(Find(file.Store(), BLOCK_GPS, 2), (Stored{2, 5, 3,
                                                      "30000000010000000800000001000000"
                                                      "2310000064000000"}));
  EXPECT_EQ(Find(file.Store(), BLOCK_GPS, 30), ShortValue(30, 1));
  EXPECT_TRUE(Keys(file.Store(), BLOCK_EXIF).empty());
}

TEST_P(ExifDirectory, GpsCountsAreChecked) {
  StoreFile tooMany(tiff.BuildDirectory(Shorts(513), 0));
  EXPECT_EQ(tooMany.Store().m_fnParseGpsIFD({0, GetParam(), 0, 0}), E_FAIL);
  EXPECT_TRUE(Keys(tooMany.Store(), BLOCK_GPS).empty());
  StoreFile file(tiff.BuildDirectory(Shorts(512), 0));
  EXPECT_EQ(file.Store().m_fnParseGpsIFD({0, GetParam(), 0, 0}), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_GPS).size(), 512U);
  StoreFile closed(tiff.BuildDirectory(Shorts(2), 0), 0);
  EXPECT_EQ(closed.Store().m_fnParseGpsIFD({0, GetParam(), 0, 0}), S_OK);
  EXPECT_TRUE(Keys(closed.Store(), BLOCK_GPS).empty());
}

// --- Back to themselves ---

TEST_P(ExifDirectory, PointingAtItselfIsStoredAndNotFollowed) {
  // The first directory takes 8 to 26.
  const Bytes start = tiff.Build({tiff.Long(kExifPointer, {26})});
  const Bytes exif = tiff.BuildDirectory(
      {tiff.Long(kExifPointer, {26}), tiff.Long(kInterop, {26}), tiff.Short(1, {5})}, 26);
  StoreFile file(Join({start, exif}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{1, kExifPointer, kInterop}));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, kInterop), LongValue(kInterop, 26));
}

TEST_P(ExifDirectory, PointersAtTheFirstDirectoryCopyIt) {
  const Bytes block =
      tiff.Build({tiff.Short(274, {6}), tiff.Long(kExifPointer, {8}), tiff.Long(kGpsPointer, {8})});
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{274});
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{274, kExifPointer, kGpsPointer}));
  EXPECT_EQ(Keys(file.Store(), BLOCK_GPS), (Tags{274, kExifPointer, kGpsPointer}));
  EXPECT_EQ(Find(file.Store(), BLOCK_GPS, 274), ShortValue(274, 6));
}

TEST_P(ExifDirectory, TwoPointersLetTheSecondDirectoryWriteOverTheFirst) {
  StoreFile file(
      tiff.Build({tiff.Child(kExifPointer, {tiff.Short(1, {1}), tiff.Short(2, {2})}),
                  tiff.Child(kExifPointer, {tiff.Short(2, {22}), tiff.Short(3, {33})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF), (Tags{1, 2, 3}));
  EXPECT_EQ(Find(file.Store(), BLOCK_EXIF, 2), ShortValue(2, 22));
}

}  // namespace
}  // namespace test
