#ifndef LUMIDEX_TOOL_WRITE_WRITECOMMANDS_H_
#define LUMIDEX_TOOL_WRITE_WRITECOMMANDS_H_

// The commands about packets and those that write a file.

#include <string>

#include <lumidex/ILumidex.h>

#include "CommandLine.h"
#include "Progress.h"

namespace tool {

// Prints the bytes of a file's XMP packet and nothing else.
HRESULT PrintPacket(ILumidex& lumidex, const std::string& file, Progress& output);

// Whether the command writes options.output.
bool WritesFile(Command command);

// Writes options.output. On failure `file` becomes the one of the files that the code is about.
HRESULT WriteFile(const Options& options, ILumidex& lumidex, std::string& file);

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_WRITECOMMANDS_H_
