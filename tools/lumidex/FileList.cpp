#include "FileList.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>

#include "Text.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

// The first five are names of JPEG files. An EXIF block in a file of its own is a TIFF file.
constexpr std::array<std::string_view, 9> kExtensions = {
    ".jpg", ".jpeg", ".jpe", ".jfif", ".jif", ".png", ".tif", ".tiff", ".exif",
};
constexpr std::size_t kJpegExtensions = 5;

bool HasExtension(std::string_view name, FolderFiles wanted) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos) return false;
  std::string extension(name.substr(dot));
  for (char& c : extension) {
    if ('A' <= c && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  const std::span<const std::string_view> all(kExtensions);
  const auto known = wanted == FolderFiles::Jpegs ? all.first(kJpegExtensions) : all;
  return std::find(known.begin(), known.end(), extension) != known.end();
}

std::string Utf8FromPath(const fs::path& path) {
  const std::u8string text = path.generic_u8string();
  return CleanUtf8(std::string(text.begin(), text.end()));
}

std::string Join(const std::string& folder, const std::string& below) {
  const bool ends = !folder.empty() && (folder.back() == '/' || folder.back() == '\\');
  return folder + (ends ? "" : "/") + below;
}

std::vector<std::string> WalkFolder(const std::string& folder, FolderFiles wanted,
                                    Progress& progress) {
  std::vector<std::string> files;
  std::error_code error;
  const fs::path root(WideFromUtf8(folder));
  const auto options = fs::directory_options::skip_permission_denied;
  fs::recursive_directory_iterator walk(root, options, error);
  for (; !error && walk != fs::recursive_directory_iterator(); walk.increment(error)) {
    std::error_code ignored;
    const std::string below = Utf8FromPath(walk->path().lexically_relative(root));
    if (!HasExtension(below, wanted) || !walk->is_regular_file(ignored)) continue;
    files.push_back(Join(folder, below));
    progress.Found(files.size());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::vector<std::string> ListFiles(const std::vector<std::string>& arguments, FolderFiles wanted,
                                   Progress& progress) {
  std::vector<std::string> files;
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (!fs::is_directory(fs::path(WideFromUtf8(argument)), error)) {
      files.push_back(argument);
      continue;
    }
    const auto below = WalkFolder(argument, wanted, progress);
    if (below.empty()) files.push_back(argument);
    files.insert(files.end(), below.begin(), below.end());
  }
  return files;
}

}  // namespace tool
