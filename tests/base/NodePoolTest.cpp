#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <vector>

#include <gtest/gtest.h>

#include "base/NodePool.h"

namespace test {
namespace {

TEST(NodePool, NodesAreAlignedAndApart) {
  NodePool pool;
  std::vector<std::byte*> nodes;
  for (std::size_t size = 1; size <= 100; ++size) {
    auto* const node = static_cast<std::byte*>(pool.Allocate(size));
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(node) % alignof(std::max_align_t), 0U) << size;
    std::memset(node, static_cast<int>(size), size);
    nodes.push_back(node);
  }
  for (std::size_t size = 1; size <= nodes.size(); ++size) {
    const std::byte* const node = nodes[size - 1];
    for (std::size_t i = 0; i < size; ++i) ASSERT_EQ(node[i], std::byte(size)) << size;
  }
}

TEST(NodePool, NodeLargerThanABlockHasItsOwn) {
  constexpr std::size_t kLarge = 1000000;
  NodePool pool;
  auto* const node = static_cast<std::byte*>(pool.Allocate(kLarge));
  std::memset(node, 1, kLarge);
  EXPECT_NE(pool.Allocate(1), nullptr);
  EXPECT_EQ(node[kLarge - 1], std::byte(1));
}

TEST(NodePool, GivesMemoryAgainAfterClear) {
  NodePool pool;
  for (int round = 0; round < 3; ++round) {
    std::memset(pool.Allocate(5000), round, 5000);
    pool.Clear();
  }
}

TEST(NodePool, ServesAContainer) {
  NodePool pool;
  std::list<int, NodeAllocator<int>> numbers{NodeAllocator<int>(pool)};
  for (int i = 0; i < 1000; ++i) numbers.push_back(i);
  int expected = 0;
  for (const int number : numbers) ASSERT_EQ(number, expected++);
  EXPECT_EQ(expected, 1000);
}

}  // namespace
}  // namespace test
