// Where the ISO speed comes from.

#include "merge/MergeTest.h"

namespace test {
namespace {

constexpr std::uint32_t kIsoSpeed = 0x8827;
constexpr std::uint32_t kRecommendedIndex = 0x8832;
constexpr std::uint32_t kSummaryIso = 7;
constexpr std::uint32_t kRawIso = 23;
constexpr std::uint32_t kExposureIndex = 0x9215;
constexpr std::uint32_t kXmpIso = 43795;

const Lines kFromMakerNote = {"[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8827 USHORT)"};
const Lines kFromIfd0 = {"[MDTEST2] ISO: Merge ExifBasic -> ExifExt"};
const Lines kFromExposureIndex = {"[MDTEST2] ISO: Merge ExifBasic -> ExifExt (Kodak)"};
const Lines kFromXmp = {"[MDTEST2] ISO: Merge XMP -> ExifExt"};

class IsoMerge : public MergeTest {
 protected:
  std::optional<Stored> Iso() { return Find(m_store, BLOCK_EXIF, kIsoSpeed); }
  std::optional<Stored> Index() { return Find(m_store, BLOCK_EXIF, kRecommendedIndex); }
};

TEST_F(IsoMerge, TakesTheMakerNotesIso) {
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 400);
  EXPECT_EQ(Merge(), kFromMakerNote);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 400));
  EXPECT_EQ(Index(), std::nullopt);
}

TEST_F(IsoMerge, KeepsAnIsoJustBelowTheCap) {
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 65534);
  EXPECT_EQ(Merge(), kFromMakerNote);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 65534));
  EXPECT_EQ(Index(), std::nullopt);
}

TEST_F(IsoMerge, StoresAnIsoAtOrAboveTheCapTwice) {
  for (const std::uint32_t iso : {65535U, 65536U, 102400U, 0xFFFFFFFFU}) {
    m_store.m_fnReset();
    PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, iso);
    EXPECT_EQ(Merge(), (Lines{"[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8827 USHORT)",
                              "[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8832 INT)"}));
    EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 65535));
    EXPECT_EQ(Index(), (Stored{kRecommendedIndex, TYPE_LONG, 0, Hex(U32(iso, kHostByteOrder))}));
  }
}

TEST_F(IsoMerge, AddsTheMakerNotesIsoToACapOfTheFileItself) {
  PutShort(BLOCK_EXIF, kIsoSpeed, 65535);
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 200);
  EXPECT_EQ(Merge(), Lines{"[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8832 INT)"});
  EXPECT_EQ(Iso(), (Stored{kIsoSpeed, TYPE_SHORT, 1, "ffff"}));
  EXPECT_EQ(Index(), (Stored{kRecommendedIndex, TYPE_LONG, 0, "c8000000"}));
}

TEST_F(IsoMerge, AsksOnlyTheFirst16BitsForTheCap) {
  Put(BLOCK_EXIF, kIsoSpeed, TYPE_LONG, {0xFF, 0xFF, 0x01, 0x00});
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 200);
  EXPECT_EQ(Merge(), Lines{"[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8832 INT)"});
}

TEST_F(IsoMerge, CopiesTheUncappedIsoWithItsOwnSize) {
  PutShort(BLOCK_EXIF, kIsoSpeed, 65535);
  Put(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, TYPE_SHORT, {1, 2, 3, 4, 5, 6});
  Merge();
  EXPECT_EQ(Index(), (Stored{kRecommendedIndex, TYPE_LONG, 0, "010203040506"}));
}

TEST_F(IsoMerge, KeepsARecommendedIndexThatIsThere) {
  PutShort(BLOCK_EXIF, kIsoSpeed, 65535);
  PutLong(BLOCK_EXIF, kRecommendedIndex, 0);
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 102400);
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Index(), (Stored{kRecommendedIndex, TYPE_LONG, 1, "00000000"}));
}

TEST_F(IsoMerge, AddsNoRecommendedIndexWithoutTheMakerNotesIso) {
  PutShort(BLOCK_EXIF, kIsoSpeed, 65535);
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Index(), std::nullopt);
}

TEST_F(IsoMerge, AddsNoRecommendedIndexToALowerIso) {
  PutShort(BLOCK_EXIF, kIsoSpeed, 65534);
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 102400);
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Index(), std::nullopt);
}

TEST_F(IsoMerge, TakesAnEmptyMakerNoteValueAsZero) {
  Put(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, TYPE_LONG, {});
  EXPECT_EQ(Merge(), kFromMakerNote);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 0));
}

TEST_F(IsoMerge, CopiesTag23OfIfd0AsAShort) {
  Put(BLOCK_IFD0, kRawIso, TYPE_LONG, {0x40, 0x06, 0x01, 0x00});
  EXPECT_EQ(Merge(), kFromIfd0);
  EXPECT_EQ(Iso(), (Stored{kIsoSpeed, TYPE_SHORT, 0, "40060100"}));
}

TEST_F(IsoMerge, CopiesTag23OfAnySize) {
  Put(BLOCK_IFD0, kRawIso, TYPE_BYTE, {1, 2, 3});
  EXPECT_EQ(Merge(), kFromIfd0);
  EXPECT_EQ(Iso(), (Stored{kIsoSpeed, TYPE_SHORT, 0, "010203"}));
}

