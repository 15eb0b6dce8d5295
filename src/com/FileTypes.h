#ifndef LUMIDEX_COM_FILETYPES_H_
#define LUMIDEX_COM_FILETYPES_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/VxMetadataWrapper.h"

// The bytes that tell a file's type.
inline constexpr std::size_t kTypeBytes = 8;

// The type of a file that begins with these bytes; unknown when they are fewer. They alone decide:
// a file named like a JPEG is one when it begins like any other.
FileType TypeOf(std::span<const std::uint8_t> start);

#endif  // LUMIDEX_COM_FILETYPES_H_
