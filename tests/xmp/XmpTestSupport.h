#ifndef LUMIDEX_TESTS_XMP_XMPTESTSUPPORT_H_
#define LUMIDEX_TESTS_XMP_XMPTESTSUPPORT_H_

// Reads packets as a store does, with the log on, and states what came out of them.

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/LogCapture.h"
#include "xmp/VxXMPParser.h"

// Printed by a failing comparison.
inline void PrintTo(const XmpProperty& property, std::ostream* stream) {
  *stream << '{' << property.path << " | " << property.name << " | " << property.nameSpace << " | "
          << property.value << '}';
}

namespace test {

inline std::span<const std::uint8_t> PacketBytes(std::string_view packet) {
  return {reinterpret_cast<const std::uint8_t*>(packet.data()), packet.size()};
}

// A parser with a packet that outlives it.
class PacketParser : public VxXMPParser {
 public:
  explicit PacketParser(std::string_view packet) : VxXMPParser(0) {
    Reset();
    SetText(PacketBytes(packet));
  }
};

inline std::vector<XmpProperty> Properties(const VxXMPParser& parser) {
  std::vector<XmpProperty> properties;
  for (std::size_t i = 0; i < parser.PropertyCount(); ++i) {
    properties.push_back(parser.Property(i));
  }
  return properties;
}

// The properties of a packet and the log lines of its walk.
struct PacketResult {
  std::vector<XmpProperty> properties;
  std::vector<std::string> log;
};

inline PacketResult ReadPacket(std::string_view packet) {
  const LogCapture log;
  PacketParser parser(packet);
  parser.ParseRoot();
  return {Properties(parser), log.Lines()};
}

inline std::string Repeat(std::string_view text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

}  // namespace test

#endif  // LUMIDEX_TESTS_XMP_XMPTESTSUPPORT_H_
