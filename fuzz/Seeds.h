#ifndef LUMIDEX_FUZZ_SEEDS_H_
#define LUMIDEX_FUZZ_SEEDS_H_

// The seeds of each target: small inputs that reach each of its branches, by file name. A function
// here is a row of SeedGenerator.cpp.

#include <map>
#include <string>

#include "support/Bytes.h"

namespace fuzz {

using Seeds = std::map<std::string, test::Bytes>;

Seeds ContainerSeeds();

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_SEEDS_H_
