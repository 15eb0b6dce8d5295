#include "xmp/XmpScanner.h"

#include <algorithm>

namespace {

XmpTagKind KindOf(std::string_view packet, const XmpTagMarks& tag) noexcept {
  if (IsXmpEndTag(packet, tag.start)) return XmpTagKind::EndTag;
  return IsXmpEmptyTag(packet, tag) ? XmpTagKind::EmptyTag : XmpTagKind::StartTag;
}

}  // namespace

std::string_view XmpSubstring(std::string_view packet, std::uint32_t first,
                              std::uint32_t last) noexcept {
  if (first > last || first >= packet.size()) return {};
  const std::string_view span = packet.substr(first, std::size_t{last} - first + 1);
  return span.substr(0, span.find('\0'));
}

bool ScanXmpTag(std::string_view packet, std::uint32_t position, XmpTag& tag) noexcept {
  if (position >= packet.size()) return false;
  XmpTagMarks marks;
  const bool isWhole = FindXmpTag(packet, FindByte<'<'>(packet, position), marks);
  tag = isWhole ? MakeXmpTag(packet, marks) : XmpTag();
  return isWhole;
}

// With several colons the prefix is what stands before the last one, back to the one before. The
// slash of an end tag is not skipped: it belongs to the prefix, or to a name without one.
XmpTag MakeXmpTag(std::string_view packet, const XmpTagMarks& marks) noexcept {
  XmpTag tag;
  tag.packet = packet;
  tag.kind = KindOf(packet, marks);
  tag.start = XmpPosition(marks.start);
  tag.end = XmpPosition(marks.end);
  const std::size_t colon = FindXmpColon(packet, marks.name, marks.nameEnd);
  const bool hasPrefix = colon != marks.name;
  if (hasPrefix) {
    const std::size_t before = FindXmpColon(packet, marks.name, colon);
    tag.prefixStart = XmpPosition(before == marks.name ? before : before + 1);
    tag.prefixEnd = XmpPosition(colon - 1);
  }
  tag.nameStart = XmpPosition(hasPrefix ? colon + 1 : marks.name);
  tag.nameEnd = XmpPosition(marks.nameEnd - 1);
  if (marks.attributes != 0) {
    tag.attrStart = XmpPosition(marks.attributes);
    tag.attrEnd = XmpPosition(marks.end - 1);
  }
  return tag;
}

bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                      XmpAttribute& attribute) noexcept {
  attribute = {};
  const std::size_t end = std::min(std::size_t{to} + 1, packet.size());
  const auto keepFirst = [packet, &attribute](const XmpAttributeMarks& marks) {
    const std::size_t colon = FindXmpColon(packet, marks.start, marks.equals);
    const bool hasPrefix = colon != marks.start;
    attribute.start = XmpPosition(marks.start);
    attribute.end = XmpPosition(marks.closing);
    attribute.prefixStart = hasPrefix ? XmpPosition(marks.start) : 0;
    attribute.prefixEnd = hasPrefix ? XmpPosition(colon - 1) : 0;
    attribute.nameStart = XmpPosition(hasPrefix ? colon + 1 : marks.start);
    attribute.nameEnd = XmpPosition(marks.equals - 1);
    attribute.valueStart = XmpPosition(marks.opening + 1);
    attribute.valueEnd = XmpPosition(marks.closing - 1);
    attribute.packet = packet;
    return false;
  };
  VisitXmpAttributes(packet, from, end, keepFirst);
  return attribute.end != 0;
}
