#ifndef LUMIDEX_BASE_NUMBERS_H_
#define LUMIDEX_BASE_NUMBERS_H_

// Numbers in texts, read and printed the same under every locale of the host. Reading skips leading
// blanks, takes one sign and ends at the first character that does not belong to the number; it
// never fails. Only decimal digits make numbers: hexadecimal, "inf" and "nan" are none.

#include <cstdint>
#include <string>
#include <string_view>

// The integer at the beginning of a text; 0 when there is none. A number outside 32 bits becomes
// the nearest one inside.
std::int32_t ParseInteger(std::string_view text) noexcept;

// The number at the beginning of a text, with fraction and exponent; 0 when there is none. A number
// too large for a double becomes an infinity of its sign, one too small becomes 0.
double ParseDecimal(std::string_view text) noexcept;

// A number with one digit after the point, rounded as printf's "%.1f"; "nan", "inf" or "-inf" for
// what is no finite number.
std::string FormatOneDecimal(double value);

#endif  // LUMIDEX_BASE_NUMBERS_H_
