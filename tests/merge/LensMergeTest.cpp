// Where the lens's name, model and data come from.

#include "merge/MergeTest.h"

namespace test {
namespace {

constexpr std::uint32_t kLensSpec = 0xA432;
constexpr std::uint32_t kDngLensInfo = 0xC630;
constexpr std::uint32_t kXmpLens = 43787;
constexpr std::uint32_t kLensName = 2;
constexpr std::uint32_t kLensModel = 3;

const std::string kNameLine = "[MDTEST2] LensName: Merge XMP -> MakerNote";
const std::string kModelFromExif = "[MDTEST2] LensModel: Merge BasicExif -> MakerNote";
const std::string kModelFromDng = "[MDTEST2] LensModel: Merge Exif -> MakerNote";
const std::string kFocalFromExif = "[MDTEST] LensInfo (FOCALLENGTH): Merge BasicExif -> MakerNote";
const std::string kApertureFromExif = "[MDTEST] LensInfo (APERTURE): Merge BasicExif -> MakerNote";
const std::string kFocalFromDng =
    "[MDTEST] LensInfo (FOCALLENGTH): Merge BasicExif -> MakerNote (DngLensModel)";
const std::string kApertureFromDng =
    "[MDTEST] LensInfo (APERTURE): Merge BasicExif -> MakerNote (DngLensModel)";

const Bytes kZoom = Rationals({{24, 1}, {70, 1}, {28, 10}, {28, 10}});
const Bytes kTele = Rationals({{200, 1}, {400, 1}, {4, 1}, {56, 10}});

class LensMerge : public MergeTest {
 protected:
  std::optional<Stored> Summary(std::uint32_t key) {
    return Find(m_store, BLOCK_MAKERNOTE_SUMMARY, key);
  }

  void ExpectRationals(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& values) {
    for (std::uint32_t i = 0; i < 4; ++i) {
      EXPECT_EQ(Summary(12 + i),
                MergedRational(12 + i, values[i].first, values[i].second, TYPE_SRATIONAL));
    }
  }
};

TEST_F(LensMerge, TakesTheNameFromXmp) {
  PutXmp(kXmpLens, LMD_W("24.0-70.0 mm"));
  EXPECT_EQ(Merge(), Lines{kNameLine});
  EXPECT_EQ(Summary(kLensName), MergedText(kLensName, "24.0-70.0 mm"));
}

TEST_F(LensMerge, ConvertsTheNameToTheAnsiCodePage) {
  PutXmp(kXmpLens, LMD_W("Objectif \u00E9"));
  EXPECT_EQ(Merge(), Lines{kNameLine});
  EXPECT_EQ(Summary(kLensName), MergedText(kLensName, "Objectif \xE9"));
}

TEST_F(LensMerge, CutsTheNameAtItsFirstZero) {
  Put(BLOCK_XMP, kXmpLens, TYPE_WIDE_TEXT, {'a', 0, 'b', 0, 0, 0, 'c', 0, 0, 0});
  EXPECT_EQ(Merge(), Lines{kNameLine});
  EXPECT_EQ(Summary(kLensName), MergedText(kLensName, "ab"));
}

TEST_F(LensMerge, TakesANameWithoutFinalZeroAndAnOddByteWhole) {
  Put(BLOCK_XMP, kXmpLens, TYPE_WIDE_TEXT, {'a', 0, 'b', 0, 'c'});
  EXPECT_EQ(Merge(), Lines{kNameLine});
  EXPECT_EQ(Summary(kLensName), MergedText(kLensName, "ab"));
}

TEST_F(LensMerge, StoresAnEmptyNameAsOneZero) {
  PutXmp(kXmpLens, LMD_W(""));
  EXPECT_EQ(Merge(), Lines{kNameLine});
  EXPECT_EQ(Summary(kLensName), MergedText(kLensName, ""));
}

TEST_F(LensMerge, PassesOverANameWithoutDataOrSize) {
  Put(BLOCK_XMP, kXmpLens, TYPE_WIDE_TEXT, {});
  EXPECT_EQ(Merge(), Lines{});
  PutWithoutData(BLOCK_XMP, kXmpLens, TYPE_WIDE_TEXT, 8);
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Summary(kLensName), std::nullopt);
}

TEST_F(LensMerge, KeepsANameThatIsThere) {
  Put(BLOCK_MAKERNOTE_SUMMARY, kLensName, TYPE_ASCII, {});
  PutXmp(kXmpLens, LMD_W("24.0-70.0 mm"));
  EXPECT_EQ(Merge(), Lines{});
  EXPECT_EQ(Summary(kLensName), (Stored{kLensName, TYPE_ASCII, 1, ""}));
}

TEST_F(LensMerge, FillsModelAndDataFromTheLensSpecification) {
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, kZoom);
  EXPECT_EQ(Merge(), (Lines{kModelFromExif, kFocalFromExif, kApertureFromExif}));
  EXPECT_EQ(Summary(kLensModel), MergedText(kLensModel, "24.0-70.0 mm f/2.8"));
  ExpectRationals({{24, 1}, {70, 1}, {28, 10}, {28, 10}});
}

TEST_F(LensMerge, FillsModelAndDataFromTheDngLensInfo) {
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), (Lines{kModelFromDng, kFocalFromDng, kApertureFromDng}));
  EXPECT_EQ(Summary(kLensModel), MergedText(kLensModel, "200.0-400.0 mm f/4.0-5.6"));
  ExpectRationals({{200, 1}, {400, 1}, {4, 1}, {56, 10}});
}

