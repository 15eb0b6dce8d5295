// The getters over photographs with a maker note: which field types each of them takes, and what
// the values look like after a parse.

#include <array>
#include <cstdint>

#include <gtest/gtest.h>

#include "ComTest.h"
#include "support/SamsungPhoto.h"
#include "support/TempFile.h"

namespace test {
namespace {

class MakerNoteGettersTest : public LumidexTest {
 protected:
  // Opens a photograph with this entry behind one of 64 bytes.
  void Open(const Entry& entry) { OpenNote({kNoteBound, entry}); }

  void OpenNote(const Directory& note) {
    const TempFile file(SamsungJpeg(note));
    ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  }

  using DataMethod = decltype(&ILumidex::GetInfo17Data);
  void ExpectData(DataMethod method, std::string_view hex) {
    std::array<std::uint8_t, 64> buffer = {};
    auto size = static_cast<std::uint32_t>(buffer.size());
    EXPECT_EQ((m_object->*method)(&size, buffer.data()), S_OK);
    ASSERT_LE(size, buffer.size());
    EXPECT_EQ(Hex({buffer.data(), size}), hex);
  }

  std::uint32_t m_value = 99;
};

TEST_F(MakerNoteGettersTest, Info16IsALongAShortOrADirectoryOffset) {
  Open(kNote.Long(16, {0x01020304, 5}));
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0x01020304U);
  Open(kNote.Short(16, {0xFFFE}));
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0xFFFEU);
  Open(kNote.Raw(16, 13, 1, {0, 0, 1, 0}));
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 0x100U);
}

TEST_F(MakerNoteGettersTest, Info16OfAnotherTypeIsAMismatch) {
  for (const Entry& entry : {NoteSLong(16, {1}), kNote.Byte(16, {1}), kNote.Ascii(16, "abc"),
                             kNote.Rational(16, {{1, 2}}), kNote.Undefined(16, {1, 2, 3, 4})}) {
    Open(entry);
    EXPECT_EQ(m_object->GetInfo16(&m_value), LMD_E_TYPE_MISMATCH_16);
  }
}

TEST_F(MakerNoteGettersTest, Info17IsSignedRationals) {
  Open(NoteSRational(17, {{1, 2}, {-3, 4}, {5, -8}}));
  EXPECT_EQ(m_object->GetInfo17Size(&m_value), S_OK);
  EXPECT_EQ(m_value, 24U);
  ExpectData(&ILumidex::GetInfo17Data, "0100000002000000fdffffff0400000005000000f8ffffff");
  double first = 0.0;
  double second = 0.0;
  double third = 0.0;
  EXPECT_EQ(m_object->GetInfo17Triple(&first, &second, &third), S_OK);
  EXPECT_EQ(first, 0.5);
  EXPECT_EQ(second, -0.75);
  EXPECT_EQ(third, -0.625);
}

TEST_F(MakerNoteGettersTest, Info17OfUnsignedRationalsIsAMismatch) {
  Open(kNote.Rational(17, {{1, 2}, {3, 4}, {5, 6}}));
  double value = 0.0;
  EXPECT_EQ(m_object->GetInfo17Size(&m_value), LMD_E_TYPE_MISMATCH_17);
  EXPECT_EQ(m_object->GetInfo17Triple(&value, &value, &value), LMD_E_TYPE_MISMATCH_17);
}

TEST_F(MakerNoteGettersTest, Info17OfTwoRationalsHasASizeAndNoTriple) {
  Open(NoteSRational(17, {{1, 2}, {3, 4}}));
  double value = 0.0;
  EXPECT_EQ(m_object->GetInfo17Size(&m_value), S_OK);
  EXPECT_EQ(m_value, 16U);
  EXPECT_EQ(m_object->GetInfo17Triple(&value, &value, &value), LMD_E_NOT_FOUND);
}

TEST_F(MakerNoteGettersTest, Info17WithAZeroDenominatorFails) {
  Open(NoteSRational(17, {{1, 2}, {3, 0}, {5, 6}}));
  double value = -9.0;
  EXPECT_EQ(m_object->GetInfo17Triple(&value, &value, &value), E_FAIL);
  EXPECT_EQ(value, -9.0);
}

