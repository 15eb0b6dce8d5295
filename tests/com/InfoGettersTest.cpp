// The getters of sizes, bytes and the first word: which record they take, what they refuse, and in
// which order they look.

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "RecordsTest.h"

namespace test {
namespace {

// A size getter with the data getter of the same record.
struct Getter {
  const char* name;
  decltype(&ILumidex::GetInfo17Size) size;
  decltype(&ILumidex::GetInfo17Data) data;
  std::uint32_t id;
  std::vector<std::uint32_t> types;
  HRESULT mismatch;
  bool dataAsksForPng;
};

// Printed by a failing test.
void PrintTo(const Getter& getter, std::ostream* stream) {
  *stream << getter.name;
}

const Getter kGetters[] = {
    {"Info17",
     &ILumidex::GetInfo17Size,
     &ILumidex::GetInfo17Data,
     17,
     {2},
     LMD_E_TYPE_MISMATCH_17,
     true},
    {"Info18",
     &ILumidex::GetInfo18Size,
     &ILumidex::GetInfo18Data,
     18,
     {1, 6},
     LMD_E_TYPE_MISMATCH_18,
     false},
    {"Info19",
     &ILumidex::GetInfo19Size,
     &ILumidex::GetInfo19Data,
     19,
     {6},
     LMD_E_TYPE_MISMATCH_19,
     true},
    {"Info21",
     &ILumidex::GetInfo21Size,
     &ILumidex::GetInfo21Data,
     21,
     {6},
     LMD_E_TYPE_MISMATCH_21,
     true},
};

class InfoGettersTest : public RecordsTest, public testing::WithParamInterface<Getter> {
 protected:
  HRESULT Size(std::uint32_t* size) { return (m_object->*GetParam().size)(size); }
  HRESULT Data(std::uint32_t* size, std::uint8_t* buffer) {
    return (m_object->*GetParam().data)(size, buffer);
  }

  FakeRecord Record(const Bytes& value) {
    return {kNoteGroup, GetParam().id, GetParam().types.front(), value};
  }

  // Both getters give this result and leave their outputs alone.
  void ExpectBoth(HRESULT expected) { ExpectEach(expected, expected); }
  void ExpectEach(HRESULT size, HRESULT data) {
    EXPECT_EQ(Size(&m_size), size);
    EXPECT_EQ(Data(&m_size, m_buffer), data);
    EXPECT_EQ(m_size, kRoom);
    EXPECT_EQ(Bytes(std::begin(m_buffer), std::end(m_buffer)), Bytes(kRoom, 0xEE));
  }

  void ExpectValue(const Bytes& value) {
    EXPECT_EQ(Size(&m_size), S_OK);
    EXPECT_EQ(m_size, value.size());
    m_size = kRoom;
    EXPECT_EQ(Data(&m_size, m_buffer), S_OK);
    EXPECT_EQ(m_size, value.size());
    Bytes expected(kRoom, 0xEE);
    std::copy(value.begin(), value.end(), expected.begin());
    EXPECT_EQ(Bytes(std::begin(m_buffer), std::end(m_buffer)), expected);
  }

  void Refill() { std::fill(std::begin(m_buffer), std::end(m_buffer), std::uint8_t{0xEE}); }
  void SetUp() override { Refill(); }

