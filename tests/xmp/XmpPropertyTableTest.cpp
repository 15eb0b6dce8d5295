#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "xmp/XmpPaths.h"
#include "xmp/XmpPropertyTable.h"

namespace {

constexpr std::string_view kIptc = "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/";
constexpr std::string_view kXmp = "http://ns.adobe.com/xap/1.0/";
constexpr std::string_view kRights = "http://ns.adobe.com/xap/1.0/rights/";
constexpr std::string_view kPhotoshop = "http://ns.adobe.com/photoshop/1.0/";
constexpr std::string_view kDc = "http://purl.org/dc/elements/1.1/";
constexpr std::string_view kAux = "http://ns.adobe.com/exif/1.0/aux/";
constexpr std::string_view kExif = "http://ns.adobe.com/exif/1.0/";
constexpr std::string_view kTiff = "http://ns.adobe.com/tiff/1.0/";
constexpr std::string_view kMicrosoft = "http://ns.microsoft.com/photo/1.0";
constexpr std::string_view kPano = "http://ns.google.com/photos/1.0/panorama/";

struct Row {
  std::string_view nameSpace;
  std::string_view name;
  std::uint32_t tag;
};

// clang-format off
constexpr std::array<Row, 32> kRows = {{
    {kXmp,       "CreatorTool",            0xAA02},
    {kXmp,       "Rating",                 0xAA01},
    {kXmp,       "Label",                  0xAA03},
    {kIptc,      "IntellectualGenre",      0xAA14},
    {kIptc,      "CiAdrExtadr",            0xAA12},
    {kIptc,      "CiAdrCity",              0xAA06},
    {kIptc,      "CiAdrCtry",              0xAA08},
    {kIptc,      "CiAdrRegion",            0xAA05},
    {kIptc,      "CiAdrPcode",             0xAA07},
    {kIptc,      "CiTelWork",              0xAA09},
    {kIptc,      "CiEmailWork",            0xAA10},
    {kIptc,      "CiUrlWork",              0xAA11},
    {kIptc,      "SubjectCode",            0xAA13},
    {kIptc,      "Scene",                  0xAA15},
    {kRights,    "WebStatement",           0xAB01},
    {kRights,    "Marked",                 0xAB04},
    {kRights,    "UsageTerms",             0xAB03},
    {kPhotoshop, "SupplementalCategories", 0xAB02},
    {kDc,        "rights",                 0xAA04},
    {kAux,       "Lens",                   0xAB0B},
    {kExif,      "ExposureBiasValue",      0xAB14},
    {kExif,      "ShutterSpeedValue",      0xAB15},
    {kExif,      "ApertureValue",          0xAB16},
    {kExif,      "FocalLength",            0xAB17},
    {kExif,      "ExposureMode",           0xAB18},
    {kTiff,      "Make",                   0xAB11},
    {kTiff,      "Model",                  0xAB12},
    {kMicrosoft, "Rating",                 0xAA01},
    {kPano,      "ProjectionType",         0xAB19},
    {kPano,      "PoseHeadingDegrees",     0xAB20},
    {kPano,      "PosePitchDegrees",       0xAB21},
    {kPano,      "PoseRollDegrees",        0xAB22},
}};
// clang-format on

// What a lookup that finds nothing must leave alone.
constexpr std::uint32_t kUntouched = 0x12345678;

TEST(MapXmpProperty, FindsEveryRow) {
  for (const Row& row : kRows) {
    std::uint32_t tag = kUntouched;
    EXPECT_EQ(MapXmpProperty(row.nameSpace, row.name, &tag), S_OK) << row.name;
    EXPECT_EQ(tag, row.tag) << row.name;
  }
}

TEST(MapXmpProperty, FindsNoNameUnderAnotherNamespace) {
  for (const Row& row : kRows) {
    for (const Row& other : kRows) {
      if (other.nameSpace == row.nameSpace || row.name == "Rating") continue;
      std::uint32_t tag = kUntouched;
      EXPECT_EQ(MapXmpProperty(other.nameSpace, row.name, &tag), E_FAIL) << row.name;
      EXPECT_EQ(tag, kUntouched);
    }
  }
}

TEST(MapXmpProperty, ComparesNamesExactly) {
  for (const std::string_view name : {"rating", "Ratin", "Ratings", "", "RATING", " Rating"}) {
    std::uint32_t tag = kUntouched;
    EXPECT_EQ(MapXmpProperty(kXmp, name, &tag), E_FAIL) << name;
    EXPECT_EQ(tag, kUntouched);
  }
}

TEST(MapXmpProperty, ComparesNamespacesExactly) {
  for (const std::string_view nameSpace :
       {"http://ns.adobe.com/xap/1.0", "http://ns.adobe.com/xap/1.0//", "", "xmp",
        "http://ns.adobe.com/xap/1.1/", "HTTP://ns.adobe.com/xap/1.0/",
        "http://ns.microsoft.com/photo/1.0/", "http://ns.microsoft.com/photo/1."}) {
    std::uint32_t tag = kUntouched;
    EXPECT_EQ(MapXmpProperty(nameSpace, "Rating", &tag), E_FAIL) << nameSpace;
    EXPECT_EQ(tag, kUntouched);
  }
}

TEST(MapXmpProperty, NeedsAPlaceForTheTag) {
  EXPECT_EQ(MapXmpProperty(kXmp, "Rating", nullptr), E_POINTER);
}

bool MayBeKept(std::string_view name) {
  const std::string text = "<xmp:" + std::string(name);
  return kXmpKeptNames.MayHold(text, text.size());
}

TEST(XmpKeptNames, HoldEveryNameThatMatters) {
  for (const Row& row : kRows) EXPECT_TRUE(MayBeKept(row.name)) << row.name;
  for (const std::string_view name : {"li", "PersonDisplayName", "Rectangle", "PersonTagType"}) {
    EXPECT_TRUE(MayBeKept(name)) << name;
  }
}

TEST(XmpKeptNames, AreToldByTheirLastCharacters) {
  EXPECT_FALSE(MayBeKept(""));
  EXPECT_FALSE(MayBeKept("Sharpness"));
  EXPECT_FALSE(MayBeKept("Ratings"));
  EXPECT_FALSE(MayBeKept("l"));
  EXPECT_TRUE(MayBeKept("Testing"));
  EXPECT_TRUE(MayBeKept("Vermicelli"));
}

TEST(XmpNameSet, HoldsNamesOfFourCharactersAndOneOfTwo) {
  constexpr std::string_view kText = "abcdefgh";
  XmpNameSet names;
  EXPECT_FALSE(names.MayHold(kText, 4));
  names.Add("bcde");
  names.Add("gh");
  for (const std::size_t end : {5u, 8u}) EXPECT_TRUE(names.MayHold(kText, end));
  for (const std::size_t end : {4u, 6u, 7u}) EXPECT_FALSE(names.MayHold(kText, end));
}

// Too little is known of what ends there.
TEST(XmpNameSet, MayHoldWhatEndsAtTheVeryBeginning) {
  const XmpNameSet none;
  for (const std::size_t end : {0u, 1u, 3u}) EXPECT_TRUE(none.MayHold("abcd", end));
  EXPECT_FALSE(none.MayHold("abcd", 4));
}

// Builds the paths of a packet from names, as its elements would.
class PathBuilder {
 public:
  explicit PathBuilder(std::vector<std::string> names) : m_names(std::move(names)) {
    for (const std::string& name : m_names) m_packet += name;
    m_paths.Reset(m_packet);
  }

