#include "write/NumberText.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace tool {
namespace {

bool IsDigit(char c) {
  return '0' <= c && c <= '9';
}

bool AreDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsDigit);
}

// Digits alone, at least one.
std::optional<std::int64_t> ParseDigits(std::string_view text, std::int64_t highest) {
  if (text.empty() || !AreDigits(text)) return std::nullopt;
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || value > highest) return std::nullopt;
  return value;
}

// Takes the sign off; true for a minus.
bool TakeSign(std::string_view& text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  return isNegative;
}

// Appends as many decimals as there is room for, and rounds by the first that is left out.
Fraction WithDecimals(Fraction number, std::string_view decimals, std::int64_t highest,
                      std::int64_t highestDenominator) {
  for (const char c : decimals) {
    const std::int64_t longer = number.numerator * 10 + (c - '0');
    if (longer > highest || number.denominator * 10 > highestDenominator) {
      if (c >= '5' && number.numerator < highest) ++number.numerator;
      break;
    }
    number = {longer, number.denominator * 10};
  }
  return number;
}

std::optional<Fraction> ParseDecimal(std::string_view text, const NumberRange& range) {
  const bool isNegative = TakeSign(text);
  const auto point = std::min(text.find('.'), text.size());
  const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
  const std::string_view whole = point == 0 && !decimals.empty() ? "0" : text.substr(0, point);
  const std::int64_t highest = isNegative ? -range.lowest : range.highest;
  const auto value = ParseDigits(whole, highest);
  if (!value || !AreDigits(decimals)) return std::nullopt;

  Fraction number = WithDecimals({*value, 1}, decimals, highest, range.highest);
  const bool isZero = decimals.find_first_not_of('0') == std::string_view::npos;
  if (number.numerator == 0 && !isZero) return std::nullopt;
  if (isNegative) number.numerator = -number.numerator;
  return number;
}

}  // namespace

std::optional<std::int64_t> ParseWhole(std::string_view text, const NumberRange& range) {
  const bool isNegative = TakeSign(text);
  const auto value = ParseDigits(text, isNegative ? -range.lowest : range.highest);
  return value && isNegative ? -*value : value;
}

std::optional<Fraction> ParseFraction(std::string_view text, const NumberRange& range) {
  const auto slash = text.find('/');
  if (slash == std::string_view::npos) return ParseDecimal(text, range);
  const auto numerator = ParseWhole(TrimBlanks(text.substr(0, slash)), range);
  const auto denominator = ParseDigits(TrimBlanks(text.substr(slash + 1)), range.highest);
  if (!numerator || !denominator) return std::nullopt;
  return Fraction{*numerator, *denominator};
}

std::string_view TrimBlanks(std::string_view text) {
  const auto first = std::min(text.find_first_not_of(' '), text.size());
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : text.substr(first, last + 1 - first);
}

std::vector<std::string_view> SplitParts(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
    parts.push_back(TrimBlanks(text.substr(0, end)));
    text.remove_prefix(end + 1);
  }
  parts.push_back(TrimBlanks(text));
  return parts;
}

}  // namespace tool
