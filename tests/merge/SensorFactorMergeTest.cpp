// How many times smaller than 35 mm film the sensor is.

#include "merge/MergeTest.h"

namespace test {
namespace {

constexpr std::uint32_t kFactor = 11;
constexpr std::uint32_t kFocalLengthIn35mm = 0xA405;
constexpr std::uint32_t kImageWidth = 0xA002;
constexpr std::uint32_t kResolution = 0xA20E;
constexpr std::uint32_t kResolutionUnit = 0xA210;

const Lines kParsed = {"[MDTEST2] SendorFormatFactor Parsed"};

class SensorFactorMerge : public MergeTest {
 protected:
  void PutFocalLengths(std::uint32_t numerator, std::uint32_t denominator, std::uint16_t on35mm) {
    PutRational(BLOCK_EXIF, kFocalLength, numerator, denominator);
    PutShort(BLOCK_EXIF, kFocalLengthIn35mm, on35mm);
  }

  void PutResolution(std::uint32_t numerator, std::uint32_t denominator, std::uint16_t width) {
    PutRational(BLOCK_EXIF, kResolution, numerator, denominator);
    PutShort(BLOCK_EXIF, kImageWidth, width);
  }

  // 6773333/1000 pixels an inch, 6000 pixels wide: 36 mm / 22.500001 mm.
  void PutApsSensor() { PutResolution(6773333, 1000, 6000); }

  void ExpectFactor(std::uint32_t millionths) {
    EXPECT_EQ(Merge(), kParsed);
    EXPECT_EQ(Find(m_store, BLOCK_MAKERNOTE_SUMMARY, kFactor),
              MergedRational(kFactor, millionths, kMillion));
  }

