// The store's tables, its accessors, and what a reset leaves.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "exif/VxMetadata.h"
#include "support/StoreFile.h"

namespace test {
namespace {

void Put(VxMetadata& store, std::int32_t block, std::uint32_t tag, std::uint32_t type,
         std::uint32_t count, const Bytes& data) {
  TagEntry& entry = store.m_fnFindOrInsert(*store.m_fnGetBlock(block), tag);
  SetTagValue(entry, tag, type, data, store.Memory());
  entry.m_nCount = count;
}

TEST(Store, StartsWithTheDocumentedValues) {
  VxMetadata store;
  EXPECT_EQ(store.m_nOwnerValue, 0U);
  EXPECT_EQ(store.m_nParseFlags, 0U);
  EXPECT_FALSE(store.m_pFile);
  EXPECT_EQ(store.m_nFileType, 0U);
  EXPECT_EQ(store.m_nImageWidth, 0U);
  EXPECT_EQ(store.m_nImageHeight, 0U);
  EXPECT_EQ(store.m_pThumbnail, nullptr);
  EXPECT_EQ(store.m_nThumbnailSize, 0U);
  EXPECT_EQ(store.m_nThumbnailWidth, 0U);
  EXPECT_EQ(store.m_nThumbnailHeight, 0U);
  EXPECT_EQ(store.m_nThumbnailFormat, 1U);
  EXPECT_EQ(store.m_nTiffMagic, 0U);
  EXPECT_EQ(store.m_nEmbeddedJpegPos, 0U);
  EXPECT_TRUE(store.m_strPath.empty());
  EXPECT_TRUE(store.m_mapSubIfd.empty());
}

TEST(Store, MakesItsTwoParsers) {
  VxMetadata store;
  EXPECT_TRUE(store.m_pMakerNote);
  EXPECT_TRUE(store.m_pXmpParser);
}

TEST(Store, BlockNumbersAreFixed) {
  constexpr std::array<std::int32_t, 10> kBlocks = {
      BLOCK_IFD0,      BLOCK_EXIF, BLOCK_GPS, BLOCK_IFD1,       BLOCK_IPTC, BLOCK_MAKERNOTE_SUMMARY,
      BLOCK_MAKERNOTE, BLOCK_ICC,  BLOCK_XMP, BLOCK_XMP_REGIONS};
  for (std::size_t i = 0; i < kBlocks.size(); ++i) {
    EXPECT_EQ(kBlocks[i], static_cast<std::int32_t>(i + 1));
  }
}

TEST(Store, TenBlocksAreDifferentEmptyTables) {
  VxMetadata store;
  for (std::int32_t block = 1; block <= 10; ++block) {
    TagMap* table = store.m_fnGetBlock(block);
    ASSERT_NE(table, nullptr) << block;
    EXPECT_TRUE(table->IsEmpty()) << block;
    table->FindOrInsert(static_cast<std::uint32_t>(block));
  }
  for (std::int32_t block = 1; block <= 10; ++block) {
    EXPECT_EQ(Keys(store, block), std::vector<std::uint32_t>{static_cast<std::uint32_t>(block)});
  }
}

TEST(Store, OtherBlocksAreNull) {
  VxMetadata store;
  for (std::int32_t i = 0; i < 4; ++i) store.FindOrAddSubIfd(0x1000 | i);
  for (const std::int32_t block : {0, 11, -1, 0x800, 0x2000, 0x1004, 0x1005, 0x7FFFFFFF}) {
    EXPECT_EQ(store.m_fnGetBlock(block), nullptr) << block;
  }
}

TEST(Store, SubIfdBlockGivesTheTableOfItsNumber) {
  VxMetadata store;
  for (std::int32_t i = 0; i < 4; ++i) store.FindOrAddSubIfd(0x1000 | i);
  EXPECT_EQ(store.m_fnGetBlock(0x1000), &store.FindOrAddSubIfd(0x1000));
  EXPECT_EQ(store.m_fnGetBlock(0x1003), &store.FindOrAddSubIfd(0x1003));
}

TEST(Store, AskingForASubIfdBlockDoesNotCreateIt) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnGetBlock(0x1000), nullptr);
  EXPECT_EQ(store.m_fnGetBlock(0x1000), nullptr);
  EXPECT_TRUE(store.m_mapSubIfd.empty());
}

