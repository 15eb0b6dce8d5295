// Packets that cost a reader more than linear time or memory when it copies what is around a
// property or looks twice at what is ahead of it. A reader that does would need hours for these.

#include <string>

#include <gtest/gtest.h>

#include "xmp/XmpPropertyTable.h"
#include "xmp/XmpTestSupport.h"

namespace {

using test::PacketParser;
using test::Repeat;

TEST(XmpBoundedWork, MillionNestedElementsWithAttributes) {
  constexpr std::size_t kDepth = 1000000;
  const std::string packet = "<rdf:RDF xmlns:c='n'>" + Repeat("<a:b c:d='e'>", kDepth) +
                             "<f:g>h</f:g>" + Repeat("</a:b>", kDepth) + "</rdf:RDF></x:xmpmeta>";
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 1);
  ASSERT_EQ(parser.PropertyCount(), kDepth + 1);
  EXPECT_EQ(parser.Property(0), (XmpProperty{"xmpmeta/RDF/", "d", "n", "e"}));
  EXPECT_EQ(parser.Property(kDepth - 1),
            (XmpProperty{"xmpmeta/RDF/" + Repeat("b/", kDepth - 1), "d", "n", "e"}));
  EXPECT_EQ(parser.Property(kDepth),
            (XmpProperty{"xmpmeta/RDF/" + Repeat("b/", kDepth), "g", "f", "h"}));
}

TEST(XmpBoundedWork, MillionOpenElementsBeforeALongTail) {
  constexpr std::size_t kDepth = 1000000;
  for (const char tail : {'x', '<'}) {
    const std::string packet = "<rdf:RDF>" + Repeat("<a>", kDepth) + std::string(8000000, tail);
    PacketParser parser(packet);
    EXPECT_EQ(parser.ParsePacket(0), 0);
    EXPECT_EQ(parser.PropertyCount(), 0u);
    EXPECT_EQ(parser.Paths().Count(), kDepth + 2);  // "xmpmeta", "RDF" and each "a"
  }
}

TEST(XmpBoundedWork, MillionWrongEndTags) {
  constexpr std::size_t kDepth = 1000000;
  const std::string packet =
      "<rdf:RDF>" + Repeat("<a:b>", kDepth) + Repeat("</a:c>", kDepth + 1) + "</x:xmpmeta>";
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 1);
  ASSERT_EQ(parser.PropertyCount(), 1u);
  EXPECT_EQ(parser.PropertyName(0), "b");
}

TEST(XmpBoundedWork, LongNamespaceOfEveryProperty) {
  constexpr std::size_t kCount = 500000;
  const std::string nameSpace(1000000, 'n');
  const std::string packet = "<rdf:RDF xmlns:a='" + nameSpace + "'>" +
                             Repeat("<a:b c:d='e'>f</a:b>", kCount) + "</rdf:RDF></x:xmpmeta>";
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 1);
  ASSERT_EQ(parser.PropertyCount(), 2 * kCount);
  EXPECT_EQ(parser.PropertyNamespace(2 * kCount - 1), nameSpace);
  std::uint32_t tag = 0;
  for (std::size_t i = 0; i < parser.PropertyCount(); ++i) {
    ASSERT_EQ(MapXmpProperty(parser.PropertyNamespace(i), parser.PropertyName(i), &tag), E_FAIL);
  }
}

TEST(XmpBoundedWork, LongPathOfEveryItem) {
  constexpr std::size_t kDepth = 500000;
  constexpr std::size_t kCount = 500000;
  const std::string packet = "<rdf:RDF><a:rights><rdf:Alt>" + Repeat("<a:b>", kDepth) +
                             Repeat("<rdf:li>c</rdf:li>", kCount);
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 0);
  ASSERT_EQ(parser.PropertyCount(), kCount);
  XmpItemMapping mapping(parser.Paths());
  for (std::size_t i = 0; i < kCount; ++i) {
    std::uint32_t tag = 0;
    ASSERT_EQ(mapping.Map(parser.PropertyPath(i), &tag), S_OK);
    ASSERT_EQ(tag, 0xAA04u);
  }
}

TEST(XmpBoundedWork, LongNameAroundManyElements) {
  constexpr std::size_t kCount = 200000;
  const std::string packet = "<rdf:RDF><" + std::string(4000000, 'n') + ">" +
                             Repeat("<x/y><rdf:li>c</rdf:li></z>", kCount);
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 0);
  ASSERT_EQ(parser.PropertyCount(), kCount);
  XmpItemMapping mapping(parser.Paths());
  std::uint32_t tag = 0;
  for (std::size_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(mapping.Map(parser.PropertyPath(i), &tag), E_FAIL);
  }
}

TEST(XmpBoundedWork, MillionAttributesOfOneTag) {
  constexpr std::size_t kCount = 1000000;
  const std::string packet = "<rdf:RDF" + Repeat(" a:b='c'", kCount) + " d=\"e/></x:xmpmeta>";
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 1);
  EXPECT_EQ(parser.PropertyCount(), kCount);
}

TEST(XmpBoundedWork, MillionBindings) {
  constexpr std::size_t kCount = 1000000;
  std::string packet = "<rdf:RDF";
  for (std::size_t i = 0; i < kCount; ++i) packet += " xmlns:p" + std::to_string(i) + "='n'";
  packet += " p999999:a='b'/></x:xmpmeta>";
  PacketParser parser(packet);
  EXPECT_EQ(parser.ParsePacket(0), 1);
  ASSERT_EQ(parser.PropertyCount(), 1u);
  EXPECT_EQ(parser.Property(0), (XmpProperty{"xmpmeta/", "a", "n", "b"}));
}

TEST(XmpBoundedWork, MillionTagsWithoutRoot) {
  const std::string packet = Repeat("<a:b c:d='e'>", 1000000) + std::string(8000000, '<');
  PacketParser parser(packet);
  parser.ParseRoot();
  EXPECT_EQ(parser.PropertyCount(), 0u);
}

}  // namespace
