#ifndef LUMIDEX_XMP_XMPSCANSTEPS_H_
#define LUMIDEX_XMP_XMPSCANSTEPS_H_

// The steps in which the scanner goes through a tag or an attribute. Each begins at a position of a
// text and returns where it ends; without what it looks for that is the text's size, or the
// position itself when it lies behind the text. They become part of the loops that a packet spends
// its time in.

#include <cstddef>
#include <string_view>

#include "xmp/ByteChunks.h"

// Whether a position is that of a tag's last character, or behind a packet that ends before it.
inline bool IsXmpTagsEnd(std::string_view packet, std::size_t at) noexcept {
  return at == packet.size() || packet[at] == '>';
}

// By design: tab and carriage return before an attribute become part of its prefix or name.
inline std::size_t SkipXmpAttributeGap(std::string_view text, std::size_t at) noexcept {
  const auto isGap = [](char c) { return c == ' ' || c == '\n' || c == '<' || c == '>'; };
  while (at < text.size() && isGap(text[at])) at = SkipSpaces(text, at + 1);
  return at;
}

// Finds the "=" of an attribute. `colon` is where its prefix ends as far as that is known, or its
// first character; it becomes the last colon before the "=".
//
// By design: the first character only begins the attribute, also when it is a colon or a "=".
inline std::size_t FindXmpEquals(std::string_view text, std::size_t& colon) noexcept {
  std::size_t at = colon + 1;
  for (; (at = FindByteUpTo(text, '=', at)) < text.size() && text[at] != '='; ++at) {
    if (text[at] == ':') colon = at;
  }
  return at;
}

// By design: the two kinds of quotes are one; a value ends at the next of either kind.
inline bool IsXmpQuote(char c) noexcept {
  return c == '"' || c == '\'';
}

// Finds the quote that opens a value. It mostly comes at once.
inline std::size_t FindXmpOpeningQuote(std::string_view text, std::size_t at) noexcept {
  while (at < text.size() && !IsXmpQuote(text[at])) ++at;
  return at;
}

inline std::size_t FindXmpClosingQuote(std::string_view text, std::size_t at) noexcept {
  while ((at = FindByteUpTo(text, '\'', at)) < text.size() && !IsXmpQuote(text[at])) ++at;
  return at;
}

#endif  // LUMIDEX_XMP_XMPSCANSTEPS_H_
