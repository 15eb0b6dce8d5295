#include "base/FileStream.h"

#include <utility>

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
  if (*mode != LMD_W('a')) m_filePosition = 0;
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

std::uint64_t FileStream::ReadableSize() {
  const bool isWhole = m_window.start == 0 && m_end == m_window.End();
  return isWhole ? *m_end : Size();
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

// The window does not hold the number as a whole.
std::span<const std::uint8_t> FileStream::ReadNumber(std::size_t count) {
  static constexpr std::array<std::uint8_t, sizeof(std::uint32_t)> kZero = {};
  const auto bytes = FillWindow(count);
  m_wasShort = bytes.size() < count;
  m_position += m_wasShort ? bytes.size() : count;
  return m_wasShort ? std::span(kZero).first(count) : bytes.first(count);
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
  return total <= kMaxBlockPasses * m_window.End() || total <= kMaxBlockPasses * Size();
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

// Makes a window the current one that holds the position and as many as `count` bytes behind it,
// and returns those that the file has.
std::span<const std::uint8_t> FileStream::FillWindow(std::size_t count) {
  if (HasAll(m_otherWindow, count)) std::swap(m_window, m_otherWindow);
  if (HasAll(m_window, count) || IsAtEnd()) return InWindow();

  const std::size_t length = m_window.bytes.size();
  const bool goesOn = length != 0 && m_position >= m_window.start && m_position <= m_window.End();
  return goesOn ? ReadOn(count) : ReadBehindJump(count);
}

// A window that goes on where the last ended is twice as large. What that holds from the position
// on is not read again.
std::span<const std::uint8_t> FileStream::ReadOn(std::size_t count) {
  const std::size_t size = std::min(2 * m_window.bytes.size(), m_maxWindow);
  return ReadWindow(m_position, std::max(size, count), InWindow());
}

// The first window and one behind a jump are small. A jump back also gets some of what stands
// before it: the next one may go there.
//
// After many jumps a file that is not large gets one window as a whole: a hostile one can ask for a
// jump at every entry.
std::span<const std::uint8_t> FileStream::ReadBehindJump(std::size_t count) {
  if (m_jumps < kManyJumps) ++m_jumps;
  if (m_jumps == kManyJumps) {
    if (m_position >= Size()) return {};
    if (Size() <= kMaxWholeFile) return ReadWindow(0, static_cast<std::size_t>(Size()));
  }
  const bool isFirst = m_window.bytes.empty();
  const bool goesBack = m_position < m_window.start;
  if (!isFirst) std::swap(m_window, m_otherWindow);
  const std::size_t size = std::min(isFirst ? kFirstWindowSize : kJumpWindowSize, m_maxWindow);
  const std::uint64_t before = goesBack ? std::min<std::uint64_t>(size / 2, m_position) : 0;
  const auto needed = static_cast<std::size_t>(before) + count;
  return ReadWindow(m_position - before, std::max(size, needed));
}

// Whether a window holds the next `count` bytes, or as many as the file has.
bool FileStream::HasAll(const Window& window, std::size_t count) const noexcept {
  if (m_position < window.start || m_position > window.End()) return false;
  return count <= window.End() - m_position || (!window.bytes.empty() && m_end == window.End());
}

// Makes the window hold the bytes from `start` on, of which the first are already known. Returns
// what it holds from the position on.
std::span<const std::uint8_t> FileStream::ReadWindow(std::uint64_t start, std::size_t size,
                                                     std::span<const std::uint8_t> known) {
  if (m_window.room.size() < size) {
    ByteBuffer larger(size);
    std::ranges::copy(known, larger.Bytes().begin());
    m_window.heap = std::move(larger);
    m_window.room = m_window.heap.Bytes();
  } else if (!known.empty()) {
    std::memmove(m_window.room.data(), known.data(), known.size());
  }
  const auto rest = m_window.room.first(size).subspan(known.size());
  const std::size_t count = known.size() + ReadAt(start + known.size(), rest);
  m_window.start = start;
  m_window.bytes = m_window.room.first(count);
  const bool endsFile = count < size || m_size == m_window.End();
  if (endsFile && !m_window.bytes.empty() && !m_hasFailed) m_end = m_window.End();
  return InWindow();
}

void FileStream::ForgetContents() noexcept {
  m_window.bytes = {};
  m_otherWindow.bytes = {};
  m_end.reset();
  m_size.reset();
}
