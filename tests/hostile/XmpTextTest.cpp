// XMP packets of odd texts, of very many small parts, and cut off anywhere.

#include <algorithm>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "Bounds.h"
#include "DrivenFile.h"
#include "base/TypeSizes.h"
#include "support/Jpeg.h"
#include "support/Tiff.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

constexpr WCHAR kReplacement = 0xFFFD;

std::string Rated(std::string_view value) {
  return std::string(kXmpRoot) + "<xmp:Rating>" + std::string(value) + "</xmp:Rating>";
}

// A packet with this rating; nothing else is in it.
void ExpectRating(const std::string& packet, const WideString& text) {
  const auto file = BoundedDrive(JpegOfLongPacket(packet));
  EXPECT_EQ(Keys(file->store, BLOCK_XMP), Tags{kRatingTag});
  EXPECT_EQ(Find(file->store, BLOCK_XMP, kRatingTag), XmpText(kRatingTag, text));
}

TEST(HostileXmpText, EmptyValues) {
  const auto file =
      BoundedDrive(JpegOfPacket(std::string(kXmpRoot) +
                                "<a xmp:Rating='' exif:ApertureValue='' exif:ShutterSpeedValue=''"
                                " exif:FocalLength='' exif:ExposureBiasValue='' aux:Lens=''/>"
                                "<xmp:Label></xmp:Label><dc:rights><rdf:Alt><rdf:li></rdf:li>"
                                "</rdf:Alt></dc:rights><exif:ISOSpeedRatings><rdf:Seq><rdf:li>"
                                "</rdf:li></rdf:Seq></exif:ISOSpeedRatings>"
                                "<a PersonDisplayName='' Rectangle='' PersonTagType=''/>"));
  VxMetadata& store = file->store;
  EXPECT_EQ(Keys(store, BLOCK_XMP), (Tags{kRatingTag, kLabelTag, kRightsTag, kMarkerTag, 0xAB0B,
                                          0xAB13, 0xAB14, 0xAB15, 0xAB16, 0xAB17}));
  for (const std::uint32_t tag : Keys(store, BLOCK_XMP)) {
    if (tag == kMarkerTag) continue;
    EXPECT_EQ(Find(store, BLOCK_XMP, tag), XmpText(tag, LMD_W("")));
  }
  EXPECT_EQ(Keys(store, BLOCK_XMP_REGIONS), Tags{0});
  EXPECT_EQ(Find(store, BLOCK_XMP_REGIONS, 0), XmpText(0xAB09, LMD_W("\n\n")));

  // Of the merge's sources an empty text is a lens name, and nothing else.
  EXPECT_TRUE(Keys(store, BLOCK_EXIF).empty());
  EXPECT_EQ(Keys(store, BLOCK_MAKERNOTE_SUMMARY), Tags{2});
  EXPECT_EQ(Find(store, BLOCK_MAKERNOTE_SUMMARY, 2), (Stored{2, TYPE_ASCII, 0, "00"}));
}

TEST(HostileXmpText, LoneAmpersandsStay) {
  for (const char* text : {"&", "&&", "a&", "&a", "&l", "&lt", "&am", "&amp", "&quo", "&quot",
                           "&apo", "&;", "&#38;", "&#x26;", "&nbsp;", "&amp &lt"}) {
    SCOPED_TRACE(text);
    ExpectRating(Rated(text), WideString(text, text + std::char_traits<char>::length(text)));
  }
  ExpectRating(Rated("&amp;amp;"), LMD_W("&amp;"));
  ExpectRating(Rated("&&lt;"), LMD_W("&<"));
}

