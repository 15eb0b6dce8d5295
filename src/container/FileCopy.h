#ifndef LUMIDEX_CONTAINER_FILECOPY_H_
#define LUMIDEX_CONTAINER_FILECOPY_H_

// The last steps of writing a new file. Each gives S_OK, LMD_E_READ_FAILED or LMD_E_WRITE_FAILED;
// what was written before a failure stays.

#include <cstdint>

#include "base/FileStream.h"

// The read-ahead of a file that is searched by small reads and then copied in large ones.
inline constexpr std::size_t kSourceWindow = 4096;

// Appends `count` bytes at a position of `source` to `output`, in blocks of at most 64 KiB.
HRESULT CopyBytes(FileStream& source, std::uint64_t position, std::uint64_t count,
                  FileStream& output);

// Appends everything from a position on; a source that ends before it has become shorter since the
// position was found, which is a failed read.
HRESULT CopyRest(FileStream& source, std::uint64_t position, FileStream& output);

// Closes a file that was written: an error may show only now.
HRESULT CloseOutput(FileStream& output);

#endif  // LUMIDEX_CONTAINER_FILECOPY_H_
