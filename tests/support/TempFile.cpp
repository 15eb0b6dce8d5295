#include "support/TempFile.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace test {
namespace {

// The folder of this run's files, removed when the run ends.
class RunFolder {
 public:
  RunFolder() {
    std::random_device random;
    m_path = std::filesystem::temp_directory_path() / ("lumidex-" + std::to_string(random()));
    std::filesystem::create_directories(m_path);
  }
  ~RunFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  RunFolder(const RunFolder&) = delete;
  RunFolder& operator=(const RunFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

}  // namespace

WideString TempPath(std::string_view extension) {
  static const RunFolder folder;
  static std::atomic<int> counter = 0;
  const std::string name = std::to_string(++counter) + std::string(extension);
  const auto text = (folder.Path() / name).u16string();
  return {text.begin(), text.end()};
}

Bytes ReadFile(const WideString& path) {
  std::ifstream stream(std::filesystem::path(path), std::ios::binary | std::ios::ate);
  Bytes bytes(stream ? static_cast<std::size_t>(stream.tellg()) : 0);
  stream.seekg(0);
  stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!stream) throw std::runtime_error("cannot read a test file");
  return bytes;
}

void WriteFile(const WideString& path, const Bytes& bytes) {
  std::ofstream stream(std::filesystem::path(path), std::ios::binary | std::ios::trunc);
  stream.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) throw std::runtime_error("cannot write a test file");
}

void RemoveFile(const WideString& path) {
  std::error_code ignored;
  std::filesystem::remove(std::filesystem::path(path), ignored);
}

TempFile::TempFile(const Bytes& bytes, std::string_view extension) : m_path(TempPath(extension)) {
  WriteFile(m_path, bytes);
}

TempFile::~TempFile() {
  RemoveFile(m_path);
}

}  // namespace test