TEST_F(LensMerge, PrefersTheLensSpecification) {
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, kZoom);
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), (Lines{kModelFromExif, kFocalFromExif, kApertureFromExif}));
  ExpectRationals({{24, 1}, {70, 1}, {28, 10}, {28, 10}});
}

TEST_F(LensMerge, ReadsEachTagInItsOwnDirectoryOnly) {
  Put(BLOCK_IFD0, kLensSpec, TYPE_RATIONAL, kZoom);
  Put(BLOCK_EXIF, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), Lines{});
}

TEST_F(LensMerge, AsksForExactly32Bytes) {
  Bytes shorter = kZoom;
  shorter.pop_back();
  for (const Bytes& bytes : {Bytes{}, shorter, Join({kZoom, Zeros(1)})}) {
    Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, bytes);
    Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, bytes);
    EXPECT_EQ(Merge(), Lines{});
  }
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), (Lines{kModelFromDng, kFocalFromDng, kApertureFromDng}));
}

TEST_F(LensMerge, AsksForNoType) {
  Put(BLOCK_EXIF, kLensSpec, TYPE_UNDEFINED, kZoom);
  EXPECT_EQ(Merge(), (Lines{kModelFromExif, kFocalFromExif, kApertureFromExif}));
}

// The model and the data of one lens may come from different tags.
TEST_F(LensMerge, TakesTheModelFromDngWhenTheLensSpecificationGivesNone) {
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, Rationals({{24, 0}, {70, 1}, {28, 10}, {28, 10}}));
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), (Lines{kModelFromDng, kFocalFromExif, kApertureFromExif}));
  EXPECT_EQ(Summary(kLensModel), MergedText(kLensModel, "200.0-400.0 mm f/4.0-5.6"));
  ExpectRationals({{24, 0}, {70, 1}, {28, 10}, {28, 10}});
}

TEST_F(LensMerge, WritesNoModelWithoutUsableFocalLengths) {
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, Zeros(32));
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, Zeros(32));
  EXPECT_EQ(Merge(), (Lines{kFocalFromExif, kApertureFromExif}));
  EXPECT_EQ(Summary(kLensModel), std::nullopt);
}

TEST_F(LensMerge, TakesMissingDataForZeros) {
  PutWithoutData(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, 32);
  EXPECT_EQ(Merge(), (Lines{kFocalFromExif, kApertureFromExif}));
  ExpectRationals({{0, 0}, {0, 0}, {0, 0}, {0, 0}});
}

TEST_F(LensMerge, KeepsAModelThatIsThere) {
  Put(BLOCK_MAKERNOTE_SUMMARY, kLensModel, TYPE_ASCII, {});
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, kZoom);
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), (Lines{kFocalFromExif, kApertureFromExif}));
  EXPECT_EQ(Summary(kLensModel), (Stored{kLensModel, TYPE_ASCII, 1, ""}));
}

TEST_F(LensMerge, AsksOnlyForTheFirstKeyOfAPair) {
  for (const std::int32_t block : {BLOCK_EXIF, BLOCK_IFD0}) {
    const bool isExif = block == BLOCK_EXIF;
    m_store.m_fnReset();
    PutRational(BLOCK_MAKERNOTE_SUMMARY, 13, 1, 2);
    PutRational(BLOCK_MAKERNOTE_SUMMARY, 15, 3, 4);
    Put(block, isExif ? kLensSpec : kDngLensInfo, TYPE_RATIONAL, kZoom);
    EXPECT_EQ(Merge(), (isExif ? Lines{kModelFromExif, kFocalFromExif, kApertureFromExif}
                               : Lines{kModelFromDng, kFocalFromDng, kApertureFromDng}));
    const auto second = MergedRational(13, 70, 1, TYPE_SRATIONAL);
    const auto fourth = MergedRational(15, 28, 10, TYPE_SRATIONAL);
    EXPECT_EQ(Summary(13), (Stored{13, TYPE_SRATIONAL, 1, second.hex}));  // a count that was there
    EXPECT_EQ(Summary(15), (Stored{15, TYPE_SRATIONAL, 1, fourth.hex}));
  }
}

TEST_F(LensMerge, KeepsAPairWhoseFirstKeyIsThere) {
  PutRational(BLOCK_MAKERNOTE_SUMMARY, 12, 1, 2);
  Put(BLOCK_MAKERNOTE_SUMMARY, 14, TYPE_RATIONAL, {});
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, kZoom);
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), Lines{kModelFromExif});
  EXPECT_EQ(Keys(m_store, BLOCK_MAKERNOTE_SUMMARY), (std::vector<std::uint32_t>{3, 12, 14}));
}

TEST_F(LensMerge, FillsThePairsOneByOne) {
  PutRational(BLOCK_MAKERNOTE_SUMMARY, 12, 1, 2);
  Put(BLOCK_EXIF, kLensSpec, TYPE_RATIONAL, kZoom);
  EXPECT_EQ(Merge(), (Lines{kModelFromExif, kApertureFromExif}));

  m_store.m_fnReset();
  PutRational(BLOCK_MAKERNOTE_SUMMARY, 14, 1, 2);
  Put(BLOCK_IFD0, kDngLensInfo, TYPE_RATIONAL, kTele);
  EXPECT_EQ(Merge(), (Lines{kModelFromDng, kFocalFromDng}));
}

}  // namespace
}  // namespace test
