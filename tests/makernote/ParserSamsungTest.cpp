#include <array>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "makernote/NoteFile.h"
#include "makernote/ParserSamsung.h"
#include "support/Tiff.h"

namespace {

using test::Bytes;
using test::Directory;
using test::g_big;
using test::kBig;
using test::kLittle;
using test::NoteFile;
using test::TagsOf;
using test::Tiff;
using testing::ElementsAre;

constexpr std::uint16_t kStyleTag = 0x0021;
constexpr std::uint16_t kLensTag = 0xA003;

// What the summary says about a note that stands at the start of a file.
MakerNoteInfo InfoOf(const Directory& directory, ByteOrder order = kLittle) {
  NoteFile file(g_big.BuildDirectory(directory, 0));
  CParserSamsung parser;
  EXPECT_TRUE(parser.Parse(file.Stream(), order, 0, 0));
  MakerNoteInfo info;
  EXPECT_TRUE(parser.GetInfo(info));
  return info;
}

std::string TextOf(const std::unique_ptr<char[]>& text) {
  return text ? text.get() : "(none)";
}

TEST(ParserSamsung, NamesEachLensOfItsTable) {
  const std::vector<std::pair<std::uint16_t, std::string>> lenses = {
      {1, "Samsung NX 30mm F2 Pancake"},
      {2, "Samsung NX 18-55mm F3.5-5.6 OIS"},
      {3, "Samsung NX 50-200mm F4-5.6 ED OIS"},
      {4, "Samsung NX 20-50mm F3.5-5.6 ED"},
      {5, "Samsung NX 20mm F2.8 Pancake"},
      {6, "Samsung NX 18-200mm F3.5-6.3 ED OIS"},
      {7, "Samsung NX 60mm F2.8 Macro ED OIS SSA"},
      {8, "Samsung NX 16mm F2.4 Pancake"},
      {9, "Samsung NX 85mm F1.4 ED SSA"},
  };
  for (const auto& [id, name] : lenses) {
    const MakerNoteInfo info = InfoOf({g_big.Short(kLensTag, {id})});
    EXPECT_EQ(info.nLensId, id);
    EXPECT_EQ(TextOf(info.pszLensName), name);
  }
}

TEST(ParserSamsung, KeepsAnUnknownLensIdWithoutAName) {
  for (const std::uint16_t id : std::array<std::uint16_t, 5>{0, 10, 256, 32768, 65535}) {
    const MakerNoteInfo info = InfoOf({g_big.Short(kLensTag, {id})});
    EXPECT_EQ(info.nLensId, id);
    EXPECT_EQ(info.pszLensName, nullptr) << id;
  }
}

TEST(ParserSamsung, TakesTheFirstSixteenBitsAsLensIdWhateverTheirType) {
  EXPECT_EQ(InfoOf({g_big.Short(kLensTag, {2, 3, 4})}).nLensId, 2U);
  EXPECT_EQ(InfoOf({g_big.Byte(kLensTag, {5})}).nLensId, 5U) << "the missing byte is 0";
  EXPECT_EQ(InfoOf({g_big.Byte(kLensTag, {5, 1})}).nLensId, 0x0105U) << "bytes have no order";
  EXPECT_EQ(InfoOf({g_big.Long(kLensTag, {0x00020006})}).nLensId, 6U) << "in host order";
  EXPECT_EQ(InfoOf({g_big.Short(kLensTag, {})}).nLensId, 0U) << "no value";
}

TEST(ParserSamsung, NamesEachPictureStyleOfItsTable) {
  const std::vector<std::pair<std::uint8_t, std::string>> styles = {
      {0, "Standard"}, {1, "Vivid"},   {2, "Portrait"}, {3, "Landscape"},
      {4, "Forest"},   {5, "Retro"},   {6, "Cool"},     {7, "Calm"},
      {8, "Classic"},  {9, "Custom1"}, {10, "Custom2"}, {11, "Custom3"},
  };
  for (const auto& [code, name] : styles) {
    const MakerNoteInfo info = InfoOf({g_big.Byte(kStyleTag, {code})});
    EXPECT_EQ(TextOf(info.pszPictureStyle), name);
  }
}

// 0xFF is -1 and therefore never reaches the name of 255.
TEST(ParserSamsung, NamesNoPictureStyleOutsideItsTable) {
  for (const std::uint8_t code : std::array<std::uint8_t, 5>{12, 127, 128, 254, 255}) {
    const MakerNoteInfo info = InfoOf({g_big.Byte(kStyleTag, {code})});
    EXPECT_EQ(info.pszPictureStyle, nullptr) << int{code};
  }
}

TEST(ParserSamsung, TakesTheFirstByteAsPictureStyle) {
  EXPECT_EQ(TextOf(InfoOf({g_big.Undefined(kStyleTag, {3, 1, 1, 1, 1, 1})}).pszPictureStyle),
            "Landscape");
  EXPECT_EQ(TextOf(InfoOf({g_big.Short(kStyleTag, {0x0104})}).pszPictureStyle), "Forest")
      << "in host order";
  EXPECT_EQ(InfoOf({g_big.Byte(kStyleTag, {})}).pszPictureStyle, nullptr) << "no value";
}

TEST(ParserSamsung, LeavesEverythingElseEmpty) {
  const MakerNoteInfo info = InfoOf({g_big.Short(1, {1})});
  EXPECT_EQ(info.nVendorCode, 10U);
  EXPECT_EQ(info.nLensId, 0U);
  EXPECT_EQ(info.pszLensName, nullptr);
  EXPECT_EQ(info.pszLensModel, nullptr);
  EXPECT_EQ(info.pszPictureStyle, nullptr);
  EXPECT_EQ(info.nIso, 0U);
  EXPECT_EQ(info.fNumber.numerator, 0U);
  EXPECT_EQ(info.pPreview, nullptr);
}

TEST(ParserSamsung, ReadsBigEndianWhateverTheFileIs) {
  for (const ByteOrder order : {kLittle, kBig}) {
    const MakerNoteInfo info = InfoOf({g_big.Short(kLensTag, {9})}, order);
    EXPECT_EQ(info.nLensId, 9U);
  }
  const Tiff little(kLittle);
  NoteFile file(little.BuildDirectory({little.Short(1, {1}), little.Short(kLensTag, {9})}, 0));
  CParserSamsung parser;
  EXPECT_FALSE(parser.Parse(file.Stream(), kLittle, 0, 0)) << "a count of 0x0200 is too many";
}

TEST(ParserSamsung, CountsOffsetsFromTheLowerBoundAndNotFromTheBaseOffset) {
  const Bytes note = g_big.BuildDirectory({g_big.Short(1, {1, 2, 3})}, 0);
  NoteFile file(test::Join({test::Zeros(50), note}), 50);
  CParserSamsung parser;
  parser.SetContext("", "", 7, "", 0);
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 50, 1000));
  ASSERT_TRUE(parser.FirstEntry());
  ASSERT_NE(parser.CurrentEntry(), nullptr);
  EXPECT_EQ(test::Hex(TagBytes(*parser.CurrentEntry())), "010002000300");
}

