#ifndef LUMIDEX_TESTS_SUPPORT_XMPPACKET_H_
#define LUMIDEX_TESTS_SUPPORT_XMPPACKET_H_

// Builds XMP packets of one rdf:Description:
//
//   std::string packet = XmpPacket("GPano:PoseHeadingDegrees=\"12.5\"");

#include <string>
#include <string_view>

namespace test {

// The shortest packet, and one that tells a panorama: 12 and 22 characters.
inline constexpr char kShortPacket[] = "<x:xmpmeta/>";
inline constexpr std::string_view kPanoramaPacket = "<x>equirectangular</x>";

// A property in its element.
inline constexpr std::string_view kRatingPacket =
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
    "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" "
    "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\"><xmp:Rating>5</xmp:Rating>"
    "</rdf:Description></rdf:RDF></x:xmpmeta>";

// Declarations of the prefixes that packets of the tests use.
inline constexpr std::string_view kGPano =
    "xmlns:GPano=\"http://ns.google.com/photos/1.0/panorama/\"";
inline constexpr std::string_view kXmpBasic = "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\"";

// A packet whose description has the given declaration and attributes; values in double quotes.
inline std::string XmpPacket(std::string_view attributes, std::string_view declaration = kGPano) {
  std::string packet =
      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
      "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
      "<rdf:Description rdf:about=\"\" ";
  packet += declaration;
  packet += ' ';
  packet += attributes;
  packet += "/></rdf:RDF></x:xmpmeta>";
  return packet;
}

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_XMPPACKET_H_
