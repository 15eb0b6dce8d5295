#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "xmp/XmpScanner.h"

namespace {

using namespace std::string_view_literals;

// The first tag of a packet; a test that expects one fails when there is none.
XmpTag Tag(std::string_view packet, std::uint32_t position = 0) {
  XmpTag tag;
  EXPECT_TRUE(ScanXmpTag(packet, position, tag));
  return tag;
}

// The first attribute of a text that is nothing else.
XmpAttribute Attribute(std::string_view packet) {
  XmpAttribute attribute;
  EXPECT_TRUE(
      ScanXmpAttribute(packet, 0, static_cast<std::uint32_t>(packet.size() - 1), attribute));
  return attribute;
}

bool HasTag(std::string_view packet, std::uint32_t position = 0) {
  XmpTag tag;
  return ScanXmpTag(packet, position, tag);
}

bool HasAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to) {
  XmpAttribute attribute;
  return ScanXmpAttribute(packet, from, to, attribute);
}

TEST(XmpSubstring, IncludesBothEnds) {
  EXPECT_EQ(XmpSubstring("abcdef", 1, 3), "bcd");
}

TEST(XmpSubstring, UnsetSpanIsTheFirstByte) {
  EXPECT_EQ(XmpSubstring("abc", 0, 0), "a");
}

TEST(XmpSubstring, IsEmptyWhenTheFirstLiesBehindTheLast) {
  EXPECT_EQ(XmpSubstring("abc", 2, 1), "");
  EXPECT_EQ(XmpSubstring("abc", 0xFFFFFFFF, 0), "");
}

TEST(XmpSubstring, StopsAtZeroByte) {
  EXPECT_EQ(XmpSubstring("ab\0cd"sv, 0, 4), "ab");
  EXPECT_EQ(XmpSubstring("ab\0cd"sv, 2, 4), "");
  EXPECT_EQ(XmpSubstring("ab\0cd"sv, 3, 4), "cd");
}

TEST(XmpSubstring, StaysInsideThePacket) {
  EXPECT_EQ(XmpSubstring("abc", 1, 0xFFFFFFFF), "bc");
  EXPECT_EQ(XmpSubstring("abc", 3, 3), "");
  EXPECT_EQ(XmpSubstring("", 0, 0), "");
}

TEST(XmpTag, HasTheSpansOfPrefixNameAndAttributes) {
  const XmpTag tag = Tag("ab<rdf:li a=\"b\">");
  EXPECT_EQ(tag.kind, XmpTagKind::StartTag);
  EXPECT_EQ(tag.start, 2u);
  EXPECT_EQ(tag.prefixStart, 3u);
  EXPECT_EQ(tag.prefixEnd, 5u);
  EXPECT_EQ(tag.nameStart, 7u);
  EXPECT_EQ(tag.nameEnd, 8u);
  EXPECT_EQ(tag.attrStart, 10u);
  EXPECT_EQ(tag.attrEnd, 14u);
  EXPECT_EQ(tag.end, 15u);
  EXPECT_EQ(tag.Prefix(), "rdf");
  EXPECT_EQ(tag.Name(), "li");
  EXPECT_EQ(tag.Attributes(), "a=\"b\"");
  EXPECT_EQ(tag.Text(), "<rdf:li a=\"b\">");
}

TEST(XmpTag, KindsHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(XmpTagKind::StartTag), 1);
  EXPECT_EQ(static_cast<int>(XmpTagKind::EndTag), 2);
  EXPECT_EQ(static_cast<int>(XmpTagKind::EmptyTag), 3);
}

TEST(XmpTag, SlashBehindTheBracketMakesAnEndTag) {
  EXPECT_EQ(Tag("</rdf:li>").kind, XmpTagKind::EndTag);
  EXPECT_EQ(Tag("</a/>").kind, XmpTagKind::EndTag);
  EXPECT_EQ(Tag("</>").kind, XmpTagKind::EndTag);
}

TEST(XmpTag, SlashBeforeTheBracketMakesAnEmptyTag) {
  EXPECT_EQ(Tag("<a/>").kind, XmpTagKind::EmptyTag);
  EXPECT_EQ(Tag("<a b='c'/>").kind, XmpTagKind::EmptyTag);
  EXPECT_EQ(Tag("<a b='c' />").kind, XmpTagKind::EmptyTag);
  EXPECT_EQ(Tag("<a b=c/d/>").kind, XmpTagKind::EmptyTag);
}

