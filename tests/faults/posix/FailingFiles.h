#ifndef LUMIDEX_TESTS_FAULTS_POSIX_FAILINGFILES_H_
#define LUMIDEX_TESTS_FAULTS_POSIX_FAILINGFILES_H_

// Lets the current Fault decide on every call that has to do with files. Existence tests and
// openings come by the hook of the stand-ins; the calls on a stream are sent here by the linker, so
// that the streams are the system's own.

#include "platform/Win32.h"

namespace test {

class FailingFiles final : public platform::FileHook {
 public:
  FailingFiles() : m_before(platform::SetFileHook(this)) {}
  ~FailingFiles() override { platform::SetFileHook(m_before); }
  FailingFiles(const FailingFiles&) = delete;
  FailingFiles& operator=(const FailingFiles&) = delete;

  bool Attributes(const WCHAR* path, DWORD* attributes) override;
  bool Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) override;

 private:
  platform::FileHook* m_before;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_FAULTS_POSIX_FAILINGFILES_H_
