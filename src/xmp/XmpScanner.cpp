#include "xmp/XmpScanner.h"

#include <algorithm>
#include <cstddef>

#include "xmp/ByteChunks.h"

namespace {

std::uint32_t SizeOf(std::string_view packet) noexcept {
  return static_cast<std::uint32_t>(packet.size());
}

// Skips what stands before a tag's name and before its attributes, up to the packet's end or a ">".
//
// By design: tab and carriage return are part of what follows.
std::uint32_t SkipTagGap(std::string_view packet, std::uint32_t at) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '<' || c == '\\'; };
  while (at < packet.size() && isGap(packet[at])) ++at;
  return at;
}

// Whether a position is that of a tag's last character, or behind a packet that ends before it.
bool IsTagsEnd(std::string_view packet, std::uint32_t at) noexcept {
  return at == packet.size() || packet[at] == '>';
}

// Reads the name that begins at a position. Returns where it ends. With several colons the prefix
// is what stands before the last one, back to the one before.
std::uint32_t ScanTagName(std::string_view packet, std::uint32_t at, XmpTag& tag) noexcept {
  const std::uint32_t size = SizeOf(packet);
  std::uint32_t mark = at;
  // By design: the first character only begins the name, also when it is a colon or a line feed.
  for (++at; (at = FindByteUpTo(packet, '>', at, size)) < size; ++at) {
    const char c = packet[at];
    if (c == ':') {
      tag.prefixStart = mark;
      tag.prefixEnd = at - 1;
      mark = at + 1;
    } else if (c == '>' || c == ' ' || c == '\n' || c == '<') {
      break;
    }
  }
  tag.nameStart = mark;
  tag.nameEnd = at - 1;
  return at;
}

// Reads a tag's name and finds its attributes. Returns where the tag ends, or the packet's size.
//
// By design: a ">" inside an attribute's value ends the tag too.
std::uint32_t ScanTagContent(std::string_view packet, XmpTag& tag) noexcept {
  const std::uint32_t name = SkipTagGap(packet, tag.start + 1);
  if (IsTagsEnd(packet, name)) return name;
  const std::uint32_t nameEnd = ScanTagName(packet, name, tag);
  if (IsTagsEnd(packet, nameEnd)) return nameEnd;
  const std::uint32_t attributes = SkipTagGap(packet, nameEnd + 1);
  if (IsTagsEnd(packet, attributes)) return attributes;
  const std::uint32_t end = FindByte(packet, '>', attributes + 1);
  tag.attrStart = attributes;
  tag.attrEnd = end - 1;
  return end;
}

// The slash of an end tag is not skipped: it belongs to the prefix, or to a name without one.
XmpTagKind KindOf(std::string_view packet, const XmpTag& tag) noexcept {
  if (packet[tag.start + 1] == '/') return XmpTagKind::EndTag;
  if (packet[tag.end - 1] == '/') return XmpTagKind::EmptyTag;
  return XmpTagKind::StartTag;
}

// By design: the two kinds of quotes are one; a value ends at the next of either kind.
bool IsQuote(char c) noexcept {
  return c == '"' || c == '\'';
}

// By design: tab and carriage return before an attribute become part of its prefix or name.
std::uint32_t SkipAttributeGap(std::string_view packet, std::uint32_t at,
                               std::uint32_t limit) noexcept {
  const auto isGap = [](char c) { return c == '\n' || c == '<' || c == '>'; };
  while ((at = SkipSpaces(packet, at, limit)) < limit && isGap(packet[at])) ++at;
  return at;
}

// Reads prefix and name of the attribute that begins at attribute.start. Returns where its "=" is,
// or the limit. The prefix reaches to the last colon, and spaces before the "=" belong to the name.
std::uint32_t ScanAttributeName(std::string_view packet, std::uint32_t limit,
                                XmpAttribute& attribute) noexcept {
  // By design: the first character only begins the attribute, also when it is a colon or a "=".
  std::uint32_t at = attribute.start + 1;
  std::uint32_t colon = 0;
  for (; (at = FindByteUpTo(packet, '=', at, limit)) < limit; ++at) {
    if (packet[at] == '=') break;
    if (packet[at] == ':') colon = at;
  }
  attribute.nameStart = colon == 0 ? attribute.start : colon + 1;
  attribute.nameEnd = at - 1;
  if (colon == 0) return at;
  attribute.prefixStart = attribute.start;
  attribute.prefixEnd = colon - 1;
  return at;
}

// Reads the value behind a "=". False when it does not end before the limit.
bool ScanAttributeValue(std::string_view packet, std::uint32_t equals, std::uint32_t limit,
                        XmpAttribute& attribute) noexcept {
  std::uint32_t at = equals + 1;
  while (at < limit && !IsQuote(packet[at])) ++at;
  if (at == limit) return false;
  const std::uint32_t start = ++at;
  while ((at = FindByteUpTo(packet, '\'', at, limit)) < limit && !IsQuote(packet[at])) ++at;
  if (at == limit) return false;
  attribute.end = at;
  attribute.valueStart = start;
  attribute.valueEnd = at - 1;
  return true;
}

}  // namespace

std::string_view XmpSubstring(std::string_view packet, std::uint32_t first,
                              std::uint32_t last) noexcept {
  if (first > last || first >= packet.size()) return {};
  const std::string_view span = packet.substr(first, std::size_t{last} - first + 1);
  return span.substr(0, span.find('\0'));
}

bool ScanXmpTagAt(std::string_view packet, std::uint32_t start, XmpTag& tag) noexcept {
  tag = {};
  if (start == packet.size()) return false;
  tag.start = start;
  const std::uint32_t end = ScanTagContent(packet, tag);
  if (end == packet.size()) {
    tag = {};
    return false;
  }
  tag.end = end;
  tag.kind = KindOf(packet, tag);
  tag.packet = packet;
  return true;
}

bool ScanXmpTag(std::string_view packet, std::uint32_t position, XmpTag& tag) noexcept {
  return position < packet.size() && ScanXmpTagAt(packet, FindByte(packet, '<', position), tag);
}

bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                      XmpAttribute& attribute) noexcept {
  attribute = {};
  if (from > to || from >= packet.size()) return false;
  const std::uint32_t limit = std::min(to, SizeOf(packet) - 1) + 1;
  XmpAttribute found;
  found.packet = packet;
  found.start = SkipAttributeGap(packet, from, limit);
  if (found.start == limit) return false;
  const std::uint32_t equals = ScanAttributeName(packet, limit, found);
  if (equals == limit || !ScanAttributeValue(packet, equals, limit, found)) return false;
  attribute = found;
  return true;
}