  // A child with the name of a number.
  XmpPathIndex Add(XmpPathIndex parent, std::size_t name) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < name; ++i) start += m_names[i].size();
    return m_paths.Add(parent, {static_cast<std::uint32_t>(start),
                                static_cast<std::uint32_t>(m_names[name].size())});
  }

  // All names under one another.
  XmpPathIndex AddAll() {
    XmpPathIndex path = kXmpRootPath;
    for (std::size_t i = 0; i < m_names.size(); ++i) path = Add(path, i);
    return path;
  }

  const std::vector<std::string>& Names() const { return m_names; }
  const XmpPaths& Paths() const { return m_paths; }

 private:
  std::vector<std::string> m_names;
  std::string m_packet;
  XmpPaths m_paths;
};

// The tag of the items under a path of names; 0 when they are not kept.
std::uint32_t ItemTag(std::vector<std::string> names) {
  PathBuilder builder(std::move(names));
  const XmpPathIndex path = builder.AddAll();
  XmpItemMapping mapping(builder.Paths());
  std::uint32_t tag = kUntouched;
  const HRESULT result = mapping.Map(path, &tag);
  if (result == S_OK) return tag;
  EXPECT_EQ(result, E_FAIL);
  EXPECT_EQ(tag, kUntouched);
  return 0;
}

TEST(XmpItemMapping, FindsEveryRow) {
  EXPECT_EQ(ItemTag({"RDF", "Description", "SubjectCode", "Bag"}), 0xAA13u);
  EXPECT_EQ(ItemTag({"RDF", "Description", "Scene", "Bag"}), 0xAA15u);
  EXPECT_EQ(ItemTag({"RDF", "Description", "UsageTerms", "Alt"}), 0xAB03u);
  EXPECT_EQ(ItemTag({"RDF", "Description", "rights", "Alt"}), 0xAA04u);
  EXPECT_EQ(ItemTag({"RDF", "Description", "ISOSpeedRatings", "Seq"}), 0xAB13u);
}

TEST(XmpItemMapping, NeedsNameAndContainerExactly) {
  EXPECT_EQ(ItemTag({}), 0u);
  EXPECT_EQ(ItemTag({"subject", "Bag"}), 0u);
  EXPECT_EQ(ItemTag({"Scene", "Seq"}), 0u);
  EXPECT_EQ(ItemTag({"Scene", "x", "Bag"}), 0u);
  EXPECT_EQ(ItemTag({"Scene"}), 0u);
  EXPECT_EQ(ItemTag({"xScene", "Bag"}), 0u);
  EXPECT_EQ(ItemTag({"Scene", "Bagx"}), 0u);
  EXPECT_EQ(ItemTag({"Rights", "Alt"}), 0u);
}

