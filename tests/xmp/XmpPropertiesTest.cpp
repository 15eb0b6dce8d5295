#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/TagEntry.h"
#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"
#include "support/StoreFile.h"
#include "xmp/VxXMPParser.h"
#include "xmp/XmpTestSupport.h"

namespace {

using test::Find;
using test::Keys;
using test::Repeat;
using test::Stored;
using Tags = std::vector<std::uint32_t>;

// A packet with the bindings that the tests use and the given content of its description.
std::string Packet(std::string_view content) {
  return R"xml(<x:xmpmeta><rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"
 xmlns:xmp="http://ns.adobe.com/xap/1.0/"
 xmlns:xmpRights="http://ns.adobe.com/xap/1.0/rights/"
 xmlns:Iptc4xmpCore="http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/"
 xmlns:photoshop="http://ns.adobe.com/photoshop/1.0/"
 xmlns:dc="http://purl.org/dc/elements/1.1/"
 xmlns:aux="http://ns.adobe.com/exif/1.0/aux/"
 xmlns:exif="http://ns.adobe.com/exif/1.0/"
 xmlns:tiff="http://ns.adobe.com/tiff/1.0/"
 xmlns:MicrosoftPhoto="http://ns.microsoft.com/photo/1.0"
 xmlns:published="http://ns.microsoft.com/photo/1.0/"
 xmlns:GPano="http://ns.google.com/photos/1.0/panorama/"
><rdf:Description>)xml" +
         std::string(content) + "</rdf:Description></rdf:RDF></x:xmpmeta>";
}

