#include "base/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <system_error>

namespace {

// What the C library's isspace takes for a blank when no locale is set.
constexpr std::string_view kBlanks = " \t\n\v\f\r";
constexpr std::string_view kDigits = "0123456789";

// The largest double has 309 digits before the point.
constexpr std::size_t kLongestNumber = 320;

struct Signed {
  bool negative = false;
  std::string_view rest;  // from the first character that is neither blank nor sign
};

Signed SplitSign(std::string_view text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return {negative, text};
}

// Whether digits begin here, or a point with digits behind it.
bool BeginsDecimal(std::string_view text) noexcept {
  if (text.starts_with('.')) text.remove_prefix(1);
  return !text.empty() && kDigits.find(text.front()) != std::string_view::npos;
}

// Whether a number that no double can hold is too large; otherwise it is too small.
bool IsTooLarge(std::string_view number) noexcept {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
  const std::int64_t exponent =
      mark < number.size() ? ParseInteger(number.substr(mark + 1)) : std::int64_t{0};
  return exponent + point - first > 0;
}

}  // namespace

std::int32_t ParseInteger(std::string_view text) noexcept {
  const auto [negative, rest] = SplitSign(text);
  const std::size_t length = std::min(rest.find_first_not_of(kDigits), rest.size());
  std::uint32_t magnitude = 0;
  const auto result = std::from_chars(rest.data(), rest.data() + length, magnitude);
  if (result.ec == std::errc::invalid_argument) return 0;

  constexpr std::uint32_t kMax = std::numeric_limits<std::int32_t>::max();
  if (result.ec == std::errc::result_out_of_range || magnitude > kMax) {
    return negative ? std::numeric_limits<std::int32_t>::min()
                    : std::numeric_limits<std::int32_t>::max();
  }
  const auto value = static_cast<std::int32_t>(magnitude);
  return negative ? -value : value;
}

double ParseDecimal(std::string_view text) noexcept {
  const auto [negative, rest] = SplitSign(text);
  if (!BeginsDecimal(rest)) return 0.0;

  double value = 0.0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    const auto length = static_cast<std::size_t>(result.ptr - rest.data());
    value = IsTooLarge(rest.substr(0, length)) ? HUGE_VAL : 0.0;
  }
  return negative ? -value : value;
}

std::string FormatOneDecimal(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0.0 ? "-inf" : "inf";

  char buffer[kLongestNumber];
  const int length = std::snprintf(buffer, sizeof(buffer), "%.1f", value);
  if (length < 0) return {};
  const std::string_view printed(buffer, static_cast<std::size_t>(length));

  // What stands between the digits depends on the locale.
  const std::size_t point = printed.find_first_not_of("-0123456789");
  std::string text(printed.substr(0, point));
  text += '.';
  text += printed.back();
  return text;
}
