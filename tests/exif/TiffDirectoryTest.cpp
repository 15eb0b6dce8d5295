// What all directories share: how entries are walked, checked, clamped and stored.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/TiffSuite.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

class TiffDirectory : public TiffSuite {
 protected:
  // A directory of `count` SHORT entries with the tags 1000, 1001, ...
  Directory Shorts(std::uint16_t count) const {
    Directory directory;
    for (std::uint16_t i = 0; i < count; ++i) {
      directory.push_back(tiff.Short(static_cast<std::uint16_t>(1000 + i), {i}));
    }
    return directory;
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, TiffDirectory, kBothOrders, OrderName);

TEST_P(TiffDirectory, EveryTypeIsStoredInHostOrder) {
  const Bytes numbers = Join({Number(1), Number(0xFFFFFFFE)});
  const Bytes shorts = Join({Word(1), Word(0xFFFE), Word(3)});
  const Bytes raw = {0x81, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  StoreFile file(tiff.Build({
      tiff.Raw(1001, 1, 3, {0x81, 2, 3}),
      tiff.Raw(1002, 2, 3, {'a', 'b', 0}),
      tiff.Raw(1003, 3, 3, shorts),
      tiff.Raw(1004, 4, 2, numbers),
      tiff.Raw(1005, 5, 1, numbers),
      tiff.Raw(1006, 6, 5, {0x81, 2, 3, 4, 5}),
      tiff.Raw(1007, 7, 5, {0x81, 2, 3, 4, 5}),
      tiff.Raw(1008, 8, 3, shorts),
      tiff.Raw(1009, 9, 2, numbers),
      tiff.Raw(1010, 10, 1, numbers),
      tiff.Raw(1011, 11, 1, {0x81, 2, 3, 4}),
      tiff.Raw(1012, 12, 1, raw),
      tiff.Raw(1013, 13, 1, Number(0x01020304)),
      tiff.Raw(1014, 14, 5, raw),
      tiff.Raw(1162, 162, 4, {9, 8, 7, 6}),
  }));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  VxMetadata& store = file.Store();
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1001), (Stored{1001, 1, 3, "810203"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1002), (Stored{1002, 2, 3, "616200"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1003), (Stored{1003, 3, 3, "0100feff0300"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1004), (Stored{1004, 4, 2, "01000000feffffff"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1005), (Stored{1005, 5, 1, "01000000feffffff"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1006), (Stored{1006, 1, 5, "8102030405"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1007), (Stored{1007, 7, 5, "8102030405"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1008), (Stored{1008, 8, 3, "0100feff0300"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1009), (Stored{1009, 9, 2, "01000000feffffff"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1010), (Stored{1010, 10, 1, "01000000feffffff"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1011), (Stored{1011, 7, 1, "81"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1012), (Stored{1012, 7, 1, "81"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1013), (Stored{1013, 13, 1, "04030201"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1014), (Stored{1014, 7, 5, "8102030405"}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1162), (Stored{1162, 7, 4, "09080706"}));
}

TEST_P(TiffDirectory, CountOfZeroIsStoredEmpty) {
  StoreFile file(tiff.Build({
      tiff.AtOffset(1001, 3, 0, 0x7FFFFFFF),
      tiff.AtOffset(1002, 2, 0, 0x7FFFFFFF),
      tiff.AtOffset(1003, 12, 0, 0x7FFFFFFF),
  }));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1001), (Stored{1001, 3, 0, ""}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1002), (Stored{1002, 2, 0, "00"}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1003), (Stored{1003, 7, 0, ""}));
}

TEST_P(TiffDirectory, RepeatedTagKeepsLastValue) {
  StoreFile file(tiff.Build({tiff.Ascii(271, "First maker"), tiff.Short(272, {1}),
                             tiff.Ascii(271, "Second"), tiff.Short(272, {2})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), (Tags{271, 272}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Second"));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 272), ShortValue(272, 2));
}

TEST_P(TiffDirectory, PaddingTagIsNotStored) {
  StoreFile file(tiff.Build({tiff.Undefined(0xEA1C, Bytes(2060)), tiff.Short(0xEA1D, {1})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), Tags{0xEA1D});
}

TEST_P(TiffDirectory, KeysMayComeInAnyOrder) {
  StoreFile file(tiff.Build({tiff.Short(0xFFFF, {1}), tiff.Short(0, {2}), tiff.Short(300, {3})}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), (Tags{0, 300, 0xFFFF}));
}

// --- The number of entries ---

TEST_P(TiffDirectory, Of512EntriesIsWalked) {
  StoreFile file(tiff.Build(Shorts(512)));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0).size(), 512U);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1511), ShortValue(1511, 511));
}

TEST_P(TiffDirectory, Of513EntriesIsAbandoned) {
  StoreFile file(tiff.Build(Shorts(513), {tiff.Short(259, {6})}));
  EXPECT_EQ(file.ParseTiff(), E_FAIL);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD1).empty());
}

TEST_P(TiffDirectory, FirstOneOfNoEntriesStillHasANext) {
  StoreFile file(tiff.Build({}, {tiff.Short(259, {6})}));
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD1, 259), ShortValue(259, 6));
}

TEST_P(TiffDirectory, FirstOneWithACutCountIsOfNoEntries) {
  Bytes block = tiff.Build({});
  block.resize(9);
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_FALSE);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(TiffDirectory, CutEntryReadsAsZeros) {
  Bytes block = tiff.Build({tiff.Short(274, {6}), tiff.Long(300, {1})});
  block.resize(8 + 2 + 12 + 3);
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 300), (Stored{300, 7, 0, ""}));
}

TEST_P(TiffDirectory, MissingEntriesReadAsTagZero) {
  Bytes block = tiff.Build({tiff.Short(274, {6}), tiff.Long(300, {1}), tiff.Long(301, {1})});
  block.resize(8 + 2 + 12);
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Keys(file.Store(), BLOCK_IFD0), (Tags{0, 274}));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 0), (Stored{0, 7, 0, ""}));
}

TEST_P(TiffDirectory, MissingEntriesAreWalkedOnce) {
  Bytes bytes = tiff.Build({tiff.Short(1000, {1})});
  bytes[8] = bytes[9] = 1;  // 257 entries in either order
  bytes.resize(8 + 2 + 12);
  StoreFile file(bytes);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  std::uint32_t left = 0;
  while (file.Stream().Budget().TakeEntry()) ++left;
  EXPECT_EQ(left, kMaxWalkedEntries - 2);
}

TEST_P(TiffDirectory, CutInlineValueIsZero) {
  Bytes block = tiff.Build({tiff.Long(300, {0x01020304})});
  block.resize(8 + 2 + 8 + 2);
  StoreFile file(block);
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 300), LongValue(300, 0));
}