  void ExpectNoFactor() {
    EXPECT_EQ(Merge(), Lines{});
    EXPECT_EQ(Find(m_store, BLOCK_MAKERNOTE_SUMMARY, kFactor), std::nullopt);
  }
};

constexpr std::uint32_t kApsFactor = 1599999;

TEST_F(SensorFactorMerge, DividesTheFocalLengths) {
  PutFocalLengths(50, 1, 75);
  ExpectFactor(1500000);
}

TEST_F(SensorFactorMerge, TruncatesTheFactor) {
  PutFocalLengths(43, 10, 28);  // 280 / 43 = 6.5116279...
  ExpectFactor(6511627);
}

TEST_F(SensorFactorMerge, TakesNumbersAsUnsigned) {
  PutFocalLengths(65535, 1, 65535);
  ExpectFactor(1000000);
  m_store.m_fnReset();
  PutFocalLengths(0xFFFFFFFF, 0xFFFFFFFF, 2);
  ExpectFactor(2000000);
}

TEST_F(SensorFactorMerge, SaturatesAt32Bits) {
  PutFocalLengths(1, 0xFFFFFFFF, 65535);
  ExpectFactor(0xFFFFFFFF);
  m_store.m_fnReset();
  PutFocalLengths(1, 1, 4294);
  ExpectFactor(4294000000);
  m_store.m_fnReset();
  PutFocalLengths(1, 1, 4295);
  ExpectFactor(0xFFFFFFFF);
}

TEST_F(SensorFactorMerge, ReachesZeroByTruncation) {
  PutFocalLengths(0xFFFFFFFF, 1, 1);
  ExpectFactor(0);
}

TEST_F(SensorFactorMerge, DividesFilmWidthBySensorWidth) {
  PutApsSensor();
  ExpectFactor(kApsFactor);
}

TEST_F(SensorFactorMerge, TakesTheResolutionForPixelsPerInchWhateverTheUnit) {
  PutApsSensor();
  PutShort(BLOCK_EXIF, kResolutionUnit, 3);  // centimetres
  ExpectFactor(kApsFactor);
}

TEST_F(SensorFactorMerge, TakesTheFirst16BitsOfALongWidth) {
  PutRational(BLOCK_EXIF, kResolution, 6773333, 1000);
  PutLong(BLOCK_EXIF, kImageWidth, 0x10000 + 6000);
  ExpectFactor(kApsFactor);
}

TEST_F(SensorFactorMerge, PrefersTheFocalLengths) {
  PutFocalLengths(50, 1, 75);
  PutApsSensor();
  ExpectFactor(1500000);
}

TEST_F(SensorFactorMerge, TriesTheResolutionWhenAFocalLengthIsZero) {
  struct Row {
    std::uint32_t numerator;
    std::uint32_t denominator;
    std::uint16_t on35mm;
  };
  for (const Row& row : {Row{50, 1, 0}, Row{0, 1, 75}, Row{50, 0, 75}, Row{0, 0, 0}}) {
    m_store.m_fnReset();
    PutFocalLengths(row.numerator, row.denominator, row.on35mm);
    PutApsSensor();
    ExpectFactor(kApsFactor);
  }
}

TEST_F(SensorFactorMerge, TriesTheResolutionWhenAFocalLengthIsAbsent) {
  PutApsSensor();
  PutRational(BLOCK_EXIF, kFocalLength, 50, 1);
  ExpectFactor(kApsFactor);
  m_store.m_fnReset();
  PutApsSensor();
  PutShort(BLOCK_EXIF, kFocalLengthIn35mm, 75);
  ExpectFactor(kApsFactor);
}

TEST_F(SensorFactorMerge, TriesTheResolutionWhenTheFocalLengthHasAnotherSize) {
  for (const Bytes& bytes : {Bytes{50, 0}, Rationals({{50, 1}, {50, 1}})}) {
    m_store.m_fnReset();
    Put(BLOCK_EXIF, kFocalLength, TYPE_RATIONAL, bytes);
    PutShort(BLOCK_EXIF, kFocalLengthIn35mm, 75);
    PutApsSensor();
    ExpectFactor(kApsFactor);
  }
}

TEST_F(SensorFactorMerge, TriesTheResolutionWhenAFocalLengthHasNoData) {
  PutWithoutData(BLOCK_EXIF, kFocalLength, TYPE_RATIONAL, 8);
  PutShort(BLOCK_EXIF, kFocalLengthIn35mm, 75);
  PutApsSensor();
  ExpectFactor(kApsFactor);
  m_store.m_fnReset();
  PutRational(BLOCK_EXIF, kFocalLength, 50, 1);
  Put(BLOCK_EXIF, kFocalLengthIn35mm, TYPE_SHORT, {});
  PutApsSensor();
  ExpectFactor(kApsFactor);
}

TEST_F(SensorFactorMerge, TakesAFocalLengthIn35mmOfOneByte) {
  PutRational(BLOCK_EXIF, kFocalLength, 50, 1);
  Put(BLOCK_EXIF, kFocalLengthIn35mm, TYPE_BYTE, {75});
  ExpectFactor(1500000);
}

TEST_F(SensorFactorMerge, GivesUpWithoutEitherPair) {
  ExpectNoFactor();
  PutRational(BLOCK_EXIF, kFocalLength, 50, 1);
  PutRational(BLOCK_EXIF, kResolution, 6773333, 1000);
  ExpectNoFactor();
  m_store.m_fnReset();
  PutShort(BLOCK_EXIF, kFocalLengthIn35mm, 75);
  PutShort(BLOCK_EXIF, kImageWidth, 6000);
  ExpectNoFactor();
}

TEST_F(SensorFactorMerge, GivesUpOnAResolutionThatIsZero) {
  struct Row {
    std::uint32_t numerator;
    std::uint32_t denominator;
    std::uint16_t width;
  };
  for (const Row& row : {Row{0, 1000, 6000}, Row{6773333, 0, 6000}, Row{6773333, 1000, 0}}) {
    m_store.m_fnReset();
    PutResolution(row.numerator, row.denominator, row.width);
    ExpectNoFactor();
  }
}

TEST_F(SensorFactorMerge, GivesUpOnAResolutionOfAnotherSize) {
  Put(BLOCK_EXIF, kResolution, TYPE_RATIONAL, Rationals({{6773333, 1000}, {6773333, 1000}}));
  PutShort(BLOCK_EXIF, kImageWidth, 6000);
  ExpectNoFactor();
}

TEST_F(SensorFactorMerge, KeepsAFactorThatIsThere) {
  Put(BLOCK_MAKERNOTE_SUMMARY, kFactor, TYPE_RATIONAL, {});
  PutFocalLengths(50, 1, 75);
  PutApsSensor();
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Find(m_store, BLOCK_MAKERNOTE_SUMMARY, kFactor),
            (Stored{kFactor, TYPE_RATIONAL, 1, ""}));
}

TEST_F(SensorFactorMerge, UsesAFocalLengthThatTheMergeFilledIn) {
  PutXmp(43799, LMD_W("50/1"));
  PutShort(BLOCK_EXIF, kFocalLengthIn35mm, 75);
  EXPECT_EQ(Merge(), (Lines{"[MDTEST2] FocalLength: Merge XMP -> ExifExt", kParsed[0]}));
  EXPECT_EQ(Find(m_store, BLOCK_MAKERNOTE_SUMMARY, kFactor),
            MergedRational(kFactor, 1500000, kMillion));
}

TEST_F(SensorFactorMerge, ReadsNeitherPairFromIfd0) {
  PutRational(BLOCK_IFD0, kResolution, 6773333, 1000);
  PutShort(BLOCK_IFD0, kImageWidth, 6000);
  PutShort(BLOCK_IFD0, kFocalLengthIn35mm, 75);
  ExpectNoFactor();
}

}  // namespace
}  // namespace test
