#ifndef LUMIDEX_TOOL_PATHLIST_H_
#define LUMIDEX_TOOL_PATHLIST_H_

#include <string>
#include <string_view>
#include <vector>

#include "Console.h"
#include "platform/Win32.h"

namespace tool {

// The argument that stands for a list on stdin.
inline constexpr std::string_view kStandardInput = "-";

// The paths in a list: one a line, in UTF-8, with LF or CR LF. A byte-order mark at the start and
// empty lines are no paths.
std::vector<std::string> PathsOfList(std::string_view text);

// Appends the paths of a list: of a file, or of stdin. LMD_E_SRC_NOT_FOUND, LMD_E_OPEN_FAILED or
// LMD_E_READ_FAILED leaves them as they were.
HRESULT AppendList(const std::string& file, Console& console, std::vector<std::string>& paths);

}  // namespace tool

#endif  // LUMIDEX_TOOL_PATHLIST_H_
