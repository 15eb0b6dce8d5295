#include "xmp/XmpScanner.h"

#include <algorithm>
#include <cstddef>

namespace {

std::uint32_t SizeOf(std::string_view packet) noexcept {
  return static_cast<std::uint32_t>(packet.size());
}

// Where a character next occurs, or the packet's size.
std::uint32_t Find(std::string_view packet, char wanted, std::uint32_t from) noexcept {
  return static_cast<std::uint32_t>(std::min(packet.find(wanted, from), packet.size()));
}

// Skips what stands before a tag's name and before its attributes. A ">" ends the tag and so the
// gap.
//
// By design: tab and carriage return are part of what follows.
std::uint32_t SkipTagGap(std::string_view packet, std::uint32_t at) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '<' || c == '\\'; };
  while (at < packet.size() && isGap(packet[at])) ++at;
  return at;
}

// Reads the name that begins at a position. Returns where it ends, or the packet's size. With
// several colons the prefix is what stands before the last one, back to the one before.
std::uint32_t ScanTagName(std::string_view packet, std::uint32_t at, XmpTag& tag) noexcept {
  const std::uint32_t size = SizeOf(packet);
  const char* const text = packet.data();
  std::uint32_t mark = at;
  // By design: the first character only begins the name, also when it is a colon or a line feed.
  for (++at; at < size; ++at) {
    const char c = text[at];
    if (c > '>') continue;  // above all that is looked for, as letters are
    if (c == ':') {
      tag.prefixStart = mark;
      tag.prefixEnd = at - 1;
      mark = at + 1;
    } else if (c == '>' || c == ' ' || c == '\n' || c == '<') {
      tag.nameStart = mark;
      tag.nameEnd = at - 1;
      break;
    }
  }
  return at;
}

// Reads name and attributes of the tag that begins at tag.start, and its end. The packet's size
// when the text runs out.
std::uint32_t ScanTagContent(std::string_view packet, XmpTag& tag) noexcept {
  const std::uint32_t size = SizeOf(packet);
  std::uint32_t at = SkipTagGap(packet, tag.start + 1);
  if (at == size || packet[at] == '>') return at;
  at = ScanTagName(packet, at, tag);
  if (at == size || packet[at] == '>') return at;
  at = SkipTagGap(packet, at + 1);
  if (at == size || packet[at] == '>') return at;
  tag.attrStart = at;
  // By design: a ">" inside an attribute's value ends the tag too.
  return Find(packet, '>', at);
}

// The slash of an end tag is not skipped: it belongs to the prefix, or to a name without one.
XmpTagKind KindOf(std::string_view packet, const XmpTag& tag) noexcept {
  if (packet[tag.start + 1] == '/') return XmpTagKind::EndTag;
  if (packet[tag.end - 1] == '/') return XmpTagKind::EmptyTag;
  return XmpTagKind::StartTag;
}

// By design: the two kinds of quotes are one; a value ends at the next of either kind.
std::uint32_t FindQuote(std::string_view packet, std::uint32_t at, std::uint32_t limit) noexcept {
  // One kind may be absent from a long text, so the search goes forward in steps.
  constexpr std::uint32_t kStep = 64;
  while (at < limit) {
    const std::string_view step = packet.substr(at, std::min(kStep, limit - at));
    const std::size_t before = std::min(step.find('"'), step.size());
    const std::size_t found = std::min(step.substr(0, before).find('\''), before);
    if (found < step.size()) return at + static_cast<std::uint32_t>(found);
    at += static_cast<std::uint32_t>(step.size());
  }
  return limit;
}

// By design: tab and carriage return before an attribute become part of its prefix or name.
std::uint32_t SkipAttributeGap(std::string_view packet, std::uint32_t at,
                               std::uint32_t limit) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '\n' || c == '<' || c == '>'; };
  while (at < limit && isGap(packet[at])) ++at;
  return at;
}

// Reads prefix and name of the attribute that begins at attribute.start. Returns where its "=" is,
// or the limit. The prefix reaches to the last colon, and spaces before the "=" belong to the name.
std::uint32_t ScanAttributeName(std::string_view packet, std::uint32_t limit,
                                XmpAttribute& attribute) noexcept {
  const char* const text = packet.data();
  attribute.nameStart = attribute.start;
  // By design: the first character only begins the attribute, also when it is a colon or a "=".
  for (std::uint32_t at = attribute.start + 1; at < limit; ++at) {
    const char c = text[at];
    if (c > '=') continue;  // above both, as letters are
    if (c == ':') {
      attribute.prefixStart = attribute.start;
      attribute.prefixEnd = at - 1;
      attribute.nameStart = at + 1;
    } else if (c == '=') {
      attribute.nameEnd = at - 1;
      return at;
    }
  }
  return limit;
}

}  // namespace

std::string_view XmpSubstring(std::string_view packet, std::uint32_t first,
                              std::uint32_t last) noexcept {
  if (first > last || first >= packet.size()) return {};
  const std::string_view span = packet.substr(first, std::size_t{last} - first + 1);
  return span.substr(0, span.find('\0'));
}

bool ScanXmpTag(std::string_view packet, std::uint32_t position, XmpTag& tag) noexcept {
  const std::uint32_t size = SizeOf(packet);
  if (position >= size) return false;
  tag = {};
  tag.start = Find(packet, '<', position);
  const std::uint32_t end = tag.start == size ? size : ScanTagContent(packet, tag);
  if (end == size) {
    tag = {};
    return false;
  }
  tag.end = end;
  if (tag.attrStart != 0) tag.attrEnd = end - 1;
  tag.kind = KindOf(packet, tag);
  tag.packet = packet;
  return true;
}

bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                      XmpAttribute& attribute) noexcept {
  attribute = {};
  if (from > to || from >= packet.size()) return false;
  const std::uint32_t limit = std::min(to, SizeOf(packet) - 1) + 1;
  XmpAttribute found;
  found.start = SkipAttributeGap(packet, from, limit);
  if (found.start == limit) return false;
  const std::uint32_t equals = ScanAttributeName(packet, limit, found);
  if (equals == limit) return false;
  const std::uint32_t opening = FindQuote(packet, equals + 1, limit);
  if (opening == limit) return false;
  found.end = FindQuote(packet, opening + 1, limit);
  if (found.end == limit) return false;
  found.valueStart = opening + 1;
  found.valueEnd = found.end - 1;
  found.packet = packet;
  attribute = found;
  return true;
}
