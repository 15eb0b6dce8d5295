#ifndef LUMIDEX_SAVE_HPP_
#define LUMIDEX_SAVE_HPP_

// Changing a photograph without ever risking it: the new file is written beside it, read back,
// brought to the disk, and takes the old one's place in one step. Whatever fails or breaks off, the
// photograph is the old one or the new one, whole; at worst a file ending in ".lumidex-new" or
// ".lumidex-old" stays beside it. C++17.

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "Photo.hpp"
#include "Records.hpp"

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace lumidex {

// What is written into a JPEG. Records of the groups LMD_GROUP_IFD0, _EXIF and _GPS whose tags the
// module writes; values of 16 bits are given in 32. A thumbnail, a whole JPEG stream, is written
// with records only.
struct Edit {
  std::vector<Record> records;
  Bytes thumbnail;
  std::optional<std::filesystem::path> xmpFile;
};

struct SaveOptions {
  bool keepTimes = false;  // the new file has the times of the old one
};

namespace detail {

inline Bytes ReadFile(const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  std::ifstream file(path, std::ios::binary);
  if (error || !file) throw Error("reading " + Utf8Of(path), LMD_E_OPEN_FAILED);
  Bytes bytes(static_cast<std::size_t>(size));
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!file) throw Error("reading " + Utf8Of(path), LMD_E_READ_FAILED);
  return bytes;
}

// A name beside a file that nobody else takes.
inline std::filesystem::path SiblingOf(const std::filesystem::path& path, const char* ending) {
  std::random_device random;
  std::filesystem::path sibling = path;
  sibling += "." + std::to_string(random()) + std::to_string(random()) + ending;
  return sibling;
}

// A file that is removed unless it has become the photograph.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::filesystem::path& photo)
      : m_path(SiblingOf(photo, ".lumidex-new")) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    if (!m_path.empty()) std::filesystem::remove(m_path, ignored);
  }

  const std::filesystem::path& Path() const { return m_path; }
  void Keep() { m_path.clear(); }

 private:
  std::filesystem::path m_path;
};

// Where the segments of a JPEG that hold no metadata begin: a rewrite leaves all bytes from there.
inline std::size_t ImageStart(const Bytes& jpeg) {
  std::size_t position = 2;
  while (position + 4 <= jpeg.size() && jpeg[position] == 0xFF) {
    const unsigned marker = jpeg[position + 1];
    if ((marker < 0xE0 || marker > 0xEF) && marker != 0xFE) break;
    const std::size_t length = jpeg[position + 2] * 256U + jpeg[position + 3];
    if (length > jpeg.size() - position - 2) break;
    position += 2 + length;
  }
  return position < jpeg.size() ? position : jpeg.size();
}

inline bool EndsWith(const Bytes& bytes, Bytes::const_iterator first, Bytes::const_iterator last) {
  return last - first <= static_cast<std::ptrdiff_t>(bytes.size()) &&
         std::equal(first, last, bytes.end() - (last - first));
}

// Whether an EXIF segment comes first, where a rewrite puts it.
inline bool BeginsWithExif(const Bytes& jpeg) {
  const Bytes head = {0xFF, 0xD8, 0xFF, 0xE1};
  const Bytes name = {'E', 'x', 'i', 'f', 0, 0};
  return jpeg.size() >= 12 && std::equal(head.begin(), head.end(), jpeg.begin()) &&
         std::equal(name.begin(), name.end(), jpeg.begin() + 6);
}

inline bool Contains(const Bytes& bytes, const Bytes& part) {
  return std::search(bytes.begin(), bytes.end(), part.begin(), part.end()) != bytes.end();
}

// Whether the new bytes are the old ones with these and `overhead` more put in at one place.
inline bool IsInsertion(const Bytes& before, const Bytes& after, const Bytes& inserted,
                        std::size_t overhead) {
  if (after.size() != before.size() + inserted.size() + overhead) return false;
  const auto front = std::mismatch(before.begin(), before.end(), after.begin()).first;
  return EndsWith(after, front, before.end()) && Contains(after, inserted);
}

struct FileChange {
  const Module& module;
  std::filesystem::path photo;
  SaveOptions options;
};

[[noreturn]] inline void ThrowSystemError(const char* operation, const FileChange& change);

// Gives the new file what the old one had besides its bytes, and brings it to the disk.
inline void Finish(const FileChange& change, const std::filesystem::path& file);

