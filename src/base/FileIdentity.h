#ifndef LUMIDEX_BASE_FILEIDENTITY_H_
#define LUMIDEX_BASE_FILEIDENTITY_H_

#include "platform/Win32.h"

// Whether two paths lead to one file: by the same path, by another spelling, through a link. False
// when either is null, does not exist, or is a folder. Files that the system does not identify may
// be one, so the answer is true.
bool IsSameFile(const WCHAR* first, const WCHAR* second) noexcept;

#endif  // LUMIDEX_BASE_FILEIDENTITY_H_
