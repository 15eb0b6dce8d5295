#ifndef LUMIDEX_SAMPLES_GENERATOR_IPTC_H_
#define LUMIDEX_SAMPLES_GENERATOR_IPTC_H_

#include "support/Bytes.h"

namespace samples {

// IIM datasets with keywords, caption and city. In UTF-8 the block begins by saying so; in Latin-1
// it says nothing, and only the first keyword has a letter outside ASCII.
test::Bytes Utf8Datasets();
test::Bytes Latin1Datasets();

}  // namespace samples

#endif  // LUMIDEX_SAMPLES_GENERATOR_IPTC_H_
