#include "platform/posix/Files.h"

#include <array>
#include <cerrno>
#include <climits>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/CodePages.h"

namespace {

static_assert(sizeof(off_t) == sizeof(std::int64_t), "files are not limited to 2 GiB");

using PathView = std::basic_string_view<WCHAR>;

platform::FileHook* g_hook = nullptr;

// A text as the system takes it, without any allocation. One that is empty or longer than any path
// can be is the empty text, which names no file.
class Utf8Text {
 public:
  explicit Utf8Text(const WCHAR* text) {
    if (!TakeAscii(text)) Convert(text);
  }

  const char* c_str() const { return m_bytes.data(); }

 private:
  // Most paths are their own UTF-8 and need one pass. False, with the rest undefined, for one that
  // is not.
  bool TakeAscii(const WCHAR* text) {
    for (char& byte : m_bytes) {
      if (*text >= 0x80) return false;
      byte = static_cast<char>(*text);
      if (*text++ == 0) return true;
    }
    return false;
  }

  void Convert(PathView text) {
    int length = 0;
    if (text.size() <= m_bytes.size()) {
      length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                   m_bytes.data(), static_cast<int>(m_bytes.size()) - 1, nullptr,
                                   nullptr);
    }
    m_bytes[static_cast<std::size_t>(length)] = '\0';
  }

  std::array<char, PATH_MAX> m_bytes;  // cleared for no one: most of it is never used
};

// Unlike Windows, the system opens a directory for reading; it then fails every read, also one of
// no bytes, which costs less than the file's status.
bool IsDirectory(std::FILE* stream) {
  char none = 0;
  return read(fileno(stream), &none, 0) != 0 && errno == EISDIR;
}

}  // namespace

DWORD GetFileAttributesW(const WCHAR* path) {
  DWORD attributes = INVALID_FILE_ATTRIBUTES;
  errno = EINVAL;
  if (g_hook != nullptr && g_hook->Attributes(path, &attributes)) return attributes;
  struct stat status;
  if (path == nullptr || stat(Utf8Text(path).c_str(), &status) != 0) return INVALID_FILE_ATTRIBUTES;
  if (S_ISREG(status.st_mode)) return FILE_ATTRIBUTE_ARCHIVE;
  return S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
}

std::FILE* _wfopen(const WCHAR* path, const WCHAR* mode) {
  std::FILE* stream = nullptr;
  if (g_hook != nullptr && g_hook->Open(path, mode, &stream)) return stream;
  if (path == nullptr || mode == nullptr) return nullptr;
  stream = std::fopen(Utf8Text(path).c_str(), Utf8Text(mode).c_str());
  if (stream == nullptr || *mode != u'r' || !IsDirectory(stream)) return stream;
  static_cast<void>(std::fclose(stream));
  errno = EISDIR;
  return nullptr;
}

int _fseeki64(std::FILE* stream, std::int64_t offset, int origin) {
  return fseeko(stream, offset, origin);
}

std::int64_t _ftelli64(std::FILE* stream) {
  return ftello(stream);
}

int _fileno(std::FILE* stream) {
  return fileno(stream);
}

errno_t _chsize_s(int descriptor, std::int64_t size) {
  return ftruncate(descriptor, size) == 0 ? 0 : errno;
}

HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD, void*, DWORD disposition, DWORD,
                   HANDLE) {
  errno = EINVAL;
  struct stat status = {};
  if (path == nullptr || access != 0 || disposition != OPEN_EXISTING ||
      stat(Utf8Text(path).c_str(), &status) != 0) {
    return INVALID_HANDLE_VALUE;
  }
  auto* const file = new (std::nothrow) struct stat(status);
  if (file != nullptr) return file;
  errno = ENOMEM;
  return INVALID_HANDLE_VALUE;
}

DWORD GetLastError() {
  constexpr DWORD kOther = 31;  // ERROR_GEN_FAILURE
  if (errno == ENOENT) return ERROR_FILE_NOT_FOUND;
  return errno == ENOTDIR ? ERROR_PATH_NOT_FOUND : kOther;
}

BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* information) {
  const auto& status = *static_cast<const struct stat*>(file);
  const std::uint64_t number = status.st_ino;
  information->dwVolumeSerialNumber = static_cast<DWORD>(status.st_dev);
  information->nFileIndexHigh = static_cast<DWORD>(number >> 32);
  information->nFileIndexLow = static_cast<DWORD>(number);
  return TRUE;
}

BOOL CloseHandle(HANDLE file) {
  delete static_cast<const struct stat*>(file);
  return TRUE;
}

namespace platform {

FileHook* SetFileHook(FileHook* hook) {
  FileHook* const before = g_hook;
  g_hook = hook;
  return before;
}

}  // namespace platform
