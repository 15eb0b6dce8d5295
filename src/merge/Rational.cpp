#include "merge/Rational.h"

#include <limits>

#include "base/ByteOrder.h"
#include "base/Numbers.h"

Rational LoadRational(std::span<const std::uint8_t> bytes, std::size_t index) noexcept {
  return {HostValue<std::uint32_t>(bytes, 2 * index),
          HostValue<std::uint32_t>(bytes, 2 * index + 1)};
}

double Quotient(const Rational& value) noexcept {
  return static_cast<double>(value.numerator) / static_cast<double>(value.denominator);
}

std::optional<Rational> ParseRationalText(std::string_view text) noexcept {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return std::nullopt;
  const auto denominator = static_cast<std::uint32_t>(ParseInteger(text.substr(slash + 1)));
  if (denominator == 0) return std::nullopt;
  return Rational{static_cast<std::uint32_t>(ParseInteger(text.substr(0, slash))), denominator};
}

Rational InMillionths(double value) noexcept {
  constexpr std::uint32_t kMillion = 1000000;
  constexpr std::uint32_t kMax = std::numeric_limits<std::uint32_t>::max();
  const double scaled = value * kMillion;
  if (scaled >= kMax) return {kMax, kMillion};
  return {scaled > 0.0 ? static_cast<std::uint32_t>(scaled) : 0, kMillion};
}
