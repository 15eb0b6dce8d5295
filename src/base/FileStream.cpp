#include "base/FileStream.h"

bool FileStream::Open(const WCHAR* path, const WCHAR* mode, std::size_t window) {
  m_file.reset(path == nullptr ? nullptr : _wfopen(path, mode));
  ForgetContents();
  m_position = 0;
  m_blockBytes = 0;
  m_jumps = 0;
  m_hasFailed = false;
  m_maxWindow = window;
  m_direction = Direction::None;
  m_filePosition = kUnknownPosition;
  if (!m_file) return false;
  if (*mode == LMD_W('r')) m_filePosition = 0;
  static_cast<void>(std::setvbuf(m_file.get(), nullptr, _IONBF, 0));
  return true;
}

bool FileStream::Close() noexcept {
  ForgetContents();
  return !m_file || std::fclose(m_file.release()) == 0;
}

std::uint64_t FileStream::Size() {
  if (m_size) return *m_size;
  if (!m_file) return 0;
  m_filePosition = kUnknownPosition;
  const bool isAtEnd = _fseeki64(m_file.get(), 0, SEEK_END) == 0;
  const std::int64_t size = isAtEnd ? _ftelli64(m_file.get()) : -1;
  m_hasFailed = m_hasFailed || size < 0;
  if (size < 0) return 0;
  m_size = static_cast<std::uint64_t>(size);
  return *m_size;
}

// A read that the window does not hold as a whole. Large ones go past the window.
std::size_t FileStream::ReadThrough(std::span<std::uint8_t> out) {
  std::size_t done = 0;
  while (done < out.size()) {
    const auto rest = out.subspan(done);
    auto bytes = InWindow();
    if (bytes.empty() && rest.size() >= std::min(m_maxWindow, kFirstWindowSize)) {
      const std::size_t count = ReadAt(m_position, rest);
      done += count;
      m_position += count;
      break;
    }
    if (bytes.empty()) bytes = FillWindow(1);
    if (bytes.empty()) break;
    const std::size_t count = std::min(bytes.size(), rest.size());
    std::copy_n(bytes.begin(), count, rest.begin());
    done += count;
    m_position += count;
  }
  m_wasShort = done < out.size();
  const auto missing = out.subspan(done);
  std::fill(missing.begin(), missing.end(), std::uint8_t{0});
  return done;
}

std::span<const std::uint8_t> FileStream::ReadBlock(std::uint64_t count) {
  auto bytes = BlockBytes(count);
  if (!AllowsBlock(bytes.size())) bytes = {};
  m_blockBytes += bytes.size();
  m_position += bytes.size();
  m_wasShort = bytes.size() < count;
  return bytes;
}

// At most `count` bytes from the position on.
std::span<const std::uint8_t> FileStream::BlockBytes(std::uint64_t count) {
  if (count <= m_maxWindow) {
    auto bytes = InWindow();
    const auto wanted = static_cast<std::size_t>(count);
    if (bytes.size() < wanted) bytes = FillWindow(wanted);
    return bytes.first(std::min(bytes.size(), wanted));
  }
  const std::uint64_t size = Size();
  const std::uint64_t present = m_position < size ? std::min(count, size - m_position) : 0;
  if (present == 0 || !AllowsBlock(present)) return {};
  m_block = ByteBuffer(static_cast<std::size_t>(present));
  m_block.Shrink(ReadAt(m_position, m_block.Bytes()));
  return m_block.Bytes();
}

// The window's end is enough of the file's size for most blocks.
bool FileStream::AllowsBlock(std::uint64_t count) {
  const std::uint64_t total = m_blockBytes + count;
  return total <= kMaxBlockPasses * (m_windowStart + m_windowLength) ||
         total <= kMaxBlockPasses * Size();
}

bool FileStream::Write(std::span<const std::uint8_t> bytes) {
  ForgetContents();
  if (!SeekTo(m_position, Direction::Writing)) return false;
  const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), m_file.get());
  m_position += written;
  m_filePosition = written == bytes.size() ? m_position : kUnknownPosition;
  return written == bytes.size();
}

bool FileStream::Flush() {
  return m_file && std::fflush(m_file.get()) == 0;
}

bool FileStream::Truncate(std::uint64_t size) {
  ForgetContents();
  if (!m_file) return false;
  static_cast<void>(std::fflush(m_file.get()));
  return _chsize_s(_fileno(m_file.get()), static_cast<std::int64_t>(size)) == 0;
}

bool FileStream::SeekTo(std::uint64_t position, Direction direction) noexcept {
  if (!m_file) return false;
  if (position == m_filePosition && (direction == m_direction || m_direction == Direction::None)) {
    m_direction = direction;
    return true;
  }
  m_direction = direction;
  m_filePosition = kUnknownPosition;
  if (_fseeki64(m_file.get(), static_cast<std::int64_t>(position), SEEK_SET) != 0) return false;
  m_filePosition = position;
  return true;
}

std::size_t FileStream::ReadAt(std::uint64_t position, std::span<std::uint8_t> out) {
  const bool isThere = SeekTo(position, Direction::Reading);
  const std::size_t count = isThere ? std::fread(out.data(), 1, out.size(), m_file.get()) : 0;
  const bool isWhole = isThere && std::ferror(m_file.get()) == 0;
  m_filePosition = isWhole ? position + count : kUnknownPosition;
  m_hasFailed = m_hasFailed || !isWhole;
  return count;
}

// Reads a window that holds the position and as many as `count` bytes behind it, of which it
// returns those that the file has. The first window and one behind a jump are small; one that goes
// on where the last ended is twice as large. A jump back also gets some of what stands before it:
// the next one may go there.
//
// After many jumps the window is not given up for a position that the file does not have, and a
// file that is not large gets one window as a whole: a hostile one can ask for a jump at every
// entry.
std::span<const std::uint8_t> FileStream::FillWindow(std::size_t count) {
  const std::uint64_t windowEnd = m_windowStart + m_windowLength;
  const bool goesBack = m_position < m_windowStart;
  if (m_windowEndsFile && !goesBack && m_position <= windowEnd) return InWindow();
  const bool goesOn = !goesBack && m_position <= windowEnd + m_windowLength && m_windowLength != 0;
  if (!goesOn && m_jumps < kManyJumps) ++m_jumps;
  if (m_jumps == kManyJumps) {
    if (m_position >= Size()) return {};
    if (Size() <= kMaxWholeFile) return ReadWindow(0, static_cast<std::size_t>(Size()));
  }
  m_nextWindow = std::min(goesOn ? 2 * m_nextWindow : kFirstWindowSize, m_maxWindow);
  const std::uint64_t before = goesBack ? std::min<std::uint64_t>(m_nextWindow / 2, m_position) : 0;
  const auto needed = static_cast<std::size_t>(before) + count;
  return ReadWindow(m_position - before, std::max(m_nextWindow, needed));
}

// Returns what the window holds from the position on.
std::span<const std::uint8_t> FileStream::ReadWindow(std::uint64_t start, std::size_t size) {
  if (m_window.Size() < size) m_window = ByteBuffer(size);
  m_windowStart = start;
  m_windowLength = ReadAt(start, m_window.Bytes().first(size));
  m_windowEndsFile = !m_hasFailed && (m_windowLength < size || m_size == start + size);
  return InWindow();
}

void FileStream::ForgetContents() noexcept {
  m_windowLength = 0;
  m_windowEndsFile = false;
  m_size.reset();
}
