#ifndef LUMIDEX_TOOL_COMMANDS_H_
#define LUMIDEX_TOOL_COMMANDS_H_

#include <string>

#include <lumidex/ILumidex.h>

#include "CommandLine.h"
#include "Progress.h"

namespace tool {

// Runs the command on one file and prints what it finds out; for the commands that write a file, on
// the written one. Returns a failure code when the file failed; the caller reports it.
HRESULT RunOnFile(const Options& options, ILumidex& lumidex, const std::string& file,
                  Progress& output);

}  // namespace tool

#endif  // LUMIDEX_TOOL_COMMANDS_H_
