#include <array>

#include <gtest/gtest.h>

#include "base/FileStream.h"
#include "support/Bytes.h"
#include "support/TempFile.h"

namespace test {
namespace {

// 0, 1, 2, ... 255, 0, 1, ...
Bytes Counting(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i);
  return bytes;
}

// A stream over a file of given bytes.
struct Opened {
  explicit Opened(const Bytes& bytes, std::size_t window = FileStream::kWindowSize) : file(bytes) {
    EXPECT_TRUE(stream.Open(file.Path(), LMD_W("rb"), window));
  }

  TempFile file;
  FileStream stream;
};

// A path that is removed after the test.
struct NewPath {
  NewPath() = default;
  NewPath(const NewPath&) = delete;
  NewPath& operator=(const NewPath&) = delete;
  ~NewPath() { RemoveFile(path); }

  WideString path = TempPath();
};

TEST(FileStream, MissingFileDoesNotOpen) {
  FileStream stream;
  const WideString path = TempPath();
  EXPECT_FALSE(stream.Open(path.c_str(), LMD_W("rb")));
  EXPECT_FALSE(stream.IsOpen());
}

TEST(FileStream, OpensAtTheStart) {
  Opened opened(Counting(10));
  EXPECT_TRUE(opened.stream.IsOpen());
  EXPECT_EQ(opened.stream.Position(), 0U);
  EXPECT_EQ(opened.stream.Size(), 10U);
}

TEST(FileStream, ClosedStreamIsNotOpen) {
  Opened opened(Counting(10));
  EXPECT_TRUE(opened.stream.Close());
  EXPECT_FALSE(opened.stream.IsOpen());
}

TEST(FileStream, StreamWithoutAFileDoesNothing) {
  FileStream stream;
  EXPECT_EQ(stream.Size(), 0U);
  EXPECT_EQ(stream.ReadU8(), 0U);
  EXPECT_TRUE(stream.WasShort());
  EXPECT_EQ(stream.ReadBlock(4).size(), 0U);
  EXPECT_FALSE(stream.Write(Bytes{1}));
  EXPECT_FALSE(stream.Flush());
  EXPECT_FALSE(stream.Truncate(0));
  EXPECT_TRUE(stream.Close());
}

TEST(FileStream, EmptyFileReadsShort) {
  Opened opened({});
  EXPECT_EQ(opened.stream.Size(), 0U);
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  EXPECT_TRUE(opened.stream.WasShort());
}

TEST(FileStream, ReadsNumbersInBothOrders) {
  Opened opened({0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD});
  EXPECT_EQ(opened.stream.ReadU8(), 0x01U);
  EXPECT_EQ(opened.stream.ReadU16(ByteOrder::BigEndian), 0x2345U);
  EXPECT_EQ(opened.stream.ReadU32(ByteOrder::BigEndian), 0x6789ABCDU);
  EXPECT_EQ(opened.stream.Position(), 7U);
  opened.stream.Seek(1);
  EXPECT_EQ(opened.stream.ReadU16(ByteOrder::LittleEndian), 0x4523U);
  EXPECT_EQ(opened.stream.ReadU32(ByteOrder::LittleEndian), 0xCDAB8967U);
  EXPECT_FALSE(opened.stream.WasShort());
}

TEST(FileStream, CutNumbersAreZeroAsAWhole) {
  Opened opened({0xFF, 0xFF, 0xFF, 0xFF});
  opened.stream.Seek(1);
  EXPECT_EQ(opened.stream.ReadU32(ByteOrder::BigEndian), 0U);
  EXPECT_TRUE(opened.stream.WasShort());
  opened.stream.Seek(3);
  EXPECT_EQ(opened.stream.ReadU16(ByteOrder::LittleEndian), 0U);
  EXPECT_TRUE(opened.stream.WasShort());
}

TEST(FileStream, WasShortTellsOfTheLastReadOnly) {
  Opened opened({0xAA, 0xBB});
  EXPECT_EQ(opened.stream.ReadU32(ByteOrder::BigEndian), 0U);
  EXPECT_TRUE(opened.stream.WasShort());
  opened.stream.Seek(0);
  EXPECT_EQ(opened.stream.ReadU16(ByteOrder::BigEndian), 0xAABBU);
  EXPECT_FALSE(opened.stream.WasShort());
}

TEST(FileStream, MissingBytesOfAReadAreZero) {
  Opened opened({1, 2, 3, 4, 5});
  opened.stream.Seek(3);
  Bytes bytes(4, 0xEE);
  EXPECT_EQ(opened.stream.Read(bytes), 2U);
  EXPECT_EQ(Hex(bytes), "04050000");
  EXPECT_TRUE(opened.stream.WasShort());
}

TEST(FileStream, ReadBeyondTheEndGivesZeros) {
  Opened opened({1, 2, 3});
  opened.stream.Seek(1000);
  Bytes bytes(3, 0xEE);
  EXPECT_EQ(opened.stream.Read(bytes), 0U);
  EXPECT_EQ(Hex(bytes), "000000");
}

TEST(FileStream, PositionsFrom2To31OnReadShort) {
  Opened opened(Counting(100));
  for (const std::uint64_t position :
       {0x7FFFFFFFULL, 0x80000000ULL, 0xFFFFFFFFULL, 0x100000000ULL}) {
    opened.stream.Seek(position);
    EXPECT_EQ(opened.stream.Position(), position);
    EXPECT_EQ(opened.stream.ReadU8(), 0U);
    EXPECT_TRUE(opened.stream.WasShort()) << position;
  }
  opened.stream.Seek(99);
  EXPECT_EQ(opened.stream.ReadU8(), 99U);
}

TEST(FileStream, GreatestPositionDoesNotWrap) {
  Opened opened(Counting(100));
  opened.stream.Seek(0xFFFFFFFFFFFFFFFF);
  Bytes bytes(4, 0xEE);
  EXPECT_EQ(opened.stream.Read(bytes), 0U);
  EXPECT_EQ(Hex(bytes), "00000000");
}

TEST(FileStream, SmallWindowReadsTheSameAsALargeOne) {
  const Bytes content = Counting(300);
  Opened opened(content, 16);
  for (std::size_t i = 0; i + 4 <= content.size(); i += 3) {
    opened.stream.Seek(i);
    const Bytes expected(content.begin() + static_cast<std::ptrdiff_t>(i),
                         content.begin() + static_cast<std::ptrdiff_t>(i + 4));
    Bytes bytes(4);
    ASSERT_EQ(opened.stream.Read(bytes), 4U) << i;
    ASSERT_EQ(bytes, expected) << i;
  }
}

TEST(FileStream, NumberAcrossTheWindowsEdgeIsWhole) {
  Opened opened(Counting(64), 16);
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  opened.stream.Seek(14);
  EXPECT_EQ(opened.stream.ReadU32(ByteOrder::BigEndian), 0x0E0F1011U);
}

// What a file has become since shows which of its bytes are read.
TEST(FileStream, BytesOfTheWindowAreNotReadAgainWithThoseBehindIt) {
  Opened opened(Counting(64), 16);
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  FileStream other;
  ASSERT_TRUE(other.Open(opened.file.Path(), LMD_W("r+b")));
  EXPECT_TRUE(other.Write(Bytes(64, 0xFF)));
  EXPECT_TRUE(other.Close());
  opened.stream.Seek(12);
  EXPECT_EQ(Hex(opened.stream.ReadBlock(8)), "0c0d0e0fffffffff");
  opened.stream.Seek(13);
  EXPECT_EQ(Hex(opened.stream.ReadBlock(16)), "0d0e0fffffffffffffffffffffffffff");
}

TEST(FileStream, SmallValueIsTakenWithWhatFollowsIt) {
  Opened opened(Counting(40));
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  std::array<std::uint8_t, 8> room = {};
  ASSERT_TRUE(opened.stream.TakeSmall(room, 3));
  EXPECT_EQ(room, (std::array<std::uint8_t, 8>{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_FALSE(opened.stream.WasShort());
  EXPECT_EQ(opened.stream.ReadU8(), 4U);
}

TEST(FileStream, SmallValueThatTheWindowDoesNotHoldWithItsRoomIsNotTaken) {
  Opened opened(Counting(9));
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  std::array<std::uint8_t, 8> room = {};
  EXPECT_TRUE(opened.stream.TakeSmall(room, 1));
  EXPECT_FALSE(opened.stream.TakeSmall(room, 1));
  EXPECT_EQ(opened.stream.Position(), 2U);
  EXPECT_EQ(room[0], 1U);
}

TEST(FileStream, ReadsBackwards) {
  Opened opened(Counting(200), 16);
  for (std::size_t i = 200; i-- > 0;) {
    opened.stream.Seek(i);
    ASSERT_EQ(opened.stream.ReadU8(), static_cast<std::uint8_t>(i));
  }
}

// In turns from near the start and from far behind, as a directory and its values are read.
TEST(FileStream, ReadsInTurnsFromTwoPlaces) {
  Bytes content = Counting(200'000);
  content[150'000] = 0xEE;
  Opened opened(content);
  for (std::size_t i = 0; i < 9'000; ++i) {
    opened.stream.Seek(i);
    ASSERT_EQ(opened.stream.ReadU8(), content[i]) << i;
    opened.stream.Seek(150'000 + i);
    ASSERT_EQ(opened.stream.ReadU8(), content[150'000 + i]) << i;
  }
}

TEST(FileStream, EndIsWhereTheWindowOfEitherPlaceEnds) {
  const Bytes content = Counting(20'000);
  Opened opened(content);
  EXPECT_EQ(opened.stream.ReadU8(), content[0]);
  opened.stream.Seek(19'999);
  EXPECT_EQ(opened.stream.ReadU16(ByteOrder::BigEndian), 0U);
  EXPECT_TRUE(opened.stream.WasShort());
  opened.stream.Seek(1);
  EXPECT_EQ(opened.stream.ReadU8(), content[1]);
  opened.stream.Seek(19'998);
  EXPECT_EQ(opened.stream.ReadU16(ByteOrder::BigEndian), content[19'998] << 8 | content[19'999]);
  opened.stream.Seek(20'000);
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  EXPECT_TRUE(opened.stream.WasShort());
  EXPECT_FALSE(opened.stream.HasFailed());
}

TEST(FileStream, ReadLargerThanTheWindowIsWhole) {
  const Bytes content = Counting(1000);
  Opened opened(content, 16);
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  Bytes bytes(999);
  EXPECT_EQ(opened.stream.Read(bytes), 999U);
  EXPECT_EQ(bytes, Bytes(content.begin() + 1, content.end()));
  EXPECT_EQ(opened.stream.Position(), 1000U);
}

TEST(FileStream, ReadsAcrossTheDefaultWindow) {
  const Bytes content = Counting(FileStream::kWindowSize + 100);
  Opened opened(content);
  EXPECT_EQ(opened.stream.ReadU8(), 0U);
  opened.stream.Seek(FileStream::kWindowSize - 2);
  EXPECT_EQ(opened.stream.ReadU32(ByteOrder::BigEndian), 0xFEFF0001U);
}

TEST(FileStream, BlockHoldsOnlyBytesThatTheFileHas) {
  Opened opened(Counting(10));
  opened.stream.Seek(6);
  EXPECT_EQ(Hex(opened.stream.ReadBlock(0xFFFFFFFF)), "06070809");
}

TEST(FileStream, BlockBeyondTheEndIsEmpty) {
  Opened opened(Counting(10));
  opened.stream.Seek(10);
  EXPECT_EQ(opened.stream.ReadBlock(5).size(), 0U);
  opened.stream.Seek(0xFFFFFFFF);
  EXPECT_EQ(opened.stream.ReadBlock(5).size(), 0U);
}

TEST(FileStream, BlockMovesThePosition) {
  Opened opened(Counting(10));
  opened.stream.Seek(2);
  EXPECT_EQ(Hex(opened.stream.ReadBlock(3)), "020304");
  EXPECT_EQ(opened.stream.Position(), 5U);
}

TEST(FileStream, BlocksTogetherAreAFewTimesTheFile) {
  Opened opened(Counting(100));
  for (std::uint64_t pass = 0; pass < FileStream::kMaxBlockPasses; ++pass) {
    opened.stream.Seek(0);
    ASSERT_EQ(opened.stream.ReadBlock(100).size(), 100U);
  }
  opened.stream.Seek(0);
  EXPECT_EQ(opened.stream.ReadBlock(1).size(), 0U);
  opened.stream.Seek(7);
  EXPECT_EQ(opened.stream.ReadU8(), 7U);
}

TEST(FileStream, FileInMemoryAsAWholeHasTheSizeThatWasRead) {
  const TempFile file(Counting(100));
  FileStream stream;
  ASSERT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  EXPECT_EQ(stream.ReadableSize(), 100U);
  WriteFile(file.Path(), Counting(50));
  ASSERT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  EXPECT_EQ(stream.ReadU8(), 0U);
  WriteFile(file.Path(), Counting(70));
  EXPECT_EQ(stream.ReadableSize(), 50U);
  EXPECT_EQ(stream.Size(), 70U);
  EXPECT_EQ(stream.ReadBlock(100).size(), 49U);
}

TEST(FileStream, FileNotInMemoryAsAWholeHasItsOwnSize) {
  for (const std::size_t start : {0U, 1U}) {
    const TempFile file(Counting(100));
    FileStream stream;
    ASSERT_TRUE(stream.Open(file.Path(), LMD_W("rb"), start == 0 ? 50 : 200));
    stream.Seek(start);
    EXPECT_EQ(stream.ReadU8(), start);
    WriteFile(file.Path(), Counting(70));
    EXPECT_EQ(stream.ReadableSize(), 70U) << start;
  }
}

TEST(FileStream, WritesAndReadsBack) {
  NewPath created;
  FileStream stream;
  ASSERT_TRUE(stream.Open(created.path.c_str(), LMD_W("w+b")));
  EXPECT_TRUE(stream.Write(Bytes{1, 2, 3, 4, 5}));
  EXPECT_EQ(stream.Position(), 5U);
  stream.Seek(1);
  EXPECT_TRUE(stream.Write(Bytes{0x22}));
  stream.Seek(0);
  Bytes bytes(5);
  EXPECT_EQ(stream.Read(bytes), 5U);
  EXPECT_EQ(Hex(bytes), "0122030405");
  EXPECT_EQ(stream.Size(), 5U);
  EXPECT_TRUE(stream.Close());
  EXPECT_EQ(Hex(ReadFile(created.path)), "0122030405");
}

TEST(FileStream, WriteIsSeenByALaterReadOfTheSameWindow) {
  TempFile file(Counting(20));
  FileStream stream;
  ASSERT_TRUE(stream.Open(file.Path(), LMD_W("r+b")));
  EXPECT_EQ(stream.ReadU8(), 0U);
  stream.Seek(4);
  EXPECT_TRUE(stream.Write(Bytes{0xAA, 0xBB}));
  stream.Seek(3);
  EXPECT_EQ(stream.ReadU32(ByteOrder::BigEndian), 0x03AABB06U);
}

TEST(FileStream, FlushBringsBytesToTheFile) {
  NewPath created;
  FileStream stream;
  ASSERT_TRUE(stream.Open(created.path.c_str(), LMD_W("w+b")));
  EXPECT_TRUE(stream.Write(Bytes{7, 8}));
  EXPECT_TRUE(stream.Flush());
  EXPECT_EQ(Hex(ReadFile(created.path)), "0708");
}

TEST(FileStream, AppendModeWritesAtTheEnd) {
  TempFile file({1, 2, 3});
  FileStream stream;
  ASSERT_TRUE(stream.Open(file.Path(), LMD_W("ab+")));
  stream.Seek(0);
  EXPECT_EQ(stream.ReadU8(), 1U);
  EXPECT_TRUE(stream.Write(Bytes{9}));
  EXPECT_TRUE(stream.Close());
  EXPECT_EQ(Hex(file.Read()), "01020309");
}

TEST(FileStream, WriteToAReadStreamFails) {
  TempFile file({1, 2, 3});
  FileStream stream;
  ASSERT_TRUE(stream.Open(file.Path(), LMD_W("rb")));
  const bool written = stream.Write(Bytes{9}) && stream.Flush();
  EXPECT_FALSE(written);
  stream.Close();
  EXPECT_EQ(Hex(file.Read()), "010203");
}

TEST(FileStream, TruncateCutsTheFile) {
  TempFile file(Counting(10));
  FileStream stream;
  ASSERT_TRUE(stream.Open(file.Path(), LMD_W("r+b")));
  EXPECT_EQ(stream.ReadU8(), 0U);
  EXPECT_TRUE(stream.Truncate(4));
  EXPECT_EQ(stream.Size(), 4U);
  stream.Seek(3);
  EXPECT_EQ(stream.ReadU16(ByteOrder::BigEndian), 0U);
  EXPECT_TRUE(stream.Close());
  EXPECT_EQ(Hex(file.Read()), "00010203");
}

}  // namespace
}  // namespace test