TEST_F(IsoMerge, CopiesAnEmptyTag23) {
  Put(BLOCK_IFD0, kRawIso, TYPE_SHORT, {});
  PutXmp(kXmpIso, LMD_W("100"));
  EXPECT_EQ(Merge(), kFromIfd0);
  EXPECT_EQ(Iso(), (Stored{kIsoSpeed, TYPE_SHORT, 0, ""}));
}

TEST_F(IsoMerge, DividesTheExposureIndex) {
  struct Row {
    std::uint32_t numerator;
    std::uint32_t denominator;
    std::uint16_t iso;
  };
  for (const Row& row : {Row{400, 1, 400}, Row{999, 10, 99}, Row{5, 0, 0}, Row{0, 0, 0},
                         Row{65535, 1, 65535}, Row{65536, 1, 0}, Row{65537, 1, 1},
                         Row{0xFFFFFFFF, 1, 65535}, Row{0xFFFFFFFF, 0xFFFFFFFF, 1}}) {
    m_store.m_fnReset();
    PutRational(BLOCK_IFD0, kExposureIndex, row.numerator, row.denominator);
    EXPECT_EQ(Merge(), kFromExposureIndex);
    EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, row.iso)) << row.numerator << "/" << row.denominator;
  }
}

TEST_F(IsoMerge, PassesOverAnExposureIndexOfAnotherType) {
  Put(BLOCK_IFD0, kExposureIndex, TYPE_SRATIONAL, Rationals({{400, 1}}));
  PutXmp(kXmpIso, LMD_W("100"));
  EXPECT_EQ(Merge(), kFromXmp);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 100));
}

TEST_F(IsoMerge, PassesOverAnExposureIndexWithoutData) {
  PutWithoutData(BLOCK_IFD0, kExposureIndex, TYPE_RATIONAL, 8);
  PutXmp(kXmpIso, LMD_W("100"));
  EXPECT_EQ(Merge(), kFromXmp);
}

TEST_F(IsoMerge, ReadsTheXmpTextUpToTheFirstOtherCharacter) {
  struct Row {
    WideStringView text;
    std::uint16_t iso;
  };
  for (const Row& row :
       {Row{LMD_W("200"), 200}, Row{LMD_W(" 200 ISO"), 200}, Row{LMD_W("letters"), 0},
        Row{LMD_W("65535"), 65535}, Row{LMD_W("65536"), 0}, Row{LMD_W("102400"), 36864},
        Row{LMD_W("-1"), 65535}, Row{LMD_W("99999999999"), 65535}, Row{LMD_W("-99999999999"), 0},
        Row{LMD_W("0x10"), 0}, Row{LMD_W("1/2"), 1}}) {
    m_store.m_fnReset();
    PutXmp(kXmpIso, row.text);
    EXPECT_EQ(Merge(), kFromXmp);
    EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, row.iso));
  }
}

TEST_F(IsoMerge, PassesOverAnEmptyXmpText) {
  PutXmp(kXmpIso, LMD_W(""));
  EXPECT_EQ(Merge(), Lines{});
  Put(BLOCK_XMP, kXmpIso, TYPE_WIDE_TEXT, {});
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Iso(), std::nullopt);
}

TEST_F(IsoMerge, PassesOverAnXmpTextWithoutData) {
  PutWithoutData(BLOCK_XMP, kXmpIso, TYPE_WIDE_TEXT, 8);
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Iso(), std::nullopt);
}

TEST_F(IsoMerge, TakesTheFirstSourceThatHasAValue) {
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 100);
  PutShort(BLOCK_IFD0, kRawIso, 200);
  PutRational(BLOCK_IFD0, kExposureIndex, 400, 1);
  PutXmp(kXmpIso, LMD_W("800"));
  EXPECT_EQ(Merge(), kFromMakerNote);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 100));

  m_store.m_fnGetBlock(BLOCK_MAKERNOTE_SUMMARY)->Clear();
  m_store.m_fnGetBlock(BLOCK_EXIF)->Clear();
  EXPECT_EQ(Merge(), kFromIfd0);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 200));

  m_store.m_fnGetBlock(BLOCK_EXIF)->Clear();
  m_store.m_fnGetBlock(BLOCK_IFD0)->Clear();
  PutRational(BLOCK_IFD0, kExposureIndex, 400, 1);
  EXPECT_EQ(Merge(), kFromExposureIndex);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 400));

  m_store.m_fnGetBlock(BLOCK_EXIF)->Clear();
  m_store.m_fnGetBlock(BLOCK_IFD0)->Clear();
  EXPECT_EQ(Merge(), kFromXmp);
  EXPECT_EQ(Iso(), MergedShort(kIsoSpeed, 800));
}

TEST_F(IsoMerge, KeepsAnIsoThatIsThereEvenWhenItIsEmpty) {
  Put(BLOCK_EXIF, kIsoSpeed, TYPE_SHORT, {});
  PutLong(BLOCK_MAKERNOTE_SUMMARY, kSummaryIso, 100);
  PutShort(BLOCK_IFD0, kRawIso, 200);
  PutRational(BLOCK_IFD0, kExposureIndex, 400, 1);
  PutXmp(kXmpIso, LMD_W("800"));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Iso(), (Stored{kIsoSpeed, TYPE_SHORT, 1, ""}));
}

}  // namespace
}  // namespace test