// Puts the new file in the old one's place.
inline void Replace(const FileChange& change, const std::filesystem::path& file);

#if defined(_WIN32)

class FileHandle {
 public:
  FileHandle(const std::filesystem::path& path, DWORD access)
      : m_handle(CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() {
    if (IsOpen()) CloseHandle(m_handle);
  }

  bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return m_handle; }

 private:
  HANDLE m_handle;
};

inline void ThrowSystemError(const char* operation, const FileChange& change) {
  const DWORD code = GetLastError();
  throw Error(operation + (" " + Utf8Of(change.photo)), HRESULT_FROM_WIN32(code));
}

inline void Finish(const FileChange& change, const std::filesystem::path& file) {
  const FileHandle target(file, GENERIC_READ | GENERIC_WRITE);
  if (!target.IsOpen()) ThrowSystemError("opening the new", change);
  if (change.options.keepTimes) {
    const FileHandle source(change.photo, GENERIC_READ);
    FILETIME created;
    FILETIME accessed;
    FILETIME written;
    if (!source.IsOpen() || !GetFileTime(source.Get(), &created, &accessed, &written) ||
        !SetFileTime(target.Get(), &created, &accessed, &written)) {
      ThrowSystemError("keeping the times of", change);
    }
  }
  if (!FlushFileBuffers(target.Get())) ThrowSystemError("writing", change);
}

// The old file keeps a name until the new one is in place, even if the system stops halfway.
inline void Replace(const FileChange& change, const std::filesystem::path& file) {
  const std::filesystem::path old = SiblingOf(change.photo, ".lumidex-old");
  if (!ReplaceFileW(change.photo.c_str(), file.c_str(), old.c_str(), 0, nullptr, nullptr)) {
    const DWORD code = GetLastError();
    if (GetFileAttributesW(change.photo.c_str()) == INVALID_FILE_ATTRIBUTES) {
      MoveFileExW(old.c_str(), change.photo.c_str(), 0);
    }
    SetLastError(code);
    ThrowSystemError("replacing", change);
  }
  DeleteFileW(old.c_str());
}

#else

class FileHandle {
 public:
  FileHandle(const std::filesystem::path& path, int flags)
      : m_handle(::open(path.c_str(), flags | O_CLOEXEC)) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() {
    if (IsOpen()) ::close(m_handle);
  }

  bool IsOpen() const { return m_handle >= 0; }
  int Get() const { return m_handle; }

 private:
  int m_handle;
};

inline void ThrowSystemError(const char* operation, const FileChange& change) {
  throw Error(operation + (" " + Utf8Of(change.photo)), LMD_E_WRITE_FAILED);
}

inline void Finish(const FileChange& change, const std::filesystem::path& file) {
  const FileHandle target(file, O_RDWR);
  const FileHandle source(change.photo, O_RDWR);  // a file that is read-only is not replaced
  struct stat old = {};
  if (!target.IsOpen() || !source.IsOpen() || fstat(source.Get(), &old) != 0) {
    ThrowSystemError("opening", change);
  }
  // Only the owner of both files may give them away; the permissions count in any case.
  if (fchown(target.Get(), old.st_uid, old.st_gid) != 0 && errno != EPERM) {
    ThrowSystemError("keeping the owner of", change);
  }
  const timespec times[] = {old.st_atim, old.st_mtim};
  if (fchmod(target.Get(), old.st_mode & 07777) != 0) {
    ThrowSystemError("keeping the permissions of", change);
  }
  if (change.options.keepTimes && futimens(target.Get(), times) != 0) {
    ThrowSystemError("keeping the times of", change);
  }
  if (fsync(target.Get()) != 0) ThrowSystemError("writing", change);
}

inline void Replace(const FileChange& change, const std::filesystem::path& file) {
  if (::rename(file.c_str(), change.photo.c_str()) != 0) ThrowSystemError("replacing", change);
  // The new entry of the folder; the photograph is whole either way.
  const FileHandle folder(change.photo.parent_path(), O_RDONLY | O_DIRECTORY);
  if (folder.IsOpen()) ::fsync(folder.Get());
}

#endif

// The size of the image as a parse tells it; nothing for a file that is not parsed.
inline std::vector<Value> ImageSize(const Module& module, const std::filesystem::path& path) {
  std::vector<Value> size;
  for (Record& record : module.Open(path).Records()) {
    const bool isSize = record.id == 256 || record.id == 257;
    if (record.group == LMD_GROUP_BASICS && isSize) size.push_back(std::move(record.value));
  }
  return size;
}