TEST(XmpItemMapping, FindsASegmentAnywhereInThePath) {
  EXPECT_EQ(ItemTag({"rights", "Alt"}), 0xAA04u);
  EXPECT_EQ(ItemTag({"rights", "Alt", "li", "Description", "x", "Seq"}), 0xAA04u);
}

TEST(XmpItemMapping, TableOrderDecidesBetweenTwo) {
  EXPECT_EQ(ItemTag({"rights", "Alt", "Scene", "Bag"}), 0xAA15u);
  EXPECT_EQ(ItemTag({"Scene", "Bag", "rights", "Alt"}), 0xAA15u);
  EXPECT_EQ(ItemTag({"ISOSpeedRatings", "Seq", "li", "UsageTerms", "Alt"}), 0xAB03u);
}

TEST(XmpItemMapping, SlashesInNamesAreSlashesOfThePath) {
  EXPECT_EQ(ItemTag({"rights/Alt"}), 0xAA04u);
  EXPECT_EQ(ItemTag({"rights/Alt/x"}), 0xAA04u);
  EXPECT_EQ(ItemTag({"x/rights", "Alt"}), 0xAA04u);
  EXPECT_EQ(ItemTag({"rights", "Alt/x"}), 0xAA04u);
  EXPECT_EQ(ItemTag({"rights/", "Alt"}), 0u);
}

// Every path of up to four odd names gets what a search through its whole text finds.
TEST(XmpItemMapping, EqualsASearchThroughTheWholePath) {
  PathBuilder builder({"rights", "Alt", "", "Alt/rights", "/Scene/Bag", "Scene/", "Bag",
                       "UsageTerms", "li", "x/SubjectCode/Bag/", "ISOSpeedRatings/Seq", "t/Al"});
  std::vector<XmpPathIndex> level{kXmpRootPath};
  for (int depth = 0; depth < 4; ++depth) {
    std::vector<XmpPathIndex> next;
    for (const XmpPathIndex parent : level) {
      for (std::size_t name = 0; name < builder.Names().size(); ++name) {
        next.push_back(builder.Add(parent, name));
      }
    }
    level = next;
  }
  constexpr std::array<std::string_view, 5> kSegments = {"/SubjectCode/Bag/", "/Scene/Bag/",
                                                         "/UsageTerms/Alt/", "/rights/Alt/",
                                                         "/ISOSpeedRatings/Seq/"};
  constexpr std::array<std::uint32_t, 5> kTags = {0xAA13, 0xAA15, 0xAB03, 0xAA04, 0xAB13};

  XmpItemMapping mapping(builder.Paths());
  std::size_t found = 0;
  for (XmpPathIndex path = 0; path < builder.Paths().Count(); ++path) {
    const std::string text = builder.Paths().Text(path);
    std::uint32_t expected = 0;
    for (std::size_t i = kSegments.size(); i-- > 0;) {
      if (text.find(kSegments[i]) != text.npos) expected = kTags[i];
    }
    std::uint32_t tag = 0;
    ASSERT_EQ(mapping.Map(path, &tag), expected == 0 ? E_FAIL : S_OK) << text;
    ASSERT_EQ(tag, expected) << text;
    if (expected != 0) ++found;
  }
  EXPECT_GT(found, 5000u);
  EXPECT_LT(found, builder.Paths().Count() - 5000);
}

TEST(FindXmpArray, GivesTheRowOrTheirNumber) {
  EXPECT_EQ(FindXmpArray("xmpmeta/RDF/SubjectCode/Bag/"), 0u);
  EXPECT_EQ(FindXmpArray("xmpmeta/RDF/ISOSpeedRatings/Seq/"), 4u);
  EXPECT_EQ(FindXmpArray("xmpmeta/RDF/ISOSpeedRatings/Seq"), kXmpArrayCount);
  EXPECT_EQ(FindXmpArray(""), kXmpArrayCount);
}

TEST(XmpPaths, TextHasEveryNameWithItsSlash) {
  PathBuilder builder({"RDF", "", "a/b"});
  EXPECT_EQ(builder.Paths().Text(kXmpRootPath), "xmpmeta/");
  EXPECT_EQ(builder.Paths().Text(builder.AddAll()), "xmpmeta/RDF//a/b/");
}

TEST(XmpPaths, TailIsTheEndOfTheText) {
  PathBuilder builder({"RDF", "abc"});
  const XmpPathIndex path = builder.AddAll();
  const std::string text = "xmpmeta/RDF/abc/";
  for (std::size_t length = 0; length <= text.size(); ++length) {
    EXPECT_EQ(builder.Paths().Tail(path, length), text.substr(text.size() - length));
  }
  EXPECT_EQ(builder.Paths().Tail(path, text.size() + 1), text);
}

}  // namespace
