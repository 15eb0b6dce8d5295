#include "merge/Apex.h"

#include <array>
#include <cmath>

namespace {

// By whole aperture value.
constexpr std::array kFNumbers = {1.0, 1.4, 2.0, 2.8, 4.0, 5.6, 8.0, 11.0, 16.0, 22.0, 32.0};

// By design not the square root of two, which is 1.41421.
constexpr double kApertureBase = 1.41425;

}  // namespace

double ExposureTime(const Rational& shutterSpeedValue) noexcept {
  return 1.0 / std::pow(2.0, Quotient(shutterSpeedValue));
}

double FNumber(const Rational& apertureValue) noexcept {
  const auto [numerator, denominator] = apertureValue;
  const std::uint32_t whole = numerator / denominator;
  if (numerator % denominator == 0 && whole < kFNumbers.size()) return kFNumbers[whole];
  return std::pow(kApertureBase, Quotient(apertureValue));
}
