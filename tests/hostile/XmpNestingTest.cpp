// XMP packets that are deep, or that make every property carry something long.

#include <string>

#include <gtest/gtest.h>

#include "DrivenFile.h"
#include "support/Jpeg.h"
#include "support/Tiff.h"

namespace test {
namespace {

using Tags = std::vector<std::uint32_t>;

const std::string kRating = "<xmp:Rating>5</xmp:Rating>";

void ExpectRating(VxMetadata& store, WideStringView text = LMD_W("5")) {
  EXPECT_EQ(Keys(store, BLOCK_XMP), Tags{kRatingTag});
  EXPECT_EQ(Find(store, BLOCK_XMP, kRatingTag), XmpText(kRatingTag, text));
}

TEST(HostileXmpNesting, TwentyThousandLevelsInOneSegment) {
  const std::string packet = std::string(kXmpRoot) + Repeat("<a>", 20'000) + kRating;
  const auto file = BoundedDrive(JpegOfPacket(packet));
  ExpectRating(file->store);
  EXPECT_EQ(file->store.m_nImageWidth, 640U);
}

TEST(HostileXmpNesting, AttributesAtEveryLevelOfOneSegment) {
  const std::string packet = std::string(kXmpRoot) + Repeat("<a b='c' d=''>", 2'000) +
                             Repeat("<a xmp:Rating='4'>", 2'000) + "<a xmp:Rating='5'/>";
  ExpectRating(BoundedDrive(JpegOfPacket(packet))->store);
}

// All closed again, so that the value stands at the end of the way back.
TEST(HostileXmpNesting, WayBackFromFiveThousandLevels) {
  const std::string packet = std::string(kXmpRoot) + "<a>" + Repeat("<a b=''>", 5'000) +
                             Repeat("</a>", 5'000) + kRating + "</a></rdf:RDF></x:xmpmeta>";
  ExpectRating(BoundedDrive(JpegOfPacket(packet))->store);
}

TEST(HostileXmpNesting, MillionLevelsWithAttributesInIfd0) {
  const auto make = [](std::size_t levels) {
    return JpegOfLongPacket(std::string(kXmpRoot) + Repeat("<a xmp:Rating='4'>", levels) +
                            Repeat("</a>", levels) + kRating);
  };
  ExpectLinearDrive(125'000, make, [](VxMetadata& store, std::size_t) { ExpectRating(store); });
}

// The path of each leaf holds the array's name and a long tail; it is not searched for each.
TEST(HostileXmpNesting, ArrayItemsAtGreatDepth) {
  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(std::string(kXmpRoot) + "<dc:rights><rdf:Alt>" + Repeat("<a>", parts) +
                            Repeat("<rdf:li>x</rdf:li>", parts) + "<rdf:li>last</rdf:li>");
  };
  const auto check = [](VxMetadata& store, std::size_t) {
    EXPECT_EQ(Keys(store, BLOCK_XMP), Tags{kRightsTag});
    EXPECT_EQ(Find(store, BLOCK_XMP, kRightsTag), XmpText(kRightsTag, LMD_W("last")));
  };
  check(BoundedDrive(make(3'000))->store, 0);
  ExpectLinearDrive(50'000, make, check);
}

// No array: every leaf is looked up by its path and found nowhere.
TEST(HostileXmpNesting, ItemsOfNoArrayAtGreatDepth) {
  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(std::string(kXmpRoot) + Repeat("<Alt>", parts) +
                            Repeat("<rdf:li>x</rdf:li>", parts) + kRating);
  };
  const auto check = [](VxMetadata& store, std::size_t) { ExpectRating(store); };
  check(BoundedDrive(make(2'500))->store, 0);
  ExpectLinearDrive(50'000, make, check);
}

// A namespace as long as the rest of the packet, bound to the prefix of every property.
TEST(HostileXmpNesting, LongNamespaceOfEveryProperty) {
  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(std::string(kXmpRoot) + "<a xmlns:n='" + std::string(10 * parts, 'n') +
                            "'>" + Repeat("<n:a n:b='c'>d</n:a>", parts / 2) + kRating);
  };
  const auto check = [](VxMetadata& store, std::size_t) { ExpectRating(store); };
  check(BoundedDrive(make(3'000))->store, 0);
  ExpectLinearDrive(100'000, make, check);
}

// A namespace that begins like a known one and goes on, for properties that the known one has.
TEST(HostileXmpNesting, LongNamespaceThatBeginsLikeAKnownOne) {
  const std::string nameSpace = "http://ns.adobe.com/xap/1.0/" + std::string(20'000, '/');
  const std::string packet = std::string(kXmpRoot) + "<a xmlns:n='" + nameSpace + "'>" +
                             Repeat("<a n:Rating='1'/>", 2'500) + kRating;
  ExpectRating(BoundedDrive(JpegOfPacket(packet))->store);
}

// Every name is as long as what is left of the packet, were it copied for each tag.
TEST(HostileXmpNesting, LongPrefixesOfManyBindings) {
  const auto make = [](std::size_t parts) {
    std::string packet(kXmpRoot);
    for (std::size_t i = 0; i < parts; ++i) {
      const std::string prefix = std::string(50, 'p') + std::to_string(i);
      packet += "<a xmlns:" + prefix + "='n' " + prefix + ":b='c'/>";
    }
    return JpegOfLongPacket(packet + kRating);
  };
  const auto check = [](VxMetadata& store, std::size_t) { ExpectRating(store); };
  check(BoundedDrive(make(450))->store, 0);
  ExpectLinearDrive(10'000, make, check);
}

// A reader that looks for the end of each open element reads the tail once for each.
TEST(HostileXmpNesting, OpenElementsBeforeALongTailWithoutEnd) {
  const std::string open = std::string(kXmpRoot) + kRating + Repeat("<a>", 10'000);
  for (const std::string& tail : {std::string("x"), std::string("<"), std::string("</"),
                                  std::string("a='"), std::string("<a b:c=''")}) {
    SCOPED_TRACE(tail);
    ExpectRating(BoundedDrive(JpegOfPacket(open + Repeat(tail, 33'000 / tail.size())))->store);
  }
}

TEST(HostileXmpNesting, OpenElementsBeforeALongTailInIfd0) {
  const auto make = [](std::size_t parts) {
    return JpegOfLongPacket(std::string(kXmpRoot) + kRating + Repeat("<a>", parts) +
                            std::string(10 * parts, '<'));
  };
  ExpectLinearDrive(50'000, make, [](VxMetadata& store, std::size_t) { ExpectRating(store); });
}

// Every pointer leads to the one packet. After four passes over the file's bytes it is not read
// again.
TEST(HostileXmpNesting, ManyPointersToOnePacket) {
  const Tiff tiff(ByteOrder::BigEndian);
  const std::string packet = std::string(kXmpRoot) + Repeat("<a b=''>", 7'000) + kRating;
  constexpr std::uint32_t kPacketOffset = 8 + 2 + 12 * 500 + 4;
  const Directory pointers(
      500, tiff.AtOffset(0x02BC, 1, static_cast<std::uint32_t>(packet.size()), kPacketOffset));
  const Bytes block = Join({tiff.Build(pointers), Text(packet)});
  ASSERT_LT(block.size(), 65'500U);
  const auto file = BoundedDrive(Jpeg().Exif(block).Frame(640, 480).Scan().Build());
  ExpectRating(file->store);
  EXPECT_EQ(file->store.m_nImageWidth, 640U);
}

TEST(HostileXmpNesting, ThousandPackets) {
  Jpeg jpeg;
  for (int i = 0; i < 1'000; ++i) jpeg.Xmp("<rdf:RDF a:b=''/>");
  jpeg.Xmp(std::string(kXmpRoot) + kRating);
  const auto file = BoundedDrive(jpeg.Frame(640, 480).Scan().Build());
  ExpectRating(file->store);
  EXPECT_EQ(file->store.m_nImageWidth, 640U);
}

}  // namespace
}  // namespace test
