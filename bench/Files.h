#ifndef LUMIDEX_BENCH_FILES_H_
#define LUMIDEX_BENCH_FILES_H_

#include <string>
#include <vector>

#include "FileList.h"
#include "platform/Win32.h"

namespace bench {

struct File {
  std::string name;  // UTF-8
  WideString path;
};

// The image files of a folder and below it, chosen by extension. Throws when there are none.
std::vector<File> FilesOf(const std::string& folder, tool::FolderFiles wanted);

}  // namespace bench

#endif  // LUMIDEX_BENCH_FILES_H_
