// One parse through the container: the result object and what becomes of it.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "com/Unknown.h"
#include "container/ImageContainer.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/TempFile.h"

namespace test {
namespace {

Bytes PlainJpeg(std::uint16_t width) {
  return Jpeg().Frame(width, 8).Scan().Build();
}

// The value of a record of one 32-bit number.
std::uint32_t Number(const CInfoRecord& record) {
  return HostValue<std::uint32_t>({record.m_pData, record.m_nSize});
}

class JpegContainerTest : public testing::Test {
 protected:
  ~JpegContainerTest() override { EXPECT_EQ(m_cObjects, 0); }

  // Parses a file and hands its result object over.
  IImageInfo* Parse(const Bytes& bytes, std::uint32_t mask) {
    const TempFile file(bytes);
    IImageInfo* info = nullptr;
    EXPECT_EQ(m_container->Parse(file.Path(), mask, &info), S_OK);
    return info;
  }

  std::unique_ptr<CImageContainerBase> m_container = std::make_unique<CJpegContainer>();
};

TEST_F(JpegContainerTest, NullResultIsRefusedBeforeAnythingIsMade) {
  const TempFile file(PlainJpeg(8));
  EXPECT_EQ(m_container->Parse(file.Path(), 0x4DF, nullptr), E_POINTER);
  EXPECT_EQ(m_container->Parse(nullptr, 0, nullptr), E_POINTER);
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(JpegContainerTest, ResultHasOneReferenceOfTheCaller) {
  const TempFile file(PlainJpeg(8));
  std::uint64_t garbage = 0;
  auto* info = reinterpret_cast<IImageInfo*>(&garbage);
  ASSERT_EQ(m_container->Parse(file.Path(), 0x001, &info), S_OK);
  EXPECT_EQ(m_cObjects, 1);
  EXPECT_EQ(info->AddRef(), 2U);
  EXPECT_EQ(info->Release(), 1U);
  EXPECT_EQ(info->Release(), 0U);
}

TEST_F(JpegContainerTest, ParseThatFindsNothingGivesAnEmptyList) {
  for (const Bytes& bytes : {PlainJpeg(8), Bytes{}, Text("no JPEG")}) {
    IImageInfo* info = Parse(bytes, 0x4DE);
    EXPECT_EQ(info->GetState(), 1);
    EXPECT_EQ(info->GetInfoList()->m_nState, 1U);
    EXPECT_EQ(info->GetInfoList()->m_nCount, 0);
    EXPECT_EQ(info->GetInfoList()->m_pRecords, nullptr);
    info->Release();
  }
}

TEST_F(JpegContainerTest, MissingFileGivesAnEmptyListToo) {
  for (const WCHAR* path : {LMD_W(""), LMD_W("/no/such/file.jpg")}) {
    IImageInfo* info = nullptr;
    EXPECT_EQ(m_container->Parse(path, 0x4DE, &info), S_OK);
    EXPECT_EQ(info->GetState(), 1);
    EXPECT_EQ(info->GetInfoList()->m_nCount, 0);
    info->Release();
  }
  IImageInfo* info = nullptr;
  EXPECT_EQ(m_container->Parse(nullptr, 0x4DE, &info), S_OK);
  EXPECT_EQ(info->GetInfoList()->m_nCount, 0);
  info->Release();
}

TEST_F(JpegContainerTest, FileIsReadAsAJpeg) {
  IImageInfo* info = Parse(PlainJpeg(640), 0x001);
  ASSERT_EQ(info->GetInfoList()->m_nCount, 5);
  EXPECT_EQ(Number(info->GetInfoList()->m_pRecords[0]), 640U);
  EXPECT_EQ(Number(info->GetInfoList()->m_pRecords[1]), 8U);
  info->Release();
}

TEST_F(JpegContainerTest, MaskChoosesTheRecords) {
  const auto groups = [this](std::uint32_t mask) {
    std::set<std::uint32_t> found;
    IImageInfo* info = Parse(FullPhoto(), mask);
    const CMETADATA_INFO_LIST* list = info->GetInfoList();
    for (std::int32_t i = 0; i < list->m_nCount; ++i) found.insert(list->m_pRecords[i].m_nGroup);
    info->Release();
    return found;
  };
  EXPECT_EQ(groups(0xEFF), (std::set<std::uint32_t>{1, 2, 4, 8, 16, 32, 64, 128, 512, 1024, 2048}));
  EXPECT_EQ(groups(0x00F), (std::set<std::uint32_t>{1, 2, 4, 8}));
  EXPECT_EQ(groups(0x840), (std::set<std::uint32_t>{64, 2048}));
  EXPECT_EQ(groups(0x100), (std::set<std::uint32_t>{}));
  EXPECT_EQ(groups(0), (std::set<std::uint32_t>{}));
}

TEST_F(JpegContainerTest, EachParseGivesAResultOfItsOwn) {
  IImageInfo* first = Parse(PlainJpeg(100), 0x001);
  IImageInfo* second = Parse(PlainJpeg(200), 0x001);
  EXPECT_EQ(m_cObjects, 2);
  EXPECT_NE(first, second);
  EXPECT_NE(first->GetInfoList(), second->GetInfoList());
  EXPECT_EQ(Number(first->GetInfoList()->m_pRecords[0]), 100U);
  EXPECT_EQ(Number(second->GetInfoList()->m_pRecords[0]), 200U);
  EXPECT_EQ(first->Release(), 0U);
  EXPECT_EQ(Number(second->GetInfoList()->m_pRecords[0]), 200U);
  EXPECT_EQ(second->Release(), 0U);
}

TEST_F(JpegContainerTest, NothingOfOneParseIsLeftForTheNext) {
  IImageInfo* first = Parse(FullPhoto(), 0xEFF);
  EXPECT_GT(first->GetInfoList()->m_nCount, 5);
  IImageInfo* second = Parse(PlainJpeg(8), 0xEFF);
  EXPECT_EQ(second->GetInfoList()->m_nCount, 5);
  first->Release();
  second->Release();
}

TEST_F(JpegContainerTest, ResultOutlivesTheContainer) {
  IImageInfo* info = Parse(PlainJpeg(300), 0x001);
  m_container.reset();
  EXPECT_EQ(info->GetState(), 1);
  EXPECT_EQ(Number(info->GetInfoList()->m_pRecords[0]), 300U);
  EXPECT_EQ(info->Release(), 0U);
}

TEST_F(JpegContainerTest, ContainerIsNoObjectOfTheModule) {
  EXPECT_EQ(m_cObjects, 0);
}

TEST_F(JpegContainerTest, FileIsNotKeptOpen) {
  const WideString path = TempPath();
  WriteFile(path, FullPhoto());
  IImageInfo* info = nullptr;
  EXPECT_EQ(m_container->Parse(path.c_str(), 0xEFF, &info), S_OK);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
  info->Release();
}

}  // namespace
}  // namespace test
