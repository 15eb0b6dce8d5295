#ifndef LUMIDEX_MAKERNOTE_LENSTEXT_H_
#define LUMIDEX_MAKERNOTE_LENSTEXT_H_

#include <cstdint>
#include <span>
#include <string>

// A lens in words, as in "24.0-70.0 mm f/2.8". The eight numbers are four rationals, numerator
// first: shortest and longest focal length, smallest F-number at each
// (LensSpecification, EXIF 2.32). Empty when there are not eight numbers or a focal length has a 0.
std::string FormatLensText(std::span<const std::uint32_t> numbers);

#endif  // LUMIDEX_MAKERNOTE_LENSTEXT_H_
