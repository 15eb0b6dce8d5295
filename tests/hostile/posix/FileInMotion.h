#ifndef LUMIDEX_TESTS_HOSTILE_POSIX_FILEINMOTION_H_
#define LUMIDEX_TESTS_HOSTILE_POSIX_FILEINMOTION_H_

// A file that another program changes while it is read: once a number of bytes has been read from
// it. Lives as long as a test's scope; one hook at a time.

#include <cstdio>
#include <functional>
#include <utility>

#include "platform/Win32.h"

namespace test {

class FileInMotion : public platform::FileHook {
 public:
  // `change` is called before the first read after `bytes` bytes, of all streams together.
  FileInMotion(WideString path, std::size_t bytes, std::function<void()> change)
      : m_path(std::move(path)),
        m_bytes(bytes),
        m_change(std::move(change)),
        m_before(platform::SetFileHook(this)) {}
  ~FileInMotion() override { platform::SetFileHook(m_before); }
  FileInMotion(const FileInMotion&) = delete;
  FileInMotion& operator=(const FileInMotion&) = delete;

  bool HasChanged() const { return m_hasChanged; }

  bool Attributes(const WCHAR*, DWORD*) override { return false; }

  bool Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) override {
    if (path == nullptr || path != m_path) return false;
    platform::SetFileHook(nullptr);
    std::FILE* const file = _wfopen(path, mode);
    platform::SetFileHook(this);
    *stream = file == nullptr ? nullptr : Wrap(file, mode);
    return true;
  }

 private:
  struct Cookie {
    std::FILE* file;
    FileInMotion* hook;
  };

  std::FILE* Wrap(std::FILE* file, const WCHAR* mode) {
    static_cast<void>(std::setvbuf(file, nullptr, _IONBF, 0));
    return fopencookie(new Cookie{file, this}, WideString(mode) == u"rb" ? "rb" : "r+b",
                       {&Read, &Write, &Seek, &Close});
  }

  void BeforeRead() {
    if (m_hasChanged || m_done < m_bytes) return;
    m_hasChanged = true;
    platform::SetFileHook(nullptr);
    m_change();
    platform::SetFileHook(this);
  }

  static ssize_t Read(void* data, char* buffer, std::size_t size) {
    const auto& cookie = *static_cast<Cookie*>(data);
    cookie.hook->BeforeRead();
    const std::size_t count = std::fread(buffer, 1, size, cookie.file);
    cookie.hook->m_done += count;
    return static_cast<ssize_t>(count);
  }
  static ssize_t Write(void* data, const char* buffer, std::size_t size) {
    return static_cast<ssize_t>(std::fwrite(buffer, 1, size, static_cast<Cookie*>(data)->file));
  }
  static int Seek(void* data, off64_t* offset, int origin) {
    std::FILE* const file = static_cast<Cookie*>(data)->file;
    if (fseeko(file, *offset, origin) != 0) return -1;
    *offset = ftello(file);
    return 0;
  }
  static int Close(void* data) {
    const auto* const cookie = static_cast<Cookie*>(data);
    const int result = std::fclose(cookie->file);
    delete cookie;
    return result;
  }

  WideString m_path;
  std::size_t m_bytes;
  std::function<void()> m_change;
  platform::FileHook* m_before;
  std::size_t m_done = 0;
  bool m_hasChanged = false;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_HOSTILE_POSIX_FILEINMOTION_H_
