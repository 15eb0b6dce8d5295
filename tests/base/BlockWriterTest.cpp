#include <gtest/gtest.h>

#include "base/BlockWriter.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr std::size_t kBlock = BlockWriter::kBlockSize;

Bytes Pattern(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i % 251);
  return bytes;
}

TEST(BlockWriter, WritesPiecesOfAnySize) {
  for (const std::size_t piece :
       {std::size_t{1}, std::size_t{1000}, kBlock - 1, kBlock, kBlock + 1, 3 * kBlock}) {
    const TempFile file({});
    const Bytes contents = Pattern(3 * kBlock + 5);
    BlockWriter writer;
    ASSERT_TRUE(writer.Open(file.Path(), LMD_W("wb")));
    std::span<const std::uint8_t> rest = contents;
    while (!rest.empty()) {
      const std::size_t count = std::min(piece, rest.size());
      ASSERT_TRUE(writer.Write(rest.first(count)));
      rest = rest.subspan(count);
    }
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(file.Read(), contents) << piece;
  }
}

TEST(BlockWriter, BytesReachTheFileInBlocks) {
  const TempFile file({});
  BlockWriter writer;
  ASSERT_TRUE(writer.Open(file.Path(), LMD_W("wb")));
  EXPECT_TRUE(writer.Write(Zeros(kBlock - 1)));
  EXPECT_EQ(file.Read().size(), 0U);
  EXPECT_TRUE(writer.Write(Zeros(3)));
  EXPECT_EQ(file.Read().size(), kBlock);
  EXPECT_TRUE(writer.Close());
  EXPECT_EQ(file.Read().size(), kBlock + 2);
}

TEST(BlockWriter, BytesCanBePutInPlace) {
  const TempFile file({});
  BlockWriter writer;
  ASSERT_TRUE(writer.Open(file.Path(), LMD_W("wb")));
  EXPECT_EQ(writer.Room().size(), kBlock);
  writer.Room()[0] = 'a';
  EXPECT_TRUE(writer.Append(1));
  EXPECT_EQ(writer.Room().size(), kBlock - 1);
  EXPECT_TRUE(writer.Append(kBlock - 1));
  EXPECT_EQ(writer.Room().size(), kBlock);
  EXPECT_TRUE(writer.Close());
  EXPECT_EQ(file.Read().size(), kBlock);
  EXPECT_EQ(file.Read()[0], 'a');
}

TEST(BlockWriter, WhatWasGatheredIsWrittenWithoutClosing) {
  const TempFile file({});
  {
    BlockWriter writer;
    ASSERT_TRUE(writer.Open(file.Path(), LMD_W("wb")));
    EXPECT_TRUE(writer.Write(Text("left")));
  }
  EXPECT_EQ(file.Read(), Text("left"));
}

TEST(BlockWriter, AFailedBlockIsTheLast) {
  const TempFile file(Text("kept"));
  BlockWriter writer;
  ASSERT_TRUE(writer.Open(file.Path(), LMD_W("rb")));
  EXPECT_TRUE(writer.Write(Zeros(kBlock - 1)));
  EXPECT_FALSE(writer.Write(Zeros(1)));
  EXPECT_FALSE(writer.Write({}));
  EXPECT_FALSE(writer.Write(Zeros(1)));
  EXPECT_FALSE(writer.Close());
  EXPECT_EQ(file.Read(), Text("kept"));
}

TEST(BlockWriter, AFileThatIsNotThereCannotBeClosed) {
  BlockWriter writer;
  EXPECT_FALSE(writer.Open(nullptr, LMD_W("wb")));
  EXPECT_FALSE(writer.Close());
}

}  // namespace
}  // namespace test
