#ifndef LUMIDEX_TESTS_XMP_XMPPACKETCASE_H_
#define LUMIDEX_TESTS_XMP_XMPPACKETCASE_H_

// One row of the tables of whole packets: a packet, what it gives, and what is logged about it.

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "xmp/XmpTestSupport.h"

namespace test {

struct PacketCase {
  std::string name;
  std::string packet;
  std::vector<XmpProperty> properties;
  std::vector<std::string> log = {};
};

inline void PrintTo(const PacketCase& row, std::ostream* stream) {
  *stream << row.name;
}

inline std::string PacketCaseName(const testing::TestParamInfo<PacketCase>& row) {
  return row.param.name;
}

inline const std::string kRdf = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";
inline const std::string kXmp = "http://ns.adobe.com/xap/1.0/";
inline const std::string kRights = "http://ns.adobe.com/xap/1.0/rights/";
inline const std::string kMedia = "http://ns.adobe.com/xap/1.0/mm/";
inline const std::string kReference = "http://ns.adobe.com/xap/1.0/sType/ResourceRef#";
inline const std::string kEvent = "http://ns.adobe.com/xap/1.0/sType/ResourceEvent#";
inline const std::string kDc = "http://purl.org/dc/elements/1.1/";
inline const std::string kExif = "http://ns.adobe.com/exif/1.0/";
inline const std::string kAux = "http://ns.adobe.com/exif/1.0/aux/";
inline const std::string kTiff = "http://ns.adobe.com/tiff/1.0/";

// The paths of a description's attributes and of its elements.
inline const std::string kRoot = "xmpmeta/RDF/";
inline const std::string kDescription = "xmpmeta/RDF/Description/";

}  // namespace test

#endif  // LUMIDEX_TESTS_XMP_XMPPACKETCASE_H_
