#ifndef LUMIDEX_MERGE_APEX_H_
#define LUMIDEX_MERGE_APEX_H_

// Exposure values from their logarithmic APEX form (EXIF 2.32, annex C). By design the rationals
// are unsigned, so that a negative shutter speed value, an exposure longer than a second, gives a
// time of practically 0.

#include "merge/Rational.h"

// Seconds of a shutter speed value whose denominator is not 0.
double ExposureTime(const Rational& shutterSpeedValue) noexcept;

// The F-number of an aperture value whose denominator is not 0: the customary number for a whole
// value up to 10, else a power.
double FNumber(const Rational& apertureValue) noexcept;

#endif  // LUMIDEX_MERGE_APEX_H_
