#ifndef LUMIDEX_MAKERNOTE_MAKERNOTEINFO_H_
#define LUMIDEX_MAKERNOTE_MAKERNOTEINFO_H_

// What a maker note says in terms that all vendors share. Zero and null mean that the maker note
// does not tell. The record owns its texts and its preview.

#include <cstdint>
#include <memory>

struct MakerNoteRational {
  std::uint32_t numerator = 0;
  std::uint32_t denominator = 0;
};

// The longest and the shortest focal length of a lens, and its smallest F-number at each.
struct MakerNoteLensInfo {
  MakerNoteRational shortestFocalLength;
  MakerNoteRational longestFocalLength;
  MakerNoteRational fNumberAtShortest;
  MakerNoteRational fNumberAtLongest;
};

struct MakerNoteInfo {
  std::uint32_t nVendorCode = 0;
  std::unique_ptr<char[]> pszLensName;
  std::unique_ptr<char[]> pszLensModel;
  std::int32_t nVendorValue1 = 0;  // the two values and the rational are each vendor's own
  std::int32_t nVendorValue2 = 0;
  std::uint32_t nIso = 0;
  MakerNoteRational vendorRational;
  MakerNoteRational fNumber;
  std::uint32_t nLensId = 0;
  std::unique_ptr<char[]> pszPictureStyle;
  MakerNoteLensInfo lensInfo;
  std::unique_ptr<std::uint8_t[]> pPreview;  // a JPEG stream
  std::uint64_t nPreviewSize = 0;
};

#endif  // LUMIDEX_MAKERNOTE_MAKERNOTEINFO_H_
