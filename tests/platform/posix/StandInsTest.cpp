// What only the stand-ins have: the file hook, the debugger output on stderr, and answers where the
// Windows runtime would end the program.

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "core/DebugLog.h"
#include "platform/Stream.h"
#include "platform/Win32.h"
#include "support/TempFile.h"

namespace {

using test::Stream;
using test::TempFile;
using test::Text;

// One file in memory; every other path is the system's, except that "locked" cannot be opened.
class MemoryFile : public platform::FileHook {
 public:
  MemoryFile() : m_before(platform::SetFileHook(this)) {}
  ~MemoryFile() override { platform::SetFileHook(m_before); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  bool Attributes(const WCHAR* path, DWORD* attributes) override {
    if (WideString(path) != u"memory") return false;
    *attributes = FILE_ATTRIBUTE_READONLY;
    return true;
  }

  bool Open(const WCHAR* path, const WCHAR* mode, std::FILE** stream) override {
    m_mode = mode;
    if (WideString(path) == u"locked") return true;
    if (WideString(path) != u"memory") return false;
    *stream = fmemopen(m_bytes.data(), m_bytes.size(), "rb");
    return true;
  }

  const WideString& Mode() const { return m_mode; }

 private:
  platform::FileHook* m_before;
  std::string m_bytes = "in memory";
  WideString m_mode;
};

TEST(FileHook, AnswersForItsFiles) {
  MemoryFile hook;
  EXPECT_EQ(GetFileAttributesW(u"memory"), FILE_ATTRIBUTE_READONLY);
  const Stream stream(_wfopen(u"memory", u"rb"));
  ASSERT_NE(stream, nullptr);
  std::array<char, 16> buffer;
  EXPECT_EQ(std::string(buffer.data(), std::fread(buffer.data(), 1, 16, stream.get())),
            "in memory");
  EXPECT_EQ(hook.Mode(), u"rb");
}

TEST(FileHook, MakesAnOpenFail) {
  const MemoryFile hook;
  EXPECT_EQ(_wfopen(u"locked", u"wb"), nullptr);
}

TEST(FileHook, PassesOtherPathsToTheSystem) {
  const MemoryFile hook;
  const TempFile file(Text("x"));
  EXPECT_EQ(GetFileAttributesW(file.Path()), FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_NE(Stream(_wfopen(file.Path(), u"rb")), nullptr);
  EXPECT_EQ(GetFileAttributesW(test::TempPath().c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST(FileHook, IsGoneWhenRemoved) {
  { const MemoryFile hook; }
  EXPECT_EQ(GetFileAttributesW(u"memory"), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(_wfopen(u"memory", u"rb"), nullptr);
}

TEST(FileHook, ReplacingItReturnsTheOneBefore) {
  EXPECT_EQ(platform::SetFileHook(nullptr), nullptr);
  MemoryFile outer;
  {
    const MemoryFile inner;
    EXPECT_EQ(GetFileAttributesW(u"memory"), FILE_ATTRIBUTE_READONLY);
  }
  EXPECT_EQ(platform::SetFileHook(&outer), &outer);
}

TEST(PosixFiles, NullArgumentsOpenNothing) {
  EXPECT_EQ(_wfopen(nullptr, u"rb"), nullptr);
  EXPECT_EQ(_wfopen(u"x", nullptr), nullptr);
}

TEST(PosixFiles, OtherKindsOfFileAreNormal) {
  EXPECT_EQ(GetFileAttributesW(u"/dev/null"), FILE_ATTRIBUTE_NORMAL);
  const WideString path = test::TempPath();
  ASSERT_EQ(mkfifo(std::filesystem::path(path).c_str(), 0600), 0);
  EXPECT_EQ(GetFileAttributesW(path.c_str()), FILE_ATTRIBUTE_NORMAL);
  test::RemoveFile(path);
}

TEST(PosixFiles, LinkIsWhatItPointsTo) {
  const TempFile file(Text("x"));
  const WideString path = test::TempPath();
  std::filesystem::create_symlink(std::filesystem::path(file.Path()), std::filesystem::path(path));
  EXPECT_EQ(GetFileAttributesW(path.c_str()), FILE_ATTRIBUTE_ARCHIVE);
  test::RemoveFile(file.Path());
  EXPECT_EQ(GetFileAttributesW(path.c_str()), INVALID_FILE_ATTRIBUTES);
  test::RemoveFile(path);
}

TEST(PosixFiles, PathIsUtf8WithReplacedUnpairedSurrogates) {
  const WideString folder = test::TempPath();
  const WideString path = folder + WideString{u'\u00E9', char16_t{0xD83D}, u'x'};
  ASSERT_NE(Stream(_wfopen(path.c_str(), u"wb")), nullptr);
  const std::string name =
      std::filesystem::path(folder).string() + "\xC3\xA9" + "\xEF\xBF\xBD" + "x";
  EXPECT_EQ(unlink(name.c_str()), 0);
}

TEST(PosixFiles, PathTooLongForTheSystemIsMissing) {
  // 4096 bytes with the final zero is what the system takes; these need one byte more.
  EXPECT_EQ(GetFileAttributesW(WideString(4096, u'/').c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW((WideString(4094, u'/') + u"\u00E9").c_str()),
            INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(GetFileAttributesW(WideString(4095, u'/').c_str()), FILE_ATTRIBUTE_DIRECTORY);
}

TEST(PosixFiles, SizeOfNoFileIsAnError) {
  EXPECT_EQ(_chsize_s(-1, 0), EBADF);
  const TempFile file(Text("x"));
  const Stream stream(_wfopen(file.Path(), u"r+b"));
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(_chsize_s(_fileno(stream.get()), -1), EINVAL);
}

TEST(PosixCodePages, WhatTheStandInsDoNotKnowIsZero) {
  constexpr DWORD kErrorOnInvalid = 8;
  std::array<WCHAR, 8> units;
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, kErrorOnInvalid, "abc", 3, units.data(), 8), 0);
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", -1, units.data(), 8), 0);
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, units.data(), -1), 0);
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "abc", 3, nullptr, 8), 0);
  std::array<char, 8> bytes;
  BOOL usedDefault = FALSE;
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 1, u"abc", 3, bytes.data(), 8, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abc", 3, bytes.data(), 8, "#", nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abc", 3, bytes.data(), 8, nullptr, &usedDefault), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abc", -1, bytes.data(), 8, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abc", 3, bytes.data(), -1, nullptr, nullptr), 0);
  EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"abc", 3, nullptr, 8, nullptr, nullptr), 0);
}

// Wine 8 answers 1 here and writes half of the pair.
TEST(PosixCodePages, PairThatFitsOnlyInHalfIsZero) {
  std::array<WCHAR, 1> unit;
  EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "\xF0\x9F\x93\xB7", 4, unit.data(), 1), 0);
}

TEST(PosixDebugOutput, IsStandardError) {
  testing::internal::CaptureStderr();
  OutputDebugStringA("a line\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "a line\n");
}

TEST(PosixDebugOutput, IsWhereTheDebugLogGoes) {
  const DebugLogSink before = SetDebugLogSink(nullptr);
  const std::string prefix = g_strLogPrefix;
  testing::internal::CaptureStderr();
  g_bDebugLogEnabled = 1;
  DebugLog("abc %d", 5);
  g_bDebugLogEnabled = 0;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), prefix + "abc 5\n");
  SetDebugLogSink(before);
}

}  // namespace
