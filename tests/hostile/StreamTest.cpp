// A file that is read in jumps.

#include <cstdint>
#include <memory>

#include <gtest/gtest.h>

#include "HostileFile.h"

namespace test {
namespace {

constexpr std::uint64_t kBehindTheEnd = 0x1'0000;

// The byte at each position tells the position.
Bytes Numbered(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i % 251);
  return bytes;
}

// Reads single bytes to and fro and beyond the end, far more often than there are entries in a
// parse; the number of wrong answers.
int JumpThrough(const Bytes& bytes) {
  StoreFile file(bytes);
  FileStream& stream = file.Stream();
  const std::uint64_t size = bytes.size();
  int wrong = 0;
  const auto check = [&](std::uint64_t position) {
    stream.Seek(position);
    const std::uint8_t read = stream.ReadU8();
    const bool isThere = position < size;
    if (read != (isThere ? position % 251 : 0) || stream.WasShort() == isThere) ++wrong;
  };
  for (std::uint64_t i = 0; i < kMaxWalkedEntries; ++i) {
    check(i * 40'503 % size);
    check(size - 1 - i % size);
    check(size + i % kBehindTheEnd);
  }
  return wrong;
}

TEST(HostileStream, JumpsInASmallFile) {
  const Bytes bytes = Numbered(kSmallInputSize);
  EXPECT_EQ(Bounded(kSmallInput, [&] { return JumpThrough(bytes); }), 0);
}

TEST(HostileStream, JumpsInTheLargestFileThatIsReadWhole) {
  const Bytes bytes = Numbered(FileStream::kMaxWholeFile);
  EXPECT_EQ(Bounded(InputOf(bytes.size()), [&] { return JumpThrough(bytes); }), 0);
}

TEST(HostileStream, JumpsInALargerFile) {
  const Bytes bytes = Numbered(FileStream::kMaxWholeFile + 1);
  EXPECT_EQ(Bounded(InputOf(bytes.size()), [&] { return JumpThrough(bytes); }), 0);
}

// A number that the end of the file cuts is looked for once, however often it is asked for.
TEST(HostileStream, NumbersThatTheEndCuts) {
  const Bytes bytes = Numbered(FileStream::kMaxWholeFile);
  const int wrong = Bounded(InputOf(bytes.size()), [&] {
    StoreFile file(bytes);
    FileStream& stream = file.Stream();
    int found = 0;
    for (std::uint64_t i = 0; i < kMaxWalkedEntries; ++i) {
      stream.Seek(i % bytes.size());
      if (stream.ReadU8() != bytes[i]) ++found;
      stream.Seek(bytes.size() - 1 - i % 3);
      if (stream.ReadU32(ByteOrder::BigEndian) != 0 || !stream.WasShort()) ++found;
    }
    return found;
  });
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace test
