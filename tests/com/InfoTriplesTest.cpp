// GetInfo17Triple and GetInfo20Triple: the walk to a record of the right size.

#include <array>

#include <gtest/gtest.h>

#include "RecordsTest.h"

namespace test {
namespace {

FakeRecord Rationals(const std::vector<std::int32_t>& numbers) {
  return {kNoteGroup, 17, 2, Words(numbers)};
}

FakeRecord Integers(const std::vector<std::uint32_t>& numbers) {
  return {kNoteGroup, 20, 1, Words(numbers)};
}

class Info17TripleTest : public RecordsTest {
 protected:
  HRESULT Get() { return m_object->GetInfo17Triple(&m_values[0], &m_values[1], &m_values[2]); }

  void Expect(HRESULT expected) {
    EXPECT_EQ(Get(), expected);
    EXPECT_EQ(m_values, kBefore);
  }
  void ExpectValues(double first, double second, double third) {
    EXPECT_EQ(Get(), S_OK);
    EXPECT_EQ(m_values, (std::array{first, second, third}));
  }

  static constexpr std::array<double, 3> kBefore = {-9.0, -9.0, -9.0};
  std::array<double, 3> m_values = kBefore;
};

TEST_F(Info17TripleTest, IsThreeSignedQuotients) {
  Give({Rationals({37, 2, -3, 4, 5, -8})});
  ExpectValues(18.5, -0.75, -0.625);
}

TEST_F(Info17TripleTest, IsComputedInDoublePrecision) {
  Give({Rationals({1, 3, 2147483647, 2, static_cast<std::int32_t>(0x80000000U), -1})});
  ExpectValues(1.0 / 3.0, 1073741823.5, 2147483648.0);
}

TEST_F(Info17TripleTest, ZeroNumeratorsAreZero) {
  Give({Rationals({0, 1, 0, 5, 0, 7})});
  ExpectValues(0.0, 0.0, 0.0);
}

TEST_F(Info17TripleTest, ChecksInTheOrderOfTheOtherGetters) {
  Expect(LMD_E_INVALID_ARG);
  Give({});
  Expect(LMD_E_NOT_FOUND);
  m_info.list.m_nCount = 2;
  Expect(LMD_E_NOT_FOUND);
  m_info.state = 0;
  Expect(LMD_E_INVALID_ARG);
  MakePngCurrent();
  Expect(LMD_E_NOT_FOUND);
  EXPECT_EQ(m_object->GetInfo17Triple(nullptr, nullptr, nullptr), LMD_E_NOT_FOUND);
}

TEST_F(Info17TripleTest, EachOutputIsNeeded) {
  double value = -9.0;
  for (const bool isEmpty : {true, false}) {
    Give(isEmpty ? std::vector<FakeRecord>{} : std::vector{Rationals({1, 1, 2, 1, 3, 1})});
    EXPECT_EQ(m_object->GetInfo17Triple(nullptr, &value, &value), LMD_E_INVALID_ARG);
    EXPECT_EQ(m_object->GetInfo17Triple(&value, nullptr, &value), LMD_E_INVALID_ARG);
    EXPECT_EQ(m_object->GetInfo17Triple(&value, &value, nullptr), LMD_E_INVALID_ARG);
    EXPECT_EQ(value, -9.0);
  }
}

TEST_F(Info17TripleTest, AnyZeroDenominatorFails) {
  for (const std::size_t zero : {1U, 3U, 5U}) {
    std::vector<std::int32_t> numbers = {1, 2, 3, 4, 5, 6};
    numbers[zero] = 0;
    Give({Rationals(numbers), Rationals({1, 1, 2, 1, 3, 1})});
    Expect(E_FAIL);
  }
}

TEST_F(Info17TripleTest, RecordOfAnotherSizeIsPassedOver) {
  Give({Rationals({9, 1}),
        Rationals({9, 1, 9, 1}),
        Rationals({9, 1, 9, 1, 9, 1, 9, 1}),
        {kNoteGroup, 17, 2, Zeros(23)},
        {kNoteGroup, 17, 2, {}}});
  Expect(LMD_E_NOT_FOUND);
  Give({Rationals({9, 1}),
        {kNoteGroup, 17, 2, Zeros(25)},
        Rationals({1, 1, 2, 1, 3, 1}),
        Rationals({4, 1, 5, 1, 6, 1})});
  ExpectValues(1.0, 2.0, 3.0);
}

TEST_F(Info17TripleTest, RecordOfAnotherTypeStopsTheWalkAtOnce) {
  const Bytes value = Words<std::int32_t>({1, 1, 2, 1, 3, 1});
  for (const std::uint32_t type : kRecordTypes) {
    if (type == LMD_RECORD_SRATIONAL) continue;
    Give({{kNoteGroup, 17, type, value}, Rationals({1, 1, 2, 1, 3, 1})});
    Expect(LMD_E_TYPE_MISMATCH_17);
    Give({Rationals({9, 1}), {kNoteGroup, 17, type, {}}, Rationals({1, 1, 2, 1, 3, 1})});
    Expect(LMD_E_TYPE_MISMATCH_17);
  }
}

TEST_F(Info17TripleTest, RecordOfAnotherTypeBehindTheAnswerIsNotMet) {
  Give({Rationals({1, 1, 2, 1, 3, 1}), {kNoteGroup, 17, 6, {}}});
  ExpectValues(1.0, 2.0, 3.0);
}

TEST_F(Info17TripleTest, OtherGroupsAndIdentifiersArePassedOver) {
  const Bytes value = Words<std::int32_t>({9, 1, 9, 1, 9, 1});
  Give({{64, 17, 2, value}, {kNoteGroup, 18, 6, value}, {128, 17, 6, value}});
  Expect(LMD_E_NOT_FOUND);
  Give({{64, 17, 2, value}, {128, 17, 6, value}, Rationals({1, 1, 2, 1, 3, 1})});
  ExpectValues(1.0, 2.0, 3.0);
}

class Info20TripleTest : public RecordsTest {
 protected:
  HRESULT Get() { return m_object->GetInfo20Triple(&m_values[0], &m_values[1], &m_values[2]); }

