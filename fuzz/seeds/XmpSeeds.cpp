// XMP packets.

#include <string_view>

#include "Seeds.h"
#include "Xmp.h"
#include "support/XmpPacket.h"

namespace fuzz {
namespace {

// Every kind of markup: comments, sections, instructions, entities, empty elements, both quotes.
constexpr std::string_view kMarkup =
    "<?xpacket begin=\"\xEF\xBB\xBF\" id='W5M0MpCehiHzreSzNTczkc9d'?>"
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'><!-- a > b --><rdf:RDF "
    "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about='' "
    "xmlns:dc='http://purl.org/dc/elements/1.1/' "
    "xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/'>"
    "<dc:subject><rdf:Bag><rdf:li>a &amp; b</rdf:li><rdf:li>&lt;&#65;&#x1F600;&bad;</rdf:li>"
    "<rdf:li/></rdf:Bag></dc:subject><dc:title><rdf:Alt><rdf:li xml:lang='x-default'>"
    "Gr\xC3\xBC\xC3\x9F\x65</rdf:li></rdf:Alt></dc:title><photoshop:City>Oslo"
    "</photoshop:City></rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>";

// Tags that do not fit each other, a text without an end.
constexpr std::string_view kBroken =
    "<x:xmpmeta><rdf:RDF><rdf:Description a:b=c d='e\" f=><g></h></rdf:Bag><i j=\"k\"<l>m</";

constexpr std::string_view kHead =
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
    "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description>";
constexpr std::string_view kTail = "</rdf:Description></rdf:RDF></x:xmpmeta>";

// Regions without a name, without a type, and with all three.
constexpr std::string_view kRegions =
    "<r:Rectangle>0, 0, 1, 1</r:Rectangle><r:PersonTagType>Face</r:PersonTagType>"
    "<r:PersonDisplayName>A</r:PersonDisplayName><r:Rectangle>0, 0, 1, 1</r:Rectangle>"
    "<r:PersonDisplayName>B</r:PersonDisplayName><r:Rectangle>0, 0, 1, 1</r:Rectangle>"
    "<r:PersonTagType>Face</r:PersonTagType>";

std::string Nested(std::size_t depth) {
  std::string text(kHead);
  for (std::size_t i = 0; i < depth; ++i) text += "<rdf:li a='b'>";
  for (std::size_t i = 0; i < depth; ++i) text += "</rdf:li>";
  return text += kTail;
}

}  // namespace

Seeds XmpSeeds() {
  return {
      {"panorama", test::Text(samples::RatedPanoramaPacket(800))},
      {"people", test::Text(samples::PeoplePacket())},
      {"exposure", test::Text(samples::ExposurePacket())},
      {"attributes", test::Text(test::XmpPacket("xmp:Rating='3' xmp:Label=\"\"", test::kXmpBasic))},
      {"markup", test::Text(kMarkup)},
      {"broken", test::Text(kBroken)},
      {"regions", test::Text(std::string(kHead) + std::string(kRegions) + std::string(kTail))},
      {"nested", test::Text(Nested(30))},
  };
}

}  // namespace fuzz