TEST(Store, CursorsOfTheFixedTablesStartAtTheirEnd) {
  VxMetadata store;
  for (std::int32_t block = 1; block <= 10; ++block) {
    TagMap::Iterator* cursor = store.m_fnGetBlockCursor(block);
    ASSERT_NE(cursor, nullptr) << block;
    EXPECT_EQ(*cursor, store.m_fnGetBlock(block)->end()) << block;
  }
}

TEST(Store, OtherBlocksHaveNoCursor) {
  VxMetadata store;
  store.FindOrAddSubIfd(0x1000);
  for (const std::int32_t block : {0, 11, -1, 0x1000, 0x1001}) {
    EXPECT_EQ(store.m_fnGetBlockCursor(block), nullptr) << block;
  }
}

TEST(Store, LastWriteOfATagWins) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 2, {'A', 0});
  Put(store, BLOCK_IFD0, 271, 3, 1, {1, 0});
  EXPECT_EQ(Keys(store, BLOCK_IFD0), std::vector<std::uint32_t>{271});
  EXPECT_EQ(Find(store, BLOCK_IFD0, 271), (Stored{271, 3, 1, "0100"}));
}

// --- m_fnGetTagEntry ---

TEST(StoreTagEntry, NullOutIsRefused) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 2, {'A', 0});
  EXPECT_EQ(store.m_fnGetTagEntry(BLOCK_IFD0, 271, nullptr), E_POINTER);
}

TEST(StoreTagEntry, UnknownBlockIsRefused) {
  VxMetadata store;
  TagEntry out;
  for (const std::int32_t block : {0, 11, 0x1000}) {
    EXPECT_EQ(store.m_fnGetTagEntry(block, 271, &out), E_POINTER) << block;
  }
}

TEST(StoreTagEntry, AbsentTagIsFalse) {
  VxMetadata store;
  TagEntry out;
  EXPECT_EQ(store.m_fnGetTagEntry(BLOCK_IFD0, 271, &out), S_FALSE);
  EXPECT_TRUE(store.m_fnGetBlock(BLOCK_IFD0)->IsEmpty());
}

TEST(StoreTagEntry, WithoutBufferTheSizeIsAnswered) {
  VxMetadata store;
  Put(store, BLOCK_GPS, 2, 5, 3, Bytes(24, 7));
  TagEntry out;
  EXPECT_EQ(store.m_fnGetTagEntry(BLOCK_GPS, 2, &out), S_OK);
  EXPECT_EQ(out.m_nTag, 2U);
  EXPECT_EQ(out.m_nType, 5U);
  EXPECT_EQ(out.m_nCount, 3U);
  EXPECT_EQ(out.m_nSize, 24U);
  EXPECT_EQ(out.m_pData, nullptr);
}

TEST(StoreTagEntry, TooSmallABufferIsFalseAndUntouched) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 3, {'A', 'B', 0});
  Bytes buffer(3, 0xEE);
  TagEntry out{0, 0, 0, 2, buffer.data()};
  EXPECT_EQ(store.m_fnGetTagEntry(BLOCK_IFD0, 271, &out), S_FALSE);
  EXPECT_EQ(Hex(buffer), "eeeeee");
  EXPECT_EQ(out.m_nTag, 271U);
  EXPECT_EQ(out.m_nType, 2U);
  EXPECT_EQ(out.m_nCount, 3U);
}

TEST(StoreTagEntry, BufferOfTheExactSizeGetsTheBytes) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 3, {'A', 'B', 0});
  Bytes buffer(4, 0xEE);
  TagEntry out{0, 0, 0, 3, buffer.data()};
  EXPECT_EQ(store.m_fnGetTagEntry(BLOCK_IFD0, 271, &out), S_OK);
  EXPECT_EQ(Hex(buffer), "414200ee");
}

TEST(StoreTagEntry, LargerBufferGetsTheBytesOnly) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 7, 2, {'A', 'B'});
  Bytes buffer(4, 0xEE);
  TagEntry out{0, 0, 0, 4, buffer.data()};
  EXPECT_EQ(store.m_fnGetTagEntry(BLOCK_IFD0, 271, &out), S_OK);
  EXPECT_EQ(Hex(buffer), "4142eeee");
}

TEST(StoreTagEntry, ReadsSubIfdTables) {
  VxMetadata store;
  store.FindOrAddSubIfd(0x1001);
  Put(store, 0x1001, 256, 3, 1, {5, 0});
  TagEntry out;
  EXPECT_EQ(store.m_fnGetTagEntry(0x1001, 256, &out), S_OK);
  EXPECT_EQ(out.m_nSize, 2U);
}

