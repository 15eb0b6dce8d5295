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

constexpr std::string_view kPathInRow = "xmpmeta/RDF/";

// The properties of a root element with two bindings and, in it, what a test is about.
ExpectedRow ReadRow(std::string_view content) {
  std::string packet = "<rdf:RDF xmlns:a='1' xmlns:bc='2'>";
  packet += content;
  packet += "</rdf:RDF></x:xmpmeta>";
  return ReadPacket(packet).properties;
}

XmpProperty InRow(std::string_view path, std::string_view name, std::string_view nameSpace,
                  std::string_view value) {
  return {std::string(path), std::string(name), std::string(nameSpace), std::string(value)};
}

TEST(XmpPrefixInARow, IsThatOfEachAttribute) {
  EXPECT_EQ(ReadRow("<a:e a:f='3' a:g='4' bc:h='5' bc:i='6' a:j='7'/>"),
            (ExpectedRow{InRow(kPathInRow, "f", "1", "3"), InRow(kPathInRow, "g", "1", "4"),
                         InRow(kPathInRow, "h", "2", "5"), InRow(kPathInRow, "i", "2", "6"),
                         InRow(kPathInRow, "j", "1", "7")}));
}

TEST(XmpPrefixInARow, LongOnesToo) {
  EXPECT_EQ(
      ReadRow("<a:e xmlns:photoshop='7' photoshop:f='3' photoshop:g='4' photoshot:h='5'/>"
              "<photoshop:i>6</photoshop:i>"),
      (ExpectedRow{InRow(kPathInRow, "f", "7", "3"), InRow(kPathInRow, "g", "7", "4"),
                   InRow(kPathInRow, "h", "photoshot", "5"), InRow(kPathInRow, "i", "7", "6")}));
}

TEST(XmpPrefixInARow, LaterColonOfAnAttributeCounts) {
  EXPECT_EQ(
      ReadRow("<a:e a:fffff='3' a:b:ggggg='4' a:hhhhh='5'/>"),
      (ExpectedRow{InRow(kPathInRow, "fffff", "1", "3"), InRow(kPathInRow, "ggggg", "a:b", "4"),
                   InRow(kPathInRow, "hhhhh", "1", "5")}));
}

TEST(XmpPrefixInARow, LaterColonOfATagCounts) {
  EXPECT_EQ(ReadRow("<a:fffff>3</a:f><a:bc:ggggg>4</a:g><a:hhhhh>5</a:h>"),
            (ExpectedRow{InRow(kPathInRow, "fffff", "1", "3"), InRow(kPathInRow, "ggggg", "2", "4"),
                         InRow(kPathInRow, "hhhhh", "1", "5")}));
}

TEST(XmpPrefixInARow, EmptyNamesStay) {
  EXPECT_EQ(ReadRow("<a:e a:f='3' a:='4567890'/><a:>5</a:>"),
            (ExpectedRow{InRow(kPathInRow, "f", "1", "3"), InRow(kPathInRow, "", "1", "4567890"),
                         InRow(kPathInRow, "", "1", "5")}));
}

TEST(XmpPrefixInARow, AnotherBindingReplacesTheFirst) {
  EXPECT_EQ(ReadRow("<a:f>3</a:f><a:g xmlns:a='9' a:hhhhh='4'>5</a:g><a:iiiii>6</a:i>"),
            (ExpectedRow{InRow(kPathInRow, "f", "1", "3"), InRow(kPathInRow, "hhhhh", "9", "4"),
                         InRow(kPathInRow, "g", "9", "5"), InRow(kPathInRow, "iiiii", "9", "6")}));
}

TEST(XmpPrefixInARow, UnboundOneIsItself) {
  EXPECT_EQ(
      ReadRow("<a:e a:fffff='3' no:ggggg='4' no:hhhhh='5' a:iiiii='6'/>"),
      (ExpectedRow{InRow(kPathInRow, "fffff", "1", "3"), InRow(kPathInRow, "ggggg", "no", "4"),
                   InRow(kPathInRow, "hhhhh", "no", "5"), InRow(kPathInRow, "iiiii", "1", "6")}));
}

TEST(XmpPrefixInARow, LongerAndShorterOnesAreOthers) {
  EXPECT_EQ(
      ReadRow("<bc:e bc:fffff='3' b:ggggg='4' bcd:hhhhh='5' bc:iiiii='6'/>"),
      (ExpectedRow{InRow(kPathInRow, "fffff", "2", "3"), InRow(kPathInRow, "ggggg", "b", "4"),
                   InRow(kPathInRow, "hhhhh", "bcd", "5"), InRow(kPathInRow, "iiiii", "2", "6")}));
}

TEST(XmpPrefixInARow, CarriageReturnBelongsToIt) {
  EXPECT_EQ(
      ReadRow("<a:e a:fffff='3'\r\n a:ggggg='4' a:hhhhh='5'/>"),
      (ExpectedRow{InRow(kPathInRow, "fffff", "1", "3"), InRow(kPathInRow, "ggggg", "\r\n a", "4"),
                   InRow(kPathInRow, "hhhhh", "1", "5")}));
}

// An attribute's prefix may hold what ends or precedes the name of a tag.
TEST(XmpPrefixInARow, TagsAreReadTheirOwnWay) {
  EXPECT_EQ(ReadRow("<a:e xmlns:\\d='7' \\d:fffff='3' \\d:ggggg='4'/><\\d:hhhhh>5</d:h>"),
            (ExpectedRow{InRow(kPathInRow, "fffff", "7", "3"), InRow(kPathInRow, "ggggg", "7", "4"),
                         InRow(kPathInRow, "hhhhh", "d", "5")}));
  EXPECT_EQ(ReadRow("<a:e xmlns:a b='7' a b:fffff='3'/><a b:ggggg='4'>5</a>"),
            (ExpectedRow{InRow(kPathInRow, "fffff", "7", "3"), InRow(kPathInRow, "ggggg", "b", "4"),
                         InRow(kPathInRow, "a", "<", "5")}));
}

TEST(XmpPrefixInARow, BindingStaysOneWhenItsPrefixIsBound) {
  EXPECT_EQ(ReadRow("<a:e xmlns:xmlns='7'/><xmlns:fffff>3</x><a:e xmlns:ggggg='4'/>"
                    "<ggggg:h>5</h>"),
            (ExpectedRow{InRow(kPathInRow, "fffff", "7", "3"), InRow(kPathInRow, "h", "4", "5")}));
}

TEST(XmpPrefixInARow, ZeroBytesCutTheTextsAroundIt) {
  EXPECT_EQ(
      ReadRow("<a:e a:fffff='3\0x' a:gg\0gg='4' a\0:hhhhh='5' a:iiiii='6'/>"sv),
      (ExpectedRow{InRow(kPathInRow, "fffff", "1", "3"), InRow(kPathInRow, "gg", "1", "4"),
                   InRow(kPathInRow, "hhhhh", "1", "5"), InRow(kPathInRow, "iiiii", "1", "6")}));
}

}  // namespace