TEST(HostileXmpText, FloodOfEntities) {
  ExpectRating(Rated(Repeat("&amp;", 12'000)), WideString(12'000, '&'));
  ExpectRating(Rated(Repeat("&quot;", 10'000)), WideString(10'000, '"'));
  ExpectRating(Rated(Repeat("&", 60'000)), WideString(60'000, '&'));
  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(Rated(Repeat("&amp;", parts) + std::string(5 * parts, '&')));
  };
  ExpectLinearDrive(100'000, make, [](VxMetadata& store, std::size_t parts) {
    const TagEntry* entry = store.m_fnGetBlock(BLOCK_XMP)->Find(kRatingTag);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->m_nSize, (6 * parts + 1) * sizeof(WCHAR));
    EXPECT_EQ(HostValue<WCHAR>(TagBytes(*entry), 6 * parts - 1), '&');
  });
}

// A text beyond what one parse may store has its size and no data; the others stay.
TEST(HostileXmpText, TextBeyondTheBudget) {
  const Bytes jpeg =
      JpegOfLongPacket(Rated(std::string(9'000'000, 'x')) + "<xmp:Label>red</xmp:Label>");
  const auto file = BoundedDrive(jpeg);
  const TagEntry* entry = file->store.m_fnGetBlock(BLOCK_XMP)->Find(kRatingTag);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->m_nSize, 18'000'002U);
  EXPECT_EQ(entry->m_pData, nullptr);
  EXPECT_EQ(Find(file->store, BLOCK_XMP, kLabelTag), XmpText(kLabelTag, LMD_W("red")));
}

// A sequence that its text cuts gives replacement characters; how many is the system's choice.
TEST(HostileXmpText, CutUtf8) {
  for (const char* cut : {"\xC3", "\xE2", "\xE2\x82", "\xF0\x9F", "\xF0\x9F\x98", "\x80", "\xFF"}) {
    const std::string text(cut);
    for (const auto& [packet, key] :
         {std::pair{Rated("a" + text), kRatingTag},
          {std::string(kXmpRoot) + "<a xmp:Rating='a" + text + "'/>", kRatingTag}}) {
      const auto file = BoundedDrive(JpegOfPacket(packet));
      const TagEntry* entry = file->store.m_fnGetBlock(BLOCK_XMP)->Find(key);
      ASSERT_NE(entry, nullptr);
      const std::size_t units = entry->m_nSize / sizeof(WCHAR);
      ASSERT_GE(units, 3U);
      ASSERT_LE(units, 2 + text.size());
      EXPECT_EQ(HostValue<WCHAR>(TagBytes(*entry)), 'a');
      for (std::size_t i = 1; i + 1 < units; ++i) {
        EXPECT_EQ(HostValue<WCHAR>(TagBytes(*entry), i), kReplacement);
      }
      EXPECT_EQ(HostValue<WCHAR>(TagBytes(*entry), units - 1), 0);
    }
  }
}

