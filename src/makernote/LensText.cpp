#include "makernote/LensText.h"

#include <algorithm>
#include <limits>

#include "base/Numbers.h"

namespace {

constexpr std::size_t kNumbers = 8;
constexpr std::size_t kFocalNumbers = 4;

static_assert(std::numeric_limits<float>::is_iec559, "x / 0 is an infinity or not a number");

// The smaller and the larger end of a range, as numerators and denominators.
using Range = std::span<const std::uint32_t, 4>;

// The same numbers at both ends. By design equal quotients of different numbers are two ends: 24/1
// to 48/2 is a range.
bool IsOneValue(Range range) {
  return range[0] == range[2] && range[1] == range[3];
}

// By design in single precision: the digits that are printed depend on it.
double Quotient(std::uint32_t numerator, std::uint32_t denominator) {
  return static_cast<double>(static_cast<float>(numerator) / static_cast<float>(denominator));
}

std::string FocalLengthText(Range range) {
  const double shortest = Quotient(range[0], range[1]);
  if (IsOneValue(range)) return FormatOneDecimal(shortest);
  return FormatOneDecimal(shortest) + "-" + FormatOneDecimal(Quotient(range[2], range[3]));
}

std::string ApertureText(Range range) {
  if (std::ranges::all_of(range, [](std::uint32_t number) { return number == 0; })) return {};
  const double atShortest = Quotient(range[0], range[1]);
  const double atLongest = Quotient(range[2], range[3]);
  const std::string text = " f/" + FormatOneDecimal(atShortest);
  // By design a lens that is slower at its short end shows only that F-number.
  if (IsOneValue(range) || atShortest > atLongest) return text;
  return text + "-" + FormatOneDecimal(atLongest);
}

}  // namespace

// A quotient of 32-bit numbers prints as at most 12 characters, so no part is ever long.
std::string FormatLensText(std::span<const std::uint32_t> numbers) {
  if (numbers.size() != kNumbers) return {};
  const auto focal = numbers.first<kFocalNumbers>();
  if (std::ranges::find(focal, 0U) != focal.end()) return {};
  return FocalLengthText(focal) + " mm" + ApertureText(numbers.last<kFocalNumbers>());
}