  static constexpr std::uint32_t kRoom = 32;
  std::uint32_t m_size = kRoom;
  std::uint8_t m_buffer[kRoom];
};

TEST_P(InfoGettersTest, NeedAParseResult) {
  ExpectBoth(LMD_E_INVALID_ARG);
}

TEST_P(InfoGettersTest, NeedTheirOutputs) {
  Give({Record({1, 2, 3, 4})});
  EXPECT_EQ(Size(nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(Data(nullptr, m_buffer), LMD_E_INVALID_ARG);
  EXPECT_EQ(Data(&m_size, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(Data(nullptr, nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(m_size, kRoom);
}

TEST_P(InfoGettersTest, LookForNullOutputsBeforeTheRecord) {
  Give({});
  EXPECT_EQ(Size(nullptr), LMD_E_INVALID_ARG);
  EXPECT_EQ(Data(nullptr, m_buffer), LMD_E_INVALID_ARG);
  EXPECT_EQ(Data(&m_size, nullptr), LMD_E_INVALID_ARG);
}

TEST_P(InfoGettersTest, PngIsNotFoundBeforeAnythingElseButForTheBytesOf18) {
  MakePngCurrent();
  const bool asks = GetParam().dataAsksForPng;
  ExpectEach(LMD_E_NOT_FOUND, asks ? LMD_E_NOT_FOUND : LMD_E_INVALID_ARG);
  EXPECT_EQ(Size(nullptr), LMD_E_NOT_FOUND);
  EXPECT_EQ(Data(&m_size, nullptr), asks ? LMD_E_NOT_FOUND : LMD_E_INVALID_ARG);
  EXPECT_EQ(Data(nullptr, m_buffer), asks ? LMD_E_NOT_FOUND : LMD_E_INVALID_ARG);
}

TEST_P(InfoGettersTest, PngHidesAParseResultButForTheBytesOf18) {
  MakePngCurrent();
  Give({Record({1, 2, 3, 4})});
  EXPECT_EQ(Size(&m_size), LMD_E_NOT_FOUND);
  EXPECT_EQ(Data(&m_size, m_buffer), GetParam().dataAsksForPng ? LMD_E_NOT_FOUND : S_OK);
}

TEST_P(InfoGettersTest, StateOtherThanOneIsNoParseResult) {
  Give({Record({1, 2, 3, 4})});
  for (const std::int32_t state : {0, 2, -1, 0x101}) {
    m_info.state = state;
    ExpectBoth(LMD_E_INVALID_ARG);
  }
}

TEST_P(InfoGettersTest, StateIsCheckedBeforeTheCount) {
  Give({});
  m_info.state = 0;
  ExpectBoth(LMD_E_INVALID_ARG);
}

TEST_P(InfoGettersTest, EmptyListIsNotFound) {
  Give({});
  ExpectBoth(LMD_E_NOT_FOUND);
}

TEST_P(InfoGettersTest, NegativeCountIsNotFound) {
  Give({Record({1, 2, 3, 4})});
  m_info.list.m_nCount = -1;
  ExpectBoth(LMD_E_NOT_FOUND);
  m_info.list.m_nCount = 0;
  ExpectBoth(LMD_E_NOT_FOUND);
}

TEST_P(InfoGettersTest, ListWithoutItsArrayIsNotFound) {
  Give({});
  m_info.list.m_nCount = 3;
  ExpectBoth(LMD_E_NOT_FOUND);
}

TEST_P(InfoGettersTest, GroupAndIdentifierMustMatch) {
  const std::uint32_t type = GetParam().types.front();
  const Bytes value = {1, 2, 3, 4};
  Give({{128, GetParam().id, type, value},
        {64, GetParam().id, type, value},
        {2, GetParam().id, type, value},
        {0x1400, GetParam().id, type, value},
        {kNoteGroup, GetParam().id + 256, type, value},
        {kNoteGroup, 22, type, value}});
  ExpectBoth(LMD_E_NOT_FOUND);
}

TEST_P(InfoGettersTest, FirstMatchIsTheAnswer) {
  Give({{kNoteGroup, 9, 6, {7}}, {2, GetParam().id, 3, {8}}, Record({1, 2, 3, 4}), Record({5, 6})});
  ExpectValue({1, 2, 3, 4});
}

TEST_P(InfoGettersTest, EachRecordTypeIsTakenOrHasTheRecordsOwnCode) {
  const auto& accepted = GetParam().types;
  for (const std::uint32_t type : kRecordTypes) {
    SCOPED_TRACE(type);
    Give({{kNoteGroup, GetParam().id, type, {9, 8, 7, 6, 5, 4, 3, 2}}});
    if (std::find(accepted.begin(), accepted.end(), type) == accepted.end()) {
      ExpectBoth(GetParam().mismatch);
      continue;
    }
    EXPECT_EQ(Size(&m_size), S_OK);
    EXPECT_EQ(m_size, 8U);
    m_size = kRoom;
    EXPECT_EQ(Data(&m_size, m_buffer), S_OK);
    EXPECT_EQ(Hex({m_buffer, 8}), "0908070605040302");
    Refill();
    m_size = kRoom;
  }
}

TEST_P(InfoGettersTest, WrongTypeOfTheFirstMatchHidesALaterOne) {
  Give({{kNoteGroup, GetParam().id, 3, {7}}, Record({1, 2, 3, 4})});
  ExpectBoth(GetParam().mismatch);
}

TEST_P(InfoGettersTest, TypeIsCheckedBeforeTheBuffer) {
  Give({{kNoteGroup, GetParam().id, 3, {1, 2, 3, 4}}});
  m_size = 0;
  EXPECT_EQ(Data(&m_size, m_buffer), GetParam().mismatch);
}

TEST_P(InfoGettersTest, BufferOneByteTooSmallIsRefusedAndLeftAlone) {
  Give({Record({1, 2, 3, 4})});
  for (const std::uint32_t size : {3U, 0U}) {
    m_size = size;
    EXPECT_EQ(Data(&m_size, m_buffer), LMD_E_BUFFER_TOO_SMALL);
    EXPECT_EQ(m_size, size);
    EXPECT_EQ(m_buffer[0], 0xEE);
  }
}

TEST_P(InfoGettersTest, ExactBufferIsEnough) {
  Give({Record({1, 2, 3, 4})});
  m_size = 4;
  EXPECT_EQ(Data(&m_size, m_buffer), S_OK);
  EXPECT_EQ(m_size, 4U);
  EXPECT_EQ(Hex({m_buffer, 5}), "01020304ee");
}

TEST_P(InfoGettersTest, LargerBufferIsToldWhatWasWritten) {
  Give({Record({1, 2, 3})});
  m_size = 0xFFFFFFFF;
  EXPECT_EQ(Data(&m_size, m_buffer), S_OK);
  EXPECT_EQ(m_size, 3U);
  EXPECT_EQ(Hex({m_buffer, 4}), "010203ee");
}

TEST_P(InfoGettersTest, EmptyValueIsAValue) {
  Give({Record({})});
  ExpectValue({});
  m_size = 0;
  EXPECT_EQ(Data(&m_size, m_buffer), S_OK);
  EXPECT_EQ(m_size, 0U);
}

TEST_P(InfoGettersTest, ReadingChangesNothing) {
  Give({Record({1, 2, 3, 4})});
  ExpectValue({1, 2, 3, 4});
  Refill();
  ExpectValue({1, 2, 3, 4});
  EXPECT_EQ(m_info.references, 1U);
}

INSTANTIATE_TEST_SUITE_P(Records, InfoGettersTest, testing::ValuesIn(kGetters),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

// --- GetInfo16 ---

class Info16Test : public RecordsTest {
 protected:
  void Expect(HRESULT expected) {
    EXPECT_EQ(m_object->GetInfo16(&m_value), expected);
    EXPECT_EQ(m_value, 99U);
  }

  std::uint32_t m_value = 99;
};

TEST_F(Info16Test, IsTheFirstWordOfTheValue) {
  Give({{kNoteGroup, 16, 4097, Words<std::uint32_t>({0xFEDCBA98, 2, 3})}});
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0xFEDCBA98U);
}

TEST_F(Info16Test, ChecksInTheOrderOfTheOtherGetters) {
  Expect(LMD_E_INVALID_ARG);
  Give({});
  Expect(LMD_E_NOT_FOUND);
  EXPECT_EQ(m_object->GetInfo16(nullptr), LMD_E_INVALID_ARG);
  m_info.state = 0;
  Expect(LMD_E_INVALID_ARG);
  MakePngCurrent();
  Expect(LMD_E_NOT_FOUND);
  EXPECT_EQ(m_object->GetInfo16(nullptr), LMD_E_NOT_FOUND);
}

TEST_F(Info16Test, OnlyUnsignedWordsAreTaken) {
  for (const std::uint32_t type : kRecordTypes) {
    if (type == LMD_RECORD_UINT32) continue;
    Give({{kNoteGroup, 16, type, {1, 0, 0, 0}}, {kNoteGroup, 16, 4097, {2, 0, 0, 0}}});
    Expect(LMD_E_TYPE_MISMATCH_16);
  }
}

TEST_F(Info16Test, GroupAndIdentifierMustMatch) {
  Give({{512, 16, 4097, {1, 0, 0, 0}}, {kNoteGroup, 17, 4097, {2, 0, 0, 0}}});
  Expect(LMD_E_NOT_FOUND);
}

TEST_F(Info16Test, MissingBytesOfAShorterValueAreZero) {
  Give({{kNoteGroup, 16, 4097, {0x34, 0x12}}});
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0x1234U);
  Give({{kNoteGroup, 16, 4097, {}}});
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0U);
}

}  // namespace
}  // namespace test