// --- m_fnGetTagData ---

TEST(StoreTagData, NullArgumentsAreRefused) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 2, {'A', 0});
  std::uint8_t byte = 0;
  std::int32_t size = 1;
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 271, nullptr, &size), E_POINTER);
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 271, &byte, nullptr), E_POINTER);
}

TEST(StoreTagData, AbsentOrEmptyValuesFail) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 7, 0, {});
  Bytes buffer(4, 0xEE);
  std::int32_t size = 4;
  EXPECT_EQ(store.m_fnGetTagData(0, 271, buffer.data(), &size), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagData(0x1000, 271, buffer.data(), &size), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 271, buffer.data(), &size), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 300, buffer.data(), &size), E_FAIL);
  EXPECT_EQ(Hex(buffer), "eeeeeeee");
}

TEST(StoreTagData, OneByteMoreGetsTheWholeValueWithoutATerminator) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 7, 3, {1, 2, 3});
  Bytes buffer(4, 0xEE);
  std::int32_t size = 4;
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 300, buffer.data(), &size), S_OK);
  EXPECT_EQ(size, 3);
  EXPECT_EQ(Hex(buffer), "010203ee");
}

TEST(StoreTagData, ExactBufferLosesTheLastByteToATerminator) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 7, 3, {1, 2, 3});
  Bytes buffer(4, 0xEE);
  std::int32_t size = 3;
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 300, buffer.data(), &size), S_OK);
  EXPECT_EQ(size, 3);
  EXPECT_EQ(Hex(buffer), "010200ee");
}

TEST(StoreTagData, SmallerBufferIsFilledAndTerminated) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 7, 3, {1, 2, 3});
  Bytes buffer(3, 0xEE);
  std::int32_t size = 2;
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 300, buffer.data(), &size), S_OK);
  EXPECT_EQ(size, 2);
  EXPECT_EQ(Hex(buffer), "0100ee");

  Bytes single(2, 0xEE);
  size = 1;
  EXPECT_EQ(store.m_fnGetTagData(BLOCK_IFD0, 300, single.data(), &size), S_OK);
  EXPECT_EQ(Hex(single), "00ee");
}

TEST(StoreTagData, BufferWithoutRoomIsNotWritten) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 7, 3, {1, 2, 3});
  Bytes buffer(3, 0xEE);
  for (const std::int32_t room : {0, -1, -0x7FFFFFFF - 1}) {
    std::int32_t size = room;
    store.m_fnGetTagData(BLOCK_IFD0, 300, buffer.data() + 1, &size);
    EXPECT_EQ(Hex(buffer), "eeeeee") << room;
  }
}

// --- m_fnGetTagString ---

TEST(StoreTagString, GivesTheTextUpToTheFirstZero) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 6, {'A', 'B', 0, 'C', 'D', 0});
  std::string text = "before";
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_IFD0, 271, text), S_OK);
  EXPECT_EQ(text, "AB");
}

TEST(StoreTagString, LoneZeroIsAnEmptyText) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 2, 0, {0});
  std::string text = "before";
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_IFD0, 271, text), S_OK);
  EXPECT_EQ(text, "");
}

TEST(StoreTagString, BytesWithoutAZeroFail) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 271, 7, 3, {'A', 'B', 'C'});
  std::string text = "before";
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_IFD0, 271, text), E_FAIL);
  EXPECT_EQ(text, "before");
}

TEST(StoreTagString, TypeDoesNotMatter) {
  VxMetadata store;
  Put(store, BLOCK_EXIF, 0xA001, 3, 1, {'A', 0});
  Put(store, BLOCK_EXIF, 0xA002, 7, 4, {'x', 'y', 0, 'z'});
  std::string text;
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_EXIF, 0xA001, text), S_OK);
  EXPECT_EQ(text, "A");
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_EXIF, 0xA002, text), S_OK);
  EXPECT_EQ(text, "xy");
}

TEST(StoreTagString, AbsentOrEmptyValuesFail) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 7, 0, {});
  std::string text = "before";
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_IFD0, 271, text), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_IFD0, 300, text), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagString(0, 271, text), E_FAIL);
  EXPECT_EQ(text, "before");
}

