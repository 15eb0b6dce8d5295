// Where exposure time, F-number, focal length and the other shooting values come from.

#include "merge/MergeTest.h"

namespace test {
namespace {

constexpr std::uint32_t kExposureTime = 0x829A;
constexpr std::uint32_t kFNumber = 0x829D;
constexpr std::uint32_t kShutterSpeedValue = 0x9201;
constexpr std::uint32_t kExposureBias = 0x9204;
constexpr std::uint32_t kSummaryFNumber = 9;
constexpr std::uint32_t kXmpBias = 43796;
constexpr std::uint32_t kXmpShutter = 43797;
constexpr std::uint32_t kXmpAperture = 43798;
constexpr std::uint32_t kXmpFocalLength = 43799;

const Lines kTimeFromIfd0 = {"[MDTEST2] ExposureTime: Merge ExifBasic -> ExifExt"};
const Lines kTimeFromExif = {"[MDTEST2] ExposureTime: Merge ExifExt -> ExifExt"};
const Lines kTimeFromXmp = {"[MDTEST2] ExposureTime: Merge XMP -> ExifExt"};
const Lines kFNumberFromIfd0 = {"[MDTEST2] FNumber: Merge ExifBasic -> ExifExt"};
const Lines kFNumberFromMakerNote = {"[MDTEST2] FNumber: Merge Makernote -> ExifExt"};
const Lines kFNumberFromXmp = {"[MDTEST2] FNumber: Merge XMP -> ExifExt"};
const Lines kFocalLengthFromIfd0 = {"[MDTEST2] FocalLength: Merge ExifBasic -> ExifExt"};
const Lines kFocalLengthFromXmp = {"[MDTEST2] FocalLength: Merge XMP -> ExifExt"};

// A value in APEX units and what becomes of it in millionths.
struct ApexRow {
  std::uint32_t numerator;
  std::uint32_t denominator;
  std::uint32_t millionths;
};

struct TextRow {
  WideStringView text;
  std::uint32_t numerator;
  std::uint32_t denominator;
};

// Texts that are no rational.
const WideStringView kNoRationals[] = {
    LMD_W(""),    LMD_W("8"),   LMD_W("8/0"), LMD_W("8/"),     LMD_W("/"),
    LMD_W("8/x"), LMD_W("8/-"), LMD_W("8.5"), LMD_W("8/0x10"), LMD_W("8//1"),
};

class ExposureMerge : public MergeTest {
 protected:
  std::optional<Stored> Exif(std::uint32_t tag) { return Find(m_store, BLOCK_EXIF, tag); }

