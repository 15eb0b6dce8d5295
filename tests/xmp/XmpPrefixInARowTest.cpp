// Names whose prefix is that of the name before, whose namespace is then taken over without a
// search: what follows must not differ from what a search gives.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "xmp/XmpTestSupport.h"

namespace {

using namespace std::string_view_literals;

using test::ReadPacket;
using ExpectedRow = std::vector<XmpProperty>;

// The properties of a root element with two bindings and, in it, what a test is about.
ExpectedRow ReadRow(std::string_view content) {
  std::string packet = "<rdf:RDF xmlns:a='1' xmlns:bc='2'>";
  packet += content;
  packet += "</rdf:RDF></x:xmpmeta>";
  return ReadPacket(packet).properties;
}

// One of these.
XmpProperty InRow(std::string_view name, std::string_view nameSpace, std::string_view value) {
  return {"xmpmeta/RDF/", std::string(name), std::string(nameSpace), std::string(value)};
}

TEST(XmpPrefixInARow, IsThatOfEachAttribute) {
  EXPECT_EQ(ReadRow("<a:e a:f='3' a:g='4' bc:h='5' bc:i='6' a:j='7'/>"),
            (ExpectedRow{InRow("f", "1", "3"), InRow("g", "1", "4"), InRow("h", "2", "5"),
                         InRow("i", "2", "6"), InRow("j", "1", "7")}));
}

TEST(XmpPrefixInARow, LongOnesToo) {
  EXPECT_EQ(ReadRow("<a:e xmlns:photoshop='7' photoshop:f='3' photoshop:g='4' photoshot:h='5'/>"
                    "<photoshop:i>6</photoshop:i>"),
            (ExpectedRow{InRow("f", "7", "3"), InRow("g", "7", "4"), InRow("h", "photoshot", "5"),
                         InRow("i", "7", "6")}));
}

TEST(XmpPrefixInARow, LaterColonOfAnAttributeCounts) {
  EXPECT_EQ(ReadRow("<a:e a:fffff='3' a:b:ggggg='4' a:hhhhh='5'/>"),
            (ExpectedRow{InRow("fffff", "1", "3"), InRow("ggggg", "a:b", "4"),
                         InRow("hhhhh", "1", "5")}));
}

TEST(XmpPrefixInARow, LaterColonOfATagCounts) {
  EXPECT_EQ(
      ReadRow("<a:fffff>3</a:f><a:bc:ggggg>4</a:g><a:hhhhh>5</a:h>"),
      (ExpectedRow{InRow("fffff", "1", "3"), InRow("ggggg", "2", "4"), InRow("hhhhh", "1", "5")}));
}

TEST(XmpPrefixInARow, EmptyNamesStay) {
  EXPECT_EQ(ReadRow("<a:e a:f='3' a:='4567890'/><a:>5</a:>"),
            (ExpectedRow{InRow("f", "1", "3"), InRow("", "1", "4567890"), InRow("", "1", "5")}));
}

TEST(XmpPrefixInARow, AnotherBindingReplacesTheFirst) {
  EXPECT_EQ(ReadRow("<a:f>3</a:f><a:g xmlns:a='9' a:hhhhh='4'>5</a:g><a:iiiii>6</a:i>"),
            (ExpectedRow{InRow("f", "1", "3"), InRow("hhhhh", "9", "4"), InRow("g", "9", "5"),
                         InRow("iiiii", "9", "6")}));
}

TEST(XmpPrefixInARow, UnboundOneIsItself) {
  EXPECT_EQ(ReadRow("<a:e a:fffff='3' no:ggggg='4' no:hhhhh='5' a:iiiii='6'/>"),
            (ExpectedRow{InRow("fffff", "1", "3"), InRow("ggggg", "no", "4"),
                         InRow("hhhhh", "no", "5"), InRow("iiiii", "1", "6")}));
}

TEST(XmpPrefixInARow, LongerAndShorterOnesAreOthers) {
  EXPECT_EQ(ReadRow("<bc:e bc:fffff='3' b:ggggg='4' bcd:hhhhh='5' bc:iiiii='6'/>"),
            (ExpectedRow{InRow("fffff", "2", "3"), InRow("ggggg", "b", "4"),
                         InRow("hhhhh", "bcd", "5"), InRow("iiiii", "2", "6")}));
}

TEST(XmpPrefixInARow, CarriageReturnBelongsToIt) {
  EXPECT_EQ(ReadRow("<a:e a:fffff='3'\r\n a:ggggg='4' a:hhhhh='5'/>"),
            (ExpectedRow{InRow("fffff", "1", "3"), InRow("ggggg", "\r\n a", "4"),
                         InRow("hhhhh", "1", "5")}));
}

// An attribute's prefix may hold what ends or precedes the name of a tag.
TEST(XmpPrefixInARow, TagsAreReadTheirOwnWay) {
  EXPECT_EQ(
      ReadRow("<a:e xmlns:\\d='7' \\d:fffff='3' \\d:ggggg='4'/><\\d:hhhhh>5</d:h>"),
      (ExpectedRow{InRow("fffff", "7", "3"), InRow("ggggg", "7", "4"), InRow("hhhhh", "d", "5")}));
  EXPECT_EQ(
      ReadRow("<a:e xmlns:a b='7' a b:fffff='3'/><a b:ggggg='4'>5</a>"),
      (ExpectedRow{InRow("fffff", "7", "3"), InRow("ggggg", "b", "4"), InRow("a", "<", "5")}));
}

TEST(XmpPrefixInARow, BindingStaysOneWhenItsPrefixIsBound) {
  EXPECT_EQ(ReadRow("<a:e xmlns:xmlns='7'/><xmlns:fffff>3</x><a:e xmlns:ggggg='4'/>"
                    "<ggggg:h>5</h>"),
            (ExpectedRow{InRow("fffff", "7", "3"), InRow("h", "4", "5")}));
}

TEST(XmpPrefixInARow, ZeroBytesCutTheTextsAroundIt) {
  EXPECT_EQ(ReadRow("<a:e a:fffff='3\0x' a:gg\0gg='4' a\0:hhhhh='5' a:iiiii='6'/>"sv),
            (ExpectedRow{InRow("fffff", "1", "3"), InRow("gg", "1", "4"), InRow("hhhhh", "1", "5"),
                         InRow("iiiii", "1", "6")}));
}

}  // namespace
