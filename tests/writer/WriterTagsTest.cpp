#include <map>
#include <utility>

#include <gtest/gtest.h>

#include "writer/AcceptedTags.h"
#include "writer/WriterTags.h"

namespace test {
namespace {

// Every accepted tag by group and number, the two pointers of IFD0 included.
std::map<std::pair<std::uint32_t, std::uint32_t>, TagType> AcceptedTypes() {
  std::map<std::pair<std::uint32_t, std::uint32_t>, TagType> types;
  types[{2, 34665}] = TYPE_IFD;
  types[{2, 34853}] = TYPE_IFD;
  for (const AcceptedTags& row : AllAcceptedTags()) {
    for (const std::uint16_t tag : row.tags) types[{row.group, tag}] = row.type;
  }
  return types;
}

TEST(WriterTags, AcceptsTheListedTagsWithTheirTypesAndNoOthers) {
  const auto types = AcceptedTypes();
  for (const std::uint32_t group : {2U, 4U, 8U}) {
    for (std::uint32_t tag = 0; tag <= 0x10000; ++tag) {
      const WriterTag* row = FindWriterTag(group, tag);
      const auto expected = types.find({group, tag});
      ASSERT_EQ(row != nullptr, expected != types.end()) << "group " << group << " tag " << tag;
      if (row == nullptr) continue;
      EXPECT_EQ(row->tag, tag);
      EXPECT_EQ(row->type, expected->second) << "group " << group << " tag " << tag;
    }
  }
}

TEST(WriterTags, ListsEachDirectoryWhole) {
  EXPECT_EQ(WriterTagsOf(2).size(), 12U);
  EXPECT_EQ(WriterTagsOf(4).size(), 56U);
  EXPECT_EQ(WriterTagsOf(8).size(), 31U);
}

TEST(WriterTags, OtherGroupsAcceptNothing) {
  for (const std::uint32_t group : {0U, 1U, 6U, 16U, 32U, 64U, 128U, 512U, 1024U, 2048U}) {
    EXPECT_TRUE(WriterTagsOf(group).empty());
    EXPECT_EQ(FindWriterTag(group, 271), nullptr);
  }
}

TEST(WriterTags, LensMakeIsNotAccepted) {
  EXPECT_EQ(FindWriterTag(4, 42035), nullptr);
  ASSERT_NE(FindWriterTag(4, 42036), nullptr);
  EXPECT_EQ(FindWriterTag(4, 42036)->type, TYPE_ASCII);
}

TEST(WriterTags, NumbersBeyondSixteenBitsAreNotCut) {
  EXPECT_EQ(FindWriterTag(2, 0x10000 + 271), nullptr);
  EXPECT_EQ(FindWriterTag(8, 0xFFFFFFFF), nullptr);
}

TEST(WriterTags, ExtendedIdentifiersHaveTheirGroups) {
  std::map<std::uint32_t, std::uint32_t> expected = {
      {0xAA01, 3}, {0xAA02, 3}, {0xAA03, 3}, {0xAA04, 7}, {0xAA05, 4}, {0xAA06, 4}, {0xAA07, 4},
      {0xAA08, 4}, {0xAA09, 4}, {0xAA10, 4}, {0xAA11, 4}, {0xAA12, 4}, {0xAA13, 4}, {0xAA14, 4},
      {0xAA15, 4}, {0xAB01, 5}, {0xAB02, 6}, {0xAB03, 5}, {0xAB04, 5}};
  for (std::uint32_t id = 0xA900; id <= 0xAC00; ++id) {
    const ExtendedRange* row = FindExtendedRange(id);
    const auto found = expected.find(id);
    ASSERT_EQ(row != nullptr, found != expected.end()) << id;
    if (row == nullptr) continue;
    EXPECT_EQ(row->groupNumber, found->second) << id;
  }
}

}  // namespace
}  // namespace test
