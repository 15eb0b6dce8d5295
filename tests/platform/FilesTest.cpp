// The file functions that the module uses, on whatever supplies them: the Windows runtime or the
// stand-ins.

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "platform/Stream.h"
#include "platform/Win32.h"
#include "support/Bytes.h"
#include "support/TempFile.h"

namespace {

using test::Bytes;
using test::Stream;
using test::TempFile;
using test::Text;

constexpr DWORD kFileBits =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;

Stream Open(const WideString& path, const WCHAR* mode) {
  return Stream(_wfopen(path.c_str(), mode));
}

std::string ReadAll(std::FILE* stream) {
  std::array<char, 64> buffer;
  return {buffer.data(), std::fread(buffer.data(), 1, buffer.size(), stream)};
}

bool WriteAll(std::FILE* stream, std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size();
}

// A path that is removed when the test ends, whether or not the test makes a file of it.
class PathToRemove {
 public:
  PathToRemove() = default;
  ~PathToRemove() { test::RemoveFile(path); }
  PathToRemove(const PathToRemove&) = delete;
  PathToRemove& operator=(const PathToRemove&) = delete;

  const WideString path = test::TempPath();
};

class TempFolder : public PathToRemove {
 public:
  TempFolder() { std::filesystem::create_directory(std::filesystem::path(path)); }
};

TEST(FileAttributes, RegularFileIsAFile) {
  const TempFile file(Text("x"));
  EXPECT_NE(GetFileAttributesW(file.Path()) & kFileBits, 0U);
  EXPECT_EQ(GetFileAttributesW(file.Path()) & FILE_ATTRIBUTE_DIRECTORY, 0U);
}

TEST(FileAttributes, EmptyFileIsAFile) {
  const TempFile file({});
  EXPECT_EQ(GetFileAttributesW(file.Path()), FILE_ATTRIBUTE_ARCHIVE);
}

TEST(FileAttributes, FolderHasNoFileBit) {
  const TempFolder folder;
  EXPECT_EQ(GetFileAttributesW(folder.path.c_str()), FILE_ATTRIBUTE_DIRECTORY);
}

TEST(FileAttributes, MissingFileIsInvalid) {
  EXPECT_EQ(GetFileAttributesW(test::TempPath().c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW((test::TempPath() + LMD_W("/x.jpg")).c_str()),
            INVALID_FILE_ATTRIBUTES);
}

TEST(FileAttributes, EmptyAndNullPathsAreInvalid) {
  EXPECT_EQ(GetFileAttributesW(LMD_W("")), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW(nullptr), INVALID_FILE_ATTRIBUTES);
}

TEST(FileAttributes, PathLongerThanAnySystemTakesIsInvalid) {
  const WideString path(40000, LMD_W('x'));
  EXPECT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(FileStreams, ReadingModeNeedsTheFile) {
  const TempFile file(Text("hello"));
  const Stream stream = Open(file.Path(), LMD_W("rb"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(ReadAll(stream.get()), "hello");
  EXPECT_EQ(Open(test::TempPath(), LMD_W("rb")), nullptr);
}

TEST(FileStreams, BinaryModeKeepsLineEnds) {
  const TempFile file(Text("a\r\nb\x1A\nc"));
  const Stream stream = Open(file.Path(), LMD_W("rb"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(ReadAll(stream.get()), "a\r\nb\x1A\nc");
}

TEST(FileStreams, WritingModeCutsTheFile) {
  const TempFile file(Text("a long text"));
  Stream stream = Open(file.Path(), LMD_W("wb"));
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(WriteAll(stream.get(), "a\nb"));
  stream.reset();
  EXPECT_EQ(file.Read(), Text("a\nb"));
}

TEST(FileStreams, WritingModeMakesTheFile) {
  const PathToRemove file;
  EXPECT_NE(Open(file.path, LMD_W("wb")), nullptr);
  EXPECT_EQ(test::ReadFile(file.path), Bytes());
}

TEST(FileStreams, WritingModeWithReadingReadsBack) {
  const TempFile file(Text("before"));
  const Stream stream = Open(file.Path(), LMD_W("w+b"));
  ASSERT_NE(stream, nullptr);
  EXPECT_TRUE(WriteAll(stream.get(), "new"));
  EXPECT_EQ(_fseeki64(stream.get(), 0, SEEK_SET), 0);
  EXPECT_EQ(ReadAll(stream.get()), "new");
}

TEST(FileStreams, UpdatingModeKeepsTheRest) {
  const TempFile file(Text("0123456789"));
  Stream stream = Open(file.Path(), LMD_W("r+b"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_fseeki64(stream.get(), 4, SEEK_SET), 0);
  EXPECT_TRUE(WriteAll(stream.get(), "xy"));
  stream.reset();
  EXPECT_EQ(file.Read(), Text("0123xy6789"));
  EXPECT_EQ(Open(test::TempPath(), LMD_W("r+b")), nullptr);
}

TEST(FileStreams, AppendingModeReadsAnywhereAndWritesAtTheEnd) {
  const TempFile file(Text("0123456789"));
  Stream stream = Open(file.Path(), LMD_W("ab+"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_fseeki64(stream.get(), -4, SEEK_END), 0);
  EXPECT_EQ(ReadAll(stream.get()), "6789");
  EXPECT_EQ(_fseeki64(stream.get(), 2, SEEK_SET), 0);
  EXPECT_TRUE(WriteAll(stream.get(), "end"));
  stream.reset();
  EXPECT_EQ(file.Read(), Text("0123456789end"));
}

TEST(FileStreams, AppendingModeMakesTheFile) {
  const PathToRemove file;
  EXPECT_NE(Open(file.path, LMD_W("ab+")), nullptr);
  EXPECT_EQ(test::ReadFile(file.path), Bytes());
}

TEST(FileStreams, FolderIsNoFile) {
  const TempFolder folder;
  for (const WCHAR* mode : {LMD_W("rb"), LMD_W("wb"), LMD_W("w+b"), LMD_W("r+b"), LMD_W("ab+")}) {
    EXPECT_EQ(Open(folder.path, mode), nullptr);
  }
}

TEST(FileStreams, EmptyPathIsNoFile) {
  EXPECT_EQ(Open({}, LMD_W("rb")), nullptr);
}

TEST(FileStreams, PathMayHoldAnyCharacter) {
  // An accented letter, an ideograph and a character outside the basic plane.
  const WideString path = test::TempPath() + LMD_W("\u00E9\u6F22\U0001F4F7.jpg");
  ASSERT_NE(Open(path, LMD_W("wb")), nullptr);
  EXPECT_EQ(GetFileAttributesW(path.c_str()), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_NE(Open(path, LMD_W("rb")), nullptr);
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(path)));
  test::RemoveFile(path);
}

TEST(FileStreams, SeekBeyondTheEndSucceedsAndReadsNothing) {
  const TempFile file(Text("0123456789"));
  const Stream stream = Open(file.Path(), LMD_W("rb"));
  ASSERT_NE(stream, nullptr);
  for (const std::int64_t position : {std::int64_t{10}, std::int64_t{0x7FFFFFFF},
                                      std::int64_t{0x80000000}, std::int64_t{0x100000004}}) {
    EXPECT_EQ(_fseeki64(stream.get(), position, SEEK_SET), 0) << position;
    EXPECT_EQ(_ftelli64(stream.get()), position);
    EXPECT_EQ(ReadAll(stream.get()), "") << position;
  }
}

TEST(FileStreams, ReadAcrossTheEndIsShort) {
  const TempFile file(Text("0123456789"));
  const Stream stream = Open(file.Path(), LMD_W("rb"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_fseeki64(stream.get(), 7, SEEK_SET), 0);
  EXPECT_EQ(ReadAll(stream.get()), "789");
  EXPECT_EQ(_ftelli64(stream.get()), 10);
}

TEST(FileStreams, SeekBeforeTheStartFails) {
  const TempFile file(Text("0123456789"));
  const Stream stream = Open(file.Path(), LMD_W("rb"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_fseeki64(stream.get(), 3, SEEK_SET), 0);
  EXPECT_NE(_fseeki64(stream.get(), -1, SEEK_SET), 0);
  EXPECT_NE(_fseeki64(stream.get(), -64, SEEK_END), 0);
  EXPECT_EQ(_ftelli64(stream.get()), 3);
}

TEST(FileStreams, SeeksFromTheEndAndFromThePosition) {
  const TempFile file(Text("0123456789"));
  const Stream stream = Open(file.Path(), LMD_W("rb"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_fseeki64(stream.get(), 0, SEEK_END), 0);
  EXPECT_EQ(_ftelli64(stream.get()), 10);
  EXPECT_EQ(_fseeki64(stream.get(), -3, SEEK_CUR), 0);
  EXPECT_EQ(ReadAll(stream.get()), "789");
}

TEST(FileStreams, SizeIsSetDownAndUp) {
  const TempFile file(Text("0123456789"));
  Stream stream = Open(file.Path(), LMD_W("r+b"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_chsize_s(_fileno(stream.get()), 4), 0);
  stream.reset();
  EXPECT_EQ(file.Read(), Text("0123"));

  stream = Open(file.Path(), LMD_W("r+b"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_chsize_s(_fileno(stream.get()), 6), 0);
  stream.reset();
  EXPECT_EQ(file.Read(), (Bytes{'0', '1', '2', '3', 0, 0}));
}

}  // namespace
