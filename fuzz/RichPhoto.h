#ifndef LUMIDEX_FUZZ_RICHPHOTO_H_
#define LUMIDEX_FUZZ_RICHPHOTO_H_

#include "support/Bytes.h"

namespace fuzz {

// A photograph that every getter of an object has a value for.
test::Bytes RichPhoto();

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_RICHPHOTO_H_
