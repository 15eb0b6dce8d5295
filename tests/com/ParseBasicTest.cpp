// ParseBasic: a result for the caller alone, and what it does to the object.

#include <cstdint>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>

#include "RecordsTest.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/SamsungPhoto.h"

namespace test {
namespace {

Bytes XmpJpeg() {
  return Jpeg().Xmp("no packet").Frame(8, 8).Scan().Build();
}

const Bytes kLittleEndianTiff = {'I', 'I', 0x2A, 0, 8, 0, 0, 0};

class ParseBasicTest : public RecordsTest {
 protected:
  HRESULT Panorama() {
    std::uint32_t flag = 0;
    return m_object->IsPanorama(&flag);
  }

  // A result argument that is neither null nor an object: a call has to overwrite it unread.
  IImageInfo* Garbage() { return reinterpret_cast<IImageInfo*>(&m_garbage); }

 private:
  std::uint64_t m_garbage = 0;
};

TEST_F(ParseBasicTest, GivesTheCallerOneReference) {
  const TempFile file(FullPhoto());
  const std::int32_t before = m_cObjects;
  IImageInfo* info = Garbage();
  ASSERT_EQ(m_object->ParseBasic(file.Path(), &info), S_OK);
  EXPECT_EQ(m_cObjects, before + 1);
  EXPECT_EQ(info->GetState(), 1);
  EXPECT_EQ(info->AddRef(), 2U);
  EXPECT_EQ(info->Release(), 1U);
  EXPECT_EQ(info->Release(), 0U);
  EXPECT_EQ(m_cObjects, before);
}

TEST_F(ParseBasicTest, GivesBasicsIfd0ExifAndGpsAlone) {
  const TempFile file(FullPhoto());
  Ref<IImageInfo> info;
  ASSERT_EQ(m_object->ParseBasic(file.Path(), info.Out()), S_OK);
  const CMETADATA_INFO_LIST* list = info->GetInfoList();
  std::vector<std::uint32_t> groups;
  for (std::int32_t i = 0; i < list->m_nCount; ++i) {
    const std::uint32_t group = list->m_pRecords[i].m_nGroup;
    if (groups.empty() || groups.back() != group) groups.push_back(group);
  }
  EXPECT_EQ(groups, (std::vector<std::uint32_t>{1, 2, 4, 8}));
}

TEST_F(ParseBasicTest, JpegWithoutMetadataStillHasItsBasics) {
  const TempFile file(SmallJpeg());
  Ref<IImageInfo> info;
  ASSERT_EQ(m_object->ParseBasic(file.Path(), info.Out()), S_OK);
  EXPECT_EQ(info->GetInfoList()->m_nCount, 5);
}

TEST_F(ParseBasicTest, ResultOutlivesTheObject) {
  const TempFile file(SmallJpeg());
  auto* lumidex = NewLumidex().Detach();
  const std::int32_t before = m_cObjects;
  IImageInfo* info = nullptr;
  ASSERT_EQ(lumidex->ParseBasic(file.Path(), &info), S_OK);
  EXPECT_EQ(lumidex->Release(), 0U);
  EXPECT_EQ(m_cObjects, before);
  EXPECT_EQ(info->GetState(), 1);
  ASSERT_EQ(info->GetInfoList()->m_nCount, 5);
  EXPECT_EQ(info->GetInfoList()->m_pRecords[0].m_nId, 256U);
  EXPECT_EQ(Hex({info->GetInfoList()->m_pRecords[0].m_pData, 4}), "08000000");
  EXPECT_EQ(info->Release(), 0U);
}

TEST_F(ParseBasicTest, TwoResultsShareNothing) {
  const TempFile first(FullPhoto());
  const TempFile second(SmallJpeg());
  Ref<IImageInfo> one;
  Ref<IImageInfo> two;
  Ref<IImageInfo> three;
  ASSERT_EQ(m_object->ParseBasic(first.Path(), one.Out()), S_OK);
  ASSERT_EQ(m_object->ParseBasic(second.Path(), two.Out()), S_OK);
  ASSERT_EQ(m_object->ParseBasic(first.Path(), three.Out()), S_OK);
  const std::int32_t count = one->GetInfoList()->m_nCount;
  EXPECT_GT(count, 5);
  EXPECT_EQ(two->GetInfoList()->m_nCount, 5);
  EXPECT_EQ(three->GetInfoList()->m_nCount, count);
  EXPECT_NE(one->GetInfoList(), three->GetInfoList());
  EXPECT_NE(one->GetInfoList()->m_pRecords[0].m_pData, three->GetInfoList()->m_pRecords[0].m_pData);
}

TEST_F(ParseBasicTest, LeavesTheObjectsOwnParseResult) {
  const TempFile own(SamsungJpeg({kNoteBound, kNote.Long(16, {7})}));
  ASSERT_EQ(m_object->Open(own.Path()), S_OK);
  const TempFile other(SmallJpeg());
  Ref<IImageInfo> info;
  ASSERT_EQ(m_object->ParseBasic(other.Path(), info.Out()), S_OK);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), S_OK);
  EXPECT_EQ(value, 7U);
}

