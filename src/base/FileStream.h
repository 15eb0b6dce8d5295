#ifndef LUMIDEX_BASE_FILESTREAM_H_
#define LUMIDEX_BASE_FILESTREAM_H_

// The one class through which bytes come from a file and go into it: a C stream with a window of
// its own, so that seeks and small reads inside the window cost no system call (under Windows
// runtimes every seek of a C stream throws its buffer away). A seek only notes the position and
// cannot fail; a position beyond the end reads short. Nothing else touches the C stream.
//
// Windows begin small and double while the reading goes on: a photograph's directories are a few
// kilobytes, and what is skipped between them and the segments behind is not worth reading. The
// window before the last jump is kept: a directory and its values, which may lie far apart, are
// read in turns.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <span>

#include "base/ByteBuffer.h"
#include "base/ByteOrder.h"
#include "base/ParseBudget.h"
#include "platform/Win32.h"

class FileStream {
 public:
  // The first read-ahead, the one behind a jump, and the largest.
  static constexpr std::size_t kFirstWindowSize = 8U * 1024;
  static constexpr std::size_t kJumpWindowSize = 4U * 1024;
  static constexpr std::size_t kWindowSize = 64U * 1024;

  // A photograph is read with a handful of jumps. After this many, a file of at most this size is
  // read as a whole.
  static constexpr std::uint32_t kManyJumps = 64;
  static constexpr std::uint64_t kMaxWholeFile = 1024U * 1024;

  // In a photograph every embedded block is read once; only hostile files point to one again and
  // again.
  static constexpr std::uint64_t kMaxBlockPasses = 4;

  FileStream() noexcept {}  // leaves the bytes of the window as they are
  FileStream(const FileStream&) = delete;
  FileStream& operator=(const FileStream&) = delete;

  // Opens a file; `mode` is a C mode string. False when that fails. At most `window` bytes are read
  // at a time, unless a single read asks for more.
  [[nodiscard]] bool Open(const WCHAR* path, const WCHAR* mode, std::size_t window = kWindowSize);
  bool IsOpen() const noexcept { return m_file != nullptr; }

  // Closes the file; false when bytes written could not be brought to it.
  bool Close() noexcept;

  // The file's size in bytes; 0, and HasFailed(), when it cannot be told.
  std::uint64_t Size();

  // How many bytes there are to read: of a file that is in memory as a whole what was read of it,
  // whatever it has become since; of another its size, as Size() tells it.
  std::uint64_t ReadableSize();

  std::uint64_t Position() const noexcept { return m_position; }
  void Seek(std::uint64_t position) noexcept { m_position = position; }

  // Whether the position is known to be at the end of the file or behind it.
  bool IsAtEnd() const noexcept { return m_end && m_position >= *m_end; }

  // Whether the system failed a seek or a read, as opposed to the file's end, since it was opened.
  bool HasFailed() const noexcept { return m_hasFailed; }

  // Fills the whole of `out`: bytes that the file does not have are 0. Returns how many were read.
  std::size_t Read(std::span<std::uint8_t> out) {
    const auto bytes = InWindow();
    if (bytes.size() < out.size()) return ReadThrough(out);
    std::copy_n(bytes.begin(), out.size(), out.begin());
    m_position += out.size();
    m_wasShort = false;
    return out.size();
  }

  // The next bytes when the window holds them all; else none, and nothing is read. They stay valid
  // until the next read.
  [[nodiscard]] std::span<const std::uint8_t> TakeFromWindow(std::size_t count) noexcept {
    const auto bytes = InWindow();
    if (bytes.size() < count) return {};
    m_position += count;
    m_wasShort = false;
    return bytes.first(count);
  }

  // Takes the next bytes of a value that has room for more: `count` of `room`, which gets what
  // follows them as well. A copy of fixed size costs no guess at how long each value of a file is.
  // False, with nothing taken, when the window does not hold as much.
  template <std::size_t Room>
  [[nodiscard]] bool TakeSmall(std::array<std::uint8_t, Room>& room, std::size_t count) noexcept {
    const auto bytes = InWindow();
    if (bytes.size() < Room) return false;
    std::memcpy(room.data(), bytes.data(), Room);
    m_position += count;
    m_wasShort = false;
    return true;
  }