TEST_F(MakerNoteGettersTest, Info18IsBytesOrSignedIntegers) {
  Open(kNote.Byte(18, {1, 2, 3}));
  ExpectData(&ILumidex::GetInfo18Data, "010203");
  Open(kNote.Undefined(18, {4, 5, 6, 7, 8}));
  ExpectData(&ILumidex::GetInfo18Data, "0405060708");
  Open(NoteSLong(18, {-2}));
  ExpectData(&ILumidex::GetInfo18Data, "feffffff");
  // Signed shorts become signed 32-bit integers.
  Open(kNote.Raw(18, 8, 2, {0xFF, 0xFE, 0x00, 0x07}));
  ExpectData(&ILumidex::GetInfo18Data, "feffffff07000000");
  EXPECT_EQ(m_object->GetInfo18Size(&m_value), S_OK);
  EXPECT_EQ(m_value, 8U);
}

TEST_F(MakerNoteGettersTest, Info18OfAnotherTypeIsAMismatch) {
  for (const Entry& entry : {kNote.Long(18, {1}), kNote.Short(18, {1}), kNote.Ascii(18, "a"),
                             NoteSRational(18, {{1, 2}})}) {
    Open(entry);
    EXPECT_EQ(m_object->GetInfo18Size(&m_value), LMD_E_TYPE_MISMATCH_18);
  }
}

TEST_F(MakerNoteGettersTest, Info19And21AreBytesAlone) {
  OpenNote({kNoteBound, kNote.Undefined(19, {1, 2, 3}), kNote.Byte(21, {4, 5})});
  ExpectData(&ILumidex::GetInfo19Data, "010203");
  ExpectData(&ILumidex::GetInfo21Data, "0405");
  OpenNote({kNoteBound, NoteSLong(19, {1}), NoteSLong(21, {1})});
  EXPECT_EQ(m_object->GetInfo19Size(&m_value), LMD_E_TYPE_MISMATCH_19);
  EXPECT_EQ(m_object->GetInfo21Size(&m_value), LMD_E_TYPE_MISMATCH_21);
}

TEST_F(MakerNoteGettersTest, Info20IsThreeSignedIntegers) {
  Open(NoteSLong(20, {1, -2, 3}));
  std::array<std::uint32_t, 3> words = {};
  EXPECT_EQ(m_object->GetInfo20Triple(&words[0], &words[1], &words[2]), S_OK);
  EXPECT_EQ(words, (std::array<std::uint32_t, 3>{1, 0xFFFFFFFE, 3}));
  // Three signed shorts are three integers as well.
  Open(kNote.Raw(20, 8, 3, {0, 1, 0xFF, 0xFF, 0, 2}));
  EXPECT_EQ(m_object->GetInfo20Triple(&words[0], &words[1], &words[2]), S_OK);
  EXPECT_EQ(words, (std::array<std::uint32_t, 3>{1, 0xFFFFFFFF, 2}));
}

TEST_F(MakerNoteGettersTest, Info20OfAnotherTypeOrNumberIsNone) {
  std::uint32_t word = 0;
  Open(kNote.Long(20, {1, 2, 3}));
  EXPECT_EQ(m_object->GetInfo20Triple(&word, &word, &word), LMD_E_TYPE_MISMATCH_20);
  Open(NoteSLong(20, {1, 2}));
  EXPECT_EQ(m_object->GetInfo20Triple(&word, &word, &word), LMD_E_NOT_FOUND);
}

TEST_F(MakerNoteGettersTest, FloatIsOneByte) {
  Open(kNote.Raw(18, 11, 1, {0x3F, 0x80, 0, 0}));
  ExpectData(&ILumidex::GetInfo18Data, "3f");
}

// By design: the records of a table end at the first value larger than the table's first one.
TEST_F(MakerNoteGettersTest, SmallFirstEntryHidesLargerOnes) {
  OpenNote({kNote.Long(16, {7}), NoteSRational(17, {{1, 1}, {2, 1}, {3, 1}}), kNote.Byte(18, {1})});
  EXPECT_EQ(m_object->GetInfo16(&m_value), S_OK);
  EXPECT_EQ(m_value, 7U);
  EXPECT_EQ(m_object->GetInfo17Size(&m_value), LMD_E_NOT_FOUND);
  EXPECT_EQ(m_object->GetInfo18Size(&m_value), LMD_E_NOT_FOUND);
}

TEST_F(MakerNoteGettersTest, CameraOfAnotherMakeHasNone) {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Bytes note = kNote.BuildDirectory({kNoteBound, kNote.Long(16, {7})}, 0);
  const Bytes block = tiff.Build({tiff.Ascii(271, "Samsung"), tiff.Ascii(272, "NX10"),
                                  tiff.Child(0x8769, {tiff.Undefined(0x927C, note)})});
  const TempFile file(Jpeg().Exif(block).Frame(8, 8).Scan().Build());
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  EXPECT_EQ(m_object->GetInfo16(&m_value), LMD_E_NOT_FOUND);
}

}  // namespace
}  // namespace test
