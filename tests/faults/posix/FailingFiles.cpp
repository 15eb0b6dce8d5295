#include "faults/posix/FailingFiles.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

#include "faults/Fault.h"

namespace test {
namespace {

// The last stream whose read failed, until it is closed: its error indicator is set.
const std::FILE* g_failedStream = nullptr;

template <class Result>
Result Fail(Result result) {
  errno = EIO;
  return result;
}

}  // namespace

bool FailingFiles::Attributes(const WCHAR*, DWORD* attributes) {
  *attributes = INVALID_FILE_ATTRIBUTES;
  return Fault::Hits(Call::Attributes);
}

bool FailingFiles::Open(const WCHAR*, const WCHAR*, std::FILE** stream) {
  *stream = nullptr;
  return Fault::Hits(Call::Open);
}

}  // namespace test

using test::Call;
using test::Fault;

// With --wrap=f the linker gives every call of f to __wrap_f, and f itself the name __real_f.
extern "C" {

std::size_t __real_fread(void* out, std::size_t size, std::size_t count, std::FILE* stream);
std::size_t __real_fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* stream);
int __real_fseeko(std::FILE* stream, off_t offset, int origin);
off_t __real_ftello(std::FILE* stream);
int __real_ferror(std::FILE* stream);
int __real_fflush(std::FILE* stream);
int __real_ftruncate(int descriptor, off_t size);
int __real_fclose(std::FILE* stream);

std::size_t __wrap_fread(void* out, std::size_t size, std::size_t count, std::FILE* stream) {
  if (!Fault::Hits(Call::Read)) return __real_fread(out, size, count, stream);
  test::g_failedStream = stream;
  return test::Fail(std::size_t{0});
}

int __wrap_ferror(std::FILE* stream) {
  return test::g_failedStream == stream ? 1 : __real_ferror(stream);
}

// Half of a write that fails alone gets through.
std::size_t __wrap_fwrite(const void* data, std::size_t size, std::size_t count,
                          std::FILE* stream) {
  const Fault::Verdict verdict = Fault::Ask(Call::Write);
  if (verdict == Fault::Verdict::Succeeds) return __real_fwrite(data, size, count, stream);
  const std::size_t written =
      verdict == Fault::Verdict::FailsForGood ? 0 : __real_fwrite(data, size, count / 2, stream);
  return test::Fail(written);
}

int __wrap_fseeko(std::FILE* stream, off_t offset, int origin) {
  return Fault::Hits(Call::Seek) ? test::Fail(-1) : __real_fseeko(stream, offset, origin);
}

off_t __wrap_ftello(std::FILE* stream) {
  return Fault::Hits(Call::Seek) ? test::Fail(off_t{-1}) : __real_ftello(stream);
}

int __wrap_fflush(std::FILE* stream) {
  return Fault::Hits(Call::Flush) ? test::Fail(EOF) : __real_fflush(stream);
}

int __wrap_ftruncate(int descriptor, off_t size) {
  return Fault::Hits(Call::Truncate) ? test::Fail(-1) : __real_ftruncate(descriptor, size);
}

// The file is closed whatever the answer is.
int __wrap_fclose(std::FILE* stream) {
  if (test::g_failedStream == stream) test::g_failedStream = nullptr;
  const int result = __real_fclose(stream);
  return Fault::Hits(Call::Close) ? test::Fail(EOF) : result;
}

}  // extern "C"
