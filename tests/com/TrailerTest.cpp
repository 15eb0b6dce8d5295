// AppendTrailer: the block, byte by byte, and the files that it is put behind.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "ComTest.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/SamsungPhoto.h"
#include "support/TempFile.h"

namespace test {
namespace {

// clang-format off
const Bytes kBlock = {
    0x00, 0x00,                                       //  0 reserved
    0x50, 0x0A,                                       //  2 record type
    0x0F, 0x00, 0x00, 0x00,                           //  4 length of the name
    'J', 'p', 'e', 'g', '3', '6', '0', '_', '2', 'D',
    '_', 'I', 'n', 'f', 'o',                          //  8 name
    'J', 'p', 'e', 'g', '3', '6', '0', '2', 'D',      // 23 data
    'S', 'E', 'F', 'H',                               // 32
    0x65, 0x00, 0x00, 0x00,                           // 36 version
    0x01, 0x00, 0x00, 0x00,                           // 40 entries
    0x00, 0x00,                                       // 44 reserved
    0x50, 0x0A,                                       // 46 record type
    0x20, 0x00, 0x00, 0x00,                           // 48 distance
    0x20, 0x00, 0x00, 0x00,                           // 52 size
    0x18, 0x00, 0x00, 0x00,                           // 56 size of the directory
    'S', 'E', 'F', 'T',                               // 60
};
// clang-format on

class TrailerTest : public LumidexTest {
 protected:
  // Marks a file of these bytes and compares the result and what the file then holds.
  void Expect(const Bytes& before, HRESULT result, const Bytes& after) {
    const TempFile file(before);
    EXPECT_EQ(m_object->AppendTrailer(file.Path()), result);
    EXPECT_EQ(file.Read(), after);
  }
};

TEST_F(TrailerTest, BlockHasSixtyFourBytes) {
  EXPECT_EQ(kBlock.size(), 64U);
}

TEST_F(TrailerTest, BlockIsAppendedToAPhotograph) {
  const Bytes photo = FullPhoto();
  Expect(photo, S_OK, Join({photo, kBlock}));
}

TEST_F(TrailerTest, FileTypeIsNotChecked) {
  const Bytes text = Text(std::string(100, 'x'));
  Expect(text, S_OK, Join({text, kBlock}));
}

TEST_F(TrailerTest, SecondTimeIsRefusedAndWritesNothing) {
  const Bytes photo = FullPhoto();
  const TempFile file(photo);
  EXPECT_EQ(m_object->AppendTrailer(file.Path()), S_OK);
  EXPECT_EQ(m_object->AppendTrailer(file.Path()), LMD_E_ALREADY_MARKED);
  EXPECT_EQ(m_object->AppendTrailer(file.Path()), LMD_E_ALREADY_MARKED);
  EXPECT_EQ(file.Read().size(), photo.size() + 64);
}

TEST_F(TrailerTest, FileShorterThanTheBlockIsRefusedAndLeftAlone) {
  for (const std::size_t size : {0U, 1U, 63U}) {
    const Bytes bytes(size, 0xAB);
    Expect(bytes, LMD_E_READ_FAILED, bytes);
  }
  const Bytes cut(kBlock.begin() + 1, kBlock.end());
  Expect(cut, LMD_E_READ_FAILED, cut);
}

TEST_F(TrailerTest, SixtyFourBytesAreEnough) {
  const Bytes bytes(64, 0xAB);
  Expect(bytes, S_OK, Join({bytes, kBlock}));
}

TEST_F(TrailerTest, FileOfNothingButTheBlockIsMarked) {
  Expect(kBlock, LMD_E_ALREADY_MARKED, kBlock);
}

TEST_F(TrailerTest, EveryByteOfTheBlockCounts) {
  for (std::size_t i = 0; i < kBlock.size(); ++i) {
    SCOPED_TRACE(i);
    Bytes almost = kBlock;
    almost[i] ^= 0x01;
    Expect(almost, S_OK, Join({almost, kBlock}));
  }
}

TEST_F(TrailerTest, BlockAnywhereButAtTheEndIsNoMark) {
  const Bytes behind = Join({kBlock, {0}});
  Expect(behind, S_OK, Join({behind, kBlock}));
  const Bytes before = Join({kBlock, FullPhoto()});
  Expect(before, S_OK, Join({before, kBlock}));
}

TEST_F(TrailerTest, MissingFileAndFolderAreNotFound) {
  const WideString missing = TempPath();
  EXPECT_EQ(m_object->AppendTrailer(missing.c_str()), LMD_E_SRC_NOT_FOUND);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(missing)));
  EXPECT_EQ(m_object->AppendTrailer(LMD_W("")), LMD_E_SRC_NOT_FOUND);
  EXPECT_EQ(m_object->AppendTrailer(LMD_W(".")), LMD_E_SRC_NOT_FOUND);
}

