#ifndef LUMIDEX_TESTS_SUPPORT_TEMPFILE_H_
#define LUMIDEX_TESTS_SUPPORT_TEMPFILE_H_

// A file that lives as long as a test.

#include <string>
#include <string_view>

#include "platform/Win32.h"
#include "support/Bytes.h"

namespace test {

// A path under the system's temporary folder that no other test uses; nothing exists there.
WideString TempPath(std::string_view extension = ".jpg");

Bytes ReadFile(const WideString& path);
void WriteFile(const WideString& path, const Bytes& bytes);
void RemoveFile(const WideString& path);

class TempFile {
 public:
  explicit TempFile(const Bytes& bytes, std::string_view extension = ".jpg");
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const WCHAR* Path() const { return m_path.c_str(); }
  Bytes Read() const { return ReadFile(m_path); }

 private:
  WideString m_path;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_TEMPFILE_H_
