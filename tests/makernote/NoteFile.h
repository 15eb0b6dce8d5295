#ifndef LUMIDEX_TESTS_MAKERNOTE_NOTEFILE_H_
#define LUMIDEX_TESTS_MAKERNOTE_NOTEFILE_H_

// An open file with given bytes, standing at a position.

#include <cstdint>
#include <stdexcept>

#include "base/FileStream.h"
#include "support/Bytes.h"
#include "support/TempFile.h"

namespace test {

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

}  // namespace test

#endif  // LUMIDEX_TESTS_MAKERNOTE_NOTEFILE_H_
