// make_samples FOLDER: writes every sample into the folder, which must exist.

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "Samples.h"

namespace {

bool Write(const std::filesystem::path& path, const test::Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  for (const std::uint8_t byte : bytes) file.put(static_cast<char>(byte));
  file.close();
  return file.good();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: make_samples FOLDER\n", stderr);
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  for (const samples::Sample& sample : samples::AllSamples()) {
    if (Write(folder / sample.name, sample.make())) continue;
    std::fprintf(stderr, "make_samples: cannot write %s\n",
                 (folder / sample.name).string().c_str());
    return 1;
  }
  return 0;
}
