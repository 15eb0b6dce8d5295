#ifndef LUMIDEX_BASE_NODEPOOL_H_
#define LUMIDEX_BASE_NODEPOOL_H_

// Memory for the nodes of containers that live and die together. A node that is given back is not
// used again: all are freed at once, with the pool or by Clear(). The first few kilobytes stand in
// the pool itself, and only what goes beyond them is taken from the heap.

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

class NodePool {
 public:
  NodePool() noexcept {}  // leaves the bytes for the nodes as they are
  NodePool(const NodePool&) = delete;
  NodePool& operator=(const NodePool&) = delete;

  // Memory for a node, aligned for any type. Throws std::bad_alloc.
  [[nodiscard]] void* Allocate(std::size_t size) {
    size = (size + kAlignment - 1) / kAlignment * kAlignment;
    if (size > m_free.size()) AddBlock(size);
    void* const node = m_free.data();
    m_free = m_free.subspan(size);
    return node;
  }

  // Frees all nodes.
  void Clear() noexcept {
    m_blocks.clear();
    m_free = m_inside;
    m_nextBlock = kInside;
  }

 private:
  static constexpr std::size_t kAlignment = alignof(std::max_align_t);
  static constexpr std::size_t kInside = 6U * 1024;  // for all tables of a usual photograph
  static constexpr std::size_t kLargestBlock = 64U * 1024;

  // Leaves at least `size` bytes free.
  void AddBlock(std::size_t size);

  alignas(kAlignment) std::array<std::byte, kInside> m_inside;
  std::span<std::byte> m_free = m_inside;  // of the block in use
  std::vector<std::unique_ptr<std::byte[]>> m_blocks;
  std::size_t m_nextBlock = kInside;
};

// Lets a standard container take its memory from a pool, which must outlive it.
template <class T>
class NodeAllocator {
 public:
  using value_type = T;

  explicit NodeAllocator(NodePool& pool) noexcept : m_pool(&pool) {}
  template <class U>
  NodeAllocator(const NodeAllocator<U>& other) noexcept : m_pool(other.m_pool) {}

  [[nodiscard]] T* allocate(std::size_t count) {
    using One = T[1];  // T may be a pointer
    return static_cast<T*>(m_pool->Allocate(count * sizeof(One)));
  }
  void deallocate(T*, std::size_t) noexcept {}

  bool operator==(const NodeAllocator&) const = default;

 private:
  template <class U>
  friend class NodeAllocator;

  NodePool* m_pool;
};

#endif  // LUMIDEX_BASE_NODEPOOL_H_
