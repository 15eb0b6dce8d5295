#ifndef LUMIDEX_EXIF_JPEGMARKERS_H_
#define LUMIDEX_EXIF_JPEGMARKERS_H_

// The JPEG markers that the readers tell apart (ITU-T T.81, annex B).

#include <cstdint>
#include <string_view>

inline constexpr std::uint8_t kMarkerPrefix = 0xFF;
inline constexpr std::uint8_t kSoiMarker = 0xD8;
inline constexpr std::uint8_t kApp1Marker = 0xE1;
inline constexpr std::uint8_t kApp2Marker = 0xE2;
inline constexpr std::uint8_t kApp13Marker = 0xED;

// What the payload of an EXIF segment begins with (EXIF 2.32, section 4.7.2). By design the two
// zero bytes behind it are not tested.
inline constexpr std::string_view kExifSignature = "Exif";

// Start of frame: C0 to CF without DHT (C4), JPG (C8) and DAC (CC).
constexpr bool IsFrameMarker(std::uint8_t marker) noexcept {
  return (marker & 0xF0) == 0xC0 && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// RST0 to RST7, SOI and EOI have no length field.
constexpr bool IsStandAloneMarker(std::uint8_t marker) noexcept {
  return marker >= 0xD0 && marker <= 0xD9;
}

#endif  // LUMIDEX_EXIF_JPEGMARKERS_H_