// --- Clamping ---

TEST_P(TiffDirectory, ValuesAreClampedTo1024) {
  Bytes shorts;
  for (std::uint16_t i = 0; i < 1025; ++i) shorts = Join({shorts, Word(i)});
  Bytes hostShorts;
  for (std::uint16_t i = 0; i < 1024; ++i) hostShorts = Join({hostShorts, U16(i, kHostByteOrder)});
  StoreFile file(tiff.Build({
      tiff.Raw(1001, 1, 2000, Bytes(2000, 0x11)),
      tiff.Raw(1003, 3, 1025, shorts),
      tiff.Raw(1004, 4, 1025, Bytes(4100, 0x44)),
      tiff.Raw(1005, 5, 1025, Bytes(8200, 0x55)),
      tiff.Raw(1007, 7, 70000, Bytes(70000, 0x77)),
      tiff.Raw(1012, 12, 1025, Bytes(8200, 0x12)),
      tiff.Raw(1013, 13, 1024, Bytes(4096, 0x13)),
  }));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  VxMetadata& store = file.Store();
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1001), (Stored{1001, 1, 1024, Hex(Bytes(1024, 0x11))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1003), (Stored{1003, 3, 1024, Hex(hostShorts)}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1004), (Stored{1004, 4, 1024, Hex(Bytes(4096, 0x44))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1005), (Stored{1005, 5, 1024, Hex(Bytes(8192, 0x55))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1007), (Stored{1007, 7, 1024, Hex(Bytes(1024, 0x77))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1012), (Stored{1012, 7, 1024, Hex(Bytes(1024, 0x12))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1013), (Stored{1013, 13, 1024, Hex(Bytes(4096, 0x13))}));
}

TEST_P(TiffDirectory, AsciiOf2000CharactersIsCutAt1024AndTerminated) {
  StoreFile file(tiff.Build({tiff.Ascii(270, std::string(2000, 'x'))}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 270),
            (Stored{270, 2, 1024, Hex(Bytes(1024, 'x')) + "00"}));
}

TEST_P(TiffDirectory, AsciiOf1024WithItsZeroIsWhole) {
  StoreFile file(tiff.Build({tiff.Ascii(270, std::string(1023, 'x'))}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 270),
            (Stored{270, 2, 1024, Hex(Bytes(1023, 'x')) + "00"}));
}

TEST_P(TiffDirectory, AsciiOf1024WithoutZeroGetsOne) {
  StoreFile file(tiff.Build({tiff.Raw(270, 2, 1024, Bytes(1024, 'x'))}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 270),
            (Stored{270, 2, 1024, Hex(Bytes(1024, 'x')) + "00"}));
}

TEST_P(TiffDirectory, CountWhoseSizeWrapsIsClampedAndReadAtItsOffset) {
  const Directory directory = {
      tiff.AtOffset(1005, 5, 0x20000000, 64),
      tiff.AtOffset(1004, 4, 0x40000000, 64),
      tiff.AtOffset(1003, 3, 0x80000000, 64),
      tiff.AtOffset(1002, 2, 0xFFFFFFFF, 64),
  };
  Bytes block = tiff.Build(directory);
  ASSERT_EQ(block.size(), 62U);
  block.resize(64);
  StoreFile file(Join({block, Bytes(9000, 0x41)}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  VxMetadata& store = file.Store();
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1005), (Stored{1005, 5, 1024, Hex(Bytes(8192, 0x41))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1004), (Stored{1004, 4, 1024, Hex(Bytes(4096, 0x41))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1003), (Stored{1003, 3, 1024, Hex(Bytes(2048, 0x41))}));
  EXPECT_EQ(Find(store, BLOCK_IFD0, 1002), (Stored{1002, 2, 1024, Hex(Bytes(1024, 0x41)) + "00"}));
}

TEST_P(TiffDirectory, MissingBytesOfAValueAreZero) {
  const Bytes block = tiff.Build({tiff.Raw(1004, 4, 2, Join({Number(1), Number(2)}))});
  StoreFile file(Bytes(block.begin(), block.end() - 1));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1004), (Stored{1004, 4, 2, "0100000000000000"}));
}

// --- Offsets and the segment ---

class TiffSegment : public TiffSuite {
 protected:
  static constexpr std::uint32_t kBase = 200;
  static constexpr std::uint32_t kSegStart = 100;
  static constexpr std::uint32_t kSegEnd = 400;

  // Reads a value of 5 bytes at a file position, between two that are always there. Each byte of
  // the file outside the TIFF block holds the low byte of its position.
  void Read(std::uint32_t position, std::uint32_t segStart = kSegStart,
            std::uint32_t segEnd = kSegEnd) {
    const Bytes block =
        tiff.Build({tiff.Short(1000, {1}), tiff.AtOffset(1001, 7, 5, position - kBase),
                    tiff.Short(1002, {2})});
    Bytes bytes(600);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i);
    std::copy(block.begin(), block.end(), bytes.begin() + kBase);
    StoreFile file(bytes);
    EXPECT_EQ(file.ParseTiff(kBase, segStart, segEnd), S_OK);
    EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1000), ShortValue(1000, 1));
    EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1002), ShortValue(1002, 2));
    value = Find(file.Store(), BLOCK_IFD0, 1001);
  }

  std::optional<Stored> value;
};
INSTANTIATE_TEST_SUITE_P(BothOrders, TiffSegment, kBothOrders, OrderName);

