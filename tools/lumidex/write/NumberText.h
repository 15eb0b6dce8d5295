#ifndef LUMIDEX_TOOL_WRITE_NUMBERTEXT_H_
#define LUMIDEX_TOOL_WRITE_NUMBERTEXT_H_

// Numbers as people type them. A text is a number as a whole or not at all.

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tool {

// What a type can hold; at most 32 bits.
struct NumberRange {
  std::int64_t lowest;
  std::int64_t highest;
};

struct Fraction {
  std::int64_t numerator = 0;
  std::int64_t denominator = 1;
};

// Digits with an optional sign.
std::optional<std::int64_t> ParseWhole(std::string_view text, const NumberRange& range);

// "28/10" as it stands, "2.8" as 28/10, "5" as 5/1. Numerator and denominator are in the range, the
// denominator is not negative. Decimals for which there is no room are rounded; a number that would
// become 0 by it is refused.
std::optional<Fraction> ParseFraction(std::string_view text, const NumberRange& range);

// The text without blanks around.
std::string_view TrimBlanks(std::string_view text);

// The parts between separators, without blanks around; one part when there is no separator.
std::vector<std::string_view> SplitParts(std::string_view text, char separator);

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_NUMBERTEXT_H_