TEST(StoreTagString, ValueThatLostItsDataFails) {
  VxMetadata store;
  TagEntry& entry = store.m_fnFindOrInsert(*store.m_fnGetBlock(BLOCK_IFD0), 271);
  entry.m_nTag = 271;
  entry.m_nType = 2;
  entry.m_nSize = 5;
  std::string text = "before";
  EXPECT_EQ(store.m_fnGetTagString(BLOCK_IFD0, 271, text), E_FAIL);
  EXPECT_EQ(text, "before");
}

// --- m_fnGetTagShort ---

struct NumberRow {
  std::uint32_t type;
  Bytes data;
  std::uint32_t expected;
};

TEST(StoreTagShort, ReadsTheFirst16BitsSignExtended) {
  const NumberRow rows[] = {
      {3, {0x34, 0x12}, 0x1234},
      {3, {0xFF, 0x7F}, 0x7FFF},
      {3, {0xFF, 0xFF}, 0xFFFFFFFF},  // By design: 65535 reads as -1.
      {3, {0x00, 0x80}, 0xFFFF8000},
      {3, {0x01, 0x00, 0x02, 0x00}, 1},
      {4, {0x78, 0x56, 0x34, 0x12}, 0x5678},
      {4, {0x00, 0x80, 0x01, 0x00}, 0xFFFF8000},
      {1, {0xFF}, 0x00FF},
  };
  for (const NumberRow& row : rows) {
    VxMetadata store;
    Put(store, BLOCK_EXIF, 9, row.type, 1, row.data);
    std::uint32_t value = 0xDEADBEEF;
    EXPECT_EQ(store.m_fnGetTagShort(BLOCK_EXIF, 9, &value), S_OK);
    EXPECT_EQ(value, row.expected) << Hex(row.data);
  }
}

TEST(StoreTagShort, AbsentOrEmptyValuesFail) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 300, 3, 0, {});
  std::uint32_t value = 5;
  EXPECT_EQ(store.m_fnGetTagShort(BLOCK_IFD0, 271, &value), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagShort(BLOCK_IFD0, 300, &value), E_FAIL);
  EXPECT_EQ(store.m_fnGetTagShort(11, 271, &value), E_FAIL);
}

// --- m_fnGetThumbTagInteger, m_fnGetThumbTagLong ---

TEST(StoreNumbers, WithoutAnOutputThereIsNone) {
  VxMetadata store;
  EXPECT_EQ(store.m_fnGetTagShort(BLOCK_IFD0, 271, nullptr), E_POINTER);
  EXPECT_EQ(store.m_fnGetThumbTagInteger(0x0201, nullptr), E_POINTER);
  EXPECT_EQ(store.m_fnGetThumbTagLong(0x0201, nullptr), E_POINTER);
}

TEST(StoreThumbTag, IntegersConvertByTheirStoredType) {
  const NumberRow rows[] = {
      {1, {0xFE}, 0xFE},
      {3, {0xFE, 0xFF}, 0xFFFE},
      {4, {0xFE, 0xFF, 0xFF, 0xFF}, 0xFFFFFFFE},
      {9, {0xFE, 0xFF, 0xFF, 0xFF}, 0xFFFFFFFE},
      {6, {0xFE}, 0xFFFFFFFE},
      {8, {0xFE, 0xFF}, 0xFFFFFFFE},
      {3, {0x01, 0x00, 0x02, 0x00}, 1},
  };
  for (const NumberRow& row : rows) {
    VxMetadata store;
    Put(store, BLOCK_IFD1, 256, row.type, 1, row.data);
    std::uint32_t value = 0;
    EXPECT_EQ(store.m_fnGetThumbTagInteger(256, &value), S_OK) << row.type;
    EXPECT_EQ(value, row.expected) << row.type;
  }
}

TEST(StoreThumbTag, OtherTypesAreNoIntegers) {
  for (const std::uint32_t type : {0U, 2U, 5U, 7U, 10U, 11U, 12U, 13U, 162U}) {
    VxMetadata store;
    Put(store, BLOCK_IFD1, 256, type, 1, {1, 0, 0, 0, 1, 0, 0, 0});
    std::uint32_t value = 0;
    EXPECT_EQ(store.m_fnGetThumbTagInteger(256, &value), E_FAIL) << type;
    EXPECT_EQ(value, 0x7FFFFFFFU) << type;
  }
}

TEST(StoreThumbTag, CountOfZeroIsNoInteger) {
  VxMetadata store;
  Put(store, BLOCK_IFD1, 256, 3, 0, {1, 0});
  std::uint32_t value = 0;
  EXPECT_EQ(store.m_fnGetThumbTagInteger(256, &value), E_FAIL);
  EXPECT_EQ(value, 0x7FFFFFFFU);
}

