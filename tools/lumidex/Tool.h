#ifndef LUMIDEX_TOOL_TOOL_H_
#define LUMIDEX_TOOL_TOOL_H_

#include <string>
#include <vector>

#include "Console.h"

namespace tool {

// Runs the tool with arguments in UTF-8, without the program's name. Returns the exit code.
int RunTool(const std::vector<std::string>& arguments, Console& console);

}  // namespace tool

#endif  // LUMIDEX_TOOL_TOOL_H_