TEST(XmpTag, OnlyTheTwoCharactersDecideTheKind) {
  EXPECT_EQ(Tag("< /a>").kind, XmpTagKind::StartTag);
  EXPECT_EQ(Tag("<a/ >").kind, XmpTagKind::StartTag);
  EXPECT_EQ(Tag("<?xml version='1.0'?>").kind, XmpTagKind::StartTag);
  EXPECT_EQ(Tag("<!-- / -->").kind, XmpTagKind::StartTag);
  EXPECT_EQ(Tag("<!DOCTYPE a>").kind, XmpTagKind::StartTag);
}

TEST(XmpTag, EndTagKeepsItsSlashInThePrefix) {
  const XmpTag tag = Tag("</rdf:li>");
  EXPECT_EQ(tag.Prefix(), "/rdf");
  EXPECT_EQ(tag.Name(), "li");
}

TEST(XmpTag, EndTagWithoutPrefixKeepsItsSlashInTheName) {
  EXPECT_EQ(Tag("</li>").Name(), "/li");
}

TEST(XmpTag, EmptyTagWithoutGapKeepsItsSlashInTheName) {
  EXPECT_EQ(Tag("<rdf:li/>").Name(), "li/");
  EXPECT_EQ(Tag("<rdf:li />").Name(), "li");
}

TEST(XmpTag, NameWithoutColonHasTheFirstByteAsPrefix) {
  const XmpTag tag = Tag("?<abc>");
  EXPECT_EQ(tag.prefixStart, 0u);
  EXPECT_EQ(tag.prefixEnd, 0u);
  EXPECT_EQ(tag.Prefix(), "?");
  EXPECT_EQ(tag.Name(), "abc");
}

TEST(XmpTag, PrefixIsTheSegmentBeforeTheLastColon) {
  const XmpTag tag = Tag("<a:bc:d>");
  EXPECT_EQ(tag.Prefix(), "bc");
  EXPECT_EQ(tag.Name(), "d");
  EXPECT_EQ(Tag("<a::d>").Prefix(), "");
}

TEST(XmpTag, NameBehindAColonMayBeEmpty) {
  const XmpTag tag = Tag("<a:>");
  EXPECT_EQ(tag.nameStart, 3u);
  EXPECT_EQ(tag.nameEnd, 2u);
  EXPECT_EQ(tag.Name(), "");
  EXPECT_EQ(tag.Prefix(), "a");
}

TEST(XmpTag, FirstCharacterOnlyBeginsTheName) {
  EXPECT_EQ(Tag("<:a>").Name(), ":a");
  EXPECT_EQ(Tag("<:a>").prefixEnd, 0u);
  EXPECT_EQ(Tag("<:a:b>").Prefix(), ":a");
  EXPECT_EQ(Tag("<\na b>").Name(), "\na");
}

TEST(XmpTag, SkipsSpacesBracketsAndBackslashesBeforeTheName) {
  EXPECT_EQ(Tag("< <\\ a>").Name(), "a");
  EXPECT_EQ(Tag("< <\\ a>").start, 0u);
}

TEST(XmpTag, SkipsSpacesBracketsAndBackslashesBeforeTheAttributes) {
  EXPECT_EQ(Tag("<a  <\\ b>").Attributes(), "b");
}

TEST(XmpTag, NameEndsAtSpaceLineFeedAndBrackets) {
  EXPECT_EQ(Tag("<ab c>").Name(), "ab");
  EXPECT_EQ(Tag("<ab\nc>").Name(), "ab");
  EXPECT_EQ(Tag("<ab<c>").Name(), "ab");
  EXPECT_EQ(Tag("<ab>").Name(), "ab");
  EXPECT_EQ(Tag("<ab<c>").Attributes(), "c");
}

TEST(XmpTag, TabCarriageReturnAndBackslashDoNotEndTheName) {
  EXPECT_EQ(Tag("<ab\tc>").Name(), "ab\tc");
  EXPECT_EQ(Tag("<ab\r\nc>").Name(), "ab\r");
  EXPECT_EQ(Tag("<ab\\c>").Name(), "ab\\c");
}

