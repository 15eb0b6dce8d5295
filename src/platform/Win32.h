#ifndef LUMIDEX_PLATFORM_WIN32_H_
#define LUMIDEX_PLATFORM_WIN32_H_

// The few Win32 and C-runtime names that the module calls. On Windows they are the system's own;
// elsewhere platform/posix supplies them with the same meaning. This is the one place that chooses.

#include <string>
#include <string_view>

#include <lumidex/ComTypes.h>

#if defined(_WIN32)
#include <io.h>
#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>
#else
#include "platform/posix/CodePages.h"
#include "platform/posix/DebugOutput.h"
#include "platform/posix/Files.h"
#endif

using WideString = std::basic_string<WCHAR>;
using WideStringView = std::basic_string_view<WCHAR>;

#endif  // LUMIDEX_PLATFORM_WIN32_H_
