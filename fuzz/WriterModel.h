#ifndef LUMIDEX_FUZZ_WRITERMODEL_H_
#define LUMIDEX_FUZZ_WRITERMODEL_H_

// What the writer makes of a list of records: which it accepts, how large the block becomes, and
// what a parse of the new segment reads back.

#include <cstdint>
#include <map>
#include <span>
#include <utility>

#include <lumidex/ImageInfo.h>

#include "exif/VxMetadata.h"
#include "support/Bytes.h"

namespace fuzz {

class WriterModel {
 public:
  WriterModel(std::span<const CInfoRecord> records, std::size_t thumbnailSize);

  // The size of the TIFF block; 0 when nothing is written.
  std::size_t BlockSize() const { return m_blockSize; }

  // Holds for a store that has parsed the new segment alone: its directories are those of the
  // accepted records and nothing more.
  void RequireReadBack(VxMetadata& store, std::span<const std::uint8_t> thumbnail) const;

 private:
  // As a store holds it, and what it takes in the block.
  struct Value {
    std::uint32_t type = 0;
    std::uint32_t count = 0;
    test::Bytes bytes;
    std::size_t written = 0;
  };
  using Directory = std::map<std::uint32_t, Value>;

  static Value ValueOf(std::uint32_t type, std::span<const std::uint8_t> record);
  void Accept(const CInfoRecord& record);

  std::map<std::uint32_t, Directory> m_directories;  // by group
  bool m_hasExifPointer = false;
  bool m_hasGpsPointer = false;
  std::size_t m_blockSize = 0;
};

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_WRITERMODEL_H_