TEST_F(ParseBasicTest, MakesTheFileCurrentAllTheSame) {
  const TempFile own(SmallJpeg());
  ASSERT_EQ(m_object->Open(own.Path()), S_OK);
  EXPECT_EQ(Panorama(), LMD_E_NOT_FOUND);
  const TempFile other(XmpJpeg());
  Ref<IImageInfo> info;
  ASSERT_EQ(m_object->ParseBasic(other.Path(), info.Out()), S_OK);
  EXPECT_EQ(Panorama(), LMD_E_NOT_PANORAMA);
}

TEST_F(ParseBasicTest, PngGivesNoResultAndIsCurrent) {
  const TempFile own(SamsungJpeg({kNoteBound, kNote.Byte(18, {1, 2})}));
  ASSERT_EQ(m_object->Open(own.Path()), S_OK);
  const TempFile png(Png().Header().Xmp("equirectangular").End().Build(), ".png");
  IImageInfo* info = Garbage();
  EXPECT_EQ(m_object->ParseBasic(png.Path(), &info), S_OK);
  EXPECT_EQ(info, nullptr);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->IsPanorama(&value), S_OK);
  EXPECT_EQ(value, 1U);
  EXPECT_EQ(m_object->GetInfo18Size(&value), LMD_E_NOT_FOUND);
  // The bytes of 18 are read without a look at the file type, and the parse result is still there.
  std::uint8_t buffer[2] = {};
  value = 2;
  EXPECT_EQ(m_object->GetInfo18Data(&value, buffer), S_OK);
  EXPECT_EQ(Hex(buffer), "0102");
}

TEST_F(ParseBasicTest, RefusedFileGivesNull) {
  const TempFile tiff(kLittleEndianTiff, ".tif");
  const TempFile empty({});
  struct Row {
    const WCHAR* path;
    HRESULT result;
  };
  const WideString missing = TempPath();
  for (const Row& row : {Row{tiff.Path(), LMD_E_BAD_FORMAT}, Row{empty.Path(), LMD_E_BAD_FORMAT},
                         Row{nullptr, LMD_E_BAD_FORMAT}, Row{LMD_W("."), LMD_E_SRC_NOT_FOUND},
                         Row{missing.c_str(), LMD_E_SRC_NOT_FOUND}}) {
    IImageInfo* info = Garbage();
    EXPECT_EQ(m_object->ParseBasic(row.path, &info), row.result);
    EXPECT_EQ(info, nullptr);
  }
}

TEST_F(ParseBasicTest, NullResultIsRefusedForAJpegAlone) {
  const TempFile jpeg(SmallJpeg());
  EXPECT_EQ(m_object->ParseBasic(jpeg.Path(), nullptr), E_POINTER);
  const TempFile png(SmallPng(), ".png");
  EXPECT_EQ(m_object->ParseBasic(png.Path(), nullptr), S_OK);
  const TempFile tiff(kLittleEndianTiff, ".tif");
  EXPECT_EQ(m_object->ParseBasic(tiff.Path(), nullptr), LMD_E_BAD_FORMAT);
  EXPECT_EQ(m_object->ParseBasic(TempPath().c_str(), nullptr), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->ParseBasic(nullptr, nullptr), LMD_E_BAD_FORMAT);
}

TEST_F(ParseBasicTest, WrongTypeIsTakenAsTheFileType) {
  const TempFile jpeg(SamsungJpeg({kNoteBound, kNote.Long(16, {7})}));
  ASSERT_EQ(m_object->Open(jpeg.Path()), S_OK);
  const TempFile tiff(kLittleEndianTiff, ".tif");
  IImageInfo* info = nullptr;
  EXPECT_EQ(m_object->ParseBasic(tiff.Path(), &info), LMD_E_BAD_FORMAT);
  EXPECT_EQ(Panorama(), LMD_E_NOT_FOUND);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), S_OK);
}

TEST_F(ParseBasicTest, MissingFileLeavesFileTypeAndPath) {
  const TempFile png(Png().Header().Xmp("equirectangular").End().Build(), ".png");
  ASSERT_EQ(m_object->Open(png.Path()), S_OK);
  IImageInfo* info = nullptr;
  EXPECT_EQ(m_object->ParseBasic(TempPath().c_str(), &info), LMD_E_SRC_NOT_FOUND);
  std::uint32_t flag = 0;
  EXPECT_EQ(m_object->IsPanorama(&flag), S_OK);
  EXPECT_EQ(flag, 1U);
}

TEST_F(ParseBasicTest, FileIsNotKeptOpen) {
  const WideString path = TempPath();
  WriteFile(path, FullPhoto());
  Ref<IImageInfo> info;
  EXPECT_EQ(m_object->ParseBasic(path.c_str(), info.Out()), S_OK);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
}

}  // namespace
}  // namespace test
