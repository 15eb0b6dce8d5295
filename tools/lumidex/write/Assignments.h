#ifndef LUMIDEX_TOOL_WRITE_ASSIGNMENTS_H_
#define LUMIDEX_TOOL_WRITE_ASSIGNMENTS_H_

// "NAME=VALUE" as people type it, and the records that the module's writer takes.

#include <string>
#include <string_view>
#include <vector>

#include "base/OwnedRecords.h"

namespace tool {

// Appends the records of one assignment; GPSPosition is one of four. Returns what is wrong with the
// text, with nothing appended, or an empty text.
[[nodiscard]] std::string AddAssignment(std::string_view text, OwnedRecords& records);

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_ASSIGNMENTS_H_
