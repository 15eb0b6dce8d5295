#ifndef LUMIDEX_BENCH_FILES_H_
#define LUMIDEX_BENCH_FILES_H_

#include <string>
#include <vector>

#include <lumidex/ILumidex.h>

#include "FileList.h"
#include "platform/Win32.h"

namespace bench {

struct File {
  std::string name;  // UTF-8
  WideString path;
};

// The files of a folder and below it, chosen by extension.
std::vector<File> FilesOf(const std::string& folder, tool::FolderFiles wanted);

// The JPEG files among them that Open accepts. Throws when there are none.
std::vector<File> PhotographsOf(const std::string& folder, ILumidex& lumidex);

}  // namespace bench

#endif  // LUMIDEX_BENCH_FILES_H_
