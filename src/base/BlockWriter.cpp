#include "base/BlockWriter.h"

#include <algorithm>

bool BlockWriter::Write(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto room = Room();
    const std::size_t count = std::min(room.size(), bytes.size());
    std::copy_n(bytes.begin(), count, room.begin());
    if (!Append(count)) return false;
    bytes = bytes.subspan(count);
  }
  return !m_hasFailed;
}

bool BlockWriter::Append(std::size_t count) {
  m_count += count;
  return m_count < m_block.Size() ? !m_hasFailed : WriteBlock();
}

bool BlockWriter::Close() {
  const bool isWritten = WriteBlock() && m_file.Flush();
  return m_file.Close() && isWritten;
}

// What failed once is not tried again: nobody knows how much of it the file has.
bool BlockWriter::WriteBlock() {
  const auto block = m_block.Bytes().first(m_count);
  m_count = 0;
  if (!m_hasFailed && !block.empty()) m_hasFailed = !m_file.Write(block);
  return !m_hasFailed;
}
