#ifndef LUMIDEX_TOOL_STREAMCONSOLE_H_
#define LUMIDEX_TOOL_STREAMCONSOLE_H_

#include <string>
#include <vector>

namespace tool {

// Runs the tool on the program's standard streams, which carry bytes, and returns the program's
// exit code. What is known of the streams is told by the platform's part of the program.
int RunOnStreams(const std::vector<std::string>& arguments, bool outIsTerminal, bool errIsTerminal);

}  // namespace tool

#endif  // LUMIDEX_TOOL_STREAMCONSOLE_H_
