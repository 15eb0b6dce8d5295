// A message that the C library cannot format; what it can differs from one runtime to another.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/LogCapture.h"

namespace test {
namespace {

// Under the locale "C" no byte stands for this character.
TEST(DebugLog, MessageThatCannotBeFormattedIsDropped) {
  const LogCapture log;
  DebugLog("name: %ls", L"\u4E00");
  DebugLog("name: %ls", L"a");
  EXPECT_EQ(log.Lines(), std::vector<std::string>{"name: a"});
}

}  // namespace
}  // namespace test
