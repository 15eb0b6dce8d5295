#ifndef LUMIDEX_TOOL_WRITE_SPECIALFORMS_H_
#define LUMIDEX_TOOL_WRITE_SPECIALFORMS_H_

// Values that people write in a form of their own: dates, times, versions, comments, angles.

#include <string_view>

#include "values/Value.h"
#include "write/ParsedValue.h"

namespace tool {

using FormParser = ParsedValue (*)(std::string_view text);

// What reads the form of the values that `decoder` prints; null when they have none of their own.
FormParser FindSpecialForm(Decoder decoder);

// A coordinate in decimal degrees: its size as degrees, minutes and seconds, three rationals, and
// the side of zero on which it lies.
struct Coordinate {
  ParsedValue angle;
  bool isNegative = false;
};

// `bound` is the largest number of degrees.
Coordinate ParseCoordinate(std::string_view text, int bound);

inline constexpr int kLargestLatitude = 90;
inline constexpr int kLargestLongitude = 180;

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_SPECIALFORMS_H_
