#include "Files.h"

#include <stdexcept>
#include <string_view>

#include "Text.h"

namespace bench {
namespace {

class SilentConsole final : public tool::Console {
 public:
  void Out(std::string_view) override {}
  void Err(std::string_view) override {}
  bool OutIsTerminal() const override { return false; }
  bool ErrIsTerminal() const override { return false; }
  bool In(std::string&) override { return false; }
};

}  // namespace

std::vector<File> FilesOf(const std::string& folder, tool::FolderFiles wanted) {
  SilentConsole console;
  tool::Progress progress(console);
  std::vector<File> files;
  for (const std::string& name : tool::ListFiles({folder}, wanted, progress)) {
    files.push_back({name, tool::WideFromUtf8(name)});
  }
  return files;
}

std::vector<File> PhotographsOf(const std::string& folder, ILumidex& lumidex) {
  std::vector<File> files = FilesOf(folder, tool::FolderFiles::Jpegs);
  std::erase_if(files, [&](const File& file) { return FAILED(lumidex.Open(file.path.c_str())); });
  if (files.empty()) throw std::runtime_error("no photographs in " + folder);
  return files;
}

}  // namespace bench
