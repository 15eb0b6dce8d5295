#include <gtest/gtest.h>

#include "com/Unknown.h"
#include "container/ImageContainer.h"
#include "container/ImageInfo.h"
#include "support/Jpeg.h"
#include "support/TempFile.h"

namespace test {
namespace {

TEST(JpegContainer, RefusesANullOutput) {
  CJpegContainer container;
  const TempFile file(Jpeg().Build());
  EXPECT_EQ(container.Parse(file.Path(), kOpenMask, nullptr), E_POINTER);
}

TEST(JpegContainer, HandsOutAResultWithOneReference) {
  const std::int32_t before = m_cObjects.load();
  const TempFile file(Jpeg().Frame(4, 3).Build());
  CJpegContainer container;
  IImageInfo* info = nullptr;
  ASSERT_EQ(container.Parse(file.Path(), kBasicMask, &info), S_OK);
  EXPECT_EQ(m_cObjects.load(), before + 1);
  EXPECT_EQ(info->GetState(), 1);
  EXPECT_EQ(info->GetInfoList()->m_nCount, 5);
  EXPECT_EQ(info->AddRef(), 2U);
  EXPECT_EQ(info->Release(), 1U);
  EXPECT_EQ(info->Release(), 0U);
  EXPECT_EQ(m_cObjects.load(), before);
}

TEST(JpegContainer, ParseThatFindsNothingStillHandsOutAResult) {
  const WideString missing = TempPath();
  CJpegContainer container;
  IImageInfo* info = nullptr;
  ASSERT_EQ(container.Parse(missing.c_str(), CATEGORY_IFD0, &info), S_OK);
  EXPECT_EQ(info->GetState(), 1);
  EXPECT_EQ(info->GetInfoList()->m_nState, 1U);
  EXPECT_EQ(info->GetInfoList()->m_nCount, 0);
  EXPECT_EQ(info->GetInfoList()->m_pRecords, nullptr);
  info->Release();
}

TEST(JpegContainer, TwoParsesGiveIndependentResultsThatOutliveIt) {
  const TempFile first(Jpeg().Frame(4, 3).Build());
  const TempFile second(Jpeg().Frame(8, 6).Build());
  IImageInfo* infos[2] = {};
  {
    CJpegContainer container;
    ASSERT_EQ(container.Parse(first.Path(), CATEGORY_BASICS, &infos[0]), S_OK);
    ASSERT_EQ(container.Parse(second.Path(), CATEGORY_BASICS, &infos[1]), S_OK);
  }
  EXPECT_NE(infos[0], infos[1]);
  EXPECT_NE(infos[0]->GetInfoList(), infos[1]->GetInfoList());
  EXPECT_EQ(infos[0]->GetInfoList()->m_pRecords[0].m_pData[0], 4);
  infos[0]->Release();
  EXPECT_EQ(infos[1]->GetInfoList()->m_pRecords[0].m_pData[0], 8);
  infos[1]->Release();
}

TEST(ImageInfo, KnowsOnlyIUnknown) {
  IImageInfo* info = new CImageInfo(std::make_unique<CMETADATA_INFO_LIST>());
  info->AddRef();
  void* out = &out;
  EXPECT_EQ(info->QueryInterface(IID_IClassFactory, &out), E_NOINTERFACE);
  EXPECT_EQ(out, nullptr);
  ASSERT_EQ(info->QueryInterface(IID_IUnknown, &out), S_OK);
  EXPECT_EQ(static_cast<IUnknown*>(out)->Release(), 1U);
  EXPECT_EQ(info->Release(), 0U);
}

TEST(ImageInfo, WithoutAListHasState0) {
  IImageInfo* info = new CImageInfo(nullptr);
  info->AddRef();
  EXPECT_EQ(info->GetState(), 0);
  EXPECT_EQ(info->GetInfoList(), nullptr);
  EXPECT_EQ(info->Release(), 0U);
}

TEST(ImageInfo, NeverFilledListHasState1AndNoRecords) {
  const CMETADATA_INFO_LIST list;
  EXPECT_EQ(list.m_nState, 1U);
  EXPECT_EQ(list.m_pRecords, nullptr);
  EXPECT_EQ(list.m_nCount, 0);
}

}  // namespace
}  // namespace test