TEST_F(TrailerTest, NullPathCannotBeOpened) {
  EXPECT_EQ(m_object->AppendTrailer(nullptr), LMD_E_OPEN_FAILED);
}

// A superuser may write to any file, so the test asks the system what it allows.
TEST_F(TrailerTest, ReadOnlyFileCannotBeOpened) {
  const Bytes photo = FullPhoto();
  const TempFile file(photo);
  const std::filesystem::path path(WideString(file.Path()));
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  const bool mayWrite = std::ofstream(path, std::ios::binary | std::ios::app).is_open();
  EXPECT_EQ(m_object->AppendTrailer(file.Path()), mayWrite ? S_OK : LMD_E_OPEN_FAILED);
  EXPECT_EQ(file.Read(), mayWrite ? Join({photo, kBlock}) : photo);
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

TEST_F(TrailerTest, MarkedPhotographReadsAsBefore) {
  const TempFile file(SamsungJpeg({kNoteBound, kNote.Long(16, {7})}));
  EXPECT_EQ(m_object->AppendTrailer(file.Path()), S_OK);
  EXPECT_EQ(m_object->GetFileType(file.Path()), 1);
  ASSERT_EQ(m_object->Open(file.Path()), S_OK);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), S_OK);
  EXPECT_EQ(value, 7U);
}

TEST_F(TrailerTest, MarkingLeavesTheObjectAlone) {
  const TempFile file(FullPhoto());
  EXPECT_EQ(m_object->AppendTrailer(file.Path()), S_OK);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), LMD_E_INVALID_ARG);
  EXPECT_EQ(m_object->IsPanorama(&value), LMD_E_NOT_FOUND);
  const TempFile own(SamsungJpeg({kNoteBound, kNote.Long(16, {7})}));
  ASSERT_EQ(m_object->Open(own.Path()), S_OK);
  const TempFile text(Text(std::string(100, 'x')));
  EXPECT_EQ(m_object->AppendTrailer(text.Path()), S_OK);
  EXPECT_EQ(m_object->GetInfo16(&value), S_OK);
  EXPECT_EQ(value, 7U);
  EXPECT_EQ(m_object->IsPanorama(&value), LMD_E_NOT_FOUND);
}

TEST_F(TrailerTest, OpenFileMayBeMarked) {
  const TempFile own(SamsungJpeg({kNoteBound, kNote.Long(16, {7})}));
  ASSERT_EQ(m_object->Open(own.Path()), S_OK);
  EXPECT_EQ(m_object->AppendTrailer(own.Path()), S_OK);
  std::uint32_t value = 0;
  EXPECT_EQ(m_object->GetInfo16(&value), S_OK);
  EXPECT_EQ(value, 7U);
}

TEST_F(TrailerTest, FileIsNotKeptOpen) {
  const WideString path = TempPath();
  WriteFile(path, FullPhoto());
  EXPECT_EQ(m_object->AppendTrailer(path.c_str()), S_OK);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
  WriteFile(path, Zeros(10));
  EXPECT_EQ(m_object->AppendTrailer(path.c_str()), LMD_E_READ_FAILED);
  EXPECT_TRUE(std::filesystem::remove(std::filesystem::path(path)));
}

}  // namespace
}  // namespace test
