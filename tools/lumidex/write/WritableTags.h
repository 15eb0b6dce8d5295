#ifndef LUMIDEX_TOOL_WRITE_WRITABLETAGS_H_
#define LUMIDEX_TOOL_WRITE_WRITABLETAGS_H_

// The tags that a value can be set for: what the module's writer accepts, under the names of
// `show`.

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/TypeSizes.h"
#include "values/Value.h"

namespace tool {

struct WritableTag {
  std::uint32_t group = 0;
  std::uint32_t tag = 0;
  TagType type = TYPE_BYTE;
  Decoder decoder = nullptr;  // how `show` reads the value, which says how people write it
};

// Nothing for a name that no tag of the writer has. The pointers to directories are not among them:
// the writer sets those itself.
std::optional<WritableTag> FindWritableTag(std::string_view name);

// Whether `show` knows the name at all.
bool IsTagName(std::string_view name);

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_WRITABLETAGS_H_
