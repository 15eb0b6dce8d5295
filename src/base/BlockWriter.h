#ifndef LUMIDEX_BASE_BLOCKWRITER_H_
#define LUMIDEX_BASE_BLOCKWRITER_H_

// A new file that is written from its start to its end. The pieces it is made of are gathered and
// reach the file in whole blocks: each write costs the system more than a small piece costs to
// copy, and blocks end where the system's pages end.

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/ByteBuffer.h"
#include "base/FileStream.h"
#include "platform/Win32.h"

class BlockWriter {
 public:
  static constexpr std::size_t kBlockSize = 64U * 1024;

  // Throws std::bad_alloc.
  BlockWriter() : m_block(kBlockSize) {}

  // What was gathered for a file that was not closed still goes into it.
  ~BlockWriter() { static_cast<void>(WriteBlock()); }
  BlockWriter(const BlockWriter&) = delete;
  BlockWriter& operator=(const BlockWriter&) = delete;

  // Opens a file in a C mode for writing; false when that fails.
  [[nodiscard]] bool Open(const WCHAR* path, const WCHAR* mode) { return m_file.Open(path, mode); }

  // Appends bytes. False when the file does not take a block that is full; it takes no more then.
  [[nodiscard]] bool Write(std::span<const std::uint8_t> bytes);

  // Where the next bytes may be put directly, at least one, and how many of them are then appended.
  // The result of the latter is as with Write.
  std::span<std::uint8_t> Room() noexcept { return m_block.Bytes().subspan(m_count); }
  [[nodiscard]] bool Append(std::size_t count);

  // Writes what is left and closes the file; false when any of it cannot be brought to the file.
  [[nodiscard]] bool Close();

 private:
  bool WriteBlock();

  FileStream m_file;
  ByteBuffer m_block;
  std::size_t m_count = 0;  // of the bytes gathered; less than a block
  bool m_hasFailed = false;
};

#endif  // LUMIDEX_BASE_BLOCKWRITER_H_