  // Every text that is no rational leaves the target absent.
  void ExpectOnlyRationals(std::uint32_t xmpKey, std::uint32_t tag) {
    for (const WideStringView text : kNoRationals) {
      PutXmp(xmpKey, text);
      EXPECT_EQ(Merge(), Lines{});
      EXPECT_EQ(Exif(tag), std::nullopt);
    }
    Put(BLOCK_XMP, xmpKey, TYPE_WIDE_TEXT, {});
    EXPECT_EQ(Merge(), Lines{});
    PutWithoutData(BLOCK_XMP, xmpKey, TYPE_WIDE_TEXT, 8);
    EXPECT_EQ(Merge(), Lines{});
    EXPECT_EQ(Exif(tag), std::nullopt);
  }
};

TEST_F(ExposureMerge, CopiesIfd0ValuesAsTheyAre) {
  struct Row {
    std::uint32_t tag;
    std::string_view line;
  };
  for (const Row& row : {Row{0x829A, "[MDTEST2] ExposureTime: Merge ExifBasic -> ExifExt"},
                         Row{0x829D, "[MDTEST2] FNumber: Merge ExifBasic -> ExifExt"},
                         Row{0x920A, "[MDTEST2] FocalLength: Merge ExifBasic -> ExifExt"},
                         Row{0x8822, "[MDTEST2] ExifExposureProg: Merge ExifBasic -> ExifExt"},
                         Row{0x9207, "[MDTEST2] MeteringMode: Merge ExifBasic -> ExifExt"}}) {
    m_store.m_fnReset();
    Put(BLOCK_IFD0, row.tag, TYPE_UNDEFINED, {1, 2, 3});
    EXPECT_EQ(Merge(), Lines{std::string(row.line)});
    EXPECT_EQ(Exif(row.tag), (Stored{row.tag, TYPE_UNDEFINED, 0, "010203"}));
    EXPECT_EQ(Find(m_store, BLOCK_IFD0, row.tag), (Stored{row.tag, TYPE_UNDEFINED, 1, "010203"}));
  }
}

TEST_F(ExposureMerge, CopiesEmptyIfd0ValuesAndKeepsEmptyOnes) {
  for (const std::uint32_t tag : {0x829AU, 0x829DU, 0x920AU, 0x8822U, 0x9207U}) {
    m_store.m_fnReset();
    Put(BLOCK_IFD0, tag, TYPE_SHORT, {});
    EXPECT_EQ(Merge().size(), 1U);
    EXPECT_EQ(Exif(tag), (Stored{tag, TYPE_SHORT, 0, ""}));

    Put(BLOCK_IFD0, tag, TYPE_SHORT, {7, 0});
    EXPECT_EQ(Merge(), Lines{});
    EXPECT_EQ(Exif(tag), (Stored{tag, TYPE_SHORT, 0, ""}));
  }
}

TEST_F(ExposureMerge, CopiesAValueWithoutDataAsAnEmptyOne) {
  PutWithoutData(BLOCK_IFD0, kExposureTime, TYPE_RATIONAL, 8);
  EXPECT_EQ(Merge(), kTimeFromIfd0);
  EXPECT_EQ(Exif(kExposureTime), (Stored{kExposureTime, TYPE_RATIONAL, 0, ""}));
}

TEST_F(ExposureMerge, ComputesTheTimeOfAShutterSpeedValue) {
  // 2 ^ -(n / d), the sixth digit truncated.
  for (const ApexRow& row :
       {ApexRow{0, 1, 1000000}, ApexRow{1, 1, 500000}, ApexRow{1, 2, 707106}, ApexRow{6, 1, 15625},
        ApexRow{13, 2, 11048}, ApexRow{8, 1, 3906}, ApexRow{7906, 1000, 4169}, ApexRow{19, 1, 1},
        ApexRow{20, 1, 0}, ApexRow{0xFFFFFFFF, 1, 0}, ApexRow{1, 0xFFFFFFFF, 999999}}) {
    m_store.m_fnReset();
    PutRational(BLOCK_EXIF, kShutterSpeedValue, row.numerator, row.denominator);
    EXPECT_EQ(Merge(), kTimeFromExif);
    EXPECT_EQ(Exif(kExposureTime), MergedRational(kExposureTime, row.millionths, kMillion))
        << row.numerator << "/" << row.denominator;
  }
}

TEST_F(ExposureMerge, GivesANegativeShutterSpeedValueNoTime) {
  constexpr std::uint32_t kMinus5 = 0xFFFFFFFB;
  Put(BLOCK_EXIF, kShutterSpeedValue, TYPE_SRATIONAL, Rationals({{kMinus5, 1}}));
  EXPECT_EQ(Merge(), kTimeFromExif);
  EXPECT_EQ(Exif(kExposureTime), MergedRational(kExposureTime, 0, kMillion));
}

TEST_F(ExposureMerge, PassesOverAShutterSpeedValueOfAnotherSize) {
  for (const Bytes& bytes : {Bytes{}, Bytes{8, 0, 0, 0, 1, 0, 0}, Rationals({{8, 1}, {0, 0}})}) {
    m_store.m_fnReset();
    Put(BLOCK_EXIF, kShutterSpeedValue, TYPE_RATIONAL, bytes);
    PutXmp(kXmpShutter, LMD_W("1/1"));
    EXPECT_EQ(Merge(), kTimeFromXmp);
    EXPECT_EQ(Exif(kExposureTime), MergedRational(kExposureTime, 500000, kMillion));
  }
}

TEST_F(ExposureMerge, PassesOverAShutterSpeedValueWithoutDenominator) {
  PutRational(BLOCK_EXIF, kShutterSpeedValue, 8, 0);
  PutXmp(kXmpShutter, LMD_W("1/1"));
  EXPECT_EQ(Merge(), kTimeFromXmp);
}

TEST_F(ExposureMerge, PassesOverAShutterSpeedValueWithoutData) {
  PutWithoutData(BLOCK_EXIF, kShutterSpeedValue, TYPE_RATIONAL, 8);
  PutXmp(kXmpShutter, LMD_W("1/1"));
  EXPECT_EQ(Merge(), kTimeFromXmp);
}

TEST_F(ExposureMerge, ComputesTheTimeOfAnXmpShutterSpeedValue) {
  struct Row {
    WideStringView text;
    std::uint32_t millionths;
  };
  for (const Row& row :
       {Row{LMD_W("8/1"), 3906}, Row{LMD_W("0/1"), 1000000}, Row{LMD_W("/1"), 1000000},
        Row{LMD_W("x/1"), 1000000}, Row{LMD_W("-5/1"), 0}, Row{LMD_W(" 1 / 2 s"), 707106},
        Row{LMD_W("8/1/0"), 3906}, Row{LMD_W("1/-1"), 999999}}) {
    m_store.m_fnReset();
    PutXmp(kXmpShutter, row.text);
    EXPECT_EQ(Merge(), kTimeFromXmp);
    EXPECT_EQ(Exif(kExposureTime), MergedRational(kExposureTime, row.millionths, kMillion));
  }
}

TEST_F(ExposureMerge, PassesOverAnXmpShutterSpeedValueThatIsNoRational) {
  ExpectOnlyRationals(kXmpShutter, kExposureTime);
}

TEST_F(ExposureMerge, TakesTheTimeOfTheFirstSource) {
  PutRational(BLOCK_IFD0, kExposureTime, 1, 250);
  PutRational(BLOCK_EXIF, kShutterSpeedValue, 1, 1);
  PutXmp(kXmpShutter, LMD_W("2/1"));
  EXPECT_EQ(Merge(), kTimeFromIfd0);
  EXPECT_EQ(Exif(kExposureTime), MergedRational(kExposureTime, 1, 250));

  m_store.m_fnGetBlock(BLOCK_IFD0)->Clear();
  m_store.m_fnGetBlock(BLOCK_EXIF)->Clear();
  PutRational(BLOCK_EXIF, kShutterSpeedValue, 1, 1);
  EXPECT_EQ(Merge(), kTimeFromExif);
  EXPECT_EQ(Exif(kExposureTime), MergedRational(kExposureTime, 500000, kMillion));
}

TEST_F(ExposureMerge, KeepsATimeThatIsThere) {
  PutRational(BLOCK_EXIF, kExposureTime, 0, 0);
  PutRational(BLOCK_IFD0, kExposureTime, 1, 250);
  PutRational(BLOCK_EXIF, kShutterSpeedValue, 1, 1);
  PutXmp(kXmpShutter, LMD_W("2/1"));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Exif(kExposureTime), (Stored{kExposureTime, TYPE_RATIONAL, 1, "0000000000000000"}));
}

TEST_F(ExposureMerge, CopiesTheMakerNotesFNumber) {
  Put(BLOCK_MAKERNOTE_SUMMARY, kSummaryFNumber, TYPE_RATIONAL, Rationals({{28, 10}}));
  PutXmp(kXmpAperture, LMD_W("4/1"));
  EXPECT_EQ(Merge(), kFNumberFromMakerNote);
  EXPECT_EQ(Exif(kFNumber), MergedRational(kFNumber, 28, 10));
}

TEST_F(ExposureMerge, TakesTheFNumberOfIfd0First) {
  PutRational(BLOCK_IFD0, kFNumber, 56, 10);
  PutRational(BLOCK_MAKERNOTE_SUMMARY, kSummaryFNumber, 28, 10);
  PutXmp(kXmpAperture, LMD_W("4/1"));
  EXPECT_EQ(Merge(), kFNumberFromIfd0);
  EXPECT_EQ(Exif(kFNumber), MergedRational(kFNumber, 56, 10));
}

TEST_F(ExposureMerge, KeepsAnFNumberThatIsThereEvenWhenItIsZero) {
  PutRational(BLOCK_EXIF, kFNumber, 0, 0);
  PutRational(BLOCK_IFD0, kFNumber, 56, 10);
  PutRational(BLOCK_MAKERNOTE_SUMMARY, kSummaryFNumber, 28, 10);
  PutXmp(kXmpAperture, LMD_W("4/1"));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Exif(kFNumber), (Stored{kFNumber, TYPE_RATIONAL, 1, "0000000000000000"}));
}

