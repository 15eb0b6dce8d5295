// The pose angles: which record they take and how its text is read as a number.

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "RecordsTest.h"
#include "support/Jpeg.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

struct Angle {
  const char* name;
  decltype(&ILumidex::GetPoseHeading) get;
  std::uint32_t id;
  const char* property;
};

// Printed by a failing test.
void PrintTo(const Angle& angle, std::ostream* stream) {
  *stream << angle.name;
}

constexpr Angle kAngles[] = {
    {"Heading", &ILumidex::GetPoseHeading, 0xAB20, "PoseHeadingDegrees"},
    {"Pitch", &ILumidex::GetPosePitch, 0xAB21, "PosePitchDegrees"},
    {"Roll", &ILumidex::GetPoseRoll, 0xAB22, "PoseRollDegrees"},
};

class PoseTest : public RecordsTest, public testing::WithParamInterface<Angle> {
 protected:
  HRESULT Get(float* value) { return (m_object->*GetParam().get)(value); }

  void Expect(HRESULT expected) {
    m_value = -9.0F;
    EXPECT_EQ(Get(&m_value), expected);
    EXPECT_EQ(m_value, -9.0F);
  }
  void ExpectValue(float expected) {
    m_value = -9.0F;
    EXPECT_EQ(Get(&m_value), S_OK);
    EXPECT_EQ(m_value, expected);
  }

  FakeRecord Record(WideStringView text) { return {kXmpGroup, GetParam().id, 5, WideBytes(text)}; }

  float m_value = -9.0F;
};

TEST_P(PoseTest, NeedsAParseResultAndAnOutput) {
  Expect(LMD_E_INVALID_ARG);
  Give({Record(LMD_W("12.5"))});
  EXPECT_EQ(Get(nullptr), LMD_E_INVALID_ARG);
  m_info.state = 2;
  Expect(LMD_E_INVALID_ARG);
}

TEST_P(PoseTest, EmptyListIsNotFound) {
  Give({});
  Expect(LMD_E_NOT_FOUND);
  EXPECT_EQ(Get(nullptr), LMD_E_INVALID_ARG);
  m_info.list.m_nCount = 2;
  Expect(LMD_E_NOT_FOUND);
  m_info.state = 0;
  Expect(LMD_E_INVALID_ARG);
}

TEST_P(PoseTest, PngIsNotAskedFor) {
  MakePngCurrent();
  Expect(LMD_E_INVALID_ARG);
  Give({Record(LMD_W("12.5"))});
  ExpectValue(12.5F);
}

TEST_P(PoseTest, OnlyItsOwnIdentifierInTheXmpGroupIsTaken) {
  std::vector<FakeRecord> others = {{1024, GetParam().id, 5, WideBytes(LMD_W("1"))},
                                    {kXmpGroup, 0xAB19, 5, WideBytes(LMD_W("2"))}};
  for (const Angle& angle : kAngles) {
    if (angle.id != GetParam().id) {
      others.push_back({kXmpGroup, angle.id, 5, WideBytes(LMD_W("3"))});
    }
  }
  Give(others);
  Expect(LMD_E_NOT_FOUND);
  others.push_back(Record(LMD_W("4")));
  Give(others);
  ExpectValue(4.0F);
}

TEST_P(PoseTest, RecordOfAnotherTypeIsPassedOver) {
  for (const std::uint32_t type : kRecordTypes) {
    if (type == LMD_RECORD_WIDE_TEXT) continue;
    const FakeRecord other = {kXmpGroup, GetParam().id, type, WideBytes(LMD_W("1"))};
    Give({other});
    Expect(LMD_E_NOT_FOUND);
    Give({other, Record(LMD_W("2")), Record(LMD_W("3"))});
    ExpectValue(2.0F);
  }
}

TEST_P(PoseTest, TextIsReadAsADecimalNumber) {
  struct Row {
    WideStringView text;
    float value;
  };
  const Row rows[] = {
      {LMD_W("12.5"), 12.5F},     {LMD_W("0"), 0.0F},
      {LMD_W("-90.25"), -90.25F}, {LMD_W("+7"), 7.0F},
      {LMD_W(" \t 3.5"), 3.5F},   {LMD_W("359.999"), 359.999F},
      {LMD_W(".5"), 0.5F},        {LMD_W("5."), 5.0F},
      {LMD_W("1.25e2"), 125.0F},  {LMD_W("12.5 degrees"), 12.5F},
      {LMD_W("12,5"), 12.0F},     {LMD_W("1/2"), 1.0F},
      {LMD_W("--1"), 0.0F},       {LMD_W("0.0000001"), 1e-7F},
  };
  for (const Row& row : rows) {
    Give({Record(row.text)});
    ExpectValue(row.value);
  }
}

TEST_P(PoseTest, TextWithoutANumberIsZero) {
  for (const WideStringView text :
       {WideStringView(), WideStringView(LMD_W("abc")), WideStringView(LMD_W("north 5")),
        WideStringView(LMD_W("-")), WideStringView(LMD_W("\x4E00 5"))}) {
    Give({Record(text)});
    ExpectValue(0.0F);
  }
}

TEST_P(PoseTest, HexadecimalAndNamedNumbersAreNone) {
  Give({Record(LMD_W("0x10"))});
  ExpectValue(0.0F);
  for (const WideStringView text : {LMD_W("inf"), LMD_W("nan"), LMD_W("infinity")}) {
    Give({Record(text)});
    ExpectValue(0.0F);
  }
}

TEST_P(PoseTest, TextEndsAtItsFirstZero) {
  Give({{kXmpGroup, GetParam().id, 5, Join({WideBytes(LMD_W("1")), WideBytes(LMD_W("2"))})}});
  ExpectValue(1.0F);
}

TEST_P(PoseTest, ComesFromTheXmpOfAPhotograph) {
  const std::string attribute = "GPano:" + std::string(GetParam().property) + "=\"-12.5\"";
  const TempFile file(Jpeg().Xmp(XmpPacket(attribute)).Frame(8, 8).Scan().Build());
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  ExpectValue(-12.5F);
}

TEST_P(PoseTest, PhotographWithoutXmpHasNone) {
  const TempFile file(Jpeg().Frame(8, 8).Scan().Build());
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  Expect(LMD_E_NOT_FOUND);
}

INSTANTIATE_TEST_SUITE_P(Angles, PoseTest, testing::ValuesIn(kAngles),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

TEST_F(RecordsTest, AllThreeAnglesOfAPanorama) {
  const std::string packet = XmpPacket(
      "GPano:ProjectionType=\"equirectangular\" GPano:PoseHeadingDegrees=\"350.0\" "
      "GPano:PosePitchDegrees=\"-1.5\" GPano:PoseRollDegrees=\"none\"");
  const TempFile file(Jpeg().Xmp(packet).Frame(8, 8).Scan().Build());
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  float heading = -9.0F;
  float pitch = -9.0F;
  float roll = -9.0F;
  EXPECT_EQ(m_object->GetPoseHeading(&heading), S_OK);
  EXPECT_EQ(m_object->GetPosePitch(&pitch), S_OK);
  EXPECT_EQ(m_object->GetPoseRoll(&roll), S_OK);
  EXPECT_EQ(heading, 350.0F);
  EXPECT_EQ(pitch, -1.5F);
  EXPECT_EQ(roll, 0.0F);
}

}  // namespace
}  // namespace test
