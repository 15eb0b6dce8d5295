// The result object, its list and its records.

#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "container/ImageInfo.h"
#include "support/Bytes.h"

namespace test {
namespace {

const IID kUnknownId = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};

class ImageInfoTest : public testing::Test {
 protected:
  ImageInfoTest() { m_info->AddRef(); }
  ~ImageInfoTest() override {
    EXPECT_EQ(m_info->Release(), 0U);
    EXPECT_EQ(m_cObjects, 0);
  }

  OwnedRecordList* m_list = new OwnedRecordList;
  IImageInfo* m_info = new CImageInfo(std::unique_ptr<OwnedRecordList>(m_list));
};

TEST_F(ImageInfoTest, NewListHasStateOneAndNoRecords) {
  EXPECT_EQ(m_list->m_nState, 1U);
  EXPECT_EQ(m_list->m_nCount, 0);
  EXPECT_EQ(m_list->m_pRecords, nullptr);
}

TEST_F(ImageInfoTest, GivesItsListAndTheListsState) {
  EXPECT_EQ(m_info->GetState(), 1);
  EXPECT_EQ(m_info->GetInfoList(), m_list);
  m_list->m_nState = 7;
  EXPECT_EQ(m_info->GetState(), 7);
}

TEST_F(ImageInfoTest, CountsAsAnObjectWithItsReferences) {
  EXPECT_EQ(m_cObjects, 1);
  EXPECT_EQ(m_info->AddRef(), 2U);
  EXPECT_EQ(m_info->Release(), 1U);
  EXPECT_EQ(m_cObjects, 1);
}

TEST_F(ImageInfoTest, IsAnUnknownAndNothingElse) {
  void* out = nullptr;
  ASSERT_EQ(m_info->QueryInterface(IID_IUnknown, &out), S_OK);
  void* again = nullptr;
  EXPECT_EQ(m_info->QueryInterface(IID_IUnknown, &again), S_OK);
  EXPECT_EQ(out, again);
  EXPECT_EQ(static_cast<IUnknown*>(out)->Release(), 2U);
  EXPECT_EQ(m_info->Release(), 1U);
  for (const IID& iid : {kUnknownId, IID_IClassFactory}) {
    out = m_info;
    EXPECT_EQ(m_info->QueryInterface(iid, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
  }
}

TEST_F(ImageInfoTest, ObjectWithoutAListHasStateZero) {
  IImageInfo* empty = new CImageInfo(nullptr);
  empty->AddRef();
  EXPECT_EQ(empty->GetState(), 0);
  EXPECT_EQ(empty->GetInfoList(), nullptr);
  EXPECT_EQ(empty->Release(), 0U);
}

TEST_F(ImageInfoTest, ReleaseFreesRecordsAndTheirBytes) {
  // What is not freed here, the leak check of a sanitizer build finds.
  m_list->m_pRecords = new OwnedRecord[3];
  m_list->m_nCount = 3;
  m_list->m_pRecords[0].m_pData = new std::uint8_t[8]();
  m_list->m_pRecords[2].m_pData = new std::uint8_t[1]();
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, 3);
}

TEST_F(ImageInfoTest, MemoryOfAListLooksAsHostsSeeIt) {
  const OwnedRecord* const records = new OwnedRecord[2];
  m_list->m_pRecords = const_cast<OwnedRecord*>(records);
  m_list->m_nCount = 2;
  const auto* bytes = reinterpret_cast<const unsigned char*>(m_list);
  std::uint32_t state = 0;
  std::memcpy(&state, bytes + 8, sizeof(state));
  EXPECT_EQ(state, 1U);
  const CInfoRecord* stored = nullptr;
  std::memcpy(&stored, bytes + 16, sizeof(stored));
  EXPECT_EQ(stored, records);
  std::int32_t count = 0;
  std::memcpy(&count, bytes + 24, sizeof(count));
  EXPECT_EQ(count, 2);
  EXPECT_EQ(reinterpret_cast<const unsigned char*>(&records[1]) -
                reinterpret_cast<const unsigned char*>(&records[0]),
            32);
}

TEST(InfoRecord, IsEmptyWhenNew) {
  const OwnedRecord record;
  EXPECT_EQ(record.m_nGroup, 0U);
  EXPECT_EQ(record.m_nId, 0U);
  EXPECT_EQ(record.m_nType, 0U);
  EXPECT_EQ(record.m_nSize, 0U);
  EXPECT_EQ(record.m_pData, nullptr);
  EXPECT_EQ(record.m_dValue, 0.0);
}

TEST(InfoRecord, MovingHandsTheBytesOver) {
  OwnedRecord source;
  source.m_nGroup = 1;
  source.m_nId = 2;
  source.m_nType = 3;
  source.m_nSize = 4;
  source.m_pData = new std::uint8_t[4]{9, 8, 7, 6};
  source.m_dValue = 1.5;
  const std::uint8_t* const data = source.m_pData;

  OwnedRecord target;
  target.m_pData = new std::uint8_t[2]();
  target = std::move(source);
  EXPECT_EQ(target.m_nGroup, 1U);
  EXPECT_EQ(target.m_nId, 2U);
  EXPECT_EQ(target.m_nType, 3U);
  EXPECT_EQ(target.m_nSize, 4U);
  EXPECT_EQ(target.m_pData, data);
  EXPECT_EQ(Hex({target.m_pData, 4}), "09080706");
  EXPECT_EQ(target.m_dValue, 1.5);
}

TEST(InfoRecord, HasOneOwner) {
  EXPECT_FALSE(std::is_copy_constructible_v<OwnedRecord>);
  EXPECT_FALSE(std::is_copy_assignable_v<OwnedRecord>);
}

TEST(InfoRecord, TypesHaveTheirNumbers) {
  EXPECT_EQ(LMD_RECORD_INT32, 1U);
  EXPECT_EQ(LMD_RECORD_SRATIONAL, 2U);
  EXPECT_EQ(LMD_RECORD_DOUBLE, 3U);
  EXPECT_EQ(LMD_RECORD_ASCII, 4U);
  EXPECT_EQ(LMD_RECORD_WIDE_TEXT, 5U);
  EXPECT_EQ(LMD_RECORD_BYTES, 6U);
  EXPECT_EQ(LMD_RECORD_UINT32, 4097U);
  EXPECT_EQ(LMD_RECORD_URATIONAL, 4098U);
}

}  // namespace
}  // namespace test
