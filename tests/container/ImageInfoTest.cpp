// The result object, its list and its records.

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "container/ImageInfo.h"
#include "support/Bytes.h"

namespace test {
namespace {

const IID kUnknownId = {0x01234567, 0x89AB, 0xCDEF, {1, 2, 3, 4, 5, 6, 7, 8}};

OwnedRecords RecordsOfSizes(std::initializer_list<std::size_t> sizes) {
  OwnedRecords records;
  for (const std::size_t size : sizes) EXPECT_NE(records.Add(1, 2, 3, size), nullptr);
  return records;
}

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
  ASSERT_TRUE(m_list->Take(RecordsOfSizes({8, 0, 100000})));
  EXPECT_EQ(m_info->GetInfoList()->m_nCount, 3);
}

TEST_F(ImageInfoTest, MemoryOfAListLooksAsHostsSeeIt) {
  ASSERT_TRUE(m_list->Take(RecordsOfSizes({1, 1})));
  const CInfoRecord* const records = m_list->m_pRecords;
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

TEST(RecordList, TakesRecordsWithTheirBytes) {
  OwnedRecords records;
  std::vector<const std::uint8_t*> values;
  for (const std::uint8_t number : Bytes{1, 2}) {
    const CInfoRecord* record = records.Add(10U + number, 20U + number, 30U + number, number);
    std::fill_n(record->m_pData, number, number);
    values.push_back(record->m_pData);
  }
  OwnedRecordList list;
  ASSERT_TRUE(list.Take(std::move(records)));
  ASSERT_EQ(list.m_nCount, 2);
  const CInfoRecord& record = list.m_pRecords[1];
  EXPECT_EQ(record.m_nGroup, 12U);
  EXPECT_EQ(record.m_nId, 22U);
  EXPECT_EQ(record.m_nType, 32U);
  EXPECT_EQ(record.m_nSize, 2U);
  EXPECT_EQ(Hex({record.m_pData, 2}), "0202");
  EXPECT_EQ(record.m_dValue, 0.0);
  EXPECT_EQ(list.m_pRecords[0].m_pData, values[0]);
  EXPECT_EQ(list.m_pRecords[1].m_pData, values[1]);
}

// Sizes on both sides of every limit of the blocks that values share.
TEST(RecordList, ValuesOfAnySizeAreAlignedAndStayApart) {
  OwnedRecords records;
  std::uint8_t mark = 0;
  for (std::size_t size = 0; size < 3000; size += 1 + size / 16) {
    for (const std::size_t length : {size, std::size_t{7}, 20 * size}) {
      const CInfoRecord* record = records.Add(1, 2, 3, length);
      ASSERT_NE(record, nullptr);
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record->m_pData) % alignof(double), 0U);
      std::fill_n(record->m_pData, length, mark++);
    }
  }
  mark = 0;
  for (const CInfoRecord& record : records) {
    const Bytes expected(record.m_nSize, mark++);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), record.m_pData)) << record.m_nSize;
  }
}

TEST(RecordList, HasOneOwner) {
  EXPECT_FALSE(std::is_copy_constructible_v<OwnedRecords>);
  EXPECT_FALSE(std::is_copy_assignable_v<OwnedRecords>);
  EXPECT_FALSE(std::is_copy_constructible_v<OwnedRecordList>);
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
