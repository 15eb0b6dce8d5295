#ifndef LUMIDEX_FUZZ_SEEDS_H_
#define LUMIDEX_FUZZ_SEEDS_H_

// The seeds of each target: small inputs that reach each of its branches, by file name. A function
// here is a row of SeedGenerator.cpp.

#include <cstdint>
#include <map>
#include <string>

#include "support/Bytes.h"

namespace fuzz {

using Seeds = std::map<std::string, test::Bytes>;

// A number in front of an input, as FuzzInput takes it.
inline test::Bytes Control(std::uint32_t value) {
  return test::U32(value, ByteOrder::LittleEndian);
}

Seeds ContainerSeeds();
Seeds TiffSeeds();
Seeds XmpSeeds();
Seeds IptcSeeds();
Seeds PhotoshopSeeds();
Seeds IccSeeds();
Seeds MakerNoteSeeds();
Seeds JpegLocatorSeeds();
Seeds PngLocatorSeeds();
Seeds EmbedXmpSeeds();
Seeds WriteMetadataSeeds();
Seeds GettersSeeds();

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_SEEDS_H_