TEST_P(TiffSegment, ValueAtTheSegmentsStartIsSkipped) {
  Read(kSegStart);
  EXPECT_EQ(value, std::nullopt);
}

TEST_P(TiffSegment, ValueJustInsideTheStartIsReadByAWrappingOffset) {
  Read(kSegStart + 1);
  EXPECT_EQ(value, (Stored{1001, 7, 5, "6566676869"}));
}

TEST_P(TiffSegment, ValueInsideIsRead) {
  Read(300);
  EXPECT_EQ(value, (Stored{1001, 7, 5, "2c2d2e2f30"}));
}

TEST_P(TiffSegment, ValueThatBeginsOnTheLastByteIsReadWhole) {
  Read(kSegEnd - 1);
  EXPECT_EQ(value, (Stored{1001, 7, 5, "8f90919293"}));
}

TEST_P(TiffSegment, ValueAtTheSegmentsEndIsSkipped) {
  Read(kSegEnd);
  EXPECT_EQ(value, std::nullopt);
}

TEST_P(TiffSegment, ValueOutsideIsSkipped) {
  for (const std::uint32_t position : {0U, 99U, 401U, 0x80000000U, 0xFFFFFFFFU}) {
    Read(position);
    EXPECT_EQ(value, std::nullopt) << position;
  }
}

TEST_P(TiffSegment, WithoutAStartEveryOffsetIsFollowed) {
  Read(500, 0, kSegEnd);
  EXPECT_EQ(value, (Stored{1001, 7, 5, "f4f5f6f7f8"}));
}

TEST_P(TiffSegment, WithoutAnEndEveryOffsetIsFollowed) {
  Read(50, kSegStart, 0);
  EXPECT_EQ(value, (Stored{1001, 7, 5, "3233343536"}));
}

TEST_P(TiffSegment, WithoutBoundsAValueBeyondTheFileIsZeros) {
  for (const std::uint32_t position : {600U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    Read(position, 0, 0);
    EXPECT_EQ(value, (Stored{1001, 7, 5, "0000000000"})) << position;
  }
}

TEST_P(TiffSegment, OffsetsOf2To31And2To32Less1WrapWithTheBase) {
  Read(kBase + 0xFFFFFFFFU, 0, 0);
  EXPECT_EQ(value, (Stored{1001, 7, 5,
                           "c7" + Hex(Text(GetParam() == ByteOrder::BigEndian ? "MM" : "II")) +
                               Hex(Word(42))}));
  Read(kBase + 0x80000000U, 0, 0);
  EXPECT_EQ(value, (Stored{1001, 7, 5, "0000000000"}));
}

TEST_P(TiffSegment, RepeatedTagThatIsSkippedKeepsTheEarlierValue) {
  const Bytes block =
      tiff.Build({tiff.Short(1000, {1}), tiff.AtOffset(1000, 7, 5, 5000), tiff.Short(1002, {2})});
  StoreFile file(Join({Zeros(20), block}));
  EXPECT_EQ(file.ParseTiff(20, 14, 20 + static_cast<std::uint32_t>(block.size())), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1000), ShortValue(1000, 1));
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 1002), ShortValue(1002, 2));
}

}  // namespace
}  // namespace test
