#ifndef LUMIDEX_XMP_XMPSCANNER_H_
#define LUMIDEX_XMP_XMPSCANNER_H_

// Finds single tags and attributes in the text of an XMP packet. It is no XML reader: quotes,
// comments, CDATA sections and processing instructions mean nothing to it, and of the white space
// only line feed and space separate names. The texts of a result are cut out of the packet when
// they are asked for and live as long as the packet.

#include <cstdint>
#include <string_view>

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
// then, or untouched when the position lies outside the packet. A packet is shorter than 4 GiB.
[[nodiscard]] bool ScanXmpTag(std::string_view packet, std::uint32_t position,
                              XmpTag& tag) noexcept;

// The same for the tag whose "<" is at a position; there is none at the packet's end.
[[nodiscard]] bool ScanXmpTagAt(std::string_view packet, std::uint32_t start, XmpTag& tag) noexcept;

// Whether the tag whose "<" is at a position is an end tag.
inline bool IsXmpEndTag(std::string_view packet, std::uint32_t start) noexcept {
  return packet.size() - start >= 2 && packet[start + 1] == '/';
}

// Reads the first attribute that lies between two positions, both included. False, with `attribute`
// cleared, when there is no whole one.
[[nodiscard]] bool ScanXmpAttribute(std::string_view packet, std::uint32_t from, std::uint32_t to,
                                    XmpAttribute& attribute) noexcept;

#endif  // LUMIDEX_XMP_XMPSCANNER_H_
