#ifndef LUMIDEX_XMP_TEXTSEARCH_H_
#define LUMIDEX_XMP_TEXTSEARCH_H_

// Searches in the text of a packet by blocks. Names and values are mostly shorter than what makes a
// call of the library's search pay, and their lengths vary: most end in their first block.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <string_view>

#include "platform/ByteBlock.h"
#include "xmp/ByteChunks.h"

// Whether a text has a whole block from a position on, and that block.
inline bool HasBlock(std::string_view text, std::size_t at) noexcept {
  return at + kByteBlockSize <= text.size();
}
inline ByteBlock LoadBlock(std::string_view text, std::size_t at) noexcept {
  return ByteBlock(text.data() + at);
}

constexpr std::size_t FirstMark(ByteMarks marks) noexcept {
  return static_cast<ByteMarks>(std::countr_zero(marks));
}
constexpr std::size_t LastMark(ByteMarks marks) noexcept {
  return static_cast<ByteMarks>(std::countl_zero(marks)) ^ 31U;
}

// The marks of a block's first bytes, of which there are fewer than it has.
constexpr ByteMarks MarksBefore(ByteMarks marks, std::size_t count) noexcept {
  return marks & ((ByteMarks{1} << count) - 1);
}

// Where one of the wanted characters next stands, from a position on. Without one before `end` it
// is `end` or a position behind it.
template <char... kWanted>
inline std::size_t FindAnyOf(std::string_view text, std::size_t at, std::size_t end) noexcept {
  for (; HasBlock(text, at); at += kByteBlockSize) {
    const ByteMarks marks = LoadBlock(text, at).AnyOf<kWanted...>();
    if (marks != 0) return at + FirstMark(marks);
    if (at + kByteBlockSize >= end) return end;
  }
  while (at < end && ((text[at] != kWanted) && ...)) ++at;
  return at;
}

// The same for the next character that is not a space. There are mostly a few.
inline std::size_t SkipSpaces(std::string_view text, std::size_t at) noexcept {
  for (; at + kChunkSize <= text.size(); at += kChunkSize) {
    const std::uint64_t others = LoadChunk(text, at) ^ kEightSpaces;
    if (others != 0) return at + FirstByte(others);
  }
  while (at < text.size() && text[at] == ' ') ++at;
  return at;
}

// Where a character next stands, or the text's size. Most stand in the first block; for the others
// the library's search is quicker.
std::size_t FindFarByte(std::string_view text, char wanted, std::size_t from) noexcept;
template <char kWanted>
inline std::size_t FindByte(std::string_view text, std::size_t from) noexcept {
  if (!HasBlock(text, from)) return FindFarByte(text, kWanted, from);
  const ByteMarks marks = LoadBlock(text, from).AnyOf<kWanted>();
  if (marks == 0) return FindFarByte(text, kWanted, from + kByteBlockSize);
  return from + FirstMark(marks);
}

#endif  // LUMIDEX_XMP_TEXTSEARCH_H_
