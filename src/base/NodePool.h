#ifndef LUMIDEX_BASE_NODEPOOL_H_
#define LUMIDEX_BASE_NODEPOOL_H_

// Memory for the nodes of one container, a block of them at a time. A node that is given back is
// not used again: the blocks are freed together, with the pool or by Clear().

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

class NodePool {
 public:
  NodePool() = default;
  NodePool(const NodePool&) = delete;
  NodePool& operator=(const NodePool&) = delete;

  // Memory for a node, aligned for any type. Throws std::bad_alloc.
  [[nodiscard]] void* Allocate(std::size_t size) {
    size = (size + kAlignment - 1) / kAlignment * kAlignment;
    if (size > m_left) AddBlock(size);
    m_left -= size;
    return m_blocks.back().get() + m_left;
  }

  // Frees all nodes.
  void Clear() noexcept {
    m_blocks.clear();
    m_left = 0;
    m_nextBlock = kFirstBlock;
  }

 private:
  static constexpr std::size_t kAlignment = alignof(std::max_align_t);
  static constexpr std::size_t kFirstBlock = 1024;
  static constexpr std::size_t kLargestBlock = 64 * kFirstBlock;

  void AddBlock(std::size_t size) {
    const std::size_t block = std::max(size, m_nextBlock);
    m_blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(block));
    m_left = block;
    m_nextBlock = std::min(2 * m_nextBlock, kLargestBlock);
  }

  std::vector<std::unique_ptr<std::byte[]>> m_blocks;
  std::size_t m_left = 0;  // in the last block, at its start
  std::size_t m_nextBlock = kFirstBlock;
};

// Lets a standard container take its nodes from a pool, which must outlive it.
template <class T>
class NodeAllocator {
 public:
  using value_type = T;

  explicit NodeAllocator(NodePool& pool) noexcept : m_pool(&pool) {}
  template <class U>
  NodeAllocator(const NodeAllocator<U>& other) noexcept : m_pool(other.m_pool) {}

  [[nodiscard]] T* allocate(std::size_t count) {
    return static_cast<T*>(m_pool->Allocate(count * sizeof(T)));
  }
  void deallocate(T*, std::size_t) noexcept {}

  bool operator==(const NodeAllocator&) const = default;

 private:
  template <class U>
  friend class NodeAllocator;

  NodePool* m_pool;
};

#endif  // LUMIDEX_BASE_NODEPOOL_H_
