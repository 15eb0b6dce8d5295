// The records in which a Leaf camera back keeps its name.

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/TiffSuite.h"

namespace test {
namespace {

constexpr std::uint32_t kMagic = 0x504B5453;

class LeafRecords : public TiffSuite {
 protected:
  Bytes Record(std::string_view name, const Bytes& data) const {
    return RecordOfSize(name, static_cast<std::uint32_t>(data.size()), data);
  }
  Bytes RecordOfSize(std::string_view name, std::uint32_t size, const Bytes& data) const {
    Bytes field = Text(name);
    field.resize(40);
    return Join({Number(kMagic), {9, 9, 9, 9}, field, Number(size), data});
  }
  Bytes Back(std::string_view number) const {
    return Record("ShootObj_back_type", Text(std::string(number) + "\n"));
  }

  // The model found in records that begin at position 6, or nothing.
  std::optional<Stored> Model(const Bytes& records) const {
    StoreFile file(Join({Zeros(6), records}));
    file.Store().m_fnParseLeafData(6, GetParam());
    return Find(file.Store(), BLOCK_IFD0, 272);
  }
};
INSTANTIATE_TEST_SUITE_P(BothOrders, LeafRecords, kBothOrders, OrderName);

TEST_P(LeafRecords, EveryIndexHasItsName) {
  const std::map<int, std::string> names = {
      {1, "DCB2"},       {2, "Volare"},    {3, "Cantare"},   {4, "CMost"},      {5, "Valeo 6"},
      {6, "Valeo 11"},   {7, "Valeo 22"},  {8, "Valeo 11p"}, {9, "Valeo 17"},   {11, "Aptus 17"},
      {12, "Aptus 22"},  {13, "Aptus 75"}, {14, "Aptus 65"}, {15, "Aptus 54S"}, {16, "Aptus 65S"},
      {17, "Aptus 75S"}, {18, "AFi 5"},    {19, "AFi 6"},    {20, "AFi 7"},     {38, "AFi-II 12"}};
  for (int index = 0; index < 45; ++index) {
    const auto name = names.find(index);
    const auto expected =
        name == names.end() ? std::nullopt : std::optional(MadeUpText(272, name->second));
    EXPECT_EQ(Model(Back(std::to_string(index))), expected) << index;
  }
}

TEST_P(LeafRecords, NumbersOutsideTheTableGiveNoModel) {
  for (const char* number : {"39", "100", "-1", "-2147483648", "2147483648", "4294967297",
                             "99999999999999999999", "", "x", "x11"}) {
    EXPECT_EQ(Model(Back(number)), std::nullopt) << number;
  }
}

TEST_P(LeafRecords, NumberIsDecimalWithBlanksAndASignAllowed) {
  for (const char* number : {"  11", "\t\n 11", "+11", "011", "11abc", "11.9"}) {
    EXPECT_EQ(Model(Back(number)), MadeUpText(272, "Aptus 17")) << number;
  }
  EXPECT_EQ(Model(Back("0x11")), std::nullopt);
}

TEST_P(LeafRecords, ModelThatIsThereStays) {
  StoreFile file(Back("11"));
  VxMetadata& store = file.Store();
  SetTagValue(store.m_fnGetBlock(BLOCK_IFD0)->FindOrInsert(272), 272, 2, Bytes{'M', 0},
              store.Memory());
  store.m_fnParseLeafData(0, GetParam());
  EXPECT_EQ(Find(store, BLOCK_IFD0, 272), MadeUpText(272, "M"));
}

TEST_P(LeafRecords, FirstBackWins) {
  EXPECT_EQ(Model(Join({Back("11"), Back("12")})), MadeUpText(272, "Aptus 17"));
  EXPECT_EQ(Model(Join({Back("10"), Back("12")})), MadeUpText(272, "Aptus 22"));
}

TEST_P(LeafRecords, OtherRecordsArePassedBy) {
  EXPECT_EQ(Model(Join({Record("CamProf_version", Text("11")), Record("", {}), Back("7")})),
            MadeUpText(272, "Valeo 22"));
}

TEST_P(LeafRecords, NameMustBeWhole) {
  EXPECT_EQ(Model(Record("ShootObj_back_typ", Text("11\n"))), std::nullopt);
  EXPECT_EQ(Model(Record("ShootObj_back_type2", Text("11\n"))), std::nullopt);
  EXPECT_EQ(Model(Record("shootobj_back_type", Text("11\n"))), std::nullopt);
}

TEST_P(LeafRecords, NameEndsAtItsZero) {
  const std::string name("ShootObj_back_type\0rest", 23);
  EXPECT_EQ(Model(Record(name, Text("11\n"))), MadeUpText(272, "Aptus 17"));
}

TEST_P(LeafRecords, NestedRecordsAreWalked) {
  const Bytes inner = Join({Record("One", Text("abc")), Record("Two", Back("3"))});
  EXPECT_EQ(Model(Record("Outer", inner)), MadeUpText(272, "Cantare"));
}

TEST_P(LeafRecords, ListGoesOnAfterANestedOne) {
  const Bytes nested = Record("Outer", Join({Record("One", Text("abc")), Text("end of list")}));
  EXPECT_EQ(Model(Join({nested, Back("4")})), MadeUpText(272, "CMost"));
}

TEST_P(LeafRecords, NestedBackComesBeforeTheNextOne) {
  EXPECT_EQ(Model(Join({Record("Outer", Back("11")), Back("12")})), MadeUpText(272, "Aptus 17"));
}

TEST_P(LeafRecords, RecordsOfABackAreWalkedToo) {
  const Bytes back = Record("ShootObj_back_type", Back("8"));
  EXPECT_EQ(Model(back), MadeUpText(272, "Valeo 11p"));
}

TEST_P(LeafRecords, OtherMagicEndsTheList) {
  EXPECT_EQ(Model(Join({Number(0x504B5454), Back("11")})), std::nullopt);
  const ByteOrder other =
      GetParam() == ByteOrder::BigEndian ? ByteOrder::LittleEndian : ByteOrder::BigEndian;
  Bytes swapped = Back("11");
  const Bytes magic = U32(kMagic, other);
  std::copy(magic.begin(), magic.end(), swapped.begin());
  EXPECT_EQ(Model(swapped), std::nullopt);
}

TEST_P(LeafRecords, MagicIsInTheFilesByteOrder) {
  const Bytes back = Back("11");
  EXPECT_EQ(Hex(Bytes(back.begin(), back.begin() + 4)),
            Hex(Text(GetParam() == ByteOrder::BigEndian ? "PKTS" : "STKP")));
  EXPECT_NE(Model(back), std::nullopt);
}

TEST_P(LeafRecords, SizeLargerThanTheFileEndsTheList) {
  for (const std::uint32_t size : {1000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFF0U}) {
    EXPECT_EQ(Model(Join({RecordOfSize("Outer", size, Text("abcd")), Zeros(8)})), std::nullopt)
        << size;
  }
}

TEST_P(LeafRecords, SizeThatLeadsBackToItselfEnds) {
  // 52 bytes of header behind position 6: the record after this one is this one.
  EXPECT_EQ(Model(RecordOfSize("Outer", 0U - 52U, Text("abcd"))), std::nullopt);
}

TEST_P(LeafRecords, CutRecordsEnd) {
  const Bytes records = Join({Record("One", Text("abc")), Back("11")});
  for (std::size_t size = 0; size < records.size() - 3; ++size) {
    const Bytes cut(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_EQ(Model(cut), std::nullopt) << size;
  }
}

TEST_P(LeafRecords, DeepNestingEnds) {
  Bytes records = Back("11");
  std::vector<Bytes> headers;
  auto size = static_cast<std::uint32_t>(records.size());
  for (int depth = 0; depth < 3000; ++depth) {
    headers.push_back(RecordOfSize("Outer", size, {}));
    size += 52;
  }
  Bytes all;
  for (auto header = headers.rbegin(); header != headers.rend(); ++header) {
    all.insert(all.end(), header->begin(), header->end());
  }
  EXPECT_EQ(Model(Join({all, records})), MadeUpText(272, "Aptus 17"));
}

TEST_P(LeafRecords, ManyRecordsOfNoDataEnd) {
  // Each is the nested list of the one before it and its neighbour as well.
  Bytes all;
  for (int i = 0; i < 3000; ++i) {
    const Bytes record = RecordOfSize("Empty", 0, {});
    all.insert(all.end(), record.begin(), record.end());
  }
  EXPECT_EQ(Model(Join({all, Back("20")})), MadeUpText(272, "AFi 7"));
}

}  // namespace
}  // namespace test
