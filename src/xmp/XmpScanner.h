#ifndef LUMIDEX_XMP_XMPSCANNER_H_
#define LUMIDEX_XMP_XMPSCANNER_H_

// Finds single tags and attributes in the text of an XMP packet. It is no XML reader: quotes,
// comments, CDATA sections and processing instructions mean nothing to it, and of the white space
// only line feed and space separate names. The texts of a result are cut out of the packet when
// they are asked for and live as long as the packet.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "xmp/ByteChunks.h"
#include "xmp/XmpKnownPrefix.h"
#include "xmp/XmpScanSteps.h"

// A position in a packet, which is shorter than 4 GiB.
constexpr std::uint32_t XmpPosition(std::size_t position) noexcept {
  return static_cast<std::uint32_t>(position);
}

enum class XmpTagKind : std::uint32_t {
  None = 0,
  StartTag = 1,
  EndTag = 2,
  EmptyTag = 3,
};

// The bytes from `first` to `last`, both included, up to the first zero byte; empty when `first` is
// greater than `last`.
std::string_view XmpSubstring(std::string_view packet, std::uint32_t first,
                              std::uint32_t last) noexcept;

// One tag; every span includes both its ends.
//
// By design: a span that was not found is 0..0 and so reads as the first byte of the packet. A name
// without a colon gets that byte as its prefix, and nothing is ever bound to it.
struct XmpTag {
  XmpTagKind kind = XmpTagKind::None;
  std::uint32_t start = 0;  // of the "<"
  std::uint32_t end = 0;    // of the ">"
  std::uint32_t prefixStart = 0;
  std::uint32_t prefixEnd = 0;
  std::uint32_t nameStart = 0;
  std::uint32_t nameEnd = 0;
  std::uint32_t attrStart = 0;
  std::uint32_t attrEnd = 0;
  std::string_view packet;

  std::string_view Prefix() const noexcept { return XmpSubstring(packet, prefixStart, prefixEnd); }
  std::string_view Name() const noexcept { return XmpSubstring(packet, nameStart, nameEnd); }
  std::string_view Text() const noexcept { return XmpSubstring(packet, start, end); }
  std::string_view Attributes() const noexcept { return XmpSubstring(packet, attrStart, attrEnd); }
};

// One attribute; spans as in XmpTag.
struct XmpAttribute {
  std::uint32_t start = 0;
  std::uint32_t end = 0;  // of the closing quote
  std::uint32_t prefixStart = 0;
  std::uint32_t prefixEnd = 0;
  std::uint32_t nameStart = 0;
  std::uint32_t nameEnd = 0;
  std::uint32_t valueStart = 0;
  std::uint32_t valueEnd = 0;
  std::string_view packet;

  std::string_view Prefix() const noexcept { return XmpSubstring(packet, prefixStart, prefixEnd); }
  std::string_view Name() const noexcept { return XmpSubstring(packet, nameStart, nameEnd); }
  std::string_view Value() const noexcept { return XmpSubstring(packet, valueStart, valueEnd); }
  std::string_view Text() const noexcept { return XmpSubstring(packet, start, end); }
};

// Reads the first tag at or after a position. False when there is no whole one: `tag` is cleared
// then, or untouched when the position lies outside the packet.
[[nodiscard]] bool ScanXmpTag(std::string_view packet, std::uint32_t position,
                              XmpTag& tag) noexcept;

// Whether the tag whose "<" is at a position is an end tag.
inline bool IsXmpEndTag(std::string_view packet, std::size_t start) noexcept {
  return start + 1 < packet.size() && packet[start + 1] == '/';
}

// Reads the first attribute that lies between two positions, both included. False, with `attribute`
// cleared, when there is no whole one.
[[nodiscard]] bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                                    XmpAttribute& attribute) noexcept;

// The characters between the parts of an attribute. By design: spaces before the "=" belong to the
// name.
struct XmpAttributeMarks {
  std::size_t start = 0;
  std::size_t colon = 0;  // `start` when there is none
  std::size_t equals = 0;
  std::size_t opening = 0;
  std::size_t closing = 0;
  bool hasKnownPrefix = false;
};

