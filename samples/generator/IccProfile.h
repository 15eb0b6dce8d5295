#ifndef LUMIDEX_SAMPLES_GENERATOR_ICCPROFILE_H_
#define LUMIDEX_SAMPLES_GENERATOR_ICCPROFILE_H_

#include "support/Bytes.h"

namespace samples {

// A display profile of version 2.1 (ICC.1:1998-09) with the primaries of sRGB, adapted to D50, and
// a gamma of 2.2.
test::Bytes DisplayProfile();

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_ICCPROFILE_H_
