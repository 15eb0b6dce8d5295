// What the methods ask about a path before anything is opened, and how they keep one.

#include <array>

#include <gtest/gtest.h>

#include "com/FilePaths.h"
#include "support/TempFile.h"

namespace test {
namespace {

TEST(FilePaths, OnlyAPathThatLeadsSomewhereExists) {
  const TempFile file({1});
  EXPECT_TRUE(PathExists(file.Path()));
  EXPECT_FALSE(PathExists(TempPath().c_str()));
  EXPECT_FALSE(PathExists(nullptr));
}

TEST(FilePaths, KeptPathIsCutAndTerminated) {
  std::array<WCHAR, 4> kept;
  KeepPath(kept, LMD_W("abc"));
  EXPECT_EQ(WideString(kept.data()), LMD_W("abc"));
  KeepPath(kept, LMD_W("wxyz"));
  EXPECT_EQ(WideString(kept.data()), LMD_W("wxy"));
  KeepPath(kept, nullptr);
  EXPECT_EQ(WideString(kept.data()), LMD_W(""));
}

}  // namespace
}  // namespace test
