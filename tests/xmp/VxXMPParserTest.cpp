#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "xmp/VxXMPParser.h"
#include "xmp/XmpTestSupport.h"

namespace {

using namespace std::string_view_literals;
using test::LogCapture;
using test::PacketParser;
using test::ReadPacket;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Rows = std::vector<XmpProperty>;

// A packet whose RDF root holds a text. No prefix is bound in it.
std::string InRoot(std::string_view content) {
  return "<rdf:RDF>" + std::string(content) + "</rdf:RDF></x:xmpmeta>";
}

Rows RowsInRoot(std::string_view content) {
  return ReadPacket(InRoot(content)).properties;
}

std::vector<std::string> LogInRoot(std::string_view content) {
  return ReadPacket(InRoot(content)).log;
}

TEST(VxXMPParser, KeepsTheOwnersValue) {
  EXPECT_EQ(VxXMPParser(7).m_nOwnerValue, 7u);
}

TEST(VxXMPParser, WithoutTextThereAreNoProperties) {
  VxXMPParser parser(0);
  parser.ParseRoot();
  EXPECT_EQ(parser.PropertyCount(), 0u);
}

TEST(VxXMPParser, ResetForgetsPropertiesBindingsAndText) {
  PacketParser parser("<rdf:RDF xmlns:a='n' a:b='c'/>");
  parser.ParseRoot();
  ASSERT_EQ(test::Properties(parser), (Rows{{"xmpmeta/", "b", "n", "c"}}));
  parser.Reset();
  EXPECT_EQ(parser.PropertyCount(), 0u);
  parser.ParseRoot();
  EXPECT_EQ(parser.PropertyCount(), 0u);
  parser.SetText(test::PacketBytes("<rdf:RDF a:b='c'/>"));
  parser.ParseRoot();
  EXPECT_EQ(test::Properties(parser), (Rows{{"xmpmeta/", "b", "a", "c"}}));
}

TEST(XmpRoot, IsFoundBySevenBytes) {
  for (const std::string_view root :
       {"<rdf:RDF a='b'/>", "<rdf:RDFx a='b'/>", "<rdf:RD a='b'/>", "<rdf:RDx:y a='b'/>"}) {
    EXPECT_EQ(ReadPacket(root).properties.size(), 1u) << root;
  }
}

TEST(XmpRoot, IsNotFoundByLess) {
  for (const std::string_view root :
       {"<rdf:R a='b'/>", "< rdf:RDF a='b'/>", "<rdf:rdf a='b'/>", "<RDF a='b'/>", "<r:RDF a='b'/>",
        "<rdf:R", "<rdf:RDF a='b'", "rdf:RDF a='b'>", ""}) {
    const auto result = ReadPacket(root);
    EXPECT_THAT(result.properties, IsEmpty()) << root;
    EXPECT_THAT(result.log, IsEmpty()) << root;
  }
}

TEST(XmpRoot, IsSoughtTagByTag) {
  // The ">" of the quoted text ends the first tag; the root inside the second is no tag of its own.
  EXPECT_THAT(ReadPacket("<a b='>'><c <rdf:RDF d='e'/>").properties, IsEmpty());
  EXPECT_EQ(ReadPacket("<a b='<rdf:RDF'><rdf:RDF d='e'/>").properties.size(), 1u);
}

TEST(XmpRoot, OnlyTheFirstOneIsRead) {
  EXPECT_EQ(ReadPacket("<rdf:RDF a='b'/></x:xmpmeta><rdf:RDF c='d'/>").properties,
            (Rows{{"xmpmeta/", "a", "<", "b"}}));
}

TEST(XmpPacketEnd, ClosingXmpmetaGivesOneAndNoLog) {
  const LogCapture log;
  PacketParser parser("<rdf:RDF></rdf:RDF> </x:xmpmeta>");
  EXPECT_EQ(parser.ParsePacket(0), 1);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(XmpPacketEnd, OnlyTheLocalNameCounts) {
  const LogCapture log;
  EXPECT_EQ(PacketParser("<rdf:RDF></rdf:RDF><y:xmpmeta>").ParsePacket(0), 1);
  EXPECT_EQ(PacketParser("<rdf:RDF></rdf:RDF><xmpmeta>").ParsePacket(0), 1);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(XmpPacketEnd, AnotherTagGivesZeroAndALog) {
  const LogCapture log;
  EXPECT_EQ(PacketParser("<rdf:RDF></rdf:RDF></x:xapmeta>").ParsePacket(0), 0);
  EXPECT_EQ(PacketParser("<rdf:RDF></rdf:RDF></xmpmeta>").ParsePacket(0), 0);
  EXPECT_EQ(PacketParser("<rdf:RDF></rdf:RDF>").ParsePacket(0), 0);
  EXPECT_THAT(log.Lines(),
              ElementsAre("[VxXMPParser] XMPParser!!!, wrong end (xapmeta)!=(xmpmeta)",
                          "[VxXMPParser] XMPParser!!!, wrong end (/xmpmeta)!=(xmpmeta)",
                          "[VxXMPParser] XMPParser!!!, wrong end ()!=(xmpmeta)"));
}

TEST(XmpPacketEnd, PropertiesStayWithoutIt) {
  EXPECT_EQ(ReadPacket("<rdf:RDF a:b='c'></rdf:RDF></x:other>").properties.size(), 2u);
}

TEST(XmpElement, NoTagAndEndTagLeaveThePosition) {
  const LogCapture log;
  EXPECT_EQ(PacketParser("<a").ParseElement(1, kXmpRootPath), 1u);
  EXPECT_THAT(log.Lines(), IsEmpty());
  EXPECT_EQ(PacketParser("x </a:b c> y").ParseElement(1, kXmpRootPath), 1u);
  EXPECT_THAT(log.Lines(),
              ElementsAre("[VxXMPParser] XMPParser!!!, format error, Should not here (</a:b c>)"));
}

TEST(XmpElement, EmptyTagGivesItsAttributes) {
  PacketParser parser("x<a:b c:d='e'/>y");
  EXPECT_EQ(parser.ParseElement(0, kXmpRootPath), 15u);
  EXPECT_EQ(test::Properties(parser), (Rows{{"xmpmeta/", "d", "c", "e"}}));
}

TEST(XmpElement, EndsBehindItsEndTag) {
  EXPECT_EQ(PacketParser("<a:b>c</a:b>d").ParseElement(0, kXmpRootPath), 12u);
  EXPECT_EQ(PacketParser("<a:b><c/></a:b>d").ParseElement(0, kXmpRootPath), 15u);
}

TEST(XmpElement, EndsBehindTheLastWholeTagWhenTheTextEnds) {
  EXPECT_EQ(PacketParser("<a:b>c").ParseElement(0, kXmpRootPath), 5u);
  EXPECT_EQ(PacketParser("<a:b><c:d>e</c:d>f<").ParseElement(0, kXmpRootPath), 17u);
}

TEST(XmpElement, LeafGivesItsTextUntrimmedAndEncoded) {
  EXPECT_EQ(RowsInRoot("<a:b> \n &lt;c&gt;\t</a:b>"),
            (Rows{{"xmpmeta/RDF/", "b", "a", " \n &lt;c&gt;\t"}}));
  EXPECT_EQ(RowsInRoot("<a:b></a:b>"), (Rows{{"xmpmeta/RDF/", "b", "a", ""}}));
}

TEST(XmpElement, ZeroByteCutsTheText) {
  EXPECT_EQ(RowsInRoot("<a:b>c\0d</a:b>"sv), (Rows{{"xmpmeta/RDF/", "b", "a", "c"}}));
}

// Wherever it stands: what a text that holds none looks like does not depend on it.
TEST(XmpElement, ZeroByteElsewhereCutsNothing) {
  const std::string packet = InRoot("<a:b c:d='e'>f</a:b>");
  const Rows rows = {{"xmpmeta/RDF/", "d", "c", "e"}, {"xmpmeta/RDF/", "b", "a", "f"}};
  for (const std::string& zeros : {std::string(1, '\0'), std::string(9, '\0')}) {
    EXPECT_EQ(ReadPacket(zeros + packet).properties, rows);
    EXPECT_EQ(ReadPacket(packet + zeros).properties, rows);
    EXPECT_EQ(ReadPacket(packet + zeros + "<g>").properties, rows);
    EXPECT_EQ(ReadPacket("/" + zeros + packet + zeros).properties, rows);
  }
}

TEST(XmpElement, AttributesComeBeforeTheText) {
  EXPECT_EQ(RowsInRoot("<a:b c:d='e'>f</a:b>"),
            (Rows{{"xmpmeta/RDF/", "d", "c", "e"}, {"xmpmeta/RDF/", "b", "a", "f"}}));
}

TEST(XmpElement, TextBetweenChildrenIsSkipped) {
  EXPECT_EQ(RowsInRoot("<a:b>x<c:d>e</c:d>y</a:b>z"), (Rows{{"xmpmeta/RDF/b/", "d", "c", "e"}}));
}

TEST(XmpElement, ListItemHasThePathOfItsList) {
  EXPECT_EQ(RowsInRoot("<rdf:Description><exif:ISOSpeedRatings><rdf:Seq><rdf:li>a</rdf:li>"
                       "</rdf:Seq></exif:ISOSpeedRatings></rdf:Description>"),
            (Rows{{"xmpmeta/RDF/Description/ISOSpeedRatings/Seq/", "li", "rdf", "a"}}));
}

TEST(XmpElement, SiblingsShareThePathOfTheirParent) {
  EXPECT_EQ(RowsInRoot("<a:b><c:d/><e:f g:h='i'><j:k>l</j:k></e:f><m:n>o</m:n></a:b><p:q>r</p:q>"),
            (Rows{{"xmpmeta/RDF/b/", "h", "g", "i"},
                  {"xmpmeta/RDF/b/f/", "k", "j", "l"},
                  {"xmpmeta/RDF/b/", "n", "m", "o"},
                  {"xmpmeta/RDF/", "q", "p", "r"}}));
}

TEST(XmpElement, NameWithoutColonHasTheFirstByteAsNamespace) {
  EXPECT_EQ(RowsInRoot("<a>b</a>"), (Rows{{"xmpmeta/RDF/", "a", "<", "b"}}));
  EXPECT_EQ(ReadPacket("/\0<rdf:RDF><a>b</a></rdf:RDF>"sv).properties,
            (Rows{{"xmpmeta/RDF/", "a", "/", "b"}}));
  EXPECT_EQ(ReadPacket("\0/<rdf:RDF><a>b</a></rdf:RDF>"sv).properties,
            (Rows{{"xmpmeta/RDF/", "a", "", "b"}}));
}

TEST(XmpElement, TagWithoutNameHasTheFirstByteAsName) {
  EXPECT_EQ(RowsInRoot("<><a:b>c</a:b></x>"), (Rows{{"xmpmeta/RDF/</", "b", "a", "c"}}));
}

TEST(XmpElement, WrongPairIsLoggedAndRecorded) {
  EXPECT_EQ(RowsInRoot("<xmp:Rating>3</xmp:Label>"),
            (Rows{{"xmpmeta/RDF/", "Rating", "xmp", "3"}}));
  EXPECT_THAT(
      LogInRoot("<xmp:Rating>3</xmp:Label>"),
      ElementsAre("[VxXMPParser] XMPParser!!!, format error, wrong Pair (Label)!=(Rating)"));
}

TEST(XmpElement, EndTagWithoutPrefixIsAWrongPair) {
  EXPECT_THAT(LogInRoot("<a:b>c</b>"),
              ElementsAre("[VxXMPParser] XMPParser!!!, format error, wrong Pair (/b)!=(b)"));
}

TEST(XmpElement, PrefixesOfAPairAreNotCompared) {
  EXPECT_THAT(LogInRoot("<a:b>c</d:b><e:f><g:h/></i:f>"), IsEmpty());
}

TEST(XmpElement, WrongEndIsLoggedAndCloses) {
  EXPECT_EQ(RowsInRoot("<a:b><c:d>e</c:d></a:x><f:g>h</f:g>"),
            (Rows{{"xmpmeta/RDF/b/", "d", "c", "e"}, {"xmpmeta/RDF/", "g", "f", "h"}}));
  EXPECT_THAT(LogInRoot("<a:b><c:d>e</c:d></a:x>"),
              ElementsAre("[VxXMPParser] XMPParser!!!, format error, wrong End (x)!=(b)"));
}

TEST(XmpElement, MismatchIsSilentWhileTheLogIsOff) {
  const LogCapture log;
  g_bDebugLogEnabled = 0;
  PacketParser("<rdf:RDF><a:b><c:d>e</c:x></a:x></rdf:RDF>").ParseRoot();
  EXPECT_EQ(PacketParser("</a:b>").ParseElement(0, kXmpRootPath), 0u);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(XmpElement, LongNamesAreCutInTheLog) {
  const std::string longName(100000, 'n');
  const auto log = LogInRoot("<a:b>c</a:" + longName + ">");
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0].size(), 1022u);
}

TEST(XmpElement, TruncatedPacketKeepsWhatWasRead) {
  const auto result = ReadPacket("<rdf:RDF a:b='c'><d:e>f</d:e><g:h>i</g:h");
  EXPECT_EQ(result.properties,
            (Rows{{"xmpmeta/", "b", "a", "c"}, {"xmpmeta/RDF/", "e", "d", "f"}}));
  EXPECT_THAT(result.log, ElementsAre("[VxXMPParser] XMPParser!!!, wrong end ()!=(xmpmeta)"));
}

TEST(XmpAttributes, BracketInAValueEndsTheTag) {
  EXPECT_EQ(RowsInRoot("<a:b c:d='e' f:g='h>i' j:k='l'>m</a:b>"),
            (Rows{{"xmpmeta/RDF/", "d", "c", "e"}, {"xmpmeta/RDF/", "b", "a", "i' j:k='l'>m"}}));
}

TEST(XmpAttributes, MissingQuoteDropsTheRest) {
  EXPECT_EQ(RowsInRoot("<a:b c:d='e' f:g='h i:j=k/>"), (Rows{{"xmpmeta/RDF/", "d", "c", "e"}}));
}

TEST(XmpAttributes, QuotesOfBothKindsAreOne) {
  EXPECT_EQ(RowsInRoot("<a:b c:d='e\" f:g=\"h'/>"),
            (Rows{{"xmpmeta/RDF/", "d", "c", "e"}, {"xmpmeta/RDF/", "g", "f", "h"}}));
}

TEST(XmpAttributes, CarriageReturnBecomesPartOfThePrefix) {
  EXPECT_EQ(RowsInRoot("<a:b\r\n c:d='e'\r\n f:g='h'/>"),
            (Rows{{"xmpmeta/RDF/", "d", "c", "e"}, {"xmpmeta/RDF/", "g", "\r\n f", "h"}}));
}

TEST(XmpAttributes, DefaultNamespaceIsAProperty) {
  EXPECT_EQ(RowsInRoot("<a:b xmlns='n' c='d'/>"),
            (Rows{{"xmpmeta/RDF/", "xmlns", "<", "n"}, {"xmpmeta/RDF/", "c", "<", "d"}}));
}

TEST(XmpNamespaces, BindingAppliesFromItsPlaceOn) {
  EXPECT_EQ(RowsInRoot("<a:b a:c='1' xmlns:a='n' a:d='2'>3</a:b><a:e/><a:f>4</a:f>"),
            (Rows{{"xmpmeta/RDF/", "c", "a", "1"},
                  {"xmpmeta/RDF/", "d", "n", "2"},
                  {"xmpmeta/RDF/", "b", "n", "3"},
                  {"xmpmeta/RDF/", "f", "n", "4"}}));
}

TEST(XmpNamespaces, LaterBindingReplacesTheEarlierOne) {
  EXPECT_EQ(RowsInRoot("<dc:a xmlns:dc='n'><dc:b>1</dc:b><dc:c xmlns:dc='m'>2</dc:c>"
                       "<dc:d>3</dc:d></dc:a><dc:e>4</dc:e>"),
            (Rows{{"xmpmeta/RDF/a/", "b", "n", "1"},
                  {"xmpmeta/RDF/a/", "c", "m", "2"},
                  {"xmpmeta/RDF/a/", "d", "m", "3"},
                  {"xmpmeta/RDF/", "e", "m", "4"}}));
}

TEST(XmpNamespaces, BindingPrefixIsComparedExactly) {
  EXPECT_EQ(RowsInRoot("<a:b Xmlns:c='d' xmlnsx:e='f' x:xmlns:g='h' c:i='j'/>"),
            (Rows{{"xmpmeta/RDF/", "c", "Xmlns", "d"},
                  {"xmpmeta/RDF/", "e", "xmlnsx", "f"},
                  {"xmpmeta/RDF/", "g", "x:xmlns", "h"},
                  {"xmpmeta/RDF/", "i", "c", "j"}}));
}

TEST(XmpNamespaces, BindingIsCutAtZeroBytes) {
  EXPECT_EQ(RowsInRoot("<a:b xmlns\0x:c\0y='d\0z' c:e='f'/>"sv),
            (Rows{{"xmpmeta/RDF/", "e", "d", "f"}}));
}

TEST(XmpNamespaces, EmptyBindingGivesAnEmptyNamespace) {
  EXPECT_EQ(RowsInRoot("<a:b xmlns:c='' c:d='e'/>"), (Rows{{"xmpmeta/RDF/", "d", "", "e"}}));
}

TEST(XmpNamespaces, FirstByteAsPrefixCanBeBound) {
  EXPECT_EQ(ReadPacket("q<rdf:RDF xmlns:q='n'><a>b</a></rdf:RDF>").properties,
            (Rows{{"xmpmeta/RDF/", "a", "n", "b"}}));
}

TEST(XmpNamespaces, BindingsBeforeTheRootDoNotCount) {
  EXPECT_EQ(ReadPacket("<x:xmpmeta xmlns:a='n'><rdf:RDF a:b='c'/></x:xmpmeta>").properties,
            (Rows{{"xmpmeta/", "b", "a", "c"}}));
}

// The last four characters decide, so a property named "Label" is as good as one named "Abel".
TEST(XmpWantedNames, OthersAreCountedButNotKept) {
  XmpNameSet names;
  names.Add("Abel");
  constexpr std::string_view kPacket =
      "<rdf:RDF xmlns:x='1' x:a='2' x:Abel='3' x:Abe='4'><x:LAbel>5</x:LAbel><x:c>6</x:c>"
      "<y:d Abel='7'/></rdf:RDF>";
  PacketParser parser(kPacket);
  parser.KeepOnly(names);
  parser.ParseRoot();
  EXPECT_EQ(Properties(parser), (std::vector<XmpProperty>{{"xmpmeta/", "Abel", "1", "3"},
                                                          {"xmpmeta/RDF/", "LAbel", "1", "5"},
                                                          {"xmpmeta/RDF/", "Abel", "<", "7"}}));
  EXPECT_EQ(parser.PropertyNumber(0), 1u);
  EXPECT_EQ(parser.PropertyNumber(1), 3u);
  EXPECT_EQ(parser.PropertyNumber(2), 5u);
}

TEST(XmpWantedNames, TheOneOfTwoCharactersIsKept) {
  XmpNameSet names;
  names.Add("li");
  PacketParser parser("<rdf:RDF x:='1' li='2' x:li='3'><x:>4</x:><li>5</li><x:i>6</x:i></rdf:RDF>");
  parser.KeepOnly(names);
  parser.ParseRoot();
  ASSERT_EQ(parser.PropertyCount(), 3u);
  EXPECT_EQ(parser.PropertyNumber(0), 1u);
  EXPECT_EQ(parser.PropertyNumber(1), 2u);
  EXPECT_EQ(parser.PropertyNumber(2), 4u);
}

// A name may then be shorter than it looks.
TEST(XmpWantedNames, AllAreKeptWhenZeroBytesCutNames) {
  XmpNameSet names;
  names.Add("Lens");
  PacketParser parser("<rdf:RDF x:Lens\0y='1' x:a='2'><x:Lens\0z>3</x:Lens></rdf:RDF>"sv);
  parser.KeepOnly(names);
  parser.ParseRoot();
  ASSERT_EQ(parser.PropertyCount(), 3u);
  EXPECT_EQ(parser.PropertyName(0), "Lens");
  EXPECT_EQ(parser.PropertyName(2), "Lens");
}

TEST(VxXMPParser, ReadsSingleAttributes) {
  const PacketParser parser("<a:b c:d='e'/>");
  XmpAttribute attribute;
  ASSERT_TRUE(parser.ReadAttribute(5, 11, attribute));
  EXPECT_EQ(attribute.Prefix(), "c");
  EXPECT_EQ(attribute.Name(), "d");
  EXPECT_EQ(attribute.Value(), "e");
  EXPECT_FALSE(parser.ReadAttribute(5, 10, attribute));
}

TEST(XmpWantedNames, AllAreKeptAgainAfterAReset) {
  const XmpNameSet none;
  constexpr std::string_view kPacket = "<rdf:RDF x:a='1'><x:b>2</x:b></rdf:RDF>";
  PacketParser parser(kPacket);
  parser.KeepOnly(none);
  parser.ParseRoot();
  EXPECT_EQ(parser.PropertyCount(), 0u);
  parser.Reset();
  parser.SetText(test::PacketBytes(kPacket));
  parser.ParseRoot();
  ASSERT_EQ(parser.PropertyCount(), 2u);
  EXPECT_EQ(parser.PropertyNumber(1), 1u);
}

}  // namespace
