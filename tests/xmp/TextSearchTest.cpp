#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "xmp/TextSearch.h"
#include "xmp/XmpScanSteps.h"

namespace {

constexpr std::size_t kLongest = 3 * kByteBlockSize + 2;

// A text of letters in which a character stands at a place, if that is inside.
std::string TextWith(char character, std::size_t place, std::size_t size) {
  std::string text(size, 'a');
  if (place < size) text[place] = character;
  return text;
}

TEST(TextSearch, FindsTheNextByteAtEveryDistance) {
  for (std::size_t size = 0; size < kLongest; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      const std::string text = TextWith('<', place, size);
      for (const std::size_t from : {std::size_t{0}, place / 2, place}) {
        ASSERT_EQ(FindByte<'<'>(text, from), place) << size << ' ' << from;
      }
      ASSERT_EQ(FindByte<'<'>(text, place + 1), size) << place;
      ASSERT_EQ(FindByte<'>'>(text, 0), size) << place;
    }
  }
  EXPECT_EQ(FindByte<'<'>("abc", 4), 3u);
  EXPECT_EQ(FindByte<'<'>("", 0), 0u);
}

TEST(TextSearch, FindsTheNextOfSeveralBytes) {
  for (std::size_t size = 1; size < kLongest; ++size) {
    for (std::size_t place = 0; place < size; ++place) {
      std::string text = TextWith('"', place, size);
      if (place + 1 < size) text[place + 1] = '\'';
      ASSERT_EQ((FindAnyOf<'\'', '"'>(text, 0, size)), place) << size;
      ASSERT_EQ((FindAnyOf<'\'', '"'>(text, place / 2, place + 1)), place) << size;
    }
  }
}

// What stands behind the end may be found, as a position that is none.
TEST(TextSearch, FindsNothingBeforeTheEnd) {
  for (std::size_t size = 0; size < kLongest; ++size) {
    for (std::size_t end = 0; end <= size; ++end) {
      const std::string text = TextWith('=', end, size);
      for (const std::size_t from : {std::size_t{0}, end / 2, end}) {
        ASSERT_GE(FindAnyOf<'='>(text, from, end), end) << size << ' ' << from;
      }
    }
  }
  EXPECT_GE(FindAnyOf<'='>("abc", 5, 3), 3u);
}

TEST(TextSearch, SkipsSpacesOnly) {
  for (std::size_t spaces = 0; spaces < kLongest; ++spaces) {
    for (const char other : {'a', '\t', '\n', '\0', '!', '\xA0'}) {
      for (const std::size_t rest : {0U, 1U, 7U, 8U, 40U}) {
        std::string text(spaces, ' ');
        text += std::string(rest, other);
        ASSERT_EQ(SkipSpaces(text, 0), spaces) << rest;
        ASSERT_EQ(SkipSpaces(text, spaces / 2), spaces) << rest;
      }
    }
  }
}

TEST(XmpScanSteps, LastColonOfANameCounts) {
  for (std::size_t length = 2; length < kLongest; ++length) {
    for (const std::size_t rest : {0U, 1U, 31U, 32U, 33U}) {
      const std::string after(rest, ':');
      const std::string none = TextWith(':', 0, length) + after;
      ASSERT_EQ(FindXmpColon(none, 0, length), 0u) << rest;
      for (std::size_t colon = 1; colon < length; ++colon) {
        std::string name = TextWith(':', colon, length) + after;
        ASSERT_EQ(FindXmpColon(name, 0, length), colon) << rest;
        name[colon / 2] = ':';
        ASSERT_EQ(FindXmpColon(name, 0, length), colon) << rest;
      }
    }
  }
}

}  // namespace
