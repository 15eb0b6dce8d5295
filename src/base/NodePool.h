#ifndef LUMIDEX_BASE_NODEPOOL_H_
#define LUMIDEX_BASE_NODEPOOL_H_

// Memory for the nodes of containers and the values in them, which live and die together. What is
// given back is not used again: all is freed at once, with the pool or by Clear(). The first few
// kilobytes stand in the pool itself, and only what goes beyond them is taken from the heap.

#include <array>
#include <cstddef>
#include <new>

#include "base/MemoryBlocks.h"

class NodePool {
 public:
  NodePool() noexcept { Clear(); }  // leaves the bytes for the nodes as they are
  NodePool(const NodePool&) = delete;
  NodePool& operator=(const NodePool&) = delete;

  // Memory for a node, aligned for any type. Throws std::bad_alloc.
  [[nodiscard]] void* Allocate(std::size_t size) {
    void* const node = TryAllocate(size);
    if (node == nullptr) throw std::bad_alloc();
    return node;
  }

  // The same; null when there is no memory.
  [[nodiscard]] void* TryAllocate(std::size_t size) noexcept { return m_blocks.Allocate(size); }

  // Frees all of it.
  void Clear() noexcept { m_blocks.Reset(m_inside, kInside); }

 private:
  static constexpr std::size_t kInside = 6U * 1024;  // for all tables of a usual photograph

  alignas(MemoryBlocks::kAlignment) std::array<std::byte, kInside> m_inside;
  MemoryBlocks m_blocks;
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
