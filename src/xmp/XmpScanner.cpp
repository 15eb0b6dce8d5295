#include "xmp/XmpScanner.h"

#include <algorithm>
#include <cstddef>

#include "xmp/ByteChunks.h"

namespace {

std::uint32_t SizeOf(std::string_view packet) noexcept {
  return static_cast<std::uint32_t>(packet.size());
}

// Where a character next occurs, or the packet's size.
std::uint32_t Find(std::string_view packet, char wanted, std::uint32_t from) noexcept {
  return static_cast<std::uint32_t>(std::min(packet.find(wanted, from), packet.size()));
}

// Skips what stands before a tag's name and before its attributes, up to the tag's end.
//
// By design: tab and carriage return are part of what follows.
std::uint32_t SkipTagGap(const XmpTag& tag, std::uint32_t at) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '<' || c == '\\'; };
  while (at < tag.end && isGap(tag.packet[at])) ++at;
  return at;
}

// Reads the name that begins at a position. Returns where it ends, which is not behind the tag's
// own end. With several colons the prefix is what stands before the last one, back to the one
// before.
std::uint32_t ScanTagName(std::uint32_t at, XmpTag& tag) noexcept {
  const char* const text = tag.packet.data();
  std::uint32_t mark = at;
  // By design: the first character only begins the name, also when it is a colon or a line feed.
  for (++at; at < tag.end; ++at) {
    const char c = text[at];
    if (c > '>') continue;  // above all that is looked for, as letters are
    if (c == ':') {
      tag.prefixStart = mark;
      tag.prefixEnd = at - 1;
      mark = at + 1;
    } else if (c == ' ' || c == '\n' || c == '<') {
      break;
    }
  }
  tag.nameStart = mark;
  tag.nameEnd = at - 1;
  return at;
}

// The slash of an end tag is not skipped: it belongs to the prefix, or to a name without one.
XmpTagKind KindOf(std::string_view packet, const XmpTag& tag) noexcept {
  if (packet[tag.start + 1] == '/') return XmpTagKind::EndTag;
  if (packet[tag.end - 1] == '/') return XmpTagKind::EmptyTag;
  return XmpTagKind::StartTag;
}

// By design: the two kinds of quotes are one; a value ends at the next of either kind.
std::uint32_t FindQuote(std::string_view packet, std::uint32_t at, std::uint32_t limit) noexcept {
  for (; limit - at >= kChunkSize; at += kChunkSize) {
    const std::uint64_t chunk = LoadChunk(packet, at);
    const std::uint64_t quotes = BytesEqual(chunk, '"') | BytesEqual(chunk, '\'');
    if (quotes != 0) return at + FirstByte(quotes);
  }
  while (at < limit && packet[at] != '"' && packet[at] != '\'') ++at;
  return at;
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
  attribute.nameStart = attribute.start;
  // By design: the first character only begins the attribute, also when it is a colon or a "=".
  std::uint32_t at = attribute.start + 1;
  while (at < limit) {
    if (limit - at >= kChunkSize) {
      // Letters are above both signs that are looked for.
      const std::uint64_t signs = BytesUpTo(LoadChunk(packet, at), '=');
      at += signs == 0 ? kChunkSize : FirstByte(signs);
      if (signs == 0) continue;
    }
    const char c = packet[at];
    if (c == ':') {
      attribute.prefixStart = attribute.start;
      attribute.prefixEnd = at - 1;
      attribute.nameStart = at + 1;
    } else if (c == '=') {
      attribute.nameEnd = at - 1;
      return at;
    }
    ++at;
  }
  return limit;
}

bool ScanWholeAttribute(std::string_view packet, std::uint32_t from, std::uint32_t limit,
                        XmpAttribute& attribute) noexcept {
  attribute.start = SkipAttributeGap(packet, from, limit);
  if (attribute.start == limit) return false;
  const std::uint32_t equals = ScanAttributeName(packet, limit, attribute);
  if (equals == limit) return false;
  const std::uint32_t opening = FindQuote(packet, equals + 1, limit);
  if (opening == limit) return false;
  attribute.end = FindQuote(packet, opening + 1, limit);
  if (attribute.end == limit) return false;
  attribute.valueStart = opening + 1;
  attribute.valueEnd = attribute.end - 1;
  attribute.packet = packet;
  return true;
}

}  // namespace

std::string_view XmpSubstring(std::string_view packet, std::uint32_t first,
                              std::uint32_t last) noexcept {
  if (first > last || first >= packet.size()) return {};
  const std::string_view span = packet.substr(first, std::size_t{last} - first + 1);
  return span.substr(0, span.find('\0'));
}

bool ScanXmpTagEnds(std::string_view packet, std::uint32_t position, XmpTag& tag) noexcept {
  const std::uint32_t size = SizeOf(packet);
  if (position >= size) return false;
  tag = {};
  const std::uint32_t start = Find(packet, '<', position);
  // By design: a ">" inside an attribute's value ends the tag too.
  const std::uint32_t end = start == size ? size : Find(packet, '>', start + 1);
  if (end == size) return false;
  tag.start = start;
  tag.end = end;
  tag.kind = KindOf(packet, tag);
  tag.packet = packet;
  return true;
}

void ScanXmpTagContent(XmpTag& tag) noexcept {
  const std::uint32_t name = SkipTagGap(tag, tag.start + 1);
  if (name == tag.end) return;
  const std::uint32_t nameEnd = ScanTagName(name, tag);
  if (nameEnd == tag.end) return;
  const std::uint32_t attributes = SkipTagGap(tag, nameEnd + 1);
  if (attributes == tag.end) return;
  tag.attrStart = attributes;
  tag.attrEnd = tag.end - 1;
}

bool ScanXmpTag(std::string_view packet, std::uint32_t position, XmpTag& tag) noexcept {
  if (!ScanXmpTagEnds(packet, position, tag)) return false;
  ScanXmpTagContent(tag);
  return true;
}

bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                      XmpAttribute& attribute) noexcept {
  attribute = {};
  if (from > to || from >= packet.size()) return false;
  const std::uint32_t limit = std::min(to, SizeOf(packet) - 1) + 1;
  if (ScanWholeAttribute(packet, from, limit, attribute)) return true;
  attribute = {};
  return false;
}
