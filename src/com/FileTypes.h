#ifndef LUMIDEX_COM_FILETYPES_H_
#define LUMIDEX_COM_FILETYPES_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/VxMetadataWrapper.h"
#include "platform/Win32.h"

// The bytes that tell a file's type.
inline constexpr std::size_t kTypeBytes = 8;

// The type of a file that begins with these bytes; unknown when they are fewer. By design the
// path's extension is compared first, although the bytes alone give the same answer.
FileType TypeOf(const WCHAR* path, std::span<const std::uint8_t> start);

#endif  // LUMIDEX_COM_FILETYPES_H_
