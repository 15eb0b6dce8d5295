#include "inputs/XmpPackets.h"

#include <string_view>

namespace bench {
namespace {

constexpr std::string_view kHead = R"xml(<?xpacket begin="" id="W5M0MpCehiHzreSzNTczkc9d"?>
<x:xmpmeta xmlns:x="adobe:ns:meta/" x:xmptk="Core 7.0">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about=""
    xmlns:xmp="http://ns.adobe.com/xap/1.0/"
    xmlns:dc="http://purl.org/dc/elements/1.1/"
    xmlns:exif="http://ns.adobe.com/exif/1.0/"
    xmlns:tiff="http://ns.adobe.com/tiff/1.0/"
    xmlns:aux="http://ns.adobe.com/exif/1.0/aux/"
    xmlns:photoshop="http://ns.adobe.com/photoshop/1.0/"
    xmlns:xmpMM="http://ns.adobe.com/xap/1.0/mm/"
    xmlns:stEvt="http://ns.adobe.com/xap/1.0/sType/ResourceEvent#"
   xmp:CreatorTool="Darkroom 2.1"
   xmp:Rating="3">
)xml";

constexpr std::string_view kTail = R"xml(  </rdf:Description>
 </rdf:RDF>
</x:xmpmeta>
<?xpacket end="w"?>)xml";

constexpr std::string_view kBlock = R"xml(   <exif:ExposureTime>1/250</exif:ExposureTime>
   <exif:FocalLength>700/10</exif:FocalLength>
   <tiff:Model>Camera 300</tiff:Model>
   <xmp:ModifyDate>2023-02-23T19:35:15+08:00</xmp:ModifyDate>
   <dc:subject>
    <rdf:Bag>
     <rdf:li>harbour</rdf:li>
     <rdf:li>night over the city</rdf:li>
    </rdf:Bag>
   </dc:subject>
   <xmpMM:History>
    <rdf:Seq>
     <rdf:li
      stEvt:action="derived"
      stEvt:parameters="converted from image/x-raw to image/jpeg, saved to new location"/>
     <rdf:li
      stEvt:action="saved"
      stEvt:instanceID="xmp.iid:0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9"
      stEvt:when="2023-02-23T19:35:15+08:00"
      stEvt:softwareAgent="Darkroom 2.1"
      stEvt:changed="/"/>
    </rdf:Seq>
   </xmpMM:History>
   <dc:rights>
    <rdf:Alt>
     <rdf:li xml:lang="x-default">All rights reserved by the photographer</rdf:li>
    </rdf:Alt>
   </dc:rights>
)xml";

constexpr std::string_view kLevelStart =
    "<stEvt:level stEvt:action=\"saved\" stEvt:changed=\"/\">\n";
constexpr std::string_view kLevelEnd = "</stEvt:level>\n";

void Repeat(std::string& text, std::string_view part, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) text += part;
}

}  // namespace

std::string FlatPacket(std::size_t size) {
  std::string packet(kHead);
  Repeat(packet, kBlock, (size - kHead.size() - kTail.size()) / kBlock.size() + 1);
  return packet += kTail;
}

std::string NestedPacket(std::size_t size) {
  const std::size_t level = kLevelStart.size() + kLevelEnd.size();
  const std::size_t depth = (size - kHead.size() - kTail.size()) / level + 1;
  std::string packet(kHead);
  Repeat(packet, kLevelStart, depth);
  packet += "<dc:rights>All rights reserved</dc:rights>\n";
  Repeat(packet, kLevelEnd, depth);
  return packet += kTail;
}

}  // namespace bench
