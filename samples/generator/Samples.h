#ifndef LUMIDEX_SAMPLES_GENERATOR_SAMPLES_H_
#define LUMIDEX_SAMPLES_GENERATOR_SAMPLES_H_

// Every sample's file name with the function that makes its bytes.

#include <span>

#include "support/Bytes.h"

namespace samples {

struct Sample {
  const char* name;
  test::Bytes (*make)();
};

std::span<const Sample> AllSamples();

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_SAMPLES_H_
