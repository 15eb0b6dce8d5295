#ifndef LUMIDEX_TOOL_NAMES_NAMES_H_
#define LUMIDEX_TOOL_NAMES_NAMES_H_

// Names of blocks, groups, record types and values.

#include <cstdint>
#include <string>

#include "names/TagRow.h"

namespace tool {

// The row of a value in a block, SubIFDs included; null when it has no name.
const TagRow* FindInBlock(std::int32_t block, std::uint32_t tag);

// The row of a result record by its group; null when it has no name.
const TagRow* FindInGroup(std::uint32_t group, std::uint32_t id);

// "EXIF", "SubIFD 0".
std::string BlockTitle(std::int32_t block);

// "EXIF" for 4; "?" for a number that is no group.
std::string GroupTitle(std::uint32_t group);

// "unsigned rational" for 4098; "?" for an unknown type.
std::string RecordTypeName(std::uint32_t type);

// "JPEG" for 1; "unknown" for a type that the module does not know.
std::string FileTypeName(std::int32_t type);

}  // namespace tool

#endif  // LUMIDEX_TOOL_NAMES_NAMES_H_
