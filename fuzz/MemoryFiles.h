#ifndef LUMIDEX_FUZZ_MEMORYFILES_H_
#define LUMIDEX_FUZZ_MEMORYFILES_H_

// Files that stand in memory alone and are files of the system all the same: each has a path, which
// can be opened in every mode, a size and an identity. Nothing else is named by these paths.

#include <cstdint>
#include <cstdio>
#include <deque>
#include <span>

#include "platform/Win32.h"
#include "support/Bytes.h"

namespace fuzz {

// A hook that lets a file of memory not exist until it is opened for writing. One at a time.
class MemoryFiles final : public platform::FileHook {
 public:
  MemoryFiles();
  ~MemoryFiles() override;
  MemoryFiles(const MemoryFiles&) = delete;
  MemoryFiles& operator=(const MemoryFiles&) = delete;

  // The path of a further file, which does not exist yet; it lives as long as this object.
  const WCHAR* Add();

  // Makes a file exist with these bytes, or not exist.
  void Put(const WCHAR* path, std::span<const std::uint8_t> bytes);
  void Remove(const WCHAR* path);

  bool Exists(const WCHAR* path) const;
  test::Bytes Get(const WCHAR* path) const;

  bool Attributes(const WCHAR* path, DWORD* attributes) override;
  bool Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) override;

 private:
  // The descriptor keeps the bytes; the path opens them anew.
  struct File {
    int descriptor = -1;
    WideString path;
    bool exists = false;
  };

  File* Find(const WCHAR* path);
  const File* Find(const WCHAR* path) const;

  std::deque<File> m_files;
  platform::FileHook* m_before;
};

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_MEMORYFILES_H_
