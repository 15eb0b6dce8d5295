#include "xmp/XmpScanner.h"

#include <algorithm>

std::string_view XmpSubstring(std::string_view packet, std::uint32_t first,
                              std::uint32_t last) noexcept {
  if (first > last || first >= packet.size()) return {};
  const std::string_view span = packet.substr(first, std::size_t{last} - first + 1);
  return span.substr(0, span.find('\0'));
}

bool ScanXmpTag(std::string_view packet, std::uint32_t position, XmpTag& tag) noexcept {
  if (position >= packet.size()) return false;
  return ScanXmpTagAt(packet, FindByte(packet, '<', position), XmpKnownPrefix(), tag);
}

std::size_t SkipXmpTagGap(std::string_view packet, std::size_t at) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '<' || c == '\\'; };
  while (at < packet.size() && isGap(packet[at])) ++at;
  return at;
}

std::size_t ScanXmpTagAttributes(std::string_view packet, std::size_t at, XmpTag& tag) noexcept {
  const std::size_t attributes = SkipXmpTagGap(packet, at);
  if (IsXmpTagsEnd(packet, attributes)) return attributes;
  const std::size_t end = std::min(packet.find('>', attributes + 1), packet.size());
  tag.attrStart = XmpPosition(attributes);
  tag.attrEnd = XmpPosition(end - 1);
  return end;
}

bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                      XmpAttribute& attribute) noexcept {
  attribute = {};
  const std::string_view text = packet.substr(0, std::size_t{to} + 1);
  const auto keepFirst = [packet, &attribute](const XmpAttributeMarks& marks) {
    const bool hasPrefix = marks.colon != marks.start;
    attribute.start = XmpPosition(marks.start);
    attribute.end = XmpPosition(marks.closing);
    attribute.prefixStart = hasPrefix ? XmpPosition(marks.start) : 0;
    attribute.prefixEnd = hasPrefix ? XmpPosition(marks.colon - 1) : 0;
    attribute.nameStart = XmpPosition(hasPrefix ? marks.colon + 1 : marks.start);
    attribute.nameEnd = XmpPosition(marks.equals - 1);
    attribute.valueStart = XmpPosition(marks.opening + 1);
    attribute.valueEnd = XmpPosition(marks.closing - 1);
    attribute.packet = packet;
    return false;
  };
  VisitXmpAttributes(text, from, XmpKnownPrefix(), keepFirst);
  return attribute.end != 0;
}
