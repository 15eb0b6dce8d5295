#include "Opens.h"

#include <cstdio>

#include "Allocations.h"
#include "Files.h"
#include "Module.h"

namespace bench {
namespace {

void Mark(const char* path) {
  std::FILE* const file = std::fopen(path, "rb");
  if (file != nullptr) static_cast<void>(std::fclose(file));
}

}  // namespace

void CountOpens(const std::string& module, const std::string& folder) {
  const auto lumidex = CreateFromModule(module);
  for (const File& file : PhotographsOf(folder, *lumidex)) {
    Mark(kMarkBefore);
    const std::uint64_t before = Allocations();
    lumidex->Open(file.path.c_str());
    const std::uint64_t behind = Allocations();
    Mark(kMarkBehind);
    std::printf("%s\tallocations\t%llu\n", file.name.c_str(),
                static_cast<unsigned long long>(behind - before));
  }
}

}  // namespace bench
