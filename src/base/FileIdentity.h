#ifndef LUMIDEX_BASE_FILEIDENTITY_H_
#define LUMIDEX_BASE_FILEIDENTITY_H_

#include <initializer_list>

#include "platform/Win32.h"

// Whether a path leads to the same file as any of others: by the same path, by another spelling,
// through a link. One that is null, does not exist, or is a folder is the same as none. Files that
// the system does not identify may be one, so the answer is true.
bool IsSameFile(const WCHAR* path, std::initializer_list<const WCHAR*> others) noexcept;

// Whether the system's last call with a path failed because nothing stands there.
bool WasNotFound() noexcept;

#endif  // LUMIDEX_BASE_FILEIDENTITY_H_
