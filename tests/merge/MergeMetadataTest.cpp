// What holds for the merge as a whole.

#include "core/DebugLog.h"
#include "merge/MergeTest.h"

namespace test {
namespace {

class MergeMetadata : public MergeTest {
 protected:
  // A source for every step, of which the last of each target wins once the others are gone.
  void PutEverySource() {
    PutLong(BLOCK_MAKERNOTE_SUMMARY, 7, 102400);
    PutRational(BLOCK_IFD0, 0x829A, 1, 250);
    PutRational(BLOCK_IFD0, 0x829D, 28, 10);
    PutRational(BLOCK_IFD0, 0x920A, 50, 1);
    PutShort(BLOCK_IFD0, 0x8822, 2);
    PutShort(BLOCK_IFD0, 0x9207, 5);
    PutXmp(43796, LMD_W("1/3"));
    PutXmp(43787, LMD_W("Lens"));
    Put(BLOCK_EXIF, 0xA432, TYPE_RATIONAL, Rationals({{24, 1}, {70, 1}, {28, 10}, {28, 10}}));
    PutShort(BLOCK_EXIF, 0xA405, 75);
  }
};

TEST_F(MergeMetadata, DoesNothingToAnEmptyStore) {
  EXPECT_EQ(Merge(), Lines{});
  for (std::int32_t block = 1; block <= kBlockCount; ++block) {
    EXPECT_TRUE(m_store.m_fnGetBlock(block)->IsEmpty());
  }
}

TEST_F(MergeMetadata, RunsItsStepsInOrder) {
  PutEverySource();
  EXPECT_EQ(Merge(), (Lines{
                         "[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8827 USHORT)",
                         "[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8832 INT)",
                         "[MDTEST2] ExposureTime: Merge ExifBasic -> ExifExt",
                         "[MDTEST2] FNumber: Merge ExifBasic -> ExifExt",
                         "[MDTEST2] FocalLength: Merge ExifBasic -> ExifExt",
                         "[MDTEST2] ExifExposureProg: Merge ExifBasic -> ExifExt",
                         "[MDTEST2] MeteringMode: Merge ExifBasic -> ExifExt",
                         "[MDTEST2] ExposureBias: Merge XMP -> ExifExt ",
                         "[MDTEST2] LensName: Merge XMP -> MakerNote",
                         "[MDTEST2] LensModel: Merge BasicExif -> MakerNote",
                         "[MDTEST] LensInfo (FOCALLENGTH): Merge BasicExif -> MakerNote",
                         "[MDTEST] LensInfo (APERTURE): Merge BasicExif -> MakerNote",
                         "[MDTEST2] SendorFormatFactor Parsed",
                     }));
  EXPECT_EQ(Keys(m_store, BLOCK_EXIF),
            (std::vector<std::uint32_t>{0x829A, 0x829D, 0x8822, 0x8827, 0x8832, 0x9204, 0x9207,
                                        0x920A, 0xA405, 0xA432}));
  EXPECT_EQ(Keys(m_store, BLOCK_MAKERNOTE_SUMMARY),
            (std::vector<std::uint32_t>{2, 3, 7, 11, 12, 13, 14, 15}));
}

TEST_F(MergeMetadata, RunTwiceChangesNothing) {
  PutEverySource();
  Merge();
  EXPECT_EQ(Merge(), Lines{});
}

TEST_F(MergeMetadata, IsSuppressedByTheTopBitOfTheParseFlags) {
  PutEverySource();
  m_store.m_nParseFlags = 0x80000000;
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Keys(m_store, BLOCK_EXIF), (std::vector<std::uint32_t>{0xA405, 0xA432}));
  EXPECT_EQ(Keys(m_store, BLOCK_MAKERNOTE_SUMMARY), std::vector<std::uint32_t>{7});
}

TEST_F(MergeMetadata, RunsWithAllOtherParseFlags) {
  PutEverySource();
  m_store.m_nParseFlags = 0x7FFFFFFF;
  EXPECT_EQ(Merge().size(), 13U);
}

TEST_F(MergeMetadata, MergesInSilenceWhileTheLogIsOff) {
  g_bDebugLogEnabled = 0;
  PutShort(BLOCK_IFD0, 0x8822, 2);
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Find(m_store, BLOCK_EXIF, 0x8822), MergedShort(0x8822, 2));
}

TEST_F(MergeMetadata, ReadsNothingFromTheTableOfAllMakerNoteEntries) {
  PutLong(BLOCK_MAKERNOTE, 7, 400);
  PutRational(BLOCK_MAKERNOTE, 9, 28, 10);
  EXPECT_EQ(Merge(), Lines{});
}

// What a merge would store beyond the budget stays without data, and says nothing.
TEST_F(MergeMetadata, LeavesAValueWithoutDataWhenTheBudgetIsUsedUp) {
  PutShort(BLOCK_IFD0, 0x8822, 2);
  PutXmp(43799, LMD_W("50/1"));
  Put(BLOCK_EXIF, 0xA432, TYPE_RATIONAL, Rationals({{24, 1}, {70, 1}, {28, 10}, {28, 10}}));
  std::uint64_t left = kMaxStoredBytes;
  while (left != 0) {
    if (!m_store.Budget().TakeBytes(left)) left /= 2;
  }
  EXPECT_EQ(Merge(), Lines{});

  struct Row {
    std::int32_t block;
    std::uint32_t key;
    std::uint32_t type;
    std::uint32_t size;
  };
  for (const Row& row :
       {Row{BLOCK_EXIF, 0x8822, TYPE_SHORT, 2}, Row{BLOCK_EXIF, 0x920A, TYPE_RATIONAL, 8},
        Row{BLOCK_MAKERNOTE_SUMMARY, 3, TYPE_ASCII, 19},
        Row{BLOCK_MAKERNOTE_SUMMARY, 12, TYPE_SRATIONAL, 8},
        Row{BLOCK_MAKERNOTE_SUMMARY, 15, TYPE_SRATIONAL, 8}}) {
    const TagEntry* entry = m_store.m_fnGetBlock(row.block)->Find(row.key);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->m_nTag, row.key);
    EXPECT_EQ(entry->m_nType, row.type);
    EXPECT_EQ(entry->m_nSize, row.size);
    EXPECT_EQ(entry->m_pData, nullptr);
  }
}

}  // namespace
}  // namespace test
