#ifndef LUMIDEX_MERGE_SENSORFORMATFACTOR_H_
#define LUMIDEX_MERGE_SENSORFORMATFACTOR_H_

// How many times smaller than 35 mm film a sensor is.

#include <cstdint>
#include <optional>

#include "merge/Rational.h"

// From a focal length in millimetres and the one with the same view on 35 mm film. None when a
// number is 0.
std::optional<double> FactorFromFocalLengths(const Rational& focalLength,
                                             std::uint16_t on35mmFilm) noexcept;

// From the pixels of an image's width and the pixels in a unit of the sensor's width. None when a
// number is 0.
std::optional<double> FactorFromResolution(const Rational& resolution,
                                           std::uint16_t imageWidth) noexcept;

#endif  // LUMIDEX_MERGE_SENSORFORMATFACTOR_H_
