#ifndef LUMIDEX_TOOL_SHOW_SHOW_H_
#define LUMIDEX_TOOL_SHOW_SHOW_H_

// The forms in which `show` prints a file. Each returns its text with a final line feed.

#include <string>

#include "CommandLine.h"
#include "show/Photo.h"

namespace tool {

// One JSON object in one line.
std::string JsonLine(Photo& photo, const Options& options);

// The records, one a line, in aligned columns.
std::string RecordList(const Photo& photo, const Options& options);

// Everything for people: the photograph at a glance, then block by block.
std::string Report(Photo& photo, const Options& options, bool colour);

}  // namespace tool

#endif  // LUMIDEX_TOOL_SHOW_SHOW_H_