TEST(XmpTag, LineFeedBeforeTheAttributesBelongsToThem) {
  EXPECT_EQ(Tag("<ab \nc='d'>").Attributes(), "\nc='d'");
  EXPECT_EQ(Tag("<ab \tc='d'>").Attributes(), "\tc='d'");
}

TEST(XmpTag, WithoutAttributesTheirSpanIsUnset) {
  for (const std::string_view packet : {"<ab>", "<ab >", "<ab \\>"}) {
    const XmpTag tag = Tag(packet);
    EXPECT_EQ(tag.attrStart, 0u) << packet;
    EXPECT_EQ(tag.attrEnd, 0u) << packet;
    EXPECT_EQ(tag.Attributes(), "<") << packet;
  }
}

TEST(XmpTag, WithoutNameItsSpanIsUnset) {
  const XmpTag tag = Tag("x<>");
  EXPECT_EQ(tag.kind, XmpTagKind::StartTag);
  EXPECT_EQ(tag.start, 1u);
  EXPECT_EQ(tag.end, 2u);
  EXPECT_EQ(tag.nameStart, 0u);
  EXPECT_EQ(tag.nameEnd, 0u);
  EXPECT_EQ(tag.Name(), "x");
}

TEST(XmpTag, EndsAtTheFirstBracketEvenInsideQuotes) {
  const XmpTag tag = Tag("<a b=\"c>d\">");
  EXPECT_EQ(tag.end, 7u);
  EXPECT_EQ(tag.Attributes(), "b=\"c");
}

TEST(XmpTag, ZeroBytesCutTheTextsButNotTheSpans) {
  const XmpTag tag = Tag("<a\0b:c\0d e\0f>"sv);
  EXPECT_EQ(tag.Prefix(), "a");
  EXPECT_EQ(tag.Name(), "c");
  EXPECT_EQ(tag.Attributes(), "e");
  EXPECT_EQ(tag.Text(), "<a");
  EXPECT_EQ(tag.nameEnd, 7u);
  EXPECT_EQ(tag.attrEnd, 11u);
}

TEST(XmpTag, IsTheFirstOneAtOrBehindThePosition) {
  EXPECT_EQ(Tag("<a><b><c>", 3).Name(), "b");
  EXPECT_EQ(Tag("<a><b><c>", 4).Name(), "c");
}

TEST(XmpTag, FailsWithoutABracketOfEachKind) {
  EXPECT_FALSE(HasTag("abc"));
  EXPECT_FALSE(HasTag("abc>"));
  for (const std::string_view packet : {"<", "< ", "<a", "<a:", "<a ", "<a b", "<a b='c'"}) {
    EXPECT_FALSE(HasTag(packet)) << packet;
  }
}

TEST(XmpTag, FailsOutsideThePacket) {
  EXPECT_FALSE(HasTag(""));
  EXPECT_FALSE(HasTag("<a>", 3));
  EXPECT_FALSE(HasTag("<a>", 0xFFFFFFFF));
}

TEST(XmpTag, FailureClearsTheRecord) {
  XmpTag tag = Tag("<a:b c>");
  ASSERT_FALSE(ScanXmpTag("<a:b c", 0, tag));
  EXPECT_EQ(tag.end, 0u);
  EXPECT_EQ(tag.nameStart, 0u);
  EXPECT_EQ(tag.kind, XmpTagKind::None);
  EXPECT_EQ(tag.Name(), "");
}

TEST(XmpTag, FailureOutsideThePacketLeavesTheRecord) {
  XmpTag tag = Tag("<a:b c>");
  ASSERT_FALSE(ScanXmpTag("<a:b c>", 7, tag));
  EXPECT_EQ(tag.Name(), "b");
}

