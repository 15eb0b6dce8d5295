#ifndef LUMIDEX_TESTS_WRITER_ACCEPTEDTAGS_H_
#define LUMIDEX_TESTS_WRITER_ACCEPTEDTAGS_H_

// The accepted tags as the documentation lists them, type by type.

#include <cstdint>
#include <vector>

#include "base/TypeSizes.h"

namespace test {

struct AcceptedTags {
  std::uint32_t group;
  TagType type;
  std::vector<std::uint16_t> tags;
};

inline const std::vector<AcceptedTags>& AllAcceptedTags() {
  static const std::vector<AcceptedTags> all = {
      {2, TYPE_ASCII, {270, 271, 272, 305, 306, 315, 33432}},
      {2, TYPE_RATIONAL, {282, 283}},
      {2, TYPE_SHORT, {296}},
      {4,
       TYPE_RATIONAL,
       {33434, 33437, 37378, 37382, 37386, 41483, 41486, 41487, 41493, 41988, 42034}},
      {4, TYPE_SRATIONAL, {37377, 37379, 37380}},
      {4, TYPE_SHORT, {34850, 34855, 34864, 37383, 37384, 37385, 37396, 40961, 41488, 41492, 41495,
                       41985, 41986, 41987, 41989, 41990, 41991, 41992, 41993, 41994, 41996}},
      {4, TYPE_LONG, {34865, 34866, 34867, 34868, 34869, 40962, 40963}},
      {4, TYPE_ASCII, {34852, 36867, 36868, 37521, 37522, 42033, 42036, 42037}},
      {4, TYPE_UNDEFINED, {36864, 37510, 41484, 41728, 41729, 41730}},
      {8, TYPE_BYTE, {0, 5}},
      {8, TYPE_ASCII, {1, 3, 8, 9, 10, 12, 14, 16, 18, 19, 21, 23, 25, 29}},
      {8, TYPE_RATIONAL, {2, 4, 6, 7, 11, 13, 15, 17, 20, 22, 24, 26}},
      {8, TYPE_UNDEFINED, {27, 28}},
      {8, TYPE_SSHORT, {30}},
  };
  return all;
}

}  // namespace test

#endif  // LUMIDEX_TESTS_WRITER_ACCEPTEDTAGS_H_
