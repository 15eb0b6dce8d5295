#include "base/NodePool.h"

#include <algorithm>

void NodePool::AddBlock(std::size_t size) {
  const std::size_t block = std::max(size, m_nextBlock);
  m_blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(block));
  m_free = {m_blocks.back().get(), block};
  m_nextBlock = std::min(2 * m_nextBlock, kLargestBlock);
}