HRESULT ParseText(VxMetadata& store, std::string_view packet) {
  const auto bytes = test::PacketBytes(packet);
  return store.ParseXmp(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

// A store that has read packets of the given contents.
class XmpStore {
 public:
  explicit XmpStore(std::string_view content) {
    m_store.m_nParseFlags = PARSE_XMP;
    Parse(content);
  }

  void Parse(std::string_view content) { EXPECT_EQ(ParseText(m_store, Packet(content)), S_OK); }

  VxMetadata& operator*() { return m_store; }
  VxMetadata* operator->() { return &m_store; }

  std::optional<Stored> Property(std::uint32_t tag) { return Find(m_store, BLOCK_XMP, tag); }
  std::optional<Stored> Region(std::uint32_t key) { return Find(m_store, BLOCK_XMP_REGIONS, key); }
  Tags PropertyTags() { return Keys(m_store, BLOCK_XMP); }
  Tags RegionKeys() { return Keys(m_store, BLOCK_XMP_REGIONS); }

 private:
  VxMetadata m_store;
};

// How a text is stored; its count is never written.
Stored Text(std::uint32_t tag, WideStringView text) {
  return {tag, 162, 0, test::Hex(test::WideBytes(text))};
}

Stored RegionText(WideStringView text) {
  return Text(0xAB09, text);
}

const Stored kMarker = {0xAB0A, 9, 0, "01000000"};
const Stored kEmptySlot = {};

std::string Person(std::string_view name) {
  return "<a:PersonDisplayName>" + std::string(name) + "</a:PersonDisplayName>";
}
std::string Rectangle(std::string_view value) {
  return "<a:Rectangle>" + std::string(value) + "</a:Rectangle>";
}
std::string PersonType(std::string_view value) {
  return "<a:PersonTagType>" + std::string(value) + "</a:PersonTagType>";
}

TEST(ParseXmp, ReadsNothingWithoutItsFlag) {
  VxMetadata store;
  store.m_nParseFlags = ~std::uint32_t{PARSE_XMP};
  store.m_pXmpParser.reset();
  EXPECT_EQ(ParseText(store, Packet("<xmp:Rating>3</xmp:Rating>")), S_OK);
  EXPECT_EQ(Keys(store, BLOCK_XMP), Tags{});
}

TEST(ParseXmp, NeedsAParser) {
  VxMetadata store;
  store.m_nParseFlags = PARSE_XMP;
  store.m_pXmpParser.reset();
  EXPECT_EQ(ParseText(store, Packet("<xmp:Rating>3</xmp:Rating>")), E_POINTER);
}

TEST(ParseXmp, PacketWithoutPropertiesIsNoError) {
  VxMetadata store;
  store.m_nParseFlags = PARSE_XMP;
  EXPECT_EQ(store.ParseXmp(nullptr, 100), S_OK);
  EXPECT_EQ(ParseText(store, ""), S_OK);
  EXPECT_EQ(ParseText(store, "<rdf:RDF"), S_OK);
  EXPECT_EQ(Keys(store, BLOCK_XMP), Tags{});
}

TEST(ParseXmp, ForgetsThePacketAtItsEnd) {
  XmpStore store("<xmp:Rating>3</xmp:Rating>");
  EXPECT_EQ(store->m_pXmpParser->PropertyCount(), 0u);
}

TEST(ParseXmp, StoresEveryPropertyOfTheTable) {
  struct Row {
    std::string name;
    std::uint32_t tag;
  };
  // clang-format off
  const std::vector<Row> rows = {
      {"xmp:CreatorTool",                  0xAA02},
      {"xmp:Rating",                       0xAA01},
      {"xmp:Label",                        0xAA03},
      {"Iptc4xmpCore:IntellectualGenre",   0xAA14},
      {"Iptc4xmpCore:CiAdrExtadr",         0xAA12},
      {"Iptc4xmpCore:CiAdrCity",           0xAA06},
      {"Iptc4xmpCore:CiAdrCtry",           0xAA08},
      {"Iptc4xmpCore:CiAdrRegion",         0xAA05},
      {"Iptc4xmpCore:CiAdrPcode",          0xAA07},
      {"Iptc4xmpCore:CiTelWork",           0xAA09},
      {"Iptc4xmpCore:CiEmailWork",         0xAA10},
      {"Iptc4xmpCore:CiUrlWork",           0xAA11},
      {"Iptc4xmpCore:SubjectCode",         0xAA13},
      {"Iptc4xmpCore:Scene",               0xAA15},
      {"xmpRights:WebStatement",           0xAB01},
      {"xmpRights:Marked",                 0xAB04},
      {"xmpRights:UsageTerms",             0xAB03},
      {"photoshop:SupplementalCategories", 0xAB02},
      {"dc:rights",                        0xAA04},
      {"aux:Lens",                         0xAB0B},
      {"exif:ExposureBiasValue",           0xAB14},
      {"exif:ShutterSpeedValue",           0xAB15},
      {"exif:ApertureValue",               0xAB16},
      {"exif:FocalLength",                 0xAB17},
      {"exif:ExposureMode",                0xAB18},
      {"tiff:Make",                        0xAB11},
      {"tiff:Model",                       0xAB12},
      {"MicrosoftPhoto:Rating",            0xAA01},
      {"GPano:ProjectionType",             0xAB19},
      {"GPano:PoseHeadingDegrees",         0xAB20},
      {"GPano:PosePitchDegrees",           0xAB21},
      {"GPano:PoseRollDegrees",            0xAB22},
  };
  // clang-format on
  for (const Row& row : rows) {
    XmpStore asElement("<" + row.name + ">17/10</" + row.name + ">");
    EXPECT_EQ(asElement.Property(row.tag), Text(row.tag, LMD_W("17/10"))) << row.name;
    EXPECT_EQ(asElement.PropertyTags(), Tags{row.tag}) << row.name;
    XmpStore asAttribute("<a:b " + row.name + "='17/10'/>");
    EXPECT_EQ(asAttribute.Property(row.tag), Text(row.tag, LMD_W("17/10"))) << row.name;
    EXPECT_EQ(asAttribute.PropertyTags(), Tags{row.tag}) << row.name;
  }
}

TEST(ParseXmp, StoresTheLastItemOfEveryArrayOfTheTable) {
  struct Row {
    std::string property;
    std::string container;
    std::uint32_t tag;
  };
  const std::vector<Row> rows = {
      {"Iptc4xmpCore:SubjectCode", "rdf:Bag", 0xAA13}, {"Iptc4xmpCore:Scene", "rdf:Bag", 0xAA15},
      {"xmpRights:UsageTerms", "rdf:Alt", 0xAB03},     {"dc:rights", "rdf:Alt", 0xAA04},
      {"exif:ISOSpeedRatings", "rdf:Seq", 0xAB13},
  };
  for (const Row& row : rows) {
    const auto packet = [&row](const std::string& property) {
      return "<" + property + "><" + row.container +
             "><rdf:li>100</rdf:li><rdf:li xml:lang='de'>200</rdf:li></" + row.container + "></" +
             property + ">";
    };
    XmpStore store(packet(row.property));
    EXPECT_EQ(store.Property(row.tag), Text(row.tag, LMD_W("200"))) << row.property;
    EXPECT_EQ(store.PropertyTags(), Tags{row.tag}) << row.property;
    // The namespace around the array does not count.
    XmpStore other(packet("other" + row.property.substr(row.property.find(':'))));
    EXPECT_EQ(other.PropertyTags(), Tags{row.tag}) << row.property;
  }
}

TEST(ParseXmp, OtherArraysAreDropped) {
  XmpStore store(
      "<photoshop:SupplementalCategories><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag>"
      "</photoshop:SupplementalCategories><dc:subject><rdf:Bag><rdf:li>b</rdf:li></rdf:Bag>"
      "</dc:subject><dc:rights><rdf:Bag><rdf:li>c</rdf:li></rdf:Bag></dc:rights>");
  EXPECT_EQ(store.PropertyTags(), Tags{});
}

TEST(ParseXmp, OnlyNamesOfItemsAreMappedByPath) {
  XmpStore store("<dc:rights><rdf:Alt><rdf:Li>a</rdf:Li><a:lix>b</a:lix></rdf:Alt></dc:rights>");
  EXPECT_EQ(store.PropertyTags(), Tags{});
  XmpStore other("<dc:rights><rdf:Alt><b:li>c</b:li></rdf:Alt></dc:rights>");
  EXPECT_EQ(other.Property(0xAA04), Text(0xAA04, LMD_W("c")));
}

TEST(ParseXmp, MappedPropertyInsideAnArrayKeepsItsOwnTag) {
  XmpStore store("<dc:rights><rdf:Alt><xmp:Label>a</xmp:Label></rdf:Alt></dc:rights>");
  EXPECT_EQ(store.PropertyTags(), Tags{0xAA03});
}

TEST(ParseXmp, LastRatingOfEitherSchemaWins) {
  XmpStore store("<xmp:Rating>3</xmp:Rating><MicrosoftPhoto:Rating>4</MicrosoftPhoto:Rating>");
  EXPECT_EQ(store.Property(0xAA01), Text(0xAA01, LMD_W("4")));
  XmpStore other("<MicrosoftPhoto:Rating>4</MicrosoftPhoto:Rating><xmp:Rating>3</xmp:Rating>");
  EXPECT_EQ(other.Property(0xAA01), Text(0xAA01, LMD_W("3")));
}

TEST(ParseXmp, PublishedMicrosoftNamespaceDoesNotMatch) {
  XmpStore store("<xmp:Rating>3</xmp:Rating><published:Rating>4</published:Rating>");
  EXPECT_EQ(store.Property(0xAA01), Text(0xAA01, LMD_W("3")));
}

TEST(ParseXmp, LastPropertyInPacketOrderWins) {
  XmpStore store(
      "<dc:rights>a</dc:rights><dc:rights><rdf:Alt><rdf:li>b</rdf:li></rdf:Alt></dc:rights>");
  EXPECT_EQ(store.Property(0xAA04), Text(0xAA04, LMD_W("b")));
  XmpStore other(
      "<dc:rights><rdf:Alt><rdf:li>b</rdf:li></rdf:Alt></dc:rights><dc:rights>a</dc:rights>");
  EXPECT_EQ(other.Property(0xAA04), Text(0xAA04, LMD_W("a")));
}

TEST(ParseXmp, DecodesUtf8AndEntities) {
  XmpStore store("<xmp:Label>Z\xC3\xBCrich &amp; \xF0\x9F\x98\x80 &amp;lt; &#65;</xmp:Label>");
  EXPECT_EQ(store.Property(0xAA03), Text(0xAA03, LMD_W("Z\u00FCrich & \U0001F600 &lt; &#65;")));
}

TEST(ParseXmp, EmptyValueIsAZeroUnit) {
  XmpStore store("<xmp:Label></xmp:Label>");
  EXPECT_EQ(store.Property(0xAA03), (Stored{0xAA03, 162, 0, "0000"}));
}

TEST(ParseXmp, TextsStayUntrimmed) {
  XmpStore store("<xmp:Label> a\n</xmp:Label>");
  EXPECT_EQ(store.Property(0xAA03), Text(0xAA03, LMD_W(" a\n")));
}

TEST(ParseXmp, LeavesTheCountAlone) {
  XmpStore store("");
  TagEntry& entry = store->m_fnGetBlock(BLOCK_XMP)->FindOrInsert(0xAA03);
  constexpr std::array<std::uint8_t, 2> kOld = {1, 2};
  SetTagValue(entry, 1, TYPE_BYTE, kOld, store->Memory());
  entry.m_nCount = 7;
  store.Parse("<xmp:Label>a</xmp:Label>");
  EXPECT_EQ(store.Property(0xAA03), (Stored{0xAA03, 162, 7, "61000000"}));
}

TEST(ParseXmp, LaterPacketReplacesItsOwnTagsOnly) {
  XmpStore store("<xmp:Label>a</xmp:Label><xmp:Rating>1</xmp:Rating>");
  store.Parse("<xmp:Label>b</xmp:Label>");
  EXPECT_EQ(store.Property(0xAA03), Text(0xAA03, LMD_W("b")));
  EXPECT_EQ(store.Property(0xAA01), Text(0xAA01, LMD_W("1")));
}

TEST(ParseXmp, BindingsOfAnEarlierPacketAreForgotten) {
  XmpStore store("");
  EXPECT_EQ(ParseText(*store, "<rdf:RDF><xmp:Label>a</xmp:Label></rdf:RDF>"), S_OK);
  EXPECT_EQ(store.PropertyTags(), Tags{});
}

TEST(XmpRegion, NameRectangleAndTypeGiveThreeLines) {
  XmpStore store(Person("Ann &amp; Bo") + Rectangle("0.1, 0.2, 0.3, 0.4") + PersonType("F&lt;"));
  EXPECT_EQ(store.Region(0), RegionText(LMD_W("0.1, 0.2, 0.3, 0.4\nAnn & Bo\nF<")));
  EXPECT_EQ(store.RegionKeys(), Tags{0});
  EXPECT_EQ(store.Property(0xAB0A), kMarker);
  EXPECT_EQ(store.PropertyTags(), Tags{0xAB0A});
}

TEST(XmpRegion, RectangleAndTypeGiveAnEmptySecondLine) {
  XmpStore store(Rectangle("r") + PersonType("t"));
  EXPECT_EQ(store.Region(0), RegionText(LMD_W("r\n\nt")));
  EXPECT_EQ(store.Property(0xAB0A), kMarker);
}

TEST(XmpRegion, WithoutTypeItsSlotStaysEmpty) {
  XmpStore store(Person("n") + Rectangle("r"));
  EXPECT_EQ(store.Region(0), kEmptySlot);
  EXPECT_EQ(store.RegionKeys(), Tags{0});
  EXPECT_EQ(store.Property(0xAB0A), kMarker);
  XmpStore other(Rectangle("r"));
  EXPECT_EQ(other.Region(0), kEmptySlot);
  EXPECT_EQ(other.Property(0xAB0A), kMarker);
}

TEST(XmpRegion, NameAloneGivesTheMarkerOnly) {
  XmpStore store(Person("n") + PersonType("t"));
  EXPECT_EQ(store.RegionKeys(), Tags{});
  EXPECT_EQ(store.Property(0xAB0A), kMarker);
}

TEST(XmpRegion, TypeAloneGivesNothing) {
  XmpStore store(PersonType("t"));
  EXPECT_EQ(store.RegionKeys(), Tags{});
  EXPECT_EQ(store.PropertyTags(), Tags{});
}

TEST(XmpRegion, AnotherOrderGivesNoText) {
  XmpStore store(Rectangle("r") + Person("n") + PersonType("t"));
  EXPECT_EQ(store.Region(0), kEmptySlot);
  EXPECT_EQ(store.RegionKeys(), Tags{0});
}

TEST(XmpRegion, PropertyInBetweenSeparates) {
  XmpStore store(Person("n") + "<a:b/>" + Rectangle("r") + "<a:b>c</a:b>" + PersonType("t"));
  EXPECT_EQ(store.Region(0), kEmptySlot);
  EXPECT_EQ(store.RegionKeys(), Tags{0});
}

// Whatever the one in between is named: "Rectangles" and "Passepartouts" are kept nowhere.
TEST(XmpRegion, PropertyThatIsNotKeptSeparatesToo) {
  for (const std::string other : {"Rectangles", "Passepartouts", "a", "Area"}) {
    const std::string between = "<xmp:" + other + ">c</xmp:" + other + ">";
    XmpStore name(Person("n") + between + Rectangle("r") + PersonType("t"));
    EXPECT_EQ(name.Region(0), RegionText(LMD_W("r\n\nt"))) << other;
    XmpStore type(Person("n") + Rectangle("r") + between + PersonType("t"));
    EXPECT_EQ(type.Region(0), kEmptySlot) << other;
    XmpStore whole(between + Person("n") + Rectangle("r") + PersonType("t") + between);
    EXPECT_EQ(whole.Region(0), RegionText(LMD_W("r\nn\nt"))) << other;
  }
}

TEST(XmpRegion, ElementsWithoutPropertiesDoNotSeparate) {
  XmpStore store(Person("n") + "<a:b/> text " + Rectangle("r") + PersonType("t"));
  EXPECT_EQ(store.Region(0), RegionText(LMD_W("r\nn\nt")));
}

TEST(XmpRegion, AttributesAreRecordsToo) {
  XmpStore store("<a:b MPReg:PersonDisplayName='n' x:Rectangle='r' PersonTagType='t'/>");
  EXPECT_EQ(store.Region(0), RegionText(LMD_W("r\nn\nt")));
}

TEST(XmpRegion, NextRegionTakesTheNextKey) {
  XmpStore store(Rectangle("1") + PersonType("a") + Person("n") + Rectangle("2") + Person("m") +
                 Rectangle("3") + PersonType("c"));
  EXPECT_EQ(store.Region(0), RegionText(LMD_W("1\n\na")));
  EXPECT_EQ(store.Region(1), kEmptySlot);
  EXPECT_EQ(store.Region(2), RegionText(LMD_W("3\nm\nc")));
  EXPECT_EQ(store.RegionKeys(), (Tags{0, 1, 2}));
}

TEST(XmpRegion, TakenPropertiesAreNotLookedAtAgain) {
  XmpStore store(Person("n") + Rectangle("r") + PersonType("t") + PersonType("u"));
  EXPECT_EQ(store.RegionKeys(), Tags{0});
  XmpStore twice(Person("n") + Person("m") + Rectangle("r") + PersonType("t"));
  EXPECT_EQ(twice.Region(0), RegionText(LMD_W("r\nm\nt")));
  EXPECT_EQ(twice.RegionKeys(), Tags{0});
}

TEST(XmpRegion, KeysGoOnInTheNextPacket) {
  XmpStore store(Rectangle("1") + PersonType("a"));
  store.Parse(Rectangle("2") + PersonType("b"));
  EXPECT_EQ(store.Region(0), RegionText(LMD_W("1\n\na")));
  EXPECT_EQ(store.Region(1), RegionText(LMD_W("2\n\nb")));
}

TEST(XmpRegion, NamesAreComparedExactly) {
  XmpStore store("<a:rectangle>r</a:rectangle><a:Rectangle2>r</a:Rectangle2>");
  EXPECT_EQ(store.PropertyTags(), Tags{});
}

TEST(XmpRegion, MarkerReplacesAnEntryButNotItsCount) {
  XmpStore store("");
  TagEntry& entry = store->m_fnGetBlock(BLOCK_XMP)->FindOrInsert(0xAB0A);
  entry.m_nCount = 3;
  store.Parse(Rectangle("r"));
  EXPECT_EQ(store.Property(0xAB0A), (Stored{0xAB0A, 9, 3, "01000000"}));
}

TEST(ParseXmpBudget, UsedUpBudgetLeavesEntriesWithoutData) {
  XmpStore store("");
  ASSERT_TRUE(store->Budget().TakeBytes(kMaxStoredBytes - 8));
  store.Parse("<xmp:Rating>123</xmp:Rating><xmp:Label>1</xmp:Label>" + Rectangle("r") +
              PersonType("t"));
  const TagEntry* rating = store->m_fnGetBlock(BLOCK_XMP)->Find(0xAA01);
  ASSERT_NE(rating, nullptr);
  EXPECT_EQ(rating->m_nSize, 8u);
  EXPECT_EQ(rating->m_pData, nullptr);
}

TEST(ParseXmpBudget, ReplacedValuesCostNothing) {
  const std::string item = "<rdf:li>" + std::string(1000, 'a') + "</rdf:li>";
  XmpStore store("<dc:rights><rdf:Alt>" + Repeat(item, 20000) + "<rdf:li>b</rdf:li></rdf:Alt>" +
                 "</dc:rights>");
  EXPECT_EQ(store.Property(0xAA04), Text(0xAA04, LMD_W("b")));
}

TEST(ParseXmpBudget, LongValueIsStoredWhole) {
  XmpStore store("<xmp:Label>" + std::string(4000000, 'a') + "</xmp:Label>");
  const TagEntry* label = store->m_fnGetBlock(BLOCK_XMP)->Find(0xAA03);
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(TagBytes(*label).size(), 8000002u);
}

TEST(ParseXmpBudget, ManyRegionsTakeOneKeyEach) {
  XmpStore store(Repeat("<a:b x:Rectangle='' x:Rectangle='r' x:PersonTagType='t'/>", 50000));
  EXPECT_EQ(store->m_fnGetBlock(BLOCK_XMP_REGIONS)->Count(), 100000u);
  EXPECT_EQ(store.Region(99998), kEmptySlot);
  EXPECT_EQ(store.Region(99999), RegionText(LMD_W("r\n\nt")));
}

}  // namespace
