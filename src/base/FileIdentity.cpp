#include "base/FileIdentity.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <type_traits>

namespace {

struct Closer {
  void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};
using FileHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, Closer>;

// What no two files of a running system share.
struct Identity {
  DWORD volume;
  DWORD indexHigh;
  DWORD indexLow;

  bool operator==(const Identity&) const = default;
};

// What the system says of a path. A file without an identity may be any.
struct Lookup {
  bool isFile = false;
  std::optional<Identity> identity;
};

// Of a path that could not be opened.
bool IsFile(const WCHAR* path) noexcept {
  if (WasNotFound()) return false;
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// Opened with no access at all, so that nobody's use of the file stands in the way.
Lookup LookUp(const WCHAR* path) noexcept {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  if (path == nullptr) return {};
  HANDLE file = CreateFileW(path, 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {IsFile(path), std::nullopt};
  const FileHandle closer(file);
  BY_HANDLE_FILE_INFORMATION information = {};
  if (!GetFileInformationByHandle(file, &information)) return {true, std::nullopt};
  return {true, Identity{information.dwVolumeSerialNumber, information.nFileIndexHigh,
                         information.nFileIndexLow}};
}

}  // namespace

bool IsSameFile(const WCHAR* path, std::initializer_list<const WCHAR*> others) noexcept {
  const Lookup one = LookUp(path);
  if (!one.isFile) return false;
  return std::ranges::any_of(others, [&one](const WCHAR* second) {
    const Lookup other = LookUp(second);
    if (!other.isFile) return false;
    return !one.identity || !other.identity || one.identity == other.identity;
  });
}

bool WasNotFound() noexcept {
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}
