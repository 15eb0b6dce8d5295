#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/MemoryBlocks.h"

namespace test {
namespace {

void* Filled(MemoryBlocks& blocks, int byte, std::size_t size) {
  void* const piece = blocks.Allocate(size);
  if (piece != nullptr) std::memset(piece, byte, size);
  return piece;
}

bool IsFilled(const void* piece, int byte, std::size_t size) {
  const std::vector<std::byte> expected(size, static_cast<std::byte>(byte));
  return std::memcmp(piece, expected.data(), size) == 0;
}

// Small ones that share a block, and ones that are larger than any block.
constexpr std::size_t kSizes[] = {1, 15, 16, 17, 999, 5000, 1, 70'000, 200'000, 3};

TEST(MemoryBlocks, PiecesAreAlignedAndApart) {
  MemoryBlocks blocks;
  std::vector<void*> pieces;
  for (std::size_t i = 0; i < std::size(kSizes); ++i) {
    pieces.push_back(Filled(blocks, static_cast<int>(i), kSizes[i]));
    ASSERT_NE(pieces[i], nullptr) << i;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pieces[i]) % alignof(std::max_align_t), 0U) << i;
  }
  for (std::size_t i = 0; i < std::size(kSizes); ++i) {
    EXPECT_TRUE(IsFilled(pieces[i], static_cast<int>(i), kSizes[i])) << i;
  }
}

TEST(MemoryBlocks, EmptyPieceHasAPlaceOfItsOwn) {
  MemoryBlocks blocks;
  void* const first = blocks.Allocate(0);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(blocks.Allocate(0), first);
}

TEST(MemoryBlocks, PiecesMoveWithTheirOwner) {
  MemoryBlocks blocks;
  const void* const piece = Filled(blocks, 7, 2000);
  MemoryBlocks other(std::move(blocks));
  MemoryBlocks last;
  last = std::move(other);
  EXPECT_TRUE(IsFilled(piece, 7, 2000));
}

TEST(MemoryBlocks, MemoryOfTheCallerIsGivenOutFirst) {
  alignas(MemoryBlocks::kAlignment) std::byte own[64];
  MemoryBlocks blocks;
  blocks.Reset(own, 1024);
  EXPECT_EQ(blocks.Allocate(40), own);
  EXPECT_EQ(blocks.Allocate(16), own + 48);
  EXPECT_NE(Filled(blocks, 1, 16), nullptr);
  blocks.Reset(own, 1024);
  EXPECT_EQ(blocks.Allocate(64), own);
}

}  // namespace
}  // namespace test
