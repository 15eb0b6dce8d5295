// Packets that an XML reader would take differently or not at all, as they occur in photographs.

#include <string_view>

#include "xmp/XmpPacketCase.h"

namespace {

using namespace test;
using namespace std::string_literals;

std::string WrongPair(const std::string& found, const std::string& expected) {
  return "[VxXMPParser] XMPParser!!!, format error, wrong Pair (" + found + ")!=(" + expected + ")";
}

std::string WrongEnd(const std::string& found, const std::string& expected) {
  return "[VxXMPParser] XMPParser!!!, format error, wrong End (" + found + ")!=(" + expected + ")";
}

std::string WrongPacketEnd(const std::string& found) {
  return "[VxXMPParser] XMPParser!!!, wrong end (" + found + ")!=(xmpmeta)";
}

// A text with its line ends as some systems write them.
std::string WithCarriageReturns(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

const std::vector<PacketCase> kOddPackets = {
    {"CarriageReturnsBetweenElements",
     WithCarriageReturns(R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
    <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
        <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
            <dc:source>a
b</dc:source>
        </rdf:Description>
    </rdf:RDF>
</x:xmpmeta>
)xml"),
     {{kRoot, "about", kRdf, ""}, {kDescription, "source", kDc, "a\r\nb"}}},

    // The binding of xmp is lost, so nothing behind it resolves.
    {"CarriageReturnsBetweenAttributes",
     WithCarriageReturns(R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description rdf:about=""
 xmlns:xmp="http://ns.adobe.com/xap/1.0/"
 xmp:Rating="3">
<xmp:Label>Blue</xmp:Label>
</rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml"),
     {{kRoot, "about", kRdf, ""},
      {kRoot, "xmp", "\r\n xmlns", kXmp},
      {kRoot, "Rating", "\r\n xmp", "3"},
      {kDescription, "Label", "xmp", "Blue"}}},

    {"CarriageReturnBehindATagName",
     WithCarriageReturns(R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
<rdf:Description
 xmlns:xmp="http://ns.adobe.com/xap/1.0/" rdf:about="">
<xmp:Label>Blue</xmp:Label>
</rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml"),
     {{kRoot, "about", kRdf, ""}, {"xmpmeta/RDF/Description\r/", "Label", kXmp, "Blue"}},
     {WrongEnd("Description", "Description\r")}},

    {"TabsBetweenAttributes",
     "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
     "\t<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
     "\t\t<rdf:Description rdf:about=\"\"\txmlns:xmp=\"http://ns.adobe.com/xap/1.0/\"\t"
     "xmp:Rating=\"2\"/>\n"
     "\t</rdf:RDF>\n"
     "</x:xmpmeta>",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "xmp", "\txmlns", kXmp},
      {kRoot, "Rating", "\txmp", "2"}}},

    {"SingleQuotesAroundDoubleQuotes",
     R"xml(<x:xmpmeta xmlns:x='adobe:ns:meta/'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>
 <rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' dc:source='He said "hi"' dc:format='image/jpeg'>
  <dc:identifier>it's "7"</dc:identifier>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "source", kDc, "He said "},
      {kRoot, "format", "hi\"' dc", "image/jpeg"},
      {kDescription, "identifier", kDc, "it's \"7\""}}},

    // A comment is a start tag, so all end tags behind it close one element less than they should.
    {"CommentBetweenElements",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<!-- made by hand -->
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/">
  <!-- rated by hand -->
  <xmp:Rating>5</xmp:Rating>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end="w"?>)xml",
     {{kRoot, "about", kRdf, ""}, {kDescription + "!--/", "Rating", kXmp, "5"}},
     {WrongEnd("Description", "!--"), WrongEnd("RDF", "Description"), WrongEnd("xmpmeta", "RDF"),
      WrongPacketEnd("?xpacket")}},

