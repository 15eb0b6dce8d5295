// replay_NAME FOLDER [FOLDER...]: runs a fuzz target over the files of the folders. The first must
// hold some; the others may be missing. The file at work is named, so that a failure tells which.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  if (!std::filesystem::exists(folder)) return files;
  for (const auto& item : std::filesystem::directory_iterator(folder)) {
    if (item.is_regular_file()) files.push_back(item.path());
  }
  std::ranges::sort(files);
  return files;
}

// The bytes stand in a block of their own size, so that a read behind them is seen.
bool Replay(const std::filesystem::path& path) {
  std::printf("%s\n", path.string().c_str());
  std::fflush(stdout);
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file) return false;
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  return LLVMFuzzerTestOneInput(input.data(), input.size()) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: replay_NAME FOLDER [FOLDER...]\n", stderr);
    return 2;
  }
  for (int i = 1; i < argc; ++i) {
    const auto files = FilesOf(argv[i]);
    if (i == 1 && files.empty()) {
      std::fprintf(stderr, "no input in %s\n", argv[i]);
      return 1;
    }
    if (!std::ranges::all_of(files, Replay)) {
      std::fputs("the input could not be replayed\n", stderr);
      return 1;
    }
  }
  return 0;
}
