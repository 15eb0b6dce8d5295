// The directories listed under tag 330, and the bounds on what hostile directories may cost.

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "support/TiffSuite.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

constexpr std::uint16_t kSubIfds = 330;

class SubIfd : public TiffSuite {
 protected:
  Directory Shorts(std::uint16_t count) const {
    Directory directory;
    for (std::uint16_t i = 1; i <= count; ++i) directory.push_back(tiff.Short(i, {i}));
    return directory;
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, SubIfd, kBothOrders, OrderName);

TEST_P(SubIfd, SingleOneIsListedInTheEntryItself) {
  StoreFile file(tiff.Build({tiff.Child(kSubIfds, {tiff.Short(256, {640})})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(file.Store().m_mapSubIfd.size(), 1U);
  EXPECT_EQ(Find(file.Store(), 0x1000, 256), ShortValue(256, 640));
}

TEST_P(SubIfd, ListGivesOneTableEach) {
  StoreFile file(tiff.Build(
      {tiff.Children(kSubIfds,
                     {{tiff.Short(256, {1})}, {tiff.Short(256, {2})}, {tiff.Short(256, {3})}}),
       tiff.Short(0xF000, {1})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xF000});
  EXPECT_EQ(file.Store().m_mapSubIfd.size(), 3U);
  EXPECT_EQ(Find(file.Store(), 0x1000, 256), ShortValue(256, 1));
  EXPECT_EQ(Find(file.Store(), 0x1001, 256), ShortValue(256, 2));
  EXPECT_EQ(Find(file.Store(), 0x1002, 256), ShortValue(256, 3));
  EXPECT_EQ(file.Store().m_fnGetBlock(0x1003), nullptr);
}

TEST_P(SubIfd, EmptyListGivesNoTable) {
  StoreFile file(tiff.Build({tiff.AtOffset(kSubIfds, 4, 0, 8)}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(file.Store().m_mapSubIfd.empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(SubIfd, StoresEverythingButPadding) {
  StoreFile file(tiff.Build({tiff.Child(
      kSubIfds, {tiff.Long(kSubIfds, {8}), tiff.Undefined(0xEA1C, {0}), tiff.Long(0x8769, {8}),
                 tiff.Short(256, {1}), tiff.Short(256, {2}), tiff.Byte(257, Bytes(1025, 1))})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), 0x1000), (Tags{256, 257, kSubIfds, 0x8769}));
  EXPECT_EQ(Find(file.Store(), 0x1000, 256), ShortValue(256, 2));
  EXPECT_EQ(Find(file.Store(), 0x1000, 257), (Stored{257, 1, 1024, Hex(Bytes(1024, 1))}));
  EXPECT_TRUE(Keys(file.Store(), BLOCK_EXIF).empty());
}

TEST_P(SubIfd, PointingAtTheFirstDirectoryCopiesIt) {
  StoreFile file(tiff.Build({tiff.Ascii(271, "Maker"), tiff.Long(kSubIfds, {8})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{271});
  EXPECT_EQ(Keys(file.Store(), 0x1000), (Tags{271, kSubIfds}));
  EXPECT_EQ(Find(file.Store(), 0x1000, 271), AsciiValue(271, "Maker"));
}

TEST_P(SubIfd, MayLieOutsideTheSegment) {
  const Bytes start = tiff.Build({tiff.Long(kSubIfds, {100})});
  Bytes bytes = Join({Zeros(10), start});
  bytes.resize(110);
  StoreFile file(Join({bytes, tiff.BuildDirectory({tiff.Short(256, {7})}, 0)}));
  EXPECT_EQ(file.ParseTiff(10, 4, 50), S_OK);
  EXPECT_EQ(Find(file.Store(), 0x1000, 256), ShortValue(256, 7));
}

TEST_P(SubIfd, ListOutsideTheSegmentIsSkipped) {
  const Bytes start = tiff.Build({tiff.AtOffset(kSubIfds, 4, 2, 100)});
  StoreFile file(Join({Zeros(10), start, Zeros(200)}));
  EXPECT_EQ(file.ParseTiff(10, 4, 50), S_OK);
  EXPECT_TRUE(file.Store().m_mapSubIfd.empty());
}

TEST_P(SubIfd, BeyondTheFileIsAnEmptyTable) {
  StoreFile file(tiff.Build({tiff.Long(kSubIfds, {5000, 0x80000000, 0xFFFFFFFF})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  for (std::int32_t block = 0x1000; block < 0x1003; ++block) {
    ASSERT_NE(file.Store().m_fnGetBlock(block), nullptr) << block;
    EXPECT_TRUE(file.Store().m_fnGetBlock(block)->IsEmpty()) << block;
  }
}

TEST_P(SubIfd, FailedOneLeavesTheOthers) {
  StoreFile file(tiff.Build(
      {tiff.Children(kSubIfds, {{tiff.Short(256, {1})}, Shorts(513), {tiff.Short(256, {3})}})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), 0x1000, 256), ShortValue(256, 1));
  EXPECT_TRUE(Keys(file.Store(), 0x1001).empty());
  EXPECT_EQ(Find(file.Store(), 0x1002, 256), ShortValue(256, 3));
}

TEST_P(SubIfd, CutOffsetIs0WhichIsNoDirectory) {
  Bytes bytes = tiff.Build({tiff.AtOffset(kSubIfds, 4, 2, 40), tiff.Short(0xF000, {1})});
  bytes.resize(40);
  const Bytes directory = tiff.BuildDirectory({tiff.Short(256, {7})}, 0);
  // A list of two offsets of which the file has one.
  StoreFile file(Join({directory, bytes, Number(0U - 18U)}));
  EXPECT_EQ(file.ParseTiff(static_cast<std::uint32_t>(directory.size())), S_OK);
  EXPECT_EQ(Find(file.Store(), 0x1000, 256), ShortValue(256, 7));
  ASSERT_NE(file.Store().m_fnGetBlock(0x1001), nullptr);
  // At offset 0 stands the byte-order mark, which is no possible number of entries.
  EXPECT_TRUE(file.Store().m_fnGetBlock(0x1001)->IsEmpty());
}

TEST_P(SubIfd, NumbersAbove4095FallOnEarlierTables) {
  // By design: the number of the table is 0x1000 | i, so 4096 is the first table again.
  const Bytes directory = tiff.BuildDirectory({tiff.Short(256, {7})}, 0);
  const auto base = static_cast<std::uint32_t>(2 * directory.size());
  std::vector<std::uint32_t> offsets(4097, 0U - base);
  offsets[4096] = 0U - base / 2;
  const Bytes second = tiff.BuildDirectory({tiff.Short(257, {8})}, 0);
  StoreFile file(Join({directory, second, tiff.Build({tiff.Long(kSubIfds, offsets)})}));
  EXPECT_EQ(file.ParseTiff(base), S_OK);
  EXPECT_EQ(file.Store().m_mapSubIfd.size(), 4096U);
  EXPECT_EQ(Keys(file.Store(), 0x1000), (Tags{256, 257}));
  EXPECT_EQ(Keys(file.Store(), 0x1001), Tags{256});
}

TEST_P(SubIfd, CountsAreChecked) {
  NodePool nodes;
  TagMap table(nodes);
  StoreFile tooMany(tiff.BuildDirectory(Shorts(513), 0));
  EXPECT_EQ(tooMany.Store().m_fnParseSubIFD({0, GetParam(), 0, 0}, table), E_FAIL);
  EXPECT_TRUE(table.IsEmpty());
  StoreFile none(tiff.BuildDirectory({}, 0));
  EXPECT_EQ(none.Store().m_fnParseSubIFD({0, GetParam(), 0, 0}, table), S_OK);
  StoreFile file(tiff.BuildDirectory(Shorts(512), 0));
  EXPECT_EQ(file.Store().m_fnParseSubIFD({0, GetParam(), 0, 0}, table), S_OK);
  EXPECT_EQ(table.Count(), 512U);
}

// --- Bounded work ---

class TiffBudget : public TiffSuite {
 protected:
  Directory Shorts(std::uint16_t count) const {
    Directory directory;
    for (std::uint16_t i = 1; i <= count; ++i) directory.push_back(tiff.Short(i, {i}));
    return directory;
  }

  // Stored bytes of a table.
  static std::uint64_t StoredBytes(VxMetadata& store, std::int32_t block) {
    std::uint64_t sum = 0;
    for (const auto& [key, entry] : *store.m_fnGetBlock(block)) sum += TagBytes(entry).size();
    return sum;
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, TiffBudget, kBothOrders, OrderName);

TEST_P(TiffBudget, SubIfdListOfGreatestCountEnds) {
  const Directory pointers = {tiff.AtOffset(kSubIfds, 4, 0xFFFFFFFF, 8),
                              tiff.AtOffset(kSubIfds, 4, 0x40000000, 0xFFFFFFF0)};
  StoreFile file(Join({tiff.Build(pointers), Bytes(4000, 0x01)}));
  file.ParseTiff();
  EXPECT_LE(file.Store().m_mapSubIfd.size(), kMaxWalkedEntries);
}

TEST_P(TiffBudget, ManyPointersToOneLargeDirectoryEnd) {
  Directory pointers;
  for (int i = 0; i < 512; ++i) pointers.push_back(tiff.Long(0x8769, {8 + 2 + 12 * 512 + 4}));
  const Bytes exif = tiff.BuildDirectory(Shorts(512), 0);
  StoreFile file(Join({tiff.Build(pointers), exif}));
  file.ParseTiff();
  EXPECT_EQ(Keys(file.Store(), BLOCK_EXIF).size(), 512U);
  EXPECT_FALSE(file.Store().Budget().TakeEntry());
}

TEST_P(TiffBudget, PhotographsStayFarBelowIt) {
  StoreFile file(tiff.Build({tiff.Child(0x8769, Shorts(512)), tiff.Child(0x8825, Shorts(512)),
                             tiff.Children(kSubIfds, {Shorts(512), Shorts(512), Shorts(512)})},
                            Shorts(512)));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  for (const std::int32_t block : {BLOCK_EXIF + 0, BLOCK_GPS + 0, BLOCK_IFD1 + 0, 0x1000, 0x1002}) {
    EXPECT_EQ(Keys(file.Store(), block).size(), 512U) << block;
  }
  EXPECT_TRUE(file.Store().Budget().TakeEntry());
}

TEST_P(TiffBudget, LargeValuesStayWithoutDataOnceItIsUsedUp) {
  // 32 values of 65535 rationals, 524280 bytes each, fit into the budget; a 33rd does not.
  static_assert(kMaxStoredBytes / 524280 == 32);
  Directory directory;
  for (std::uint16_t i = 1; i <= 512; ++i) {
    directory.push_back(tiff.AtOffset(static_cast<std::uint16_t>(5000 + i), 5, 65535, 8));
  }
  StoreFile file(Join({tiff.Build({}, directory), Bytes(530000, 0x33)}));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_EQ(StoredBytes(file.Store(), BLOCK_IFD1), 32U * 524280);
  const TagMap& table = *file.Store().m_fnGetBlock(BLOCK_IFD1);
  EXPECT_EQ(TagBytes(*table.Find(5032)).size(), 524280U);
  ASSERT_NE(table.Find(5033), nullptr);
  EXPECT_EQ(table.Find(5033)->m_pData, nullptr);
}

}  // namespace
}  // namespace test
