// What only the stand-ins can show: symbolic links, and the uses of a handle that they refuse.

#include <filesystem>

#include <gtest/gtest.h>

#include "base/FileIdentity.h"
#include "support/TempFile.h"

namespace test {
namespace {

TEST(FileIdentityPosix, SymbolicLinkIsTheFileItLeadsTo) {
  const TempFile file(Text("x"));
  const WideString link = TempPath();
  std::filesystem::create_symlink(std::filesystem::path(file.Path()), std::filesystem::path(link));
  EXPECT_TRUE(IsSameFile(file.Path(), {link.c_str()}));
  EXPECT_TRUE(IsSameFile(link.c_str(), {link.c_str()}));
  RemoveFile(link);
}

TEST(FileIdentityPosix, BrokenLinkIsNoFile) {
  const WideString link = TempPath();
  std::filesystem::create_symlink(std::filesystem::path(TempPath()), std::filesystem::path(link));
  EXPECT_FALSE(IsSameFile(link.c_str(), {link.c_str()}));
  RemoveFile(link);
}

TEST(FileIdentityPosix, PathThatCannotBeAskedAboutIsNotMissing) {
  const WideString path(300, u'x');  // longer than a name may be
  for (const WCHAR* const odd : {path.c_str(), static_cast<const WCHAR*>(nullptr)}) {
    ASSERT_EQ(GetFileAttributesW(odd), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(WasNotFound());
  }
}

TEST(FileIdentityPosix, HandlesServeQueriesAlone) {
  constexpr DWORD kReadAccess = 0x80000000;
  constexpr DWORD kCreateAlways = 2;
  const TempFile file(Text("x"));
  EXPECT_EQ(CreateFileW(nullptr, 0, 0, nullptr, OPEN_EXISTING, 0, nullptr), INVALID_HANDLE_VALUE);
  EXPECT_EQ(CreateFileW(file.Path(), kReadAccess, 0, nullptr, OPEN_EXISTING, 0, nullptr),
            INVALID_HANDLE_VALUE);
  EXPECT_EQ(CreateFileW(file.Path(), 0, 0, nullptr, kCreateAlways, 0, nullptr),
            INVALID_HANDLE_VALUE);
}

TEST(FileIdentityPosix, VolumesTellFilesApart) {
  EXPECT_FALSE(IsSameFile(u"/proc/version", {u"/dev/null"}));
  EXPECT_TRUE(IsSameFile(u"/dev/null", {u"/dev/../dev/null"}));
}

}  // namespace
}  // namespace test