// Calls `visit` for one attribute of a text after the other, from a position on, up to one that is
// not whole or for which `visit` gives false. It may change what the known prefix is.
template <typename Visit>
void VisitXmpAttributes(std::string_view text, std::size_t from, const XmpKnownPrefix& known,
                        Visit visit) {
  for (XmpAttributeMarks marks;; from = marks.closing + 1) {
    marks.start = SkipXmpAttributeGap(text, from);
    const bool isKnown = known.StandsAt(text, marks.start);
    const std::size_t knownColon = marks.start + (isKnown ? known.Length() : 0);
    marks.colon = knownColon;
    marks.equals = FindXmpEquals(text, marks.colon);
    marks.opening = FindXmpOpeningQuote(text, marks.equals + 1);
    marks.closing = FindXmpClosingQuote(text, marks.opening + 1);
    marks.hasKnownPrefix = isKnown && marks.colon == knownColon;
    if (marks.closing >= text.size() || !visit(marks)) return;
  }
}

// Skips what stands before a tag's name and before its attributes.
//
// By design: tab and carriage return are part of what follows.
std::size_t SkipXmpTagGap(std::string_view packet, std::size_t at) noexcept;

// Finds the attributes of a tag whose name ends before its ">". Returns where the tag ends, or the
// packet's size.
//
// By design: a ">" inside an attribute's value ends the tag too.
std::size_t ScanXmpTagAttributes(std::string_view packet, std::size_t at, XmpTag& tag) noexcept;

// Reads the rest of a tag's name from a position on; `mark` is where the part without a colon
// begins. Returns where it ends. With several colons the prefix is what stands before the last one,
// back to the one before.
inline std::size_t ScanXmpTagName(std::string_view packet, std::size_t mark, std::size_t at,
                                  XmpTag& tag) noexcept {
  for (; (at = FindByteUpTo(packet, '>', at)) < packet.size(); ++at) {
    const char c = packet[at];
    if (c == ':') {
      tag.prefixStart = XmpPosition(mark);
      tag.prefixEnd = XmpPosition(at - 1);
      mark = at + 1;
    } else if (c == '>' || c == ' ' || c == '\n' || c == '<') {
      break;
    }
  }
  tag.nameStart = XmpPosition(mark);
  tag.nameEnd = XmpPosition(at - 1);
  return at;
}

// Reads the rest of a tag whose start is set. Returns where it ends, or the packet's size.
inline std::size_t ScanXmpTagContent(std::string_view packet, const XmpKnownPrefix& known,
                                     XmpTag& tag) noexcept {
  std::size_t name = std::size_t{tag.start} + 1;
  std::size_t at = name;
  if (known.StandsAt(packet, name)) {
    tag.prefixStart = XmpPosition(name);
    name += known.Length() + 1;
    tag.prefixEnd = XmpPosition(name - 2);
    at = name;
  } else {
    name = SkipXmpTagGap(packet, name);
    if (IsXmpTagsEnd(packet, name)) return name;
    // By design: the first character only begins the name, also when it is a colon or a line feed.
    at = name + 1;
  }
  at = ScanXmpTagName(packet, name, at, tag);
  return IsXmpTagsEnd(packet, at) ? at : ScanXmpTagAttributes(packet, at + 1, tag);
}

// The slash of an end tag is not skipped: it belongs to the prefix, or to a name without one.
inline XmpTagKind XmpKindOf(std::string_view packet, const XmpTag& tag) noexcept {
  if (packet[tag.start + 1] == '/') return XmpTagKind::EndTag;
  return packet[tag.end - 1] == '/' ? XmpTagKind::EmptyTag : XmpTagKind::StartTag;
}

// As ScanXmpTag for the tag whose "<" is at a position; there is none at the packet's end.
[[nodiscard]] inline bool ScanXmpTagAt(std::string_view packet, std::size_t start,
                                       const XmpKnownPrefix& known, XmpTag& tag) noexcept {
  tag = {};
  if (start == packet.size()) return false;
  tag.start = XmpPosition(start);
  const std::size_t end = ScanXmpTagContent(packet, known, tag);
  if (end == packet.size()) {
    tag = {};
    return false;
  }
  tag.end = XmpPosition(end);
  tag.kind = XmpKindOf(packet, tag);
  tag.packet = packet;
  return true;
}

#endif  // LUMIDEX_XMP_XMPSCANNER_H_
