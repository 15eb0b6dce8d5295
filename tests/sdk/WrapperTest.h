#ifndef LUMIDEX_TESTS_SDK_WRAPPERTEST_H_
#define LUMIDEX_TESTS_SDK_WRAPPERTEST_H_

// What the tests of the C++ wrapper share.

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include <lumidex/Lumidex.hpp>

#include "support/Bytes.h"
#include "support/TempFile.h"

namespace test {

// The module under test, loaded by the path that the program was given.
lumidex::Module LoadModule();

// The code of the error that an action ends with; S_OK without one.
inline HRESULT CodeOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const lumidex::Error& error) {
    return error.Code();
  }
  return S_OK;
}

// A folder of a test's own, with one photograph.
class PhotoFolder {
 public:
  explicit PhotoFolder(const Bytes& bytes, const char* name = "photo.jpg")
      : m_folder(TempPath("")), m_photo(m_folder / name) {
    std::filesystem::create_directory(m_folder);
    Write(name, bytes);
  }
  ~PhotoFolder() { std::filesystem::remove_all(m_folder); }
  PhotoFolder(const PhotoFolder&) = delete;
  PhotoFolder& operator=(const PhotoFolder&) = delete;

  const std::filesystem::path& Photo() const { return m_photo; }
  Bytes Read() const { return lumidex::detail::ReadFile(m_photo); }

  std::filesystem::path Write(const char* name, const Bytes& bytes) const {
    std::ofstream file(m_folder / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return m_folder / name;
  }

  std::ptrdiff_t FileCount() const {
    return std::distance(std::filesystem::directory_iterator(m_folder),
                         std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path m_folder;
  std::filesystem::path m_photo;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_SDK_WRAPPERTEST_H_