TEST_F(ExposureMerge, ComputesTheFNumberOfAnXmpApertureValue) {
  struct Row {
    WideStringView text;
    std::uint32_t millionths;
  };
  for (const Row& row :
       {Row{LMD_W("0/1"), 1000000}, Row{LMD_W("1/1"), 1400000}, Row{LMD_W("2/1"), 2000000},
        Row{LMD_W("3/1"), 2800000}, Row{LMD_W("4/1"), 4000000}, Row{LMD_W("5/1"), 5600000},
        Row{LMD_W("6/1"), 8000000}, Row{LMD_W("7/1"), 11000000}, Row{LMD_W("8/1"), 16000000},
        Row{LMD_W("9/1"), 22000000}, Row{LMD_W("10/1"), 32000000},
        Row{LMD_W("50/10"), 5600000},                                       // whole all the same
        Row{LMD_W("1/2"), 1189222}, Row{LMD_W("7/2"), 3363888},             // 1.41425 ^ (n / d)
        Row{LMD_W("11/1"), 45267661}, Row{LMD_W("21/2"), 38064924},         // above the table
        Row{LMD_W("64/1"), 0xFFFFFFFF}, Row{LMD_W("-1/1"), 0xFFFFFFFF}}) {  // beyond 32 bits
    m_store.m_fnReset();
    PutXmp(kXmpAperture, row.text);
    EXPECT_EQ(Merge(), kFNumberFromXmp);
    EXPECT_EQ(Exif(kFNumber), MergedRational(kFNumber, row.millionths, kMillion));
  }
}

