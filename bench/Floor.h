#ifndef LUMIDEX_BENCH_FLOOR_H_
#define LUMIDEX_BENCH_FLOOR_H_

// The least that can be done with a file: the measure of everything else. The C stream is used as
// the module uses it, without a buffer of its own.

#include "platform/Win32.h"

namespace bench {

// Opens a file, reads its first 64 KiB, closes it.
void ReadStart(const WCHAR* path);

// Copies a file in blocks of 64 KiB. Throws when that fails.
void CopyFile64K(const WCHAR* source, const WCHAR* output);

}  // namespace bench

#endif  // LUMIDEX_BENCH_FLOOR_H_
