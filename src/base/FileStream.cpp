#include "base/FileStream.h"

#include <algorithm>
#include <array>

bool FileStream::Open(const WCHAR* path, const WCHAR* mode, std::size_t window) {
  m_file.reset(path == nullptr ? nullptr : _wfopen(path, mode));
  ForgetContents();
  m_position = 0;
  m_blockBytes = 0;
  m_jumps = 0;
  m_windowCapacity = window;
  if (!m_file) return false;
  static_cast<void>(std::setvbuf(m_file.get(), nullptr, _IONBF, 0));
  return true;
}

bool FileStream::Close() noexcept {
  ForgetContents();
  return !m_file || std::fclose(m_file.release()) == 0;
}

std::uint64_t FileStream::Size() {
  if (m_size) return *m_size;
  if (!m_file || _fseeki64(m_file.get(), 0, SEEK_END) != 0) return 0;
  const std::int64_t size = _ftelli64(m_file.get());
  if (size < 0) return 0;
  m_size = static_cast<std::uint64_t>(size);
  return *m_size;
}

std::size_t FileStream::Read(std::span<std::uint8_t> out) {
  std::size_t done = 0;
  while (done < out.size()) {
    const auto rest = out.subspan(done);
    if (const auto window = InWindow(); !window.empty()) {
      const std::size_t count = std::min(window.size(), rest.size());
      std::copy_n(window.begin(), count, rest.begin());
      done += count;
      m_position += count;
      continue;
    }
    if (rest.size() >= m_windowCapacity) {
      const std::size_t count = ReadAt(m_position, rest);
      done += count;
      m_position += count;
      break;
    }
    if (!FillWindow()) break;
  }
  m_wasShort = done < out.size();
  const auto missing = out.subspan(done);
  std::fill(missing.begin(), missing.end(), std::uint8_t{0});
  return done;
}

ByteBuffer FileStream::ReadBlock(std::uint64_t count) {
  const std::uint64_t size = Size();
  const std::uint64_t present = m_position < size ? std::min(count, size - m_position) : 0;
  m_wasShort = present < count;
  if (present == 0 || present > kMaxBlockPasses * size - m_blockBytes) return {};
  m_blockBytes += present;

  ByteBuffer block(static_cast<std::size_t>(present));
  const std::size_t read = Read(block.Bytes());
  block.Shrink(read);
  m_wasShort = read < count;
  return block;
}

std::uint8_t FileStream::ReadU8() {
  std::array<std::uint8_t, 1> bytes;
  static_cast<void>(Read(bytes));
  return bytes[0];
}

std::uint16_t FileStream::ReadU16(ByteOrder order) {
  std::array<std::uint8_t, 2> bytes;
  static_cast<void>(Read(bytes));
  return m_wasShort ? std::uint16_t{0} : LoadU16(bytes, order);
}

std::uint32_t FileStream::ReadU32(ByteOrder order) {
  std::array<std::uint8_t, 4> bytes;
  static_cast<void>(Read(bytes));
  return m_wasShort ? std::uint32_t{0} : LoadU32(bytes, order);
}

bool FileStream::Write(std::span<const std::uint8_t> bytes) {
  ForgetContents();
  if (!m_file) return false;
  if (_fseeki64(m_file.get(), static_cast<std::int64_t>(m_position), SEEK_SET) != 0) return false;
  const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), m_file.get());
  m_position += written;
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

std::size_t FileStream::ReadAt(std::uint64_t position, std::span<std::uint8_t> out) {
  if (!m_file) return 0;
  if (_fseeki64(m_file.get(), static_cast<std::int64_t>(position), SEEK_SET) != 0) return 0;
  return std::fread(out.data(), 1, out.size(), m_file.get());
}

// Reads a window that holds the position and, since directories point back as well as forth, some
// of what stands before it. After many jumps the window is not given up for a position that the
// file does not have, and a file that is not large gets one window as a whole: a hostile one can
// ask for a jump at every entry.
bool FileStream::FillWindow() {
  const bool isJump = m_position != m_windowStart + m_windowLength;
  if (isJump && m_jumps < kManyJumps) ++m_jumps;
  if (m_jumps == kManyJumps) {
    const std::uint64_t size = Size();
    if (m_position >= size) return false;
    if (size <= kMaxWholeFile) return ReadWindow(0, static_cast<std::size_t>(size));
  }
  const std::uint64_t step = std::max<std::uint64_t>(m_windowCapacity / 2, 1);
  return ReadWindow(m_position - m_position % step, m_windowCapacity);
}

// Says whether the window holds the position.
bool FileStream::ReadWindow(std::uint64_t start, std::size_t size) {
  if (m_window.Size() < size) m_window = ByteBuffer(size);
  m_windowStart = start;
  m_windowLength = ReadAt(start, m_window.Bytes().first(size));
  return !InWindow().empty();
}

std::span<const std::uint8_t> FileStream::InWindow() const noexcept {
  if (m_position < m_windowStart || m_position - m_windowStart >= m_windowLength) return {};
  return m_window.Bytes()
      .first(m_windowLength)
      .subspan(static_cast<std::size_t>(m_position - m_windowStart));
}

void FileStream::ForgetContents() noexcept {
  m_windowLength = 0;
  m_size.reset();
}
