// AppendTrailer on a file that may not grow enough.

#include <csignal>
#include <sys/resource.h>

#include <gtest/gtest.h>

#include "com/ComTest.h"
#include "support/TempFile.h"

namespace test {
namespace {

// No file of the program may be larger than this; a write beyond it comes back short.
class SizeLimit {
 public:
  explicit SizeLimit(rlim_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit = {size, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
  }
  SizeLimit(const SizeLimit&) = delete;
  SizeLimit& operator=(const SizeLimit&) = delete;

 private:
  rlimit m_before = {};
  void (*m_handler)(int);
};

class TrailerFailureTest : public LumidexTest {};

TEST_F(TrailerFailureTest, ShortWriteIsToldAndTheFileKeepsItsSize) {
  const Bytes before(100, 0xAB);
  for (const rlim_t room : {0U, 1U, 63U}) {
    SCOPED_TRACE(room);
    const TempFile file(before);
    HRESULT result = S_OK;
    {
      const SizeLimit limit(before.size() + room);
      result = m_object->AppendTrailer(file.Path());
    }
    EXPECT_EQ(result, LMD_E_WRITE_FAILED);
    EXPECT_EQ(file.Read(), before);
  }
}

TEST_F(TrailerFailureTest, ExactRoomIsEnough) {
  const TempFile file(Bytes(100, 0xAB));
  HRESULT result = E_FAIL;
  {
    const SizeLimit limit(164);
    result = m_object->AppendTrailer(file.Path());
  }
  EXPECT_EQ(result, S_OK);
  EXPECT_EQ(file.Read().size(), 164U);
}

}  // namespace
}  // namespace test
