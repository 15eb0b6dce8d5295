// What the methods ask about a path before anything is opened, and how they keep one.

#include <array>
#include <filesystem>

#include <gtest/gtest.h>

#include "com/FilePaths.h"
#include "support/TempFile.h"

namespace test {
namespace {

TEST(FilePaths, OnlyAPathWithNothingAtItIsFree) {
  const TempFile file({1});
  const WideString folder = TempPath();
  std::filesystem::create_directory(std::filesystem::path(folder));
  EXPECT_FALSE(IsFree(file.Path(), {}));
  EXPECT_FALSE(IsFree(folder.c_str(), {}));
  EXPECT_FALSE(IsFree(nullptr, {}));
  EXPECT_TRUE(IsFree(TempPath().c_str(), {file.Path()}));
  EXPECT_TRUE(IsFree((WideString(file.Path()) + LMD_W("/x")).c_str(), {file.Path()}));
  RemoveFile(folder);
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
