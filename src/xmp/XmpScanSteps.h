#ifndef LUMIDEX_XMP_XMPSCANSTEPS_H_
#define LUMIDEX_XMP_XMPSCANSTEPS_H_

// The steps in which the scanner goes through a tag or an attribute. Each begins at a position of a
// text and returns where it ends; those of an attribute return its end or a position behind it when
// there is not what they look for. They become part of the loops that a packet spends its time in.

#include <cstddef>
#include <string_view>

#include "xmp/TextSearch.h"

// Whether a position is that of a tag's last character, or behind a packet that ends before it.
inline bool IsXmpTagsEnd(std::string_view packet, std::size_t at) noexcept {
  return at >= packet.size() || packet[at] == '>';
}

// Skips what stands before a tag's name and before its attributes.
//
// By design: tab and carriage return are part of what follows.
inline std::size_t SkipXmpTagGap(std::string_view packet, std::size_t at) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '<' || c == '\\'; };
  while (at < packet.size() && isGap(packet[at])) ++at;
  return at;
}

// Finds what ends a tag's name; the packet's size or a position behind it when nothing does.
//
// By design: the first character only begins the name, also when it is a colon or a line feed.
inline std::size_t FindXmpNameEnd(std::string_view packet, std::size_t name) noexcept {
  return FindAnyOf<'>', ' ', '\n', '<'>(packet, name + 1, packet.size());
}

// By design: tab and carriage return before an attribute become part of its prefix or name.
inline std::size_t SkipXmpAttributeGap(std::string_view text, std::size_t at,
                                       std::size_t end) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '\n' || c == '<' || c == '>'; };
  while (at < end && isGap(text[at])) at = SkipSpaces(text, at + 1);
  return at;
}

// Finds the "=" of an attribute.
//
// By design: the first character only begins the attribute, also when it is a "=" or a colon.
inline std::size_t FindXmpEquals(std::string_view text, std::size_t start,
                                 std::size_t end) noexcept {
  return FindAnyOf<'='>(text, start + 1, end);
}

// Finds the last colon behind the first character of a name and in front of its end; `start`
// without one.
inline std::size_t FindXmpColon(std::string_view text, std::size_t start,
                                std::size_t end) noexcept {
  const std::size_t length = end - start;
  if (length < kByteBlockSize && HasBlock(text, start)) {
    const ByteMarks colons = MarksBefore(LoadBlock(text, start).AnyOf<':'>(), length) | 1;
    return start + LastMark(colons);
  }
  const std::size_t colon = text.substr(start, length).rfind(':');
  return colon == text.npos ? start : start + colon;
}

// By design: the two kinds of quotes are one; a value ends at the next of either kind.
inline bool IsXmpQuote(char c) noexcept {
  return c == '"' || c == '\'';
}

// Finds the quote that opens a value. It mostly comes at once.
inline std::size_t FindXmpOpeningQuote(std::string_view text, std::size_t at,
                                       std::size_t end) noexcept {
  while (at < end && !IsXmpQuote(text[at])) ++at;
  return at;
}

inline std::size_t FindXmpClosingQuote(std::string_view text, std::size_t at,
                                       std::size_t end) noexcept {
  return FindAnyOf<'"', '\''>(text, at, end);
}

#endif  // LUMIDEX_XMP_XMPSCANSTEPS_H_
