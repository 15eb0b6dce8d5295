#ifndef LUMIDEX_TESTS_SUPPORT_STOREFILE_H_
#define LUMIDEX_TESTS_SUPPORT_STOREFILE_H_

// A metadata store whose file holds given bytes, ready for one of its readers.

#include <cstdint>
#include <optional>
#include <string>

#include "exif/VxMetadata.h"
#include "support/Bytes.h"
#include "support/TempFile.h"

namespace test {

// All readers on, no merge.
inline constexpr std::uint32_t kReadAll = 0x0CDC | PARSE_NO_MERGE;

class StoreFile {
 public:
  explicit StoreFile(const Bytes& bytes, std::uint32_t flags = kReadAll);
  ~StoreFile();

  VxMetadata& Store() { return m_store; }
  FileStream& Stream() { return *m_store.m_pFile; }

  // Runs the segment walk over the file.
  HRESULT ParseJpeg() { return m_store.m_fnParseAppSegments(); }

  // Runs the TIFF reader over a block that begins at `tiffBase`, without bounds unless they are
  // given.
  HRESULT ParseTiff(std::uint32_t tiffBase = 0, std::uint32_t segStart = 0,
                    std::uint32_t segEnd = 0) {
    return m_store.m_fnParseTiffHeader(tiffBase, segStart, segEnd);
  }

 private:
  TempFile m_file;
  VxMetadata m_store;
};

// A stored entry in a form that one comparison checks.
struct Stored {
  std::uint32_t tag = 0;
  std::uint32_t type = 0;
  std::uint32_t count = 0;
  std::string hex;

  bool operator==(const Stored&) const = default;
};

// What a table holds under a key, or nothing.
std::optional<Stored> Find(VxMetadata& store, std::int32_t block, std::uint32_t key);

// The keys of a table in order.
std::vector<std::uint32_t> Keys(VxMetadata& store, std::int32_t block);

// The bytes of the thumbnail, or "none".
std::string ThumbnailHex(VxMetadata& store);

// Printed by a failing comparison.
void PrintTo(const Stored& stored, std::ostream* stream);

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_STOREFILE_H_