    {"CommentBeforeAnEndTag",
     R"xml(<x:xapmeta xmlns:x='adobe:ns:meta/'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>
 <rdf:Description about='uuid:1' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'>
  <!-- pdf:Title is aliased -->
 </rdf:Description>
</rdf:RDF>
</x:xapmeta>
<?xpacket end='w'?>)xml",
     {{kRoot, "about", "<", "uuid:1"}, {kDescription, "!--", "<", "\n "}},
     {WrongPair("Description", "!--"), WrongEnd("RDF", "Description"), WrongEnd("xapmeta", "RDF"),
      WrongPacketEnd("?xpacket")}},

    {"CommentThatHidesAnAttribute",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/">
  <!-- xmp:Rating="1" -->
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription, "Rating", kXmp, "1"},
      {kDescription, "!--", "<", "\n "}},
     {WrongPair("Description", "!--"), WrongEnd("RDF", "Description"), WrongEnd("xmpmeta", "RDF"),
      WrongPacketEnd("")}},

    {"CdataSection",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
  <dc:source><![CDATA[a < b]]></dc:source>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""}, {kDescription + "source/", "![CDATA[a", "<", ""}},
     {WrongPair("source", "![CDATA[a"), WrongEnd("Description", "source"),
      WrongEnd("RDF", "Description"), WrongEnd("xmpmeta", "RDF"), WrongPacketEnd("")}},

    {"CdataSectionBehindText",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
  <dc:source>a <![CDATA[b:c]]> d</dc:source>
  <dc:format>e</dc:format>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kDescription + "source/", "c]]", "![CDATA[b", " d"},
      {kDescription + "source/", "format", kDc, "e"}},
     {WrongPair("source", "c]]"), WrongEnd("Description", "source"), WrongEnd("RDF", "Description"),
      WrongEnd("xmpmeta", "RDF"), WrongPacketEnd("")}},

    {"ProcessingInstructionsBeforeTheRoot",
     R"xml(<?xml version="1.0" encoding="UTF-8"?>
<?adobe-xap-filters esc="CR"?>
<!DOCTYPE x>
<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#" xmlns:iX="http://ns.adobe.com/iX/1.0/">
 <rdf:Description rdf:about="" iX:changes="">
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "changes", "http://ns.adobe.com/iX/1.0/", ""},
      {kRoot, "Description", kRdf, "\n "}}},

    {"NoXmpmetaElement",
     R"xml(<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>
 <rdf:Description rdf:about='' xmlns:xmp='http://ns.adobe.com/xap/1.0/' xmp:Rating='5'/>
</rdf:RDF>
<?xpacket end='r'?>)xml",
     {{kRoot, "about", kRdf, ""}, {kRoot, "Rating", kXmp, "5"}},
     {WrongPacketEnd("?xpacket")}},

    {"NothingButTheRoot",
     R"xml(<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><rdf:Description rdf:about=""/></rdf:RDF>)xml",
     {{kRoot, "about", kRdf, ""}},
     {WrongPacketEnd("")}},

    {"RootUnderAnotherPrefix",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/"><r:RDF xmlns:r="http://www.w3.org/1999/02/22-rdf-syntax-ns#"><r:Description r:about=""/></r:RDF></x:xmpmeta>)xml",
     {}},

    // As a JPEG segment hands its packet over: the name without a colon gets the slash as its
    // prefix.
    {"BehindTheSegmentsSignature",
     "/\0"s + R"xml(<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>
<x:xapmeta xmlns:x='adobe:ns:meta/' x:xaptk='toolkit 2.8'>
<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>

 <rdf:Description about='uuid:b526'
  xmlns:xap='http://ns.adobe.com/xap/1.0/'>
  <xap:Rating>2</xap:Rating>
 </rdf:Description>

</rdf:RDF>
</x:xapmeta>)xml",
     {{kRoot, "about", "/", "uuid:b526"}, {kDescription, "Rating", kXmp, "2"}},
     {WrongPacketEnd("xapmeta")}},

    {"DefaultNamespace",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#" xmlns="http://ns.adobe.com/xap/1.0/">
 <rdf:Description rdf:about="" Label="Red">
  <Rating>5</Rating>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{"xmpmeta/", "xmlns", "<", kXmp},
      {kRoot, "about", kRdf, ""},
      {kRoot, "Label", "<", "Red"},
      {kDescription, "Rating", "<", "5"}},
     {WrongPair("/Rating", "Rating")}},

    {"PrefixDeclaredTwice",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:a="http://ns.adobe.com/xap/1.0/" a:Rating="1">
  <b:Inner xmlns:a="http://ns.adobe.com/tiff/1.0/"><a:Make>X</a:Make></b:Inner>
  <a:Label>Red</a:Label>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""},
      {kRoot, "Rating", kXmp, "1"},
      {kDescription + "Inner/", "Make", kTiff, "X"},
      {kDescription, "Label", kTiff, "Red"}}},

    {"BracketInAnAttribute",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/" dc:source="a > b" dc:format="c"/>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about", kRdf, ""}, {kRoot, "Description", kRdf, " b\" dc:format=\"c\"/>\n"}},
     {WrongPair("RDF", "Description"), WrongEnd("xmpmeta", "RDF"), WrongPacketEnd("")}},

    {"EndTagIsMissing",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/">
  <xmp:Rating>3
  <xmp:Label>Red</xmp:Label>
 </rdf:Description>
</rdf:RDF>
</x:xmpmeta>
<?xpacket end="w"?>)xml",
     {{kRoot, "about", kRdf, ""}, {kDescription + "Rating/", "Label", kXmp, "Red"}},
     {WrongEnd("Description", "Rating"), WrongEnd("RDF", "Description"), WrongEnd("xmpmeta", "RDF"),
      WrongPacketEnd("?xpacket")}},

    {"CutOffInsideAnElement",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/">
  <xmp:Rating>3</xmp:Rating>
  <xmp:Label>Red</xmp:La)xml",
     {{kRoot, "about", kRdf, ""}, {kDescription, "Rating", kXmp, "3"}},
     {WrongPacketEnd("")}},

    {"SpacesAroundEqualsSigns",
     R"xml(<x:xmpmeta xmlns:x="adobe:ns:meta/">
<rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
 <rdf:Description rdf:about = "" xmlns:xmp = "http://ns.adobe.com/xap/1.0/" xmp:Rating= "3"/>
</rdf:RDF>
</x:xmpmeta>)xml",
     {{kRoot, "about ", kRdf, ""}, {kRoot, "Rating", "xmp", "3"}}},
};

class XmpOddPacket : public testing::TestWithParam<PacketCase> {};

TEST_P(XmpOddPacket, GivesItsPropertiesAndLog) {
  const PacketResult result = ReadPacket(GetParam().packet);
  EXPECT_EQ(result.properties, GetParam().properties);
  EXPECT_EQ(result.log, GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(Tools, XmpOddPacket, testing::ValuesIn(kOddPackets), PacketCaseName);

}  // namespace
