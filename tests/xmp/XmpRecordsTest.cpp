#include <cstdint>

#include <gtest/gtest.h>

#include "xmp/XmpRecords.h"

namespace {

void AddNumbers(XmpRecords& records, std::uint32_t from, std::uint32_t to) {
  for (std::uint32_t i = from; i < to; ++i) records.Add({0, i, {}, {}, {}});
}

TEST(XmpRecords, KeepTheirOrderInAnyRoom) {
  XmpRecords records;
  AddNumbers(records, 0, 5);
  records.Reserve(100);
  records.Reserve(2);  // less than there is
  AddNumbers(records, 5, 300);
  ASSERT_EQ(records.Count(), 300u);
  for (std::uint32_t i = 0; i < 300; ++i) ASSERT_EQ(records[i].number, i);
}

TEST(XmpRecords, AreNoneAfterClear) {
  XmpRecords records;
  AddNumbers(records, 0, 5);
  records.Clear();
  EXPECT_EQ(records.Count(), 0u);
  AddNumbers(records, 7, 8);
  EXPECT_EQ(records[0].number, 7u);
}

}  // namespace