// Wherever the signs of a tag stand in the blocks that are compared at once, and far behind.
TEST(XmpTag, TextNamesAndAttributesHaveAnyLength) {
  for (const std::size_t gap : {0U, 1U, 7U, 8U, 9U, 15U, 16U, 17U, 40U, 300U}) {
    for (std::size_t name = 1; name < 20; ++name) {
      for (const std::size_t rest : {1U, 2U, 7U, 8U, 9U, 15U, 16U, 17U, 40U, 300U}) {
        const std::string parts[] = {std::string(name, 'p'), std::string(name, 'n'),
                                     std::string(rest, 'a')};
        const std::string packet =
            std::string(gap, '-') + '<' + parts[0] + ':' + parts[1] + ' ' + parts[2] + '>';
        const XmpTag tag = Tag(packet);
        EXPECT_EQ(tag.start, gap);
        EXPECT_EQ(tag.Prefix(), parts[0]);
        EXPECT_EQ(tag.Name(), parts[1]);
        EXPECT_EQ(tag.Attributes(), parts[2]);
        EXPECT_EQ(tag.end, packet.size() - 1);
        EXPECT_FALSE(HasTag(packet.substr(0, packet.size() - 1)));
      }
    }
  }
}

// Wherever signs and quotes stand in the blocks that are compared at once.
TEST(XmpAttribute, NamesAndValuesHaveAnyLength) {
  for (std::size_t prefix = 1; prefix < 20; ++prefix) {
    for (std::size_t name = 0; name < 20; ++name) {
      for (std::size_t value = 0; value < 20; ++value) {
        const std::string parts[] = {std::string(prefix, 'p'), std::string(name, 'n'),
                                     std::string(value, '!')};
        const std::string packet = parts[0] + ':' + parts[1] + "='" + parts[2] + "'";
        const XmpAttribute attribute = Attribute(packet);
        EXPECT_EQ(attribute.Prefix(), parts[0]);
        EXPECT_EQ(attribute.Name(), parts[1]);
        EXPECT_EQ(attribute.Value(), parts[2]);
        EXPECT_EQ(attribute.end, packet.size() - 1);
      }
    }
  }
}

TEST(XmpAttribute, HasTheSpansOfPrefixNameAndValue) {
  const XmpAttribute attribute = Attribute("  xmp:Rating=\"34\" ");
  EXPECT_EQ(attribute.start, 2u);
  EXPECT_EQ(attribute.prefixStart, 2u);
  EXPECT_EQ(attribute.prefixEnd, 4u);
  EXPECT_EQ(attribute.nameStart, 6u);
  EXPECT_EQ(attribute.nameEnd, 11u);
  EXPECT_EQ(attribute.valueStart, 14u);
  EXPECT_EQ(attribute.valueEnd, 15u);
  EXPECT_EQ(attribute.end, 16u);
  EXPECT_EQ(attribute.Prefix(), "xmp");
  EXPECT_EQ(attribute.Name(), "Rating");
  EXPECT_EQ(attribute.Value(), "34");
  EXPECT_EQ(attribute.Text(), "xmp:Rating=\"34\"");
}

TEST(XmpAttribute, WithoutColonThePrefixIsUnset) {
  const XmpAttribute attribute = Attribute("a=\"b\"");
  EXPECT_EQ(attribute.prefixStart, 0u);
  EXPECT_EQ(attribute.prefixEnd, 0u);
  EXPECT_EQ(attribute.nameStart, 0u);
  EXPECT_EQ(attribute.nameEnd, 0u);
  EXPECT_EQ(attribute.Prefix(), "a");
  EXPECT_EQ(attribute.Name(), "a");
  EXPECT_EQ(Attribute("<abc='d'").Prefix(), "<");
}

TEST(XmpAttribute, PrefixReachesToTheLastColon) {
  const XmpAttribute attribute = Attribute("a:b:c='d'");
  EXPECT_EQ(attribute.Prefix(), "a:b");
  EXPECT_EQ(attribute.Name(), "c");
}

TEST(XmpAttribute, ColonBehindTheEqualsSignBelongsToTheValue) {
  const XmpAttribute attribute = Attribute("a:b='c:d=e'");
  EXPECT_EQ(attribute.Prefix(), "a");
  EXPECT_EQ(attribute.Name(), "b");
  EXPECT_EQ(attribute.Value(), "c:d=e");
}

