#ifndef LUMIDEX_TOOL_FILELIST_H_
#define LUMIDEX_TOOL_FILELIST_H_

#include <string>
#include <vector>

#include "Progress.h"

namespace tool {

enum class FolderFiles {
  Images,  // JPEG, PNG and TIFF, by extension
  Jpegs,
};

// The files that the arguments stand for, in their order: a folder becomes the files in it and
// below it that have a fitting extension, sorted by name. A folder without any stays in the list
// itself, so that it is reported like any other path that is no photograph. Paths are UTF-8; below
// a folder they are joined with "/" on every platform.
std::vector<std::string> ListFiles(const std::vector<std::string>& arguments, FolderFiles wanted,
                                   Progress& progress);

}  // namespace tool

#endif  // LUMIDEX_TOOL_FILELIST_H_
