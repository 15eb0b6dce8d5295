#ifndef LUMIDEX_PLATFORM_POSIX_FILES_H_
#define LUMIDEX_PLATFORM_POSIX_FILES_H_

// C streams on UTF-16 paths, the existence test and the identity of a file, as Windows and its
// runtime offer them. A path becomes UTF-8 for the system.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include <lumidex/ComTypes.h>

inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;

using errno_t = int;

// ARCHIVE for a regular file, DIRECTORY for a directory, NORMAL for anything else that exists;
// INVALID_FILE_ATTRIBUTES when the path does not exist.
DWORD GetFileAttributesW(const WCHAR* path);

// A new stream, or null. `mode` is a C mode string; the caller closes the stream with fclose.
std::FILE* _wfopen(const WCHAR* path, const WCHAR* mode);

int _fseeki64(std::FILE* stream, std::int64_t offset, int origin);
std::int64_t _ftelli64(std::FILE* stream);
int _fileno(std::FILE* stream);
errno_t _chsize_s(int descriptor, std::int64_t size);

using HANDLE = void*;

inline void* const INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(std::intptr_t{-1});
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD OPEN_EXISTING = 3;

// What tells one file from another: its volume and its number there.
struct BY_HANDLE_FILE_INFORMATION {
  DWORD dwVolumeSerialNumber;
  DWORD nFileIndexHigh;
  DWORD nFileIndexLow;
};

inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;

// A handle through which an existing file can be asked about and neither read nor written; the
// caller closes it. INVALID_HANDLE_VALUE when the path does not exist, and for any other use: the
// access is 0 and the disposition OPEN_EXISTING. The other arguments have no meaning here.
HANDLE CreateFileW(const WCHAR* path, DWORD access, DWORD share, void* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile);

// Why the last GetFileAttributesW or CreateFileW of this thread failed: one of the two numbers
// above for a path that does not exist, else any other.
DWORD GetLastError();

BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* information);
BOOL CloseHandle(HANDLE file);

namespace platform {

// Stands in for the file system in tests: in-memory files and failures of chosen calls.
class FileHook {
 public:
  virtual ~FileHook() = default;

  // Sets *attributes or *stream and returns true to answer the call; false passes it to the system.
  virtual bool Attributes(const WCHAR* path, DWORD* attributes) = 0;
  virtual bool Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) = 0;
};

// Installs a hook, or none; returns the one before. Not for use while another thread opens files.
FileHook* SetFileHook(FileHook* hook);

}  // namespace platform

#endif  // LUMIDEX_PLATFORM_POSIX_FILES_H_