// `write` makes the new file, `isRight` compares the bytes of the old one and the new one.
template <class Write, class Check>
void ChangeFile(const Module& module, const std::filesystem::path& path, SaveOptions options,
                Write write, Check isRight) {
  std::error_code error;
  FileChange change{module, std::filesystem::canonical(path, error), options};
  if (error) throw Error("saving " + Utf8Of(path), LMD_E_SRC_NOT_FOUND);

  TemporaryFile file(change.photo);
  const Ref<ILumidex> object = module.Create();
  const WideText source = WideOf(change.photo);
  const WideText target = WideOf(file.Path());
  Require(write(*object, source.c_str(), target.c_str()), "saving");
  if (!isRight(ReadFile(change.photo), ReadFile(file.Path())) ||
      ImageSize(module, change.photo) != ImageSize(module, file.Path())) {
    throw Error("reading back " + Utf8Of(file.Path()), LMD_E_READ_FAILED);
  }
  Finish(change, file.Path());
  Replace(change, file.Path());
  file.Keep();
}

}  // namespace detail

// Writes records, and with them a thumbnail, an XMP packet or both, into a JPEG. Its own EXIF
// segment stays behind the new one, and segments before that are left out, as WriteMetadata has it.
// A record that the module does not write is dropped; LMD_E_READ_FAILED when none is left. A JPEG
// that has an XMP packet does not get a second one: LMD_E_XMP_FOUND.
inline void Save(const Module& module, const std::filesystem::path& photo, const Edit& edit,
                 SaveOptions options = {}) {
  const detail::RawRecords records(edit.records);
  const Bytes packet = edit.xmpFile ? detail::ReadFile(*edit.xmpFile) : Bytes();
  const detail::WideText xmp = edit.xmpFile ? detail::WideOf(*edit.xmpFile) : detail::WideText();
  const auto write = [&](ILumidex& object, const WCHAR* source, const WCHAR* target) {
    return object.WriteMetadata(source, target, records.Count(), records.Data(),
                                static_cast<std::uint32_t>(edit.thumbnail.size()),
                                reinterpret_cast<std::uintptr_t>(edit.thumbnail.data()),
                                edit.xmpFile ? xmp.c_str() : nullptr, TRUE);
  };
  const auto isRight = [&](const Bytes& before, const Bytes& after) {
    const auto image = static_cast<std::ptrdiff_t>(detail::ImageStart(before));
    return (edit.records.empty() || detail::BeginsWithExif(after)) &&
           detail::EndsWith(after, before.begin() + image, before.end()) &&
           detail::Contains(after, packet) && detail::Contains(after, edit.thumbnail);
  };
  detail::ChangeFile(module, photo, options, write, isRight);
}

// Puts the packet of an XMP file into a JPEG or PNG. LMD_E_XMP_FOUND when there is one.
inline void SaveXmp(const Module& module, const std::filesystem::path& photo,
                    const std::filesystem::path& xmpFile, SaveOptions options = {}) {
  const Bytes packet = detail::ReadFile(xmpFile);
  const std::size_t overhead = module.TypeOf(photo) == FileType::Png ? 34 : 33;
  const auto write = [&](ILumidex& object, const WCHAR* source, const WCHAR* target) {
    return object.EmbedXmpFile(source, target, detail::WideOf(xmpFile).c_str());
  };
  const auto isRight = [&](const Bytes& before, const Bytes& after) {
    return detail::IsInsertion(before, after, packet, overhead);
  };
  detail::ChangeFile(module, photo, options, write, isRight);
}

// Appends the trailer block to a JPEG or PNG. LMD_E_ALREADY_MARKED when it has the block.
inline void SaveTrailer(const Module& module, const std::filesystem::path& photo,
                        SaveOptions options = {}) {
  constexpr std::size_t kTrailerSize = 64;
  const auto write = [&](ILumidex& object, const WCHAR* source, const WCHAR* target) {
    std::error_code error;
    std::filesystem::copy_file(source, target, error);
    return error ? LMD_E_WRITE_FAILED : object.AppendTrailer(target);
  };
  const auto isRight = [&](const Bytes& before, const Bytes& after) {
    return after.size() == before.size() + kTrailerSize &&
           std::equal(before.begin(), before.end(), after.begin());
  };
  detail::ChangeFile(module, photo, options, write, isRight);
}

}  // namespace lumidex

#endif  // LUMIDEX_SAVE_HPP_
