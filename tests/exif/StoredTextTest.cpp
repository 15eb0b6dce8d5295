#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "exif/StoredText.h"
#include "support/Bytes.h"
#include "xmp/TextConversion.h"

namespace test {
namespace {

constexpr std::uint32_t kAnsi = 0;
constexpr std::uint32_t kUtf8 = 65001;

class StoredText : public testing::Test {
 protected:
  std::string Store(std::string_view text, std::uint32_t codePage) {
    SetTagText(entry, 5, text, codePage, memory);
    return Hex(TagBytes(entry));
  }

  NodePool pool;
  ParseBudget budget;
  ValueMemory memory{pool, budget};
  TagEntry entry;
};

TEST_F(StoredText, ReplacesAllButTheCount) {
  entry.m_nCount = 7;
  EXPECT_EQ(Store("aZ", kUtf8), "61005a000000");
  EXPECT_EQ(entry.m_nTag, 5u);
  EXPECT_EQ(entry.m_nType, TYPE_WIDE_TEXT);
  EXPECT_EQ(entry.m_nCount, 7u);
  EXPECT_EQ(entry.m_nSize, 6u);
}

TEST_F(StoredText, EmptyTextIsItsFinalZero) {
  EXPECT_EQ(Store("", kUtf8), "0000");
  EXPECT_EQ(Store("", kAnsi), "0000");
}

TEST_F(StoredText, IsReadInItsCodePage) {
  EXPECT_EQ(Store("\xC3\xA9", kUtf8), "e9000000");
  EXPECT_EQ(Store("\xC3\xA9", kAnsi), "c300a9000000");
  EXPECT_EQ(Store("abcdefghijk\xFF", kAnsi),
            "6100620063006400650066006700680069006a006b00ff000000");
}

// Every length, and each place for the one character that is none of ASCII.
TEST_F(StoredText, IsConvertedAsAnyText) {
  for (std::size_t length = 0; length < 40; ++length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) text += static_cast<char>('0' + i);
    for (std::size_t place = 0; place <= length; ++place) {
      std::string other = text;
      if (place < length) other[place] = '\xE9';
      Store(other, kAnsi);
      ASSERT_EQ(LoadWideText(TagBytes(entry)), ToWideString(other, kAnsi))
          << length << ' ' << place;
      ASSERT_EQ(entry.m_nSize, 2 * (length + 1));
    }
  }
}

TEST_F(StoredText, StaysWithoutDataWhenTheBudgetIsUsedUp) {
  ASSERT_TRUE(budget.TakeBytes(kMaxStoredBytes - 5));
  EXPECT_EQ(Store("aZ", kUtf8), "");
  EXPECT_EQ(entry.m_nSize, 6u);
  EXPECT_EQ(entry.m_pData, nullptr);
  EXPECT_EQ(Store("a", kUtf8), "61000000");
}

}  // namespace
}  // namespace test
