#ifndef LUMIDEX_TESTS_SUPPORT_FULLPHOTO_H_
#define LUMIDEX_TESTS_SUPPORT_FULLPHOTO_H_

#include "support/Bytes.h"

namespace test {

// A JPEG of 640 x 480 from which every table of a store gets values: IFD0, EXIF, GPS, IFD1, IPTC, a
// maker note, a colour profile and XMP with a person.
Bytes FullPhoto();

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_FULLPHOTO_H_
