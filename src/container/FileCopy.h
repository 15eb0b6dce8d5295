#ifndef LUMIDEX_CONTAINER_FILECOPY_H_
#define LUMIDEX_CONTAINER_FILECOPY_H_

// What the writing of a new file from an old one has in common. The results of the copying are
// S_OK, LMD_E_READ_FAILED and LMD_E_WRITE_FAILED; what was copied before a failure stays.

#include <cstdint>

#include "base/BlockWriter.h"
#include "base/FileStream.h"

// Opens a file that is searched and then copied, and reads its first block, in which most searches
// stay. False when it cannot be opened; a failed read shows in the stream.
[[nodiscard]] bool OpenForCopy(FileStream& source, const WCHAR* path, const WCHAR* mode);

// Appends `count` bytes at a position of `source` to `output`.
HRESULT CopyBytes(FileStream& source, std::uint64_t position, std::uint64_t count,
                  BlockWriter& output);

// Appends everything from a position on; a source that ends before it has become shorter since the
// position was found, which is a failed read.
HRESULT CopyRest(FileStream& source, std::uint64_t position, BlockWriter& output);

#endif  // LUMIDEX_CONTAINER_FILECOPY_H_