TEST(XmpAttribute, FirstCharacterOnlyBeginsTheAttribute) {
  EXPECT_EQ(Attribute("=a='b'").Name(), "=a");
  EXPECT_EQ(Attribute(":a='b'").Name(), ":a");
  EXPECT_EQ(Attribute(":a:b='c'").Prefix(), ":a");
  EXPECT_EQ(Attribute("'a='b'").Name(), "'a");
}

TEST(XmpAttribute, SkipsLineFeedsSpacesAndBrackets) {
  EXPECT_EQ(Attribute("\n <>\na='b'").start, 5u);
}

TEST(XmpAttribute, GapHasAnyLength) {
  for (std::size_t before = 0; before < 20; ++before) {
    for (std::size_t after = 0; after < 20; ++after) {
      const std::string gap = std::string(before, ' ') + '\n' + std::string(after, ' ');
      EXPECT_EQ(Attribute(gap + "a='b'").start, gap.size());
      EXPECT_FALSE(HasAttribute(gap, 0, static_cast<std::uint32_t>(gap.size() - 1)));
    }
  }
}

TEST(XmpAttribute, DoesNotSkipTabsAndCarriageReturns) {
  EXPECT_EQ(Attribute("\ta:b='c'").Prefix(), "\ta");
  EXPECT_EQ(Attribute("\r\na:b='c'").Prefix(), "\r\na");
  EXPECT_EQ(Attribute("\tb='c'").Name(), "\tb");
}

TEST(XmpAttribute, SpacesAroundTheEqualsSignBelongToTheName) {
  EXPECT_EQ(Attribute("a:b = 'c'").Name(), "b ");
  EXPECT_EQ(Attribute("a:b = 'c'").Value(), "c");
}

TEST(XmpAttribute, EmptyNameAndEmptyValueAreEmpty) {
  EXPECT_EQ(Attribute("a:='c'").Name(), "");
  EXPECT_EQ(Attribute("a:b=''").Value(), "");
  EXPECT_EQ(Attribute("a:b=''").valueStart, 5u);
  EXPECT_EQ(Attribute("a:b=''").valueEnd, 4u);
}

TEST(XmpAttribute, EitherQuoteEndsAValue) {
  EXPECT_EQ(Attribute("a='b\"c'").Value(), "b");
  EXPECT_EQ(Attribute("a=\"b'c\"").Value(), "b");
}

TEST(XmpAttribute, SkipsWhatStandsBeforeTheFirstQuote) {
  EXPECT_EQ(Attribute("a=b c'd'").Value(), "d");
  EXPECT_EQ(Attribute("a==\"d\"").Value(), "d");
}

TEST(XmpAttribute, QuoteBeforeTheEqualsSignBelongsToTheName) {
  EXPECT_EQ(Attribute("a\"b\"='c'").Name(), "a\"b\"");
}

TEST(XmpAttribute, ZeroBytesCutTheTexts) {
  const XmpAttribute attribute = Attribute("a\0b:c\0d='e\0f'"sv);
  EXPECT_EQ(attribute.Prefix(), "a");
  EXPECT_EQ(attribute.Name(), "c");
  EXPECT_EQ(attribute.Value(), "e");
}

TEST(XmpAttribute, MustEndInsideItsBounds) {
  constexpr std::string_view kText = "a='b'";
  EXPECT_TRUE(HasAttribute(kText, 0, 4));
  for (std::uint32_t to = 0; to < 4; ++to) EXPECT_FALSE(HasAttribute(kText, 0, to)) << to;
  EXPECT_TRUE(HasAttribute(kText, 0, 0xFFFFFFFF));
  EXPECT_FALSE(HasAttribute(kText, 3, 4));
  EXPECT_FALSE(HasAttribute(kText, 5, 4));
  EXPECT_FALSE(HasAttribute(kText, 5, 9));
  EXPECT_FALSE(HasAttribute("", 0, 0));
}

TEST(XmpAttribute, FailureClearsTheRecord) {
  XmpAttribute attribute = Attribute("a:b='c'");
  ASSERT_FALSE(ScanXmpAttribute("a:b='c", 0, 5, attribute));
  EXPECT_EQ(attribute.end, 0u);
  EXPECT_EQ(attribute.nameStart, 0u);
  EXPECT_EQ(attribute.Name(), "");
}

}  // namespace