  // Reads `count` bytes, or as many as the file has; no memory is taken for the others. They stay
  // valid until the next read. All blocks of a file together are at most kMaxBlockPasses times its
  // size; one that exceeds that is empty.
  [[nodiscard]] std::span<const std::uint8_t> ReadBlock(std::uint64_t count);

  // Numbers. One that is cut by the end of the file is 0 as a whole; WasShort() tells of the last
  // read, of whatever kind.
  [[nodiscard]] std::uint8_t ReadU8() { return TakeNumber(1)[0]; }
  [[nodiscard]] std::uint16_t ReadU16(ByteOrder order) { return LoadU16(TakeNumber(2), order); }
  [[nodiscard]] std::uint32_t ReadU32(ByteOrder order) { return LoadU32(TakeNumber(4), order); }
  bool WasShort() const noexcept { return m_wasShort; }

  // Writes all bytes at the position, or at the end in a mode of appending; false on failure.
  [[nodiscard]] bool Write(std::span<const std::uint8_t> bytes);

  // Brings the bytes written to the file; false on failure.
  [[nodiscard]] bool Flush();

  // Cuts the file to a size.
  bool Truncate(std::uint64_t size);

  // What the parse of this file may still cost.
  ParseBudget& Budget() noexcept { return m_budget; }

 private:
  struct Closer {
    void operator()(std::FILE* file) const noexcept { static_cast<void>(std::fclose(file)); }
  };

  // What the C stream did last: the direction may only change with a seek in between.
  enum class Direction { None, Reading, Writing };

  static constexpr std::uint64_t kUnknownPosition = UINT64_MAX;

  // Bytes of the file, and the memory that they are read into.
  struct Window {
    std::uint64_t End() const noexcept { return start + bytes.size(); }

    std::uint64_t start = 0;
    std::span<const std::uint8_t> bytes;
    std::span<std::uint8_t> room;
    ByteBuffer heap;
  };

  // The bytes from the position on that the window holds.
  std::span<const std::uint8_t> InWindow() const noexcept {
    const std::uint64_t offset = m_position - m_window.start;  // huge in front of the window
    if (offset >= m_window.bytes.size()) return {};
    return m_window.bytes.subspan(static_cast<std::size_t>(offset));
  }

  // The bytes of a number; zeros when the file does not have them all.
  std::span<const std::uint8_t> TakeNumber(std::size_t count) {
    const auto bytes = TakeFromWindow(count);
    return bytes.empty() ? ReadNumber(count) : bytes;
  }

  std::span<const std::uint8_t> ReadNumber(std::size_t count);
  std::size_t ReadThrough(std::span<std::uint8_t> out);
  bool SeekTo(std::uint64_t position, Direction direction) noexcept;
  std::size_t ReadAt(std::uint64_t position, std::span<std::uint8_t> out);
  std::span<const std::uint8_t> FillWindow(std::size_t count);
  std::span<const std::uint8_t> ReadOn(std::size_t count);
  std::span<const std::uint8_t> ReadBehindJump(std::size_t count);
  std::span<const std::uint8_t> ReadWindow(std::uint64_t start, std::size_t size,
                                           std::span<const std::uint8_t> known = {});
  bool HasAll(const Window& window, std::size_t count) const noexcept;
  std::span<const std::uint8_t> BlockBytes(std::uint64_t count);
  bool AllowsBlock(std::uint64_t count);
  void ForgetContents() noexcept;

  std::unique_ptr<std::FILE, Closer> m_file;
  Direction m_direction = Direction::None;
  std::uint64_t m_filePosition = kUnknownPosition;  // of the C stream
  std::uint64_t m_position = 0;
  std::array<std::uint8_t, kFirstWindowSize> m_firstRoom;  // neither is ever cleared
  std::array<std::uint8_t, kJumpWindowSize> m_jumpRoom;
  Window m_window = {0, {}, m_firstRoom, {}};
  Window m_otherWindow = {0, {}, m_jumpRoom, {}};  // the one before the last jump
  std::size_t m_maxWindow = 0;
  std::uint32_t m_jumps = 0;
  ByteBuffer m_block;  // one that is larger than a window
  std::uint64_t m_blockBytes = 0;
  std::optional<std::uint64_t> m_end;   // where a read met the end of the file
  std::optional<std::uint64_t> m_size;  // as the system told
  bool m_wasShort = false;
  bool m_hasFailed = false;
  ParseBudget m_budget;
};

#endif  // LUMIDEX_BASE_FILESTREAM_H_
