#include "merge/SensorFormatFactor.h"

namespace {

constexpr double kFilmWidth = 36.0;  // millimetres

// By design the resolution is always per inch, whatever unit the file names.
constexpr double kUnit = 25.4;  // millimetres

bool HasZero(const Rational& value, std::uint16_t number) {
  return value.numerator == 0 || value.denominator == 0 || number == 0;
}

}  // namespace

std::optional<double> FactorFromFocalLengths(const Rational& focalLength,
                                             std::uint16_t on35mmFilm) noexcept {
  if (HasZero(focalLength, on35mmFilm)) return std::nullopt;
  const double denominator = focalLength.denominator;
  return denominator * on35mmFilm / focalLength.numerator;
}

std::optional<double> FactorFromResolution(const Rational& resolution,
                                           std::uint16_t imageWidth) noexcept {
  if (HasZero(resolution, imageWidth)) return std::nullopt;
  return resolution.numerator * kFilmWidth / (imageWidth * kUnit * resolution.denominator);
}
