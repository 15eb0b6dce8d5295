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

// Where the "=" of the attribute that begins at a position is, or the limit. `colon` is where its
// prefix ends, which reaches to the last colon; it stays where it is without one.
std::uint32_t FindEquals(std::string_view packet, std::uint32_t start, std::uint32_t limit,
                         std::uint32_t& colon) noexcept {
  // By design: the first character only begins the attribute, also when it is a colon or a "=".
  std::uint32_t at = start + 1;
  while ((at = FindByteUpTo(packet, '=', at, limit)) < limit && packet[at] != '=') {
    if (packet[at] == ':') colon = at;
    ++at;
  }
  return at;
}

// Where the quote that opens a value is, or the limit. It mostly comes at once.
std::uint32_t FindOpeningQuote(std::string_view packet, std::uint32_t at,
                               std::uint32_t limit) noexcept {
  while (at < limit && !IsQuote(packet[at])) ++at;
  return at;
}

std::uint32_t FindClosingQuote(std::string_view packet, std::uint32_t at,
                               std::uint32_t limit) noexcept {
  while ((at = FindByteUpTo(packet, '\'', at, limit)) < limit && !IsQuote(packet[at])) ++at;
  return at;
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
  const std::uint32_t start = SkipAttributeGap(packet, from, limit);
  if (start == limit) return false;
  std::uint32_t colon = start;
  const std::uint32_t equals = FindEquals(packet, start, limit, colon);
  if (equals == limit) return false;
  const std::uint32_t opening = FindOpeningQuote(packet, equals + 1, limit);
  if (opening == limit) return false;
  const std::uint32_t closing = FindClosingQuote(packet, opening + 1, limit);
  if (closing == limit) return false;
  attribute.start = start;
  attribute.end = closing;
  // By design: spaces before the "=" belong to the name.
  attribute.nameStart = start;
  attribute.nameEnd = equals - 1;
  if (colon != start) {
    attribute.prefixStart = start;
    attribute.prefixEnd = colon - 1;
    attribute.nameStart = colon + 1;
  }
  attribute.valueStart = opening + 1;
  attribute.valueEnd = closing - 1;
  attribute.packet = packet;
  return true;
}
