#ifndef LUMIDEX_TESTS_MAKERNOTE_NOTEFILE_H_
#define LUMIDEX_TESTS_MAKERNOTE_NOTEFILE_H_

// An open file with given bytes, standing at a position.

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "base/FileStream.h"
#include "makernote/ParserBase.h"
#include "support/Bytes.h"
#include "support/TempFile.h"
#include "support/Tiff.h"

namespace test {

inline constexpr ByteOrder kLittle = ByteOrder::LittleEndian;
inline constexpr ByteOrder kBig = ByteOrder::BigEndian;

// Builds notes in big-endian order.
inline const Tiff g_big(kBig);

class NoteFile {
 public:
  explicit NoteFile(const Bytes& bytes, std::uint32_t position = 0) : m_file(bytes) {
    if (!m_stream.Open(m_file.Path(), LMD_W("rb"))) {
      throw std::runtime_error("cannot open a test file");
    }
    m_stream.Seek(position);
  }

  FileStream& Stream() { return m_stream; }
  const WCHAR* Path() const { return m_file.Path(); }

 private:
  TempFile m_file;
  FileStream m_stream;  // closed before the file is removed
};

// The tags of the entries in the order of the walk.
inline std::vector<std::uint32_t> TagsOf(CParserBase& parser) {
  std::vector<std::uint32_t> tags;
  for (bool more = parser.FirstEntry(); more; more = parser.NextEntry()) {
    if (const TagEntry* entry = parser.CurrentEntry()) tags.push_back(entry->m_nTag);
  }
  return tags;
}

}  // namespace test

#endif  // LUMIDEX_TESTS_MAKERNOTE_NOTEFILE_H_
