// The TIFF header and the check of an entry's value field.

#include <cstdint>
#include <string_view>

#include <gtest/gtest.h>

#include "support/TiffSuite.h"

namespace test {
namespace {

class TiffHeader : public TiffSuite {
 protected:
  // A header with a magic number and the offset of a first directory that follows it.
  Bytes Block(std::uint16_t magic) const {
    return tiff.Build({tiff.Ascii(271, "Maker")}, {}, magic);
  }
  Bytes Mark() const { return Text(GetParam() == ByteOrder::BigEndian ? "MM" : "II"); }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, TiffHeader, kBothOrders, OrderName);

TEST_P(TiffHeader, Magic42IsWalkedAndNotNoted) {
  StoreFile file(Block(42));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(file.Store().m_nTiffMagic, 0U);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Maker"));
}

TEST_P(TiffHeader, Magic26Stops) {
  StoreFile file(Block(26));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(file.Store().m_nTiffMagic, 26U);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(TiffHeader, OtherMagicIsNotedAndWalkedAllTheSame) {
  constexpr std::uint16_t kMagics[] = {0, 1, 43, 0x1A00, 0x2A00, 0x4F52, 0xFFFF};
  for (const std::uint16_t magic : kMagics) {
    StoreFile file(Block(magic));
    EXPECT_EQ(file.ParseTiff(), S_OK) << magic;
    EXPECT_EQ(file.Store().m_nTiffMagic, magic);
    EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Maker")) << magic;
  }
}

TEST_P(TiffHeader, Magic26OfAnEarlierBlockStopsALaterOne) {
  const Bytes stopping = Block(26);
  StoreFile file(Join({stopping, Block(42)}));
  EXPECT_EQ(file.ParseTiff(0), S_OK);
  EXPECT_EQ(file.ParseTiff(static_cast<std::uint32_t>(stopping.size())), S_OK);
  EXPECT_EQ(file.Store().m_nTiffMagic, 26U);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(TiffHeader, AnotherWrongMagicEndsTheStop) {
  const Bytes stopping = Block(26);
  const auto size = static_cast<std::uint32_t>(stopping.size());
  StoreFile file(Join({stopping, Block(43), Block(42)}));
  EXPECT_EQ(file.ParseTiff(0), S_OK);
  EXPECT_EQ(file.ParseTiff(size), S_OK);
  EXPECT_EQ(file.Store().m_nTiffMagic, 43U);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Maker"));
  file.Store().m_fnGetBlock(BLOCK_IFD0)->Clear();
  EXPECT_EQ(file.ParseTiff(2 * size), S_OK);
  EXPECT_EQ(file.Store().m_nTiffMagic, 43U);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 271), AsciiValue(271, "Maker"));
}

TEST_P(TiffHeader, FirstDirectoryAtOffset0IsNone) {
  StoreFile file(Join({Mark(), Word(42), Number(0), Word(0)}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(TiffHeader, CutOffsetOfTheFirstDirectoryIsNone) {
  StoreFile file(Join({Mark(), Word(42), {1, 1, 1}}));
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
}

TEST_P(TiffHeader, CutMagicIsNotedAs0) {
  StoreFile file(Join({Mark(), {42}}));
  file.Store().m_nTiffMagic = 43;
  EXPECT_EQ(file.ParseTiff(), S_OK);
  EXPECT_EQ(file.Store().m_nTiffMagic, 0U);
}

TEST_P(TiffHeader, FirstDirectoryMayLieOutsideTheSegment) {
  const Bytes block = tiff.Build({tiff.Short(274, {6})});
  StoreFile file(Join({Zeros(20), block}));
  EXPECT_EQ(file.ParseTiff(20, 14, 24), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
}

TEST_P(TiffHeader, FirstDirectoryMayLieBeforeTheHeaderByAWrappingOffset) {
  const Bytes directory = tiff.BuildDirectory({tiff.Short(274, {6})}, 0);
  const auto base = static_cast<std::uint32_t>(directory.size());
  StoreFile file(Join({directory, Mark(), Word(42), Number(0U - base)}));
  EXPECT_EQ(file.ParseTiff(base), S_OK);
  EXPECT_EQ(Find(file.Store(), BLOCK_IFD0, 274), ShortValue(274, 6));
}

TEST_P(TiffHeader, FirstDirectoryBeyondTheFileIsEmpty) {
  for (const std::uint32_t offset : {1000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    StoreFile file(Join({Mark(), Word(42), Number(offset)}));
    EXPECT_EQ(file.ParseTiff(), S_FALSE) << offset;
    EXPECT_TRUE(Keys(file.Store(), BLOCK_IFD0).empty());
  }
}

TEST(TiffHeaderMark, AnythingButIIAndMMFails) {
  for (const char* mark : {"IM", "MI", "ii", "mm", "Ex", "", "I"}) {
    const Bytes rest = {0, 42, 0, 0, 0, 8, 0, 0};
    StoreFile file(std::string_view(mark).size() < 2 ? Text(mark) : Join({Text(mark), rest}));
    EXPECT_EQ(file.ParseTiff(), E_FAIL) << mark;
  }
}

TEST(TiffHeaderMark, BeyondTheEndFails) {
  StoreFile file(Text("II"));
  EXPECT_EQ(file.ParseTiff(100), E_FAIL);
  EXPECT_EQ(file.ParseTiff(0xFFFFFFFF), E_FAIL);
}

// --- The segment rule ---

TEST(TiffFrame, AllowsPositionsStrictlyInsideTheSegment) {
  const TiffFrame frame{106, ByteOrder::LittleEndian, 100, 200};
  EXPECT_FALSE(frame.Allows(0));
  EXPECT_FALSE(frame.Allows(99));
  EXPECT_FALSE(frame.Allows(100));
  EXPECT_TRUE(frame.Allows(101));
  EXPECT_TRUE(frame.Allows(199));
  EXPECT_FALSE(frame.Allows(200));
  EXPECT_FALSE(frame.Allows(0xFFFFFFFF));
}

TEST(TiffFrame, AllowsEveryPositionWhenABoundIsZero) {
  for (const std::uint32_t position : {0U, 50U, 200U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_TRUE((TiffFrame{0, ByteOrder::LittleEndian, 0, 0}.Allows(position)));
    EXPECT_TRUE((TiffFrame{0, ByteOrder::LittleEndian, 100, 0}.Allows(position)));
    EXPECT_TRUE((TiffFrame{0, ByteOrder::LittleEndian, 0, 100}.Allows(position)));
  }
}

// --- m_fnCheckEntry ---

struct CheckRow {
  std::uint16_t type;
  std::uint32_t count;
};

class TiffCheckEntry : public TiffSuite {
 protected:
  // Checks an entry whose value field, at position 4, holds `offset`.
  bool Check(std::uint16_t type, std::uint32_t count, std::uint32_t offset,
             const TiffFrame& frame) {
    StoreFile file(Join({Zeros(4), Number(offset), Zeros(100)}));
    file.Stream().Seek(4);
    const bool answer = VxMetadata::m_fnCheckEntry(file.Stream(), type, count, frame);
    position = file.Stream().Position();
    return answer;
  }

  std::uint64_t position = 0;
};
INSTANTIATE_TEST_SUITE_P(BothOrders, TiffCheckEntry, kBothOrders, OrderName);

TEST_P(TiffCheckEntry, ValuesOfLessThan5BytesStayInPlace) {
  const CheckRow rows[] = {{0, 4}, {1, 4}, {2, 4},  {3, 2},  {4, 1},  {6, 4},   {7, 4},
                           {8, 2}, {9, 1}, {11, 1}, {13, 1}, {14, 4}, {162, 4}, {65535, 4},
                           {5, 0}, {4, 0}, {12, 0}, {1, 0},  {0, 0},  {10, 0}};
  const TiffFrame frame{10, GetParam(), 5, 50};
  for (const CheckRow& row : rows) {
    EXPECT_TRUE(Check(row.type, row.count, 1000, frame)) << row.type;
    EXPECT_EQ(position, 4U) << row.type;
  }
}

TEST_P(TiffCheckEntry, ValuesOf5BytesOrMoreAreFollowed) {
  const CheckRow rows[] = {{0, 5}, {1, 5}, {2, 5},  {3, 3},  {4, 2},  {5, 1},  {6, 5},  {7, 5},
                           {8, 3}, {9, 2}, {10, 1}, {11, 2}, {12, 1}, {13, 2}, {14, 5}, {162, 5}};
  const TiffFrame frame{10, GetParam(), 5, 50};
  for (const CheckRow& row : rows) {
    EXPECT_TRUE(Check(row.type, row.count, 20, frame)) << row.type;
    EXPECT_EQ(position, 30U) << row.type;
    EXPECT_FALSE(Check(row.type, row.count, 40, frame)) << row.type;
  }
}

TEST_P(TiffCheckEntry, SizeThatWrapsAt32BitsIsNotInPlace) {
  const CheckRow rows[] = {{5, 0x20000000}, {10, 0x20000000}, {12, 0x20000000}, {4, 0x40000000},
                           {9, 0x40000000}, {3, 0x80000000},  {8, 0x80000001},  {11, 0xC0000001}};
  const TiffFrame frame{10, GetParam(), 5, 50};
  for (const CheckRow& row : rows) {
    EXPECT_FALSE(Check(row.type, row.count, 1000, frame)) << row.type;
    EXPECT_TRUE(Check(row.type, row.count, 20, frame)) << row.type;
    EXPECT_EQ(position, 30U) << row.type;
  }
}

TEST_P(TiffCheckEntry, SumOfBaseAndOffsetWraps) {
  const TiffFrame frame{40, GetParam(), 5, 50};
  EXPECT_TRUE(Check(1, 5, 0U - 20U, frame));
  EXPECT_EQ(position, 20U);
  EXPECT_FALSE(Check(1, 5, 0U - 35U, frame));
  EXPECT_FALSE(Check(1, 5, 0U - 41U, frame));
}

TEST_P(TiffCheckEntry, WithoutBoundsEveryOffsetIsFollowed) {
  for (const std::uint32_t offset : {0U, 1000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U}) {
    const TiffFrame frame{10, GetParam(), 0, 50};
    EXPECT_TRUE(Check(1, 5, offset, frame));
    EXPECT_EQ(position, static_cast<std::uint32_t>(offset + 10)) << offset;
  }
}

TEST_P(TiffCheckEntry, CutOffsetIs0) {
  StoreFile file(Join({Zeros(4), {1, 1, 1}}));
  file.Stream().Seek(4);
  EXPECT_TRUE(VxMetadata::m_fnCheckEntry(file.Stream(), 1, 5, {2, GetParam(), 0, 0}));
  EXPECT_EQ(file.Stream().Position(), 2U);
}

}  // namespace
}  // namespace test