TEST(StoreThumbTag, OnlyTheThumbnailsDirectoryIsRead) {
  VxMetadata store;
  Put(store, BLOCK_IFD0, 256, 4, 1, {1, 0, 0, 0});
  std::uint32_t value = 0;
  EXPECT_EQ(store.m_fnGetThumbTagInteger(256, &value), E_FAIL);
  EXPECT_EQ(store.m_fnGetThumbTagLong(256, &value), E_FAIL);
}

TEST(StoreThumbTag, LongIsTheFirst32BitsOfAnyType) {
  const NumberRow rows[] = {
      {4, {0x78, 0x56, 0x34, 0x12}, 0x12345678},
      {7, {0x01, 0x02, 0x03, 0x04, 0x05}, 0x04030201},
      {5, {0x02, 0, 0, 0, 0x03, 0, 0, 0}, 2},
      {3, {0x34, 0x12}, 0x1234},
      {1, {0xFF}, 0xFF},
  };
  for (const NumberRow& row : rows) {
    VxMetadata store;
    Put(store, BLOCK_IFD1, 0x201, row.type, 1, row.data);
    std::uint32_t value = 0;
    EXPECT_EQ(store.m_fnGetThumbTagLong(0x201, &value), S_OK) << row.type;
    EXPECT_EQ(value, row.expected) << row.type;
  }
}

// --- m_fnReset ---

TEST(StoreReset, ClearsTablesThumbnailAndMagic) {
  VxMetadata store;
  for (std::int32_t block = 1; block <= 10; ++block) Put(store, block, 1, 3, 1, {1, 0});
  store.FindOrAddSubIfd(0x1000);
  Put(store, 0x1000, 1, 3, 1, {1, 0});
  *store.m_fnGetBlockCursor(BLOCK_EXIF) = store.m_fnGetBlock(BLOCK_EXIF)->begin();
  store.m_pThumbnail = std::make_unique<std::uint8_t[]>(5);
  store.m_nThumbnailSize = 5;
  store.m_nThumbnailWidth = 160;
  store.m_nThumbnailHeight = 120;
  store.m_nThumbnailFormat = THUMBNAIL_RGB;
  store.m_nTiffMagic = 26;

  store.m_fnReset();

  for (std::int32_t block = 1; block <= 10; ++block) {
    EXPECT_TRUE(store.m_fnGetBlock(block)->IsEmpty()) << block;
    EXPECT_EQ(*store.m_fnGetBlockCursor(block), store.m_fnGetBlock(block)->end()) << block;
  }
  EXPECT_TRUE(store.m_mapSubIfd.empty());
  EXPECT_EQ(store.m_fnGetBlock(0x1000), nullptr);
  EXPECT_EQ(store.m_pThumbnail, nullptr);
  EXPECT_EQ(store.m_nThumbnailSize, 0U);
  EXPECT_EQ(store.m_nThumbnailWidth, 0U);
  EXPECT_EQ(store.m_nThumbnailHeight, 0U);
  EXPECT_EQ(store.m_nThumbnailFormat, 1U);
  EXPECT_EQ(store.m_nTiffMagic, 0U);
}

TEST(StoreReset, LeavesFilePathFlagsImageSizeAndEmbeddedJpeg) {
  StoreFile file({1, 2, 3}, 0x0C);
  VxMetadata& store = file.Store();
  store.m_nFileType = 1;
  store.m_strPath = LMD_W("photo.jpg");
  store.m_nImageWidth = 640;
  store.m_nImageHeight = 480;
  store.m_nEmbeddedJpegPos = 77;

  store.m_fnReset();

  ASSERT_TRUE(store.m_pFile && store.m_pFile->IsOpen());
  EXPECT_EQ(store.m_nFileType, 1U);
  EXPECT_EQ(store.m_strPath, LMD_W("photo.jpg"));
  EXPECT_EQ(store.m_nParseFlags, 0x0CU);
  EXPECT_EQ(store.m_nImageWidth, 640U);
  EXPECT_EQ(store.m_nImageHeight, 480U);
  EXPECT_EQ(store.m_nEmbeddedJpegPos, 77U);
  EXPECT_TRUE(store.m_pMakerNote);
  EXPECT_TRUE(store.m_pXmpParser);
}

}  // namespace
}  // namespace test