TEST(ParserSamsung, CountsOffsetsFromTheFileStartWithoutBounds) {
  const Bytes note = g_big.BuildDirectory({g_big.AtOffset(1, 1, 5, 2)}, 0);
  NoteFile file(test::Join({Bytes{1, 2, 3, 4, 5, 6, 7, 8}, note}), 8);
  CParserSamsung parser;
  parser.SetContext("", "", 7, "", 0);
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 0, 0));
  ASSERT_TRUE(parser.FirstEntry());
  ASSERT_NE(parser.CurrentEntry(), nullptr);
  EXPECT_EQ(test::Hex(TagBytes(*parser.CurrentEntry())), "0304050607");
}

TEST(ParserSamsung, AcceptsValuesStrictlyBetweenTheBounds) {
  Bytes note =
      g_big.BuildDirectory({g_big.AtOffset(1, 1, 5, 0), g_big.AtOffset(2, 1, 5, 1),
                            g_big.AtOffset(3, 1, 5, 99), g_big.AtOffset(4, 1, 5, 100),
                            g_big.AtOffset(5, 1, 5, 101), g_big.AtOffset(6, 1, 5, 0xFFFFFFFF)},
                           0);
  note.resize(110);
  NoteFile file(test::Join({test::Zeros(100), note}), 100);
  CParserSamsung parser;
  ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 100, 200));
  EXPECT_THAT(TagsOf(parser), ElementsAre(2, 3));
}

TEST(ParserSamsung, LeavesOutOfTheSummaryWhatLiesOnOrBeyondTheUpperBound) {
  const Directory directory = {g_big.Short(kLensTag, {7, 0, 0}), g_big.Byte(kStyleTag, {3})};
  const Bytes note = g_big.BuildDirectory(directory, 0);
  const std::uint32_t valueAt = 100 + 2 + 2 * 12 + 4;
  for (const std::uint32_t upper : {valueAt - 1, valueAt, valueAt + 1}) {
    NoteFile file(test::Join({test::Zeros(100), note}), 100);
    CParserSamsung parser;
    ASSERT_TRUE(parser.Parse(file.Stream(), kLittle, 100, upper));
    MakerNoteInfo info;
    ASSERT_TRUE(parser.GetInfo(info));
    const bool isInside = upper > valueAt;
    EXPECT_EQ(info.nLensId, isInside ? 7U : 0U);
    EXPECT_EQ(TextOf(info.pszLensName),
              isInside ? "Samsung NX 60mm F2.8 Macro ED OIS SSA" : "(none)");
    EXPECT_EQ(TextOf(info.pszPictureStyle), "Landscape");
  }
}

// What a note of the given length, cut off the one below, names as its lens. The directory of 30
// bytes is followed by the six bytes of the style, then those of the lens.
std::string LensOfPrefix(std::size_t size) {
  if (size < 22) return "(none)";
  // A cut offset is 0, and there the directory's count of 2 stands.
  if (size < 26) return "Samsung NX 18-55mm F3.5-5.6 OIS";
  return size < 38 ? "(none)" : "Samsung NX 18-200mm F3.5-6.3 ED OIS";
}

TEST(ParserSamsung, SurvivesEveryPrefixOfANote) {
  const Bytes note = g_big.BuildDirectory(
      {g_big.Byte(kStyleTag, {1, 0, 0, 0, 0, 0}), g_big.Short(kLensTag, {6, 0, 0})}, 0);
  for (std::size_t size = 0; size <= note.size(); ++size) {
    NoteFile file(Bytes(note.begin(), note.begin() + static_cast<std::ptrdiff_t>(size)));
    CParserSamsung parser;
    ASSERT_EQ(parser.Parse(file.Stream(), kLittle, 0, 0), size >= 2) << size;
    MakerNoteInfo info;
    ASSERT_TRUE(parser.GetInfo(info));
    EXPECT_EQ(TextOf(info.pszLensName), LensOfPrefix(size)) << size;
    if (size >= 31) {
      EXPECT_EQ(TextOf(info.pszPictureStyle), "Vivid") << size;
    }
  }
}

}  // namespace
