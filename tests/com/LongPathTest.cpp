// Paths longer than the object keeps: the file is opened by the whole path, and what is kept ends
// after 259 characters.

#include <cstdint>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "RecordsTest.h"
#include "support/Jpeg.h"
#include "support/SamsungPhoto.h"

namespace test {
namespace {

constexpr std::size_t kKept = 259;

// A folder whose files have paths of any length. Only a path with the prefix may be longer than 260
// characters on Windows.
class LongFolder {
 public:
  LongFolder() : m_folder(TempPath("")) {
    std::filesystem::create_directory(std::filesystem::path(m_folder));
    if (std::filesystem::path::preferred_separator == '\\') {
      std::filesystem::path prefixed = std::filesystem::absolute(std::filesystem::path(m_folder));
      const auto text = prefixed.make_preferred().u16string();
      m_folder = LMD_W("\\\\?\\") + WideString(text.begin(), text.end());
    }
    // A single name may have 255 characters at most.
    m_folder += static_cast<WCHAR>(std::filesystem::path::preferred_separator);
    m_folder.append(100, LMD_W('d'));
    std::filesystem::create_directory(std::filesystem::path(m_folder));
    m_folder += static_cast<WCHAR>(std::filesystem::path::preferred_separator);
  }

  // A path in the folder with this many characters.
  WideString Path(std::size_t length) const {
    WideString path = m_folder;
    path.resize(length, LMD_W('p'));
    return path;
  }

 private:
  WideString m_folder;
};

class LongPathTest : public RecordsTest {
 protected:
  void Write(const WideString& path, const Bytes& bytes) { WriteFile(path, bytes); }

  void ExpectPanorama(HRESULT result, std::uint32_t flag) {
    std::uint32_t found = 99;
    EXPECT_EQ(m_object->IsPanorama(&found), result);
    EXPECT_EQ(found, flag);
  }

  LongFolder m_folder;
  const Bytes m_plain = Png().Header().End().Build();
  const Bytes m_panorama = Png().Header().Xmp("equirectangular").End().Build();
};

TEST_F(LongPathTest, PathOf259CharactersIsKeptWhole) {
  const WideString path = m_folder.Path(kKept);
  Write(path, m_panorama);
  ASSERT_EQ(m_object->Open(path.c_str()), S_OK);
  ExpectPanorama(S_OK, 1);
}

TEST_F(LongPathTest, LongerPathIsOpenedWholeAndKeptCut) {
  for (const std::size_t length : {260U, 261U, 300U}) {
    SCOPED_TRACE(length);
    const WideString path = m_folder.Path(length);
    Write(path, m_panorama);
    ASSERT_EQ(m_object->Open(path.c_str()), S_OK);
    ExpectPanorama(LMD_E_NOT_FOUND, 0);
    RemoveFile(path);
  }
}

TEST_F(LongPathTest, FileUnderTheCutPathIsTheOneReadLater) {
  const WideString path = m_folder.Path(280);
  Write(path, m_panorama);
  Write(m_folder.Path(kKept - 1), m_panorama);
  Write(m_folder.Path(kKept), m_plain);
  Write(m_folder.Path(kKept + 1), m_panorama);
  ASSERT_EQ(m_object->Open(path.c_str()), S_OK);
  ExpectPanorama(S_OK, 0);
}

TEST_F(LongPathTest, ShorterPathReplacesALongerOneWhole) {
  const WideString path = m_folder.Path(280);
  Write(path, m_plain);
  ASSERT_EQ(m_object->Open(path.c_str()), S_OK);
  const TempFile file(m_panorama, ".png");
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  ExpectPanorama(S_OK, 1);
}

TEST_F(LongPathTest, TypeIsDetectedUnderALongPath) {
  const WideString path = m_folder.Path(300);
  Write(path, m_plain);
  EXPECT_EQ(m_object->GetFileType(path.c_str()), 5);
  Write(path, Jpeg().Frame(8, 8).Build());
  EXPECT_EQ(m_object->GetFileType(path.c_str()), 1);
}

TEST_F(LongPathTest, LongExtensionDoesNotMatter) {
  WideString path = m_folder.Path(280);
  path[path.size() - 100] = LMD_W('.');
  Write(path, Jpeg().Frame(8, 8).Build());
  EXPECT_EQ(m_object->GetFileType(path.c_str()), 1);
}

TEST_F(LongPathTest, JpegUnderALongPathIsParsed) {
  const WideString path = m_folder.Path(300);
  Write(path, SamsungJpeg({kNoteBound, kNote.Long(16, {7})}));
  ASSERT_EQ(m_object->Open(path.c_str()), S_OK);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), S_OK);
  EXPECT_EQ(value, 7U);
  Ref<IImageInfo> info;
  ASSERT_EQ(m_object->ParseBasic(path.c_str(), info.Out()), S_OK);
  EXPECT_GT(info->GetInfoList()->m_nCount, 5);
}

TEST_F(LongPathTest, FileUnderALongPathIsMarked) {
  const WideString path = m_folder.Path(300);
  Write(path, Zeros(100));
  EXPECT_EQ(m_object->AppendTrailer(path.c_str()), S_OK);
  EXPECT_EQ(ReadFile(path).size(), 164U);
}

TEST_F(LongPathTest, PathLongerThanAnySystemTakesIsNotFound) {
  const WideString path(40000, LMD_W('p'));
  IImageInfo* info = nullptr;
  EXPECT_EQ(m_object->GetFileType(path.c_str()), 0);
  EXPECT_EQ(m_object->Open(path.c_str()), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->ParseBasic(path.c_str(), &info), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->AppendTrailer(path.c_str()), LMD_E_SRC_NOT_FOUND);
}

}  // namespace
}  // namespace test
