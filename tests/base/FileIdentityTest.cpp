#include <filesystem>

#include <gtest/gtest.h>

#include "base/FileIdentity.h"
#include "support/TempFile.h"

namespace test {
namespace {

WideString FileName(const std::filesystem::path& path) {
  const auto name = path.u16string();
  return {name.begin(), name.end()};
}

TEST(FileIdentity, OnePathIsOneFile) {
  const TempFile file(Text("x"));
  EXPECT_TRUE(IsSameFile(file.Path(), {file.Path()}));
}

TEST(FileIdentity, EqualContentsAreNotOneFile) {
  const TempFile first(Text("x"));
  const TempFile second(Text("x"));
  EXPECT_FALSE(IsSameFile(first.Path(), {second.Path()}));
}

TEST(FileIdentity, OtherSpellingIsTheSameFile) {
  const TempFile file(Text("x"));
  const std::filesystem::path path(file.Path());
  const auto folder = path.parent_path();
  const WideString dotted = FileName(folder / "." / path.filename());
  const WideString roundabout = FileName(folder / ".." / folder.filename() / path.filename());
  EXPECT_TRUE(IsSameFile(file.Path(), {dotted.c_str()}));
  EXPECT_TRUE(IsSameFile(roundabout.c_str(), {file.Path()}));
}

TEST(FileIdentity, HardLinkIsTheSameFile) {
  const TempFile file(Text("x"));
  const WideString link = TempPath();
  std::filesystem::create_hard_link(std::filesystem::path(file.Path()),
                                    std::filesystem::path(link));
  EXPECT_TRUE(IsSameFile(file.Path(), {link.c_str()}));
  RemoveFile(link);
}

TEST(FileIdentity, CopyIsAnotherFile) {
  const TempFile file(Text("x"));
  const WideString copy = TempPath();
  std::filesystem::copy_file(std::filesystem::path(file.Path()), std::filesystem::path(copy));
  EXPECT_FALSE(IsSameFile(file.Path(), {copy.c_str()}));
  RemoveFile(copy);
}

TEST(FileIdentity, PathBelowAFileIsNoFile) {
  const TempFile file(Text("x"));
  const WideString below = WideString(file.Path()) + LMD_W("/x");
  EXPECT_FALSE(IsSameFile(file.Path(), {below.c_str()}));
  EXPECT_FALSE(IsSameFile(below.c_str(), {file.Path()}));
}

TEST(FileIdentity, MissingFilesAreNoFile) {
  const TempFile file(Text("x"));
  const WideString missing = TempPath();
  EXPECT_FALSE(IsSameFile(file.Path(), {missing.c_str()}));
  EXPECT_FALSE(IsSameFile(missing.c_str(), {file.Path()}));
  EXPECT_FALSE(IsSameFile(missing.c_str(), {missing.c_str()}));
  EXPECT_FALSE(IsSameFile(nullptr, {file.Path()}));
  EXPECT_FALSE(IsSameFile(file.Path(), {nullptr}));
  EXPECT_FALSE(IsSameFile(nullptr, {nullptr}));
}

TEST(FileIdentity, MissingPathsWereNotFound) {
  const WideString missing = TempPath();
  for (const WideString& path : {missing, missing + LMD_W("/x")}) {
    ASSERT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(WasNotFound());
  }
}

TEST(FileIdentity, AnOpenFileCanBeAskedAbout) {
  const TempFile file(Text("x"));
  std::FILE* const stream = _wfopen(file.Path(), LMD_W("r+b"));
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(IsSameFile(file.Path(), {file.Path()}));
  std::fclose(stream);
}

}  // namespace
}  // namespace test
