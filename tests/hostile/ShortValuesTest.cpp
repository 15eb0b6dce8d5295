// Getters over values that are smaller than what is read from them, over quotients without an end,
// and over texts that are hardly numbers.

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Bounds.h"
#include "DrivenFile.h"
#include "com/RecordsTest.h"
#include "support/SamsungPhoto.h"
#include "support/XmpPacket.h"

namespace test {
namespace {

// A parse result of records that no file could give.
class HostileRecords : public RecordsTest {
 protected:
  // The getters of a number and of three.
  HRESULT Info16(std::uint32_t* value) {
    return Bounded(kSmallInput, [&] { return m_object->GetInfo16(value); });
  }
};

TEST_F(HostileRecords, WordOfFewerThanFourBytes) {
  for (const auto& [bytes, word] : {std::pair<Bytes, std::uint32_t>{{}, 0},
                                    {{0x11}, 0x11},
                                    {{0x11, 0x22}, 0x2211},
                                    {{0x11, 0x22, 0x33}, 0x332211},
                                    {{0x11, 0x22, 0x33, 0x44}, 0x44332211},
                                    {{0x11, 0x22, 0x33, 0x44, 0x55}, 0x44332211}}) {
    Give({{kNoteGroup, 16, LMD_RECORD_UINT32, bytes}});
    std::uint32_t value = 7;
    EXPECT_EQ(Info16(&value), S_OK);
    EXPECT_EQ(value, word);
  }
}

TEST_F(HostileRecords, ThreeWordsOfAnotherSize) {
  std::uint32_t words[3] = {7, 7, 7};
  double quotients[3] = {7, 7, 7};
  for (std::size_t size = 0; size < 40; ++size) {
    Give({{kNoteGroup, 20, LMD_RECORD_INT32, Bytes(size, 1)},
          {kNoteGroup, 17, LMD_RECORD_SRATIONAL, Bytes(size, 1)}});
    EXPECT_EQ(m_object->GetInfo20Triple(&words[0], &words[1], &words[2]),
              size == 12 ? S_OK : LMD_E_NOT_FOUND);
    EXPECT_EQ(m_object->GetInfo17Triple(&quotients[0], &quotients[1], &quotients[2]),
              size == 24 ? S_OK : LMD_E_NOT_FOUND);
    EXPECT_EQ(words[2], size < 12 ? 7U : 0x01010101U);
    EXPECT_EQ(quotients[2], size < 24 ? 7.0 : 1.0);
  }
}

TEST_F(HostileRecords, BytesOfNoValue) {
  Give({{kNoteGroup, 17, LMD_RECORD_SRATIONAL, {}},
        {kNoteGroup, 18, LMD_RECORD_BYTES, {}},
        {kNoteGroup, 19, LMD_RECORD_BYTES, {}},
        {kNoteGroup, 21, LMD_RECORD_BYTES, {}}});
  for (const auto method : {&ILumidex::GetInfo17Data, &ILumidex::GetInfo18Data,
                            &ILumidex::GetInfo19Data, &ILumidex::GetInfo21Data}) {
    std::uint32_t size = 0;
    std::uint8_t byte = '#';
    EXPECT_EQ((m_object->*method)(&size, &byte), S_OK);
    EXPECT_EQ(size, 0U);
    size = 1;
    EXPECT_EQ((m_object->*method)(&size, &byte), S_OK);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(byte, '#');
  }
}

TEST_F(HostileRecords, QuotientsAtTheEndsOfThirtyTwoBits) {
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  double first = 7;
  double second = 7;
  double third = 7;
  const auto give = [&](const std::vector<std::int32_t>& words) {
    Give({{kNoteGroup, 17, LMD_RECORD_SRATIONAL, Words(words)}});
    return m_object->GetInfo17Triple(&first, &second, &third);
  };
  EXPECT_EQ(give({kLeast, -1, kMost, 1, 1, kLeast}), S_OK);
  EXPECT_EQ(first, 2147483648.0);
  EXPECT_EQ(second, 2147483647.0);
  EXPECT_EQ(third, -1.0 / 2147483648.0);
  for (const auto& zero :
       {std::vector<std::int32_t>{1, 0, 1, 1, 1, 1}, {1, 1, 1, 0, 1, 1}, {1, 1, 1, 1, 0, 0}}) {
    EXPECT_EQ(give(zero), E_FAIL);
    EXPECT_EQ(first, 2147483648.0);
  }
}

// A pose angle of any text; wide texts of odd sizes and without a final zero as well.
TEST_F(HostileRecords, AnglesOfOddTexts) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const auto wide = [](const std::string& text) {
    return WideBytes(WideString(text.begin(), text.end()));
  };
  const std::vector<std::pair<Bytes, float>> kAngles = {
      {{}, 0.0F},
      {{'1'}, 0.0F},
      {{'1', 0}, 1.0F},
      {{'1', 0, '2'}, 1.0F},
      {{'1', 0, '2', 0}, 12.0F},
      {wide("1e999"), kInfinity},
      {wide("-1e999"), -kInfinity},
      {wide("1e-999"), 0.0F},
      {wide("1e99999999999999999999"), kInfinity},
      {wide("1e-99999999999999999999"), 0.0F},
      {wide("0e99999999999999999999"), 0.0F},
      {wide("nan"), 0.0F},
      {wide("inf"), 0.0F},
      {wide("0x1F"), 0.0F},
      {wide("1e"), 1.0F},
      {wide("-"), 0.0F},
      {wide("."), 0.0F},
      {wide(".5."), 0.5F},
      {wide(std::string(30'000, '9')), kInfinity},
      {wide("0." + std::string(30'000, '0') + "1"), 0.0F},
      {wide(std::string(30'000, '0') + "2.5"), 2.5F},
      {wide("0." + std::string(30'000, '9')), 1.0F},
      {wide(std::string(30'000, ' ') + "-7"), -7.0F},
      {wide("1" + std::string(30'000, '0') + "e-30000"), 1.0F},
  };
  for (const auto& [bytes, angle] : kAngles) {
    SCOPED_TRACE(Hex(bytes).substr(0, 40));
    Give({{64, 0xAB20, LMD_RECORD_WIDE_TEXT, bytes}});
    float value = 7;
    EXPECT_EQ(Bounded(kSmallInput, [&] { return m_object->GetPoseHeading(&value); }), S_OK);
    EXPECT_EQ(value, angle);
  }
}

// Values of no bytes and of one in the maker note of a photograph.
class HostileMakerNote : public LumidexTest {
 protected:
  void Open(const Entry& entry) {
    const TempFile file(SamsungJpeg({kNoteBound, entry}));
    ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  }
  std::uint32_t m_value = 7;
};

TEST_F(HostileMakerNote, WordOfAnEmptyValue) {
  for (const std::uint16_t type : std::vector<std::uint16_t>{3, 4, 13}) {
    Open(kNote.Raw(16, type, 0, {1, 2, 3, 4}));
    m_value = 7;
    EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
    EXPECT_EQ(m_value, 0U);
  }
}

TEST_F(HostileMakerNote, WordOfOneShort) {
  Open(kNote.Short(16, {0xFFFF}));
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0xFFFFU);
}

TEST_F(HostileMakerNote, WordOfOneByteIsNoWord) {
  for (const std::uint16_t type : std::vector<std::uint16_t>{1, 2, 6, 7}) {
    Open(kNote.Raw(16, type, 1, {0xFF}));
    EXPECT_EQ(m_object->GetInfo16(&m_value), LMD_E_TYPE_MISMATCH_16);
    EXPECT_EQ(m_value, 7U);
  }
}

// A count beyond what can be stored leaves the entry without data, and that gives no record.
TEST_F(HostileMakerNote, WordOfAValueThatWasNotStored) {
  for (const std::uint32_t count : {0xFFFFFFFFU, 0x40000000U, 0x3FFFFFFFU}) {
    Open(kNote.Raw(16, 4, count, {0, 0, 0, 8}));
    EXPECT_EQ(m_object->GetInfo16(&m_value), LMD_E_NOT_FOUND);
  }
}

// The lens id and the name that a photograph's summary gets for tag 0xA003.
std::pair<std::optional<Stored>, std::optional<Stored>> LensOf(const Entry& entry) {
  const auto file = BoundedDrive(SamsungJpeg({entry}));
  return {Find(file->store, BLOCK_MAKERNOTE_SUMMARY, 4),
          Find(file->store, BLOCK_MAKERNOTE_SUMMARY, 2)};
}

TEST_F(HostileMakerNote, LensIdOfFewerThanTwoBytes) {
  const Stored five = {4, 4, 1, "05000000"};
  const Stored name = {2, 2, 29, Hex(Join({Text("Samsung NX 20mm F2.8 Pancake"), {0}}))};
  EXPECT_EQ(LensOf(kNote.Short(0xA003, {5})), std::pair(std::optional(five), std::optional(name)));
  EXPECT_EQ(LensOf(kNote.Byte(0xA003, {5})), std::pair(std::optional(five), std::optional(name)));
  for (const std::uint16_t type : std::vector<std::uint16_t>{1, 2, 3, 4, 7}) {
    const auto [id, lens] = LensOf(kNote.Raw(0xA003, type, 0, {0, 5, 0, 0}));
    EXPECT_EQ(id, std::nullopt) << type;
    EXPECT_EQ(lens, std::nullopt) << type;
  }
}

TEST_F(HostileMakerNote, PictureStyleOfNoBytes) {
  const auto file = BoundedDrive(SamsungJpeg({kNote.Raw(0x21, 1, 0, {3, 0, 0, 0})}));
  const auto style = Find(file->store, BLOCK_MAKERNOTE_SUMMARY, 10);
  EXPECT_EQ(style, std::nullopt);
}

}  // namespace
}  // namespace test
