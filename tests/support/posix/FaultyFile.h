#ifndef LUMIDEX_TESTS_SUPPORT_POSIX_FAULTYFILE_H_
#define LUMIDEX_TESTS_SUPPORT_POSIX_FAULTYFILE_H_

// Files that fail on demand, and a limit to what the process may write. Each lives as long as a
// test's scope; one hook at a time.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <sys/resource.h>

#include "platform/Win32.h"

namespace test {

// The streams that are opened on one path work on the real file up to a fault of their own.
class FaultyFile : public platform::FileHook {
 public:
  // What a stream can do before it fails.
  struct Faults {
    std::size_t openings = std::numeric_limits<std::size_t>::max();  // on this path, in all
    std::size_t readable = std::numeric_limits<std::size_t>::max();  // bytes, of each stream
    std::size_t writable = std::numeric_limits<std::size_t>::max();  // bytes, of each stream
    bool closes = true;  // the first stream; later ones are the system's
  };

  FaultyFile(WideString path, const Faults& faults)
      : m_path(std::move(path)), m_faults(faults), m_before(platform::SetFileHook(this)) {}
  ~FaultyFile() override { platform::SetFileHook(m_before); }
  FaultyFile(const FaultyFile&) = delete;
  FaultyFile& operator=(const FaultyFile&) = delete;

  bool Attributes(const WCHAR*, DWORD*) override { return false; }

  bool Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) override {
    if (path == nullptr || path != m_path) return false;
    if (!m_faults.closes && m_openings > 0) return false;
    *stream = m_openings++ < m_faults.openings ? OpenFaulty(path, mode) : nullptr;
    return true;
  }

 private:
  struct Cookie {
    std::FILE* file;
    std::size_t readable;
    std::size_t writable;
    bool closes;
  };

  std::FILE* OpenFaulty(const WCHAR* path, const WCHAR* mode) {
    platform::SetFileHook(nullptr);
    std::FILE* const file = _wfopen(path, mode);
    platform::SetFileHook(this);
    if (file == nullptr) return nullptr;
    static_cast<void>(std::setvbuf(file, nullptr, _IONBF, 0));
    auto* const cookie = new Cookie{file, m_faults.readable, m_faults.writable, m_faults.closes};
    return fopencookie(cookie, WideString(mode) == u"rb" ? "rb" : "r+b",
                       {&Read, &Write, &Seek, &Close});
  }

  static ssize_t Read(void* data, char* buffer, std::size_t size) {
    auto& cookie = *static_cast<Cookie*>(data);
    const std::size_t count = std::fread(buffer, 1, std::min(size, cookie.readable), cookie.file);
    cookie.readable -= count;
    return static_cast<ssize_t>(count);
  }
  static ssize_t Write(void* data, const char* buffer, std::size_t size) {
    auto& cookie = *static_cast<Cookie*>(data);
    const std::size_t count = std::fwrite(buffer, 1, std::min(size, cookie.writable), cookie.file);
    cookie.writable -= count;
    return static_cast<ssize_t>(count);
  }
  static int Seek(void* data, off64_t* offset, int origin) {
    std::FILE* const file = static_cast<Cookie*>(data)->file;
    if (fseeko(file, *offset, origin) != 0) return -1;
    *offset = ftello(file);
    return 0;
  }
  static int Close(void* data) {
    const auto* const cookie = static_cast<Cookie*>(data);
    const bool closes = std::fclose(cookie->file) == 0 && cookie->closes;
    delete cookie;
    return closes ? 0 : EOF;
  }

  WideString m_path;
  Faults m_faults;
  platform::FileHook* m_before;
  std::size_t m_openings = 0;
};

// No file can grow beyond a size.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(std::size_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit = {size, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    static_cast<void>(std::signal(SIGXFSZ, m_handler));
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  void (*m_handler)(int);
  rlimit m_before = {};
};

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_POSIX_FAULTYFILE_H_
