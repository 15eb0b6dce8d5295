// Every method when a call on a file fails, each kind of call at any place.

#include <gtest/gtest.h>

#include "faults/FaultSweep.h"
#include "faults/posix/FailingFiles.h"

namespace test {
namespace {

class FileFaults : public testing::TestWithParam<const Operation*> {
 protected:
  // What may be answered is answered: no code is allowed that never comes.
  void SweepKind(Call kind) {
    const auto expected = GetParam()->outcomes.find(kind);
    const std::set<HRESULT> seen = Sweep(*GetParam(), kind);
    if (expected == GetParam()->outcomes.end()) return;
    for (const HRESULT code : expected->second) {
      EXPECT_TRUE(seen.contains(code)) << CodeName(code) << " is never answered";
    }
  }

 private:
  FailingFiles m_files;
};

TEST_P(FileFaults, Attributes) {
  SweepKind(Call::Attributes);
}
TEST_P(FileFaults, Open) {
  SweepKind(Call::Open);
}
TEST_P(FileFaults, Read) {
  SweepKind(Call::Read);
}
TEST_P(FileFaults, Write) {
  SweepKind(Call::Write);
}
TEST_P(FileFaults, Seek) {
  SweepKind(Call::Seek);
}
TEST_P(FileFaults, Flush) {
  SweepKind(Call::Flush);
}
TEST_P(FileFaults, Truncate) {
  SweepKind(Call::Truncate);
}
TEST_P(FileFaults, Close) {
  SweepKind(Call::Close);
}

INSTANTIATE_TEST_SUITE_P(Each, FileFaults, testing::ValuesIn(Operations()),
                         [](const auto& operation) { return std::string(operation.param->name); });

}  // namespace
}  // namespace test
