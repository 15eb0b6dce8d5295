#include "com/FilePaths.h"

#include "base/FileIdentity.h"

bool IsFree(const WCHAR* path, std::initializer_list<const WCHAR*> sources) {
  if (path == nullptr || GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES) return false;
  return WasNotFound() || !IsSameFile(path, sources);
}

bool IsUsableFile(const WCHAR* path) {
  constexpr DWORD kUsable =
      FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kUsable) != 0;
}

void KeepPath(std::span<WCHAR> kept, const WCHAR* path) {
  const WideStringView whole(path == nullptr ? LMD_W("") : path);
  kept[whole.copy(kept.data(), kept.size() - 1)] = 0;
}
