#ifndef LUMIDEX_BASE_MEMORYBLOCKS_H_
#define LUMIDEX_BASE_MEMORYBLOCKS_H_

// Memory for pieces that live and die together: most are a few bytes, so that they stand in common
// blocks, of which each is twice as large as the one before, up to 64 KiB. No piece is given back
// by itself.

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

class MemoryBlocks {
 public:
  static constexpr std::size_t kAlignment = alignof(std::max_align_t);

  MemoryBlocks() = default;
  MemoryBlocks(MemoryBlocks&& other) noexcept { Swap(other); }
  MemoryBlocks& operator=(MemoryBlocks&& other) noexcept {
    Swap(other);
    return *this;
  }
  ~MemoryBlocks() { Free(); }

  // Room for a piece, aligned for any type and never empty; null when there is no memory.
  [[nodiscard]] void* Allocate(std::size_t size) noexcept {
    const std::size_t rounded =
        (std::max<std::size_t>(size, 1) + kAlignment - 1) / kAlignment * kAlignment;
    if (rounded > m_free.size()) return AllocateBeyond(rounded);
    return TakeFree(rounded);
  }

  // Frees all pieces. `first` is given out before any block is taken; it is the caller's.
  void Reset(std::span<std::byte> first, std::size_t nextBlock) noexcept {
    Free();
    m_free = first;
    m_nextBlock = nextBlock;
  }

 private:
  static constexpr std::size_t kFirstBlock = 1000;  // with its head still small for a heap

  // Stands in front of the bytes of a block.
  struct alignas(kAlignment) Block {
    Block* next;
  };

  std::byte* TakeFree(std::size_t size) noexcept {
    std::byte* const piece = m_free.data();
    m_free = m_free.subspan(size);
    return piece;
  }

  std::byte* AllocateBeyond(std::size_t size) noexcept;
  std::span<std::byte> AddBlock(std::size_t size) noexcept;
  void Free() noexcept;

  void Swap(MemoryBlocks& other) noexcept {
    std::swap(m_blocks, other.m_blocks);
    std::swap(m_free, other.m_free);
    std::swap(m_nextBlock, other.m_nextBlock);
  }

  Block* m_blocks = nullptr;
  std::span<std::byte> m_free;  // of the block in use
  std::size_t m_nextBlock = kFirstBlock;
};

#endif  // LUMIDEX_BASE_MEMORYBLOCKS_H_
