#include "base/ParseBudget.h"

#include <algorithm>
#include <utility>

#include "base/FileStream.h"

void ParseBudget::AddForSize() {
  FileStream* const file = std::exchange(m_file, nullptr);
  if (file == nullptr) return;
  const std::uint64_t size = std::min(file->Size(), kMaxStoredBytes);
  m_bytesLeft += std::min(kStoredBytesForEachByte * size, kMaxStoredBytes - kStoredBytesOfAnyFile);
}
