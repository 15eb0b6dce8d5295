#ifndef LUMIDEX_TOOL_SHOW_VALUETEXT_H_
#define LUMIDEX_TOOL_SHOW_VALUETEXT_H_

#include <cstdint>
#include <string>

#include <lumidex/ImageInfo.h>

#include "base/TagEntry.h"
#include "base/TagMap.h"

namespace tool {

// A stored value in words, for one line: decoded when its tag is known, and safe to print.
std::string ValueText(std::int32_t block, const TagEntry& entry, const TagMap& table);

// The same for one of the image basics, which exist as records only.
std::string BasicsText(const CInfoRecord& record);

}  // namespace tool

#endif  // LUMIDEX_TOOL_SHOW_VALUETEXT_H_
