#include "MemoryFiles.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "FuzzChecks.h"

namespace fuzz {

MemoryFiles::MemoryFiles() : m_before(platform::SetFileHook(this)) {}

MemoryFiles::~MemoryFiles() {
  platform::SetFileHook(m_before);
  for (const File& file : m_files) close(file.descriptor);
}

const WCHAR* MemoryFiles::Add() {
  const int descriptor = memfd_create("fuzz", MFD_CLOEXEC);
  Require(descriptor >= 0, "the system gives a file in memory");
  const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
  m_files.push_back({descriptor, WideString(path.begin(), path.end()), false});
  return m_files.back().path.c_str();
}

void MemoryFiles::Put(const WCHAR* path, std::span<const std::uint8_t> bytes) {
  File* const file = Find(path);
  Require(file != nullptr, "the path is one of Add()");
  file->exists = true;
  Require(ftruncate(file->descriptor, 0) == 0, "a file in memory can be emptied");
  const ssize_t written = pwrite(file->descriptor, bytes.data(), bytes.size(), 0);
  Require(written == static_cast<ssize_t>(bytes.size()), "a file in memory takes its bytes");
}

void MemoryFiles::Remove(const WCHAR* path) {
  Put(path, {});
  Find(path)->exists = false;
}

bool MemoryFiles::Exists(const WCHAR* path) const {
  const File* const file = Find(path);
  return file != nullptr && file->exists;
}

test::Bytes MemoryFiles::Get(const WCHAR* path) const {
  const File* const file = Find(path);
  Require(file != nullptr && file->exists, "the file exists");
  struct stat status = {};
  Require(fstat(file->descriptor, &status) == 0, "a file in memory has a size");
  test::Bytes bytes(static_cast<std::size_t>(status.st_size));
  const ssize_t read = pread(file->descriptor, bytes.data(), bytes.size(), 0);
  Require(read == status.st_size, "a file in memory gives its bytes");
  return bytes;
}

bool MemoryFiles::Attributes(const WCHAR* path, DWORD* attributes) {
  const File* const file = Find(path);
  if (file == nullptr || file->exists) return false;
  *attributes = INVALID_FILE_ATTRIBUTES;
  return true;
}

bool MemoryFiles::Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) {
  File* const file = Find(path);
  if (file == nullptr || file->exists) return false;
  if (mode != nullptr && mode[0] != u'r') {
    file->exists = true;
    return false;
  }
  errno = ENOENT;
  *stream = nullptr;
  return true;
}

MemoryFiles::File* MemoryFiles::Find(const WCHAR* path) {
  const auto found = std::ranges::find_if(
      m_files, [&](const File& file) { return path != nullptr && file.path == path; });
  return found == m_files.end() ? nullptr : &*found;
}

const MemoryFiles::File* MemoryFiles::Find(const WCHAR* path) const {
  return const_cast<MemoryFiles*>(this)->Find(path);
}

}  // namespace fuzz
