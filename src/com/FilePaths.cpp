#include "com/FilePaths.h"

bool PathExists(const WCHAR* path) {
  return path != nullptr && GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

bool IsUsableFile(const WCHAR* path) {
  constexpr DWORD kUsable =
      FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kUsable) != 0;
}

void KeepPath(std::span<WCHAR> kept, const WCHAR* path) {
  std::size_t length = 0;
  while (path != nullptr && path[length] != 0 && length + 1 < kept.size()) {
    kept[length] = path[length];
    ++length;
  }
  kept[length] = 0;
}
