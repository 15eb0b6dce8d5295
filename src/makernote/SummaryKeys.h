#ifndef LUMIDEX_MAKERNOTE_SUMMARYKEYS_H_
#define LUMIDEX_MAKERNOTE_SUMMARYKEYS_H_

// The keys under which the maker-note summary lies in the store. Hosts see them as record
// identifiers.

#include <cstdint>

enum SummaryKey : std::uint32_t {
  SUMMARY_VENDOR = 1,
  SUMMARY_LENS_NAME = 2,
  SUMMARY_LENS_MODEL = 3,
  SUMMARY_LENS_ID = 4,
  SUMMARY_VENDOR_VALUE_2 = 5,
  SUMMARY_VENDOR_VALUE_1 = 6,
  SUMMARY_ISO = 7,
  SUMMARY_VENDOR_RATIONAL = 8,
  SUMMARY_F_NUMBER = 9,
  SUMMARY_PICTURE_STYLE = 10,
  SUMMARY_SENSOR_FORMAT_FACTOR = 11,  // never from a maker note; the merge computes it
  SUMMARY_SHORTEST_FOCAL_LENGTH = 12,
  SUMMARY_LONGEST_FOCAL_LENGTH = 13,
  SUMMARY_F_NUMBER_AT_SHORTEST = 14,
  SUMMARY_F_NUMBER_AT_LONGEST = 15,
};

#endif  // LUMIDEX_MAKERNOTE_SUMMARYKEYS_H_
