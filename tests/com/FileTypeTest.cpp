// GetFileType: the first eight bytes decide, nothing else.

#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

#include "ComTest.h"
#include "support/TempFile.h"

namespace test {
namespace {

constexpr std::string_view kExtensions[] = {".jpg",  ".JPG",  ".jpeg", ".JPEG", ".jpe", ".JPE",
                                            ".jfif", ".JFIF", ".jif",  ".JIF",  ".JpG", ".png",
                                            ".tif",  ".txt",  ".jp{",  "",      "."};

class FileTypeTest : public LumidexTest {
 protected:
  // The type under every extension, when it is the same under all of them; else -1.
  int TypeOf(const Bytes& bytes) {
    int type = -2;
    for (const std::string_view extension : kExtensions) {
      const TempFile file(bytes, extension);
      const int found = m_object->GetFileType(file.Path());
      if (type != -2 && found != type) return -1;
      type = found;
    }
    return type;
  }
};

TEST_F(FileTypeTest, TwoBytesMakeAJpegUnderAnyExtension) {
  EXPECT_EQ(TypeOf({0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J', 'F'}), 1);
  EXPECT_EQ(TypeOf({0xFF, 0xD8, 0, 0, 0, 0, 0, 0}), 1);
  EXPECT_EQ(TypeOf({0xFF, 0xD8, 'I', 'I', 0x2A, 0, 8, 0, 0}), 1);
}

TEST_F(FileTypeTest, FFWithAnotherSecondByteIsUnknownUnderAnyExtension) {
  EXPECT_EQ(TypeOf({0xFF, 0xD9, 0xFF, 0xE0, 0, 16, 'J', 'F'}), 0);
  EXPECT_EQ(TypeOf({0xFF, 0xFF, 0xD8, 0xFF, 0, 0, 0, 0}), 0);
}

TEST_F(FileTypeTest, FourBytesMakeATiff) {
  EXPECT_EQ(TypeOf({'I', 'I', 0x2A, 0x00, 8, 0, 0, 0}), 2);
  EXPECT_EQ(TypeOf({'M', 'M', 0x00, 0x2A, 0, 0, 0, 8}), 2);
  EXPECT_EQ(TypeOf({'I', 'I', 0x2A, 0x00, 0xFF, 0xFF, 0xFF, 0xFF}), 2);
}

TEST_F(FileTypeTest, AnyOtherTiffByteIsUnknown) {
  EXPECT_EQ(TypeOf({'I', 'I', 0x2A, 0x01, 8, 0, 0, 0}), 0);
  EXPECT_EQ(TypeOf({'I', 'I', 0x2B, 0x00, 8, 0, 0, 0}), 0);
  EXPECT_EQ(TypeOf({'I', 'M', 0x2A, 0x00, 8, 0, 0, 0}), 0);
  EXPECT_EQ(TypeOf({'M', 'I', 0x00, 0x2A, 0, 0, 0, 8}), 0);
  EXPECT_EQ(TypeOf({'I', 'I', 0x00, 0x2A, 0, 0, 0, 8}), 0);
  EXPECT_EQ(TypeOf({'M', 'M', 0x2A, 0x00, 8, 0, 0, 0}), 0);
  EXPECT_EQ(TypeOf({'M', 'M', 0x00, 0x2B, 0, 8, 0, 0}), 0);
  EXPECT_EQ(TypeOf({'i', 'i', 0x2A, 0x00, 8, 0, 0, 0}), 0);
}

TEST_F(FileTypeTest, EightBytesMakeAPng) {
  EXPECT_EQ(TypeOf({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A}), 5);
  EXPECT_EQ(TypeOf({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A, 0, 0, 0, 13}), 5);
}

TEST_F(FileTypeTest, EveryByteOfThePngSignatureCounts) {
  const Bytes signature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
  for (std::size_t i = 0; i < signature.size(); ++i) {
    Bytes bytes = signature;
    bytes[i] ^= 0x20;
    EXPECT_EQ(TypeOf(bytes), 0) << i;
  }
}

TEST_F(FileTypeTest, FileShorterThanEightBytesIsUnknown) {
  EXPECT_EQ(TypeOf({0xFF, 0xD8, 0xFF, 0xE0, 0, 16, 'J'}), 0);
  EXPECT_EQ(TypeOf({0xFF, 0xD8}), 0);
  EXPECT_EQ(TypeOf({'I', 'I', 0x2A, 0x00, 8, 0, 0}), 0);
  EXPECT_EQ(TypeOf({'M', 'M', 0x00, 0x2A, 0, 0, 0}), 0);
  EXPECT_EQ(TypeOf({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A}), 0);
  EXPECT_EQ(TypeOf({}), 0);
}

TEST_F(FileTypeTest, AnythingElseIsUnknown) {
  EXPECT_EQ(TypeOf(Text("GIF89a, or so")), 0);
  EXPECT_EQ(TypeOf(Zeros(64)), 0);
  EXPECT_EQ(TypeOf({0xD8, 0xFF, 0, 0, 0, 0, 0, 0}), 0);
}

TEST_F(FileTypeTest, PathThatCannotBeOpenedIsUnknown) {
  EXPECT_EQ(m_object->GetFileType(TempPath().c_str()), 0);
  EXPECT_EQ(m_object->GetFileType(LMD_W("")), 0);
  EXPECT_EQ(m_object->GetFileType(nullptr), 0);
  EXPECT_EQ(m_object->GetFileType(LMD_W(".")), 0);
}

TEST_F(FileTypeTest, DetectionAloneDoesNotMakeAFileCurrent) {
  const TempFile png({0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A}, ".png");
  EXPECT_EQ(m_object->GetFileType(png.Path()), 5);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), LMD_E_INVALID_ARG);
  EXPECT_EQ(m_object->IsPanorama(&value), LMD_E_NOT_FOUND);
}

TEST_F(FileTypeTest, FileIsNotKeptOpen) {
  const WideString path = TempPath();
  WriteFile(path, Zeros(8));
  EXPECT_EQ(m_object->GetFileType(path.c_str()), 0);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
}

}  // namespace
}  // namespace test