  void Expect(HRESULT expected) {
    EXPECT_EQ(Get(), expected);
    EXPECT_EQ(m_values, kBefore);
  }
  void ExpectValues(std::uint32_t first, std::uint32_t second, std::uint32_t third) {
    EXPECT_EQ(Get(), S_OK);
    EXPECT_EQ(m_values, (std::array{first, second, third}));
  }

  static constexpr std::array<std::uint32_t, 3> kBefore = {99, 99, 99};
  std::array<std::uint32_t, 3> m_values = kBefore;
};

TEST_F(Info20TripleTest, IsThreeWordsInOrder) {
  Give({Integers({1, 0xFFFFFFFF, 0x80000000})});
  ExpectValues(1, 0xFFFFFFFF, 0x80000000);
}

TEST_F(Info20TripleTest, ChecksInTheOrderOfTheOtherGetters) {
  Expect(LMD_E_INVALID_ARG);
  Give({});
  Expect(LMD_E_NOT_FOUND);
  m_info.list.m_nCount = 2;
  Expect(LMD_E_NOT_FOUND);
  m_info.state = 0;
  Expect(LMD_E_INVALID_ARG);
  MakePngCurrent();
  Expect(LMD_E_NOT_FOUND);
  EXPECT_EQ(m_object->GetInfo20Triple(nullptr, nullptr, nullptr), LMD_E_NOT_FOUND);
}

TEST_F(Info20TripleTest, EachOutputIsNeeded) {
  std::uint32_t value = 99;
  for (const bool isEmpty : {true, false}) {
    Give(isEmpty ? std::vector<FakeRecord>{} : std::vector{Integers({1, 2, 3})});
    EXPECT_EQ(m_object->GetInfo20Triple(nullptr, &value, &value), LMD_E_INVALID_ARG);
    EXPECT_EQ(m_object->GetInfo20Triple(&value, nullptr, &value), LMD_E_INVALID_ARG);
    EXPECT_EQ(m_object->GetInfo20Triple(&value, &value, nullptr), LMD_E_INVALID_ARG);
    EXPECT_EQ(value, 99U);
  }
}

TEST_F(Info20TripleTest, RecordOfAnotherSizeIsPassedOver) {
  Give({Integers({9}),
        Integers({9, 9, 9, 9}),
        {kNoteGroup, 20, 1, Zeros(11)},
        {kNoteGroup, 20, 1, {}}});
  Expect(LMD_E_NOT_FOUND);
  Give({Integers({9}), {kNoteGroup, 20, 1, Zeros(13)}, Integers({1, 2, 3}), Integers({4, 5, 6})});
  ExpectValues(1, 2, 3);
}

TEST_F(Info20TripleTest, RecordOfAnotherTypeStopsTheWalkAtOnce) {
  for (const std::uint32_t type : kRecordTypes) {
    if (type == LMD_RECORD_INT32) continue;
    Give({{kNoteGroup, 20, type, Zeros(12)}, Integers({1, 2, 3})});
    Expect(LMD_E_TYPE_MISMATCH_20);
    Give({Integers({9}), {kNoteGroup, 20, type, {}}, Integers({1, 2, 3})});
    Expect(LMD_E_TYPE_MISMATCH_20);
  }
}

TEST_F(Info20TripleTest, OtherGroupsAndIdentifiersArePassedOver) {
  Give({{64, 20, 6, Zeros(12)}, {kNoteGroup, 21, 6, Zeros(12)}});
  Expect(LMD_E_NOT_FOUND);
  Give({{64, 20, 6, Zeros(12)}, {128, 20, 1, Zeros(12)}, Integers({1, 2, 3})});
  ExpectValues(1, 2, 3);
}

}  // namespace
}  // namespace test
