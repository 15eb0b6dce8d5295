#ifndef LUMIDEX_XMP_XMPSCANNER_H_
#define LUMIDEX_XMP_XMPSCANNER_H_

// Finds single tags and attributes in the text of an XMP packet. It is no XML reader: quotes,
// comments, CDATA sections and processing instructions mean nothing to it, and of the white space
// only line feed and space separate names. The texts of a result are cut out of the packet when
// they are asked for and live as long as the packet.

#include <cstddef>
#include <cstdint>
#include <string_view>

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
  std::size_t equals = 0;
  std::size_t opening = 0;
  std::size_t closing = 0;
};

// Calls `visit` for one attribute of a packet after the other, from a position on, up to one that
// does not end before `end` or for which `visit` gives false.
template <typename Visit>
void VisitXmpAttributes(std::string_view packet, std::size_t from, std::size_t end, Visit visit) {
  for (XmpAttributeMarks marks;; from = marks.closing + 1) {
    marks.start = SkipXmpAttributeGap(packet, from, end);
    marks.equals = FindXmpEquals(packet, marks.start, end);
    marks.opening = FindXmpOpeningQuote(packet, marks.equals + 1, end);
    marks.closing = FindXmpClosingQuote(packet, marks.opening + 1, end);
    if (marks.closing >= end || !visit(marks)) return;
  }
}

// Where the parts of a tag stand. Most tags are passed over, and of these no more has to be known.
struct XmpTagMarks {
  std::size_t start = 0;
  std::size_t name = 0;        // with its prefix
  std::size_t nameEnd = 0;     // behind the name
  std::size_t attributes = 0;  // 0 without any; they end where the tag does
  std::size_t end = 0;
};

// Finds the parts of the tag whose "<" is at a position. False when the packet ends before it does.
[[nodiscard]] inline bool FindXmpTag(std::string_view packet, std::size_t start,
                                     XmpTagMarks& tag) noexcept {
  if (start >= packet.size()) return false;
  tag.start = start;
  tag.attributes = 0;
  tag.name = SkipXmpTagGap(packet, start + 1);
  if (IsXmpTagsEnd(packet, tag.name)) {
    // By design: the name of a tag without one is the packet's first byte.
    tag.end = tag.name;
    tag.name = 0;
    tag.nameEnd = 1;
    return tag.end < packet.size();
  }
  tag.nameEnd = FindXmpNameEnd(packet, tag.name);
  tag.end = tag.nameEnd;
  if (IsXmpTagsEnd(packet, tag.end)) return tag.end < packet.size();
  tag.end = SkipXmpTagGap(packet, tag.nameEnd + 1);
  if (IsXmpTagsEnd(packet, tag.end)) return tag.end < packet.size();
  // By design: a ">" inside an attribute's value ends the tag too.
  tag.attributes = tag.end;
  tag.end = FindByte<'>'>(packet, tag.attributes + 1);
  return tag.end < packet.size();
}

inline bool IsXmpEmptyTag(std::string_view packet, const XmpTagMarks& tag) noexcept {
  return packet[tag.end - 1] == '/';
}

// The whole of a tag whose parts were found.
XmpTag MakeXmpTag(std::string_view packet, const XmpTagMarks& marks) noexcept;

#endif  // LUMIDEX_XMP_XMPSCANNER_H_
