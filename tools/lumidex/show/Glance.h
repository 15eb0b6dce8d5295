#ifndef LUMIDEX_TOOL_SHOW_GLANCE_H_
#define LUMIDEX_TOOL_SHOW_GLANCE_H_

#include <string>
#include <vector>

#include "show/Photo.h"

namespace tool {

// What a photograph says, in one to three lines: camera, time and exposure; size and place.
std::vector<std::string> Glance(Photo& photo);

}  // namespace tool

#endif  // LUMIDEX_TOOL_SHOW_GLANCE_H_
