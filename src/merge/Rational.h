#ifndef LUMIDEX_MERGE_RATIONAL_H_
#define LUMIDEX_MERGE_RATIONAL_H_

// The rationals that the merge reads and writes. Both numbers are 32 bits and, whatever the type of
// the value they come from, taken as unsigned.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

struct Rational {
  std::uint32_t numerator = 0;
  std::uint32_t denominator = 0;

  bool operator==(const Rational&) const = default;
};

// Number `index` of a value's rationals; bytes that are not there count as 0.
Rational LoadRational(std::span<const std::uint8_t> bytes, std::size_t index = 0) noexcept;

// The quotient; the denominator must not be 0.
double Quotient(const Rational& value) noexcept;

// A text of two integers with "/" between them, as XMP writes rationals. None without a "/" or with
// a denominator that reads as 0. Negative numbers are kept in two's complement.
std::optional<Rational> ParseRationalText(std::string_view text) noexcept;

// A number over 1000000, the numerator truncated. What does not fit becomes the nearest number that
// does, and not-a-number becomes 0.
Rational InMillionths(double value) noexcept;

#endif  // LUMIDEX_MERGE_RATIONAL_H_
