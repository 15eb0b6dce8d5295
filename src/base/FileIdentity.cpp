#include "base/FileIdentity.h"

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

// Opened with no access at all, so that nobody's use of the file stands in the way.
std::optional<Identity> IdentityOf(const WCHAR* path) noexcept {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  if (path == nullptr) return std::nullopt;
  HANDLE file = CreateFileW(path, 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  const FileHandle closer(file);
  BY_HANDLE_FILE_INFORMATION information = {};
  if (!GetFileInformationByHandle(file, &information)) return std::nullopt;
  return Identity{information.dwVolumeSerialNumber, information.nFileIndexHigh,
                  information.nFileIndexLow};
}

}  // namespace

bool IsSameFile(const WCHAR* first, const WCHAR* second) noexcept {
  const auto identity = IdentityOf(first);
  return identity && identity == IdentityOf(second);
}