TEST(HostileXmpText, FloodOfIllFormedBytes) {
  ExpectRating(Rated(std::string(60'000, '\xFF')), WideString(60'000, kReplacement));
  ExpectRating(Rated(std::string(60'000, '\x80')), WideString(60'000, kReplacement));
}

TEST(HostileXmpText, ZeroBytesEndATextAndNothingElse) {
  const std::string zeros(5'000, '\0');
  ExpectRating(std::string(kXmpRoot) + zeros + "<a>" + zeros + "</a><xmp:Rating>5" + zeros +
                   "6</xmp:Rating>" + zeros,
               LMD_W("5"));
  // Inside a name: what stands behind the zero does not count.
  ExpectRating(std::string(kXmpRoot) + "<xmp:Rating" + zeros + ">5</xmp:Rating>", LMD_W("5"));
}

TEST(HostileXmpText, FloodOfAttributes) {
  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(std::string(kXmpRoot) + "<a " + Repeat("b=''", parts) +
                            "xmp:Rating='5'/>");
  };
  const auto check = [](VxMetadata& store, std::size_t) {
    EXPECT_EQ(Find(store, BLOCK_XMP, kRatingTag), XmpText(kRatingTag, LMD_W("5")));
    EXPECT_EQ(Keys(store, BLOCK_XMP), Tags{kRatingTag});
  };
  check(BoundedDrive(make(16'000))->store, 0);
  ExpectLinearDrive(125'000, make, check);
}

// The one that is kept, over and over: only the last is converted.
TEST(HostileXmpText, FloodOfTheSameProperty) {
  const std::string flood = Repeat("xmp:Rating='" + std::string(100, '1') + "'", 500);
  ExpectRating(std::string(kXmpRoot) + "<a " + flood + "xmp:Rating='5'/>", LMD_W("5"));
}

// An attribute without its second quote ends the attributes of its tag.
TEST(HostileXmpText, FloodOfAttributesWithoutAnEnd) {
  ExpectRating(Rated("5") + "<a " + Repeat("xmp:Rating=", 5'000) + "'1><b/>", LMD_W("5"));
  ExpectRating(Rated("5") + Repeat("<a xmp:Rating='1>", 3'500), LMD_W("5"));
  ExpectRating(Rated("5") + "<a " + std::string(60'000, ':') + ">", LMD_W("5"));
  ExpectRating(Rated("5") + "<a " + std::string(60'000, '=') + ">", LMD_W("5"));
}

TEST(HostileXmpText, FloodOfBindings) {
  const auto make = [](std::size_t parts) {
    std::string packet(kXmpRoot);
    packet += "<a ";
    for (std::size_t i = 0; i < parts; ++i) {
      packet += "xmlns:" + std::to_string(i) + "='http://ns.adobe.com/xap/1.0/'";
    }
    return JpegOfLongPacket(packet + " 0:Rating='1'" + std::to_string(parts - 1) + ":Rating='5'/>");
  };
  const auto check = [](VxMetadata& store, std::size_t) {
    EXPECT_EQ(Find(store, BLOCK_XMP, kRatingTag), XmpText(kRatingTag, LMD_W("5")));
  };
  check(BoundedDrive(make(1'500))->store, 0);
  ExpectLinearDrive(12'500, make, check);
}

// Of each pair a slot; the type behind it makes it a region.
TEST(HostileXmpText, FloodOfRegions) {
  const std::string packet = std::string(kXmpRoot) + "<a " +
                             Repeat("Rectangle='0'PersonTagType='F'", 2'000) +
                             Repeat("Rectangle=''", 300) + "/>";
  const auto file = BoundedDrive(JpegOfPacket(packet));
  VxMetadata& store = file->store;
  EXPECT_EQ(Keys(store, BLOCK_XMP), Tags{kMarkerTag});
  ASSERT_EQ(Keys(store, BLOCK_XMP_REGIONS).size(), 2'300U);
  EXPECT_EQ(Find(store, BLOCK_XMP_REGIONS, 0), XmpText(0xAB09, LMD_W("0\n\nF")));
  EXPECT_EQ(Find(store, BLOCK_XMP_REGIONS, 1'999), XmpText(0xAB09, LMD_W("0\n\nF")));
  EXPECT_EQ(Find(store, BLOCK_XMP_REGIONS, 2'000), (Stored{0, 0, 0, ""}));
  EXPECT_EQ(Find(store, BLOCK_XMP_REGIONS, 2'299), (Stored{0, 0, 0, ""}));

  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(std::string(kXmpRoot) + "<a " + Repeat("Rectangle=''", parts) + "/>");
  };
  ExpectLinearDrive(25'000, make, [](VxMetadata& regions, std::size_t parts) {
    EXPECT_EQ(regions.m_fnGetBlock(BLOCK_XMP_REGIONS)->Count(), parts);
  });
}

TEST(HostileXmpText, PacketWithoutAClosingBracket) {
  const std::string open = std::string(kXmpRoot).substr(0, kXmpRoot.size() - 1);
  for (const std::string& packet :
       {std::string(), std::string("<"), std::string("x"), std::string("<rdf:RDF"), open,
        open + std::string(60'000, ' '), open + std::string(60'000, '<'),
        open + Repeat(" xmp:Rating='5'", 4'000), std::string(64'000, '<')}) {
    SCOPED_TRACE(packet.substr(0, 200));
    const auto file = BoundedDrive(JpegOfPacket(packet));
    EXPECT_TRUE(Keys(file->store, BLOCK_XMP).empty());
    EXPECT_EQ(file->store.m_nImageWidth, 640U);
  }
}

// The rating is there from the bracket on that ends its end tag.
TEST(HostileXmpText, PacketThatEndsAnywhere) {
  const std::string whole = Rated("5") + "<xmp:Label>red</xmp:Label>";
  const std::size_t rating = Rated("5").size();
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    const auto file = BoundedDrive(JpegOfPacket(whole.substr(0, size)));
    Tags expected;
    if (size >= rating) expected.push_back(kRatingTag);
    if (size == whole.size()) expected.push_back(kLabelTag);
    // The two bytes behind the segment belong to the packet: a marker, which holds no bracket.
    EXPECT_EQ(Keys(file->store, BLOCK_XMP), expected) << size;
  }
}

// --- Sizes that are not those of the file ---

TEST(HostileXmpText, SegmentThatTheFileEnds) {
  const Bytes payload = Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1), Text(Rated("5"))});
  const auto file = BoundedDrive(Jpeg().SegmentOfLength(0xE1, 0xFFFF, payload).Build());
  EXPECT_EQ(Find(file->store, BLOCK_XMP, kRatingTag), XmpText(kRatingTag, LMD_W("5")));
}

// Less than the namespace, and lengths that would be negative without it.
TEST(HostileXmpText, SegmentTooShortForAPacket) {
  const Bytes payload = Join({Text("http://ns.adobe.com/xap/1.0/"), Zeros(1), Text(Rated("5"))});
  for (std::uint16_t length = 0; length < 100; ++length) {
    const auto file = BoundedDrive(Jpeg().SegmentOfLength(0xE1, length, payload).Build());
    EXPECT_TRUE(Keys(file->store, BLOCK_XMP).empty()) << length;
  }
}

TEST(HostileXmpText, TagOfMoreBytesThanTheFileHas) {
  const Tiff tiff(ByteOrder::LittleEndian);
  constexpr std::uint32_t kPacketOffset = 8 + 2 + 12 + 4;
  for (const auto& [type, count] : {std::pair{std::uint16_t{1}, 0xFFFFFFFFU},
                                    {std::uint16_t{7}, 0x80000000U},
                                    {std::uint16_t{4}, 0x40000010U},
                                    {std::uint16_t{5}, 0x20000010U},
                                    {std::uint16_t{5}, 0xFFFFFFFFU},
                                    {std::uint16_t{12}, 0x20000001U}}) {
    const Bytes block =
        Join({tiff.Build({tiff.AtOffset(0x02BC, type, count, kPacketOffset)}), Text(Rated("5"))});
    const auto file = BoundedDrive(Jpeg().Exif(block).Frame(640, 480).Scan().Build());
    EXPECT_EQ(Find(file->store, BLOCK_XMP, kRatingTag), XmpText(kRatingTag, LMD_W("5"))) << count;
    EXPECT_EQ(file->store.m_nImageWidth, 640U);
  }
}

TEST(HostileXmpText, TagOfHardlyAnyBytes) {
  const Tiff tiff(ByteOrder::LittleEndian);
  for (std::uint32_t count = 0; count < 10; ++count) {
    const Bytes block =
        tiff.Build({tiff.Byte(0x02BC, Text(std::string(kXmpRoot).substr(0, count)))});
    const auto file = BoundedDrive(Jpeg().Exif(block).Build());
    EXPECT_TRUE(Keys(file->store, BLOCK_XMP).empty()) << count;
  }
}

}  // namespace
}  // namespace test
