#include "base/MemoryBlocks.h"

#include <algorithm>
#include <new>

// A large piece gets a block of its own, and the block in use stays in use: of each at least half
// is used.
std::byte* MemoryBlocks::AllocateBeyond(std::size_t size) noexcept {
  constexpr std::size_t kLargestBlock = 64U * 1024;
  if (size > m_nextBlock / 2) return AddBlock(size).data();
  const auto block = AddBlock(m_nextBlock);
  if (block.empty()) return nullptr;
  m_free = block;
  m_nextBlock = std::min(2 * m_nextBlock, kLargestBlock);
  return TakeFree(size);
}

std::span<std::byte> MemoryBlocks::AddBlock(std::size_t size) noexcept {
  auto* const memory = new (std::nothrow) std::byte[sizeof(Block) + size];
  if (memory == nullptr) return {};
  m_blocks = new (memory) Block{m_blocks};
  return {memory + sizeof(Block), size};
}

void MemoryBlocks::Free() noexcept {
  while (m_blocks != nullptr) {
    delete[] reinterpret_cast<std::byte*>(std::exchange(m_blocks, m_blocks->next));
  }
}
