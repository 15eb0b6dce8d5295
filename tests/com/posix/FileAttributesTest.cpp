// Which attributes make a path a file, and files that exist and cannot be opened, through the hook
// of the stand-ins.

#include <cstdint>

#include <gtest/gtest.h>

#include "com/ComTest.h"
#include "com/FilePaths.h"
#include "platform/Win32.h"
#include "support/FullPhoto.h"
#include "support/TempFile.h"

namespace test {
namespace {

class AttributesHook final : public platform::FileHook {
 public:
  AttributesHook() : m_before(platform::SetFileHook(this)) {}
  ~AttributesHook() { platform::SetFileHook(m_before); }
  AttributesHook(const AttributesHook&) = delete;
  AttributesHook& operator=(const AttributesHook&) = delete;

  bool Attributes(const WCHAR*, DWORD* out) override {
    *out = attributes;
    return true;
  }
  bool Open(const WCHAR*, const WCHAR* mode, std::FILE** stream) override {
    lastMode = mode;
    *stream = nullptr;
    return failsToOpen;
  }

  DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
  bool failsToOpen = false;
  WideString lastMode;

 private:
  platform::FileHook* m_before;
};

class FileAttributesTest : public LumidexTest {
 protected:
  const TempFile m_file{FullPhoto()};
  AttributesHook m_hook;
};

TEST_F(FileAttributesTest, PathThatCannotBeTestedMustNotBeASource) {
  const TempFile other({1});
  m_hook.attributes = INVALID_FILE_ATTRIBUTES;
  EXPECT_FALSE(IsFree(m_file.Path(), {other.Path(), m_file.Path()}));
  EXPECT_TRUE(IsFree(m_file.Path(), {other.Path(), nullptr}));
}

TEST_F(FileAttributesTest, AnyOfReadOnlyArchiveAndNormalMakesAFile) {
  for (const DWORD attributes : {0x01U, 0x20U, 0x80U, 0x21U, 0x11U, 0x30U, 0xA7U}) {
    m_hook.attributes = attributes;
    EXPECT_EQ(m_object->Open(m_file.Path()), S_OK) << attributes;
    Ref<IImageInfo> info;
    EXPECT_EQ(m_object->ParseBasic(m_file.Path(), info.Out()), S_OK) << attributes;
  }
}

TEST_F(FileAttributesTest, OtherAttributesDoNot) {
  // Hidden, system, directory, device, temporary, sparse, compressed.
  for (const DWORD attributes : {0x00U, 0x02U, 0x04U, 0x10U, 0x40U, 0x100U, 0x200U, 0x800U, 0x5EU,
                                 0xFFFFFF00U, INVALID_FILE_ATTRIBUTES}) {
    m_hook.attributes = attributes;
    IImageInfo* info = nullptr;
    EXPECT_EQ(m_object->Open(m_file.Path()), LMD_E_SRC_NOT_FOUND) << attributes;
    EXPECT_EQ(m_object->ParseBasic(m_file.Path(), &info), LMD_E_SRC_NOT_FOUND) << attributes;
    EXPECT_EQ(m_object->AppendTrailer(m_file.Path()), LMD_E_SRC_NOT_FOUND) << attributes;
  }
}

TEST_F(FileAttributesTest, DetectionDoesNotAskForThem) {
  m_hook.attributes = INVALID_FILE_ATTRIBUTES;
  EXPECT_EQ(m_object->GetFileType(m_file.Path()), 1);
}

TEST_F(FileAttributesTest, FileThatCannotBeOpenedHasNoType) {
  m_hook.failsToOpen = true;
  EXPECT_EQ(m_object->GetFileType(m_file.Path()), 0);
  EXPECT_EQ(m_hook.lastMode, LMD_W("rb"));
  EXPECT_EQ(m_object->Open(m_file.Path()), LMD_E_BAD_FORMAT);
}

TEST_F(FileAttributesTest, FileThatCannotBeOpenedForAppendingCannotBeMarked) {
  m_hook.failsToOpen = true;
  EXPECT_EQ(m_object->AppendTrailer(m_file.Path()), LMD_E_OPEN_FAILED);
  EXPECT_EQ(m_hook.lastMode, LMD_W("ab+"));
}

}  // namespace
}  // namespace test