TEST_F(ExposureMerge, PassesOverAnXmpApertureValueThatIsNoRational) {
  ExpectOnlyRationals(kXmpAperture, kFNumber);
}

TEST_F(ExposureMerge, TakesAnXmpFocalLengthAsItIs) {
  for (const TextRow& row : {TextRow{LMD_W("50/1"), 50, 1}, TextRow{LMD_W("500/10"), 500, 10},
                             TextRow{LMD_W("-5/2"), 0xFFFFFFFB, 2}, TextRow{LMD_W("x/2"), 0, 2},
                             TextRow{LMD_W("2147483648/-99999999999"), 0x7FFFFFFF, 0x80000000}}) {
    m_store.m_fnReset();
    PutXmp(kXmpFocalLength, row.text);
    EXPECT_EQ(Merge(), kFocalLengthFromXmp);
    EXPECT_EQ(Exif(kFocalLength), MergedRational(kFocalLength, row.numerator, row.denominator));
  }
}

TEST_F(ExposureMerge, PassesOverAnXmpFocalLengthThatIsNoRational) {
  ExpectOnlyRationals(kXmpFocalLength, kFocalLength);
}

TEST_F(ExposureMerge, TakesTheFocalLengthOfIfd0First) {
  PutRational(BLOCK_IFD0, kFocalLength, 35, 1);
  PutXmp(kXmpFocalLength, LMD_W("50/1"));
  EXPECT_EQ(Merge(), kFocalLengthFromIfd0);
  EXPECT_EQ(Exif(kFocalLength), MergedRational(kFocalLength, 35, 1));
}

TEST_F(ExposureMerge, KeepsAFocalLengthThatIsThere) {
  Put(BLOCK_EXIF, kFocalLength, TYPE_RATIONAL, {});
  PutRational(BLOCK_IFD0, kFocalLength, 35, 1);
  PutXmp(kXmpFocalLength, LMD_W("50/1"));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Exif(kFocalLength), (Stored{kFocalLength, TYPE_RATIONAL, 1, ""}));
}

TEST_F(ExposureMerge, TakesAnXmpExposureBiasAsSigned) {
  for (const TextRow& row : {TextRow{LMD_W("-1/3"), 0xFFFFFFFF, 3}, TextRow{LMD_W("2/3"), 2, 3},
                             TextRow{LMD_W("0/1"), 0, 1}}) {
    m_store.m_fnReset();
    PutXmp(kXmpBias, row.text);
    EXPECT_EQ(Merge(), Lines{"[MDTEST2] ExposureBias: Merge XMP -> ExifExt "});
    EXPECT_EQ(Exif(kExposureBias),
              MergedRational(kExposureBias, row.numerator, row.denominator, TYPE_SRATIONAL));
  }
}

TEST_F(ExposureMerge, PassesOverAnXmpExposureBiasThatIsNoRational) {
  ExpectOnlyRationals(kXmpBias, kExposureBias);
}

TEST_F(ExposureMerge, TakesNoExposureBiasFromIfd0AndKeepsOneThatIsThere) {
  Put(BLOCK_IFD0, kExposureBias, TYPE_SRATIONAL, Rationals({{1, 3}}));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Exif(kExposureBias), std::nullopt);

  Put(BLOCK_EXIF, kExposureBias, TYPE_SRATIONAL, {});
  PutXmp(kXmpBias, LMD_W("2/3"));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Exif(kExposureBias), (Stored{kExposureBias, TYPE_SRATIONAL, 1, ""}));
}

}  // namespace
}  // namespace test
