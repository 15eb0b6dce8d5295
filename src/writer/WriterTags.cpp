#include "writer/WriterTags.h"

#include <algorithm>
#include <array>
#include <functional>

namespace {

// clang-format off
constexpr std::array kIfd0Tags = {
    WriterTag{  270, TYPE_ASCII},      // ImageDescription
    WriterTag{  271, TYPE_ASCII},      // Make
    WriterTag{  272, TYPE_ASCII},      // Model
    WriterTag{  282, TYPE_RATIONAL},   // XResolution
    WriterTag{  283, TYPE_RATIONAL},   // YResolution
    WriterTag{  296, TYPE_SHORT},      // ResolutionUnit
    WriterTag{  305, TYPE_ASCII},      // Software
    WriterTag{  306, TYPE_ASCII},      // DateTime
    WriterTag{  315, TYPE_ASCII},      // Artist
    WriterTag{33432, TYPE_ASCII},      // Copyright
    WriterTag{kExifPointerTag, TYPE_IFD},
    WriterTag{kGpsPointerTag,  TYPE_IFD},
};

// By design LensMake (42035) is not among them.
constexpr std::array kExifTags = {
    WriterTag{33434, TYPE_RATIONAL},   // ExposureTime
    WriterTag{33437, TYPE_RATIONAL},   // FNumber
    WriterTag{34850, TYPE_SHORT},      // ExposureProgram
    WriterTag{34852, TYPE_ASCII},      // SpectralSensitivity
    WriterTag{34855, TYPE_SHORT},      // ISOSpeedRatings
    WriterTag{34864, TYPE_SHORT},      // SensitivityType
    WriterTag{34865, TYPE_LONG},       // StandardOutputSensitivity
    WriterTag{34866, TYPE_LONG},       // RecommendedExposureIndex
    WriterTag{34867, TYPE_LONG},       // ISOSpeed
    WriterTag{34868, TYPE_LONG},       // ISOSpeedLatitudeyyy
    WriterTag{34869, TYPE_LONG},       // ISOSpeedLatitudezzz
    WriterTag{36864, TYPE_UNDEFINED},  // ExifVersion
    WriterTag{36867, TYPE_ASCII},      // DateTimeOriginal
    WriterTag{36868, TYPE_ASCII},      // DateTimeDigitized
    WriterTag{37377, TYPE_SRATIONAL},  // ShutterSpeedValue
    WriterTag{37378, TYPE_RATIONAL},   // ApertureValue
    WriterTag{37379, TYPE_SRATIONAL},  // BrightnessValue
    WriterTag{37380, TYPE_SRATIONAL},  // ExposureBiasValue
    WriterTag{37382, TYPE_RATIONAL},   // SubjectDistance
    WriterTag{37383, TYPE_SHORT},      // MeteringMode
    WriterTag{37384, TYPE_SHORT},      // LightSource
    WriterTag{37385, TYPE_SHORT},      // Flash
    WriterTag{37386, TYPE_RATIONAL},   // FocalLength
    WriterTag{37396, TYPE_SHORT},      // SubjectArea
    WriterTag{37510, TYPE_UNDEFINED},  // UserComment
    WriterTag{37521, TYPE_ASCII},      // SubSecTimeOriginal
    WriterTag{37522, TYPE_ASCII},      // SubSecTimeDigitized
    WriterTag{40961, TYPE_SHORT},      // ColorSpace
    WriterTag{40962, TYPE_LONG},       // PixelXDimension
    WriterTag{40963, TYPE_LONG},       // PixelYDimension
    WriterTag{41483, TYPE_RATIONAL},   // FlashEnergy
    WriterTag{41484, TYPE_UNDEFINED},  // SpatialFrequencyResponse
    WriterTag{41486, TYPE_RATIONAL},   // FocalPlaneXResolution
    WriterTag{41487, TYPE_RATIONAL},   // FocalPlaneYResolution
    WriterTag{41488, TYPE_SHORT},      // FocalPlaneResolutionUnit
    WriterTag{41492, TYPE_SHORT},      // SubjectLocation
    WriterTag{41493, TYPE_RATIONAL},   // ExposureIndex
    WriterTag{41495, TYPE_SHORT},      // SensingMethod
    WriterTag{41728, TYPE_UNDEFINED},  // FileSource
    WriterTag{41729, TYPE_UNDEFINED},  // SceneType
    WriterTag{41730, TYPE_UNDEFINED},  // CFAPattern
    WriterTag{41985, TYPE_SHORT},      // CustomRendered
    WriterTag{41986, TYPE_SHORT},      // ExposureMode
    WriterTag{41987, TYPE_SHORT},      // WhiteBalance
    WriterTag{41988, TYPE_RATIONAL},   // DigitalZoomRatio
    WriterTag{41989, TYPE_SHORT},      // FocalLengthIn35mmFilm
    WriterTag{41990, TYPE_SHORT},      // SceneCaptureType
    WriterTag{41991, TYPE_SHORT},      // GainControl
    WriterTag{41992, TYPE_SHORT},      // Contrast
    WriterTag{41993, TYPE_SHORT},      // Saturation
    WriterTag{41994, TYPE_SHORT},      // Sharpness
    WriterTag{41996, TYPE_SHORT},      // SubjectDistanceRange
    WriterTag{42033, TYPE_ASCII},      // BodySerialNumber
    WriterTag{42034, TYPE_RATIONAL},   // LensSpecification
    WriterTag{42036, TYPE_ASCII},      // LensModel
    WriterTag{42037, TYPE_ASCII},      // LensSerialNumber
};

constexpr std::array kGpsTags = {
    WriterTag{ 0, TYPE_BYTE},          // GPSVersionID
    WriterTag{ 1, TYPE_ASCII},         // GPSLatitudeRef
    WriterTag{ 2, TYPE_RATIONAL},      // GPSLatitude
    WriterTag{ 3, TYPE_ASCII},         // GPSLongitudeRef
    WriterTag{ 4, TYPE_RATIONAL},      // GPSLongitude
    WriterTag{ 5, TYPE_BYTE},          // GPSAltitudeRef
    WriterTag{ 6, TYPE_RATIONAL},      // GPSAltitude
    WriterTag{ 7, TYPE_RATIONAL},      // GPSTimeStamp
    WriterTag{ 8, TYPE_ASCII},         // GPSSatellites
    WriterTag{ 9, TYPE_ASCII},         // GPSStatus
    WriterTag{10, TYPE_ASCII},         // GPSMeasureMode
    WriterTag{11, TYPE_RATIONAL},      // GPSDOP
    WriterTag{12, TYPE_ASCII},         // GPSSpeedRef
    WriterTag{13, TYPE_RATIONAL},      // GPSSpeed
    WriterTag{14, TYPE_ASCII},         // GPSTrackRef
    WriterTag{15, TYPE_RATIONAL},      // GPSTrack
    WriterTag{16, TYPE_ASCII},         // GPSImgDirectionRef
    WriterTag{17, TYPE_RATIONAL},      // GPSImgDirection
    WriterTag{18, TYPE_ASCII},         // GPSMapDatum
    WriterTag{19, TYPE_ASCII},         // GPSDestLatitudeRef
    WriterTag{20, TYPE_RATIONAL},      // GPSDestLatitude
    WriterTag{21, TYPE_ASCII},         // GPSDestLongitudeRef
    WriterTag{22, TYPE_RATIONAL},      // GPSDestLongitude
    WriterTag{23, TYPE_ASCII},         // GPSDestBearingRef
    WriterTag{24, TYPE_RATIONAL},      // GPSDestBearing
    WriterTag{25, TYPE_ASCII},         // GPSDestDistanceRef
    WriterTag{26, TYPE_RATIONAL},      // GPSDestDistance
    WriterTag{27, TYPE_UNDEFINED},     // GPSProcessingMethod
    WriterTag{28, TYPE_UNDEFINED},     // GPSAreaInformation
    WriterTag{29, TYPE_ASCII},         // GPSDateStamp
    WriterTag{30, TYPE_SSHORT},        // GPSDifferential; by design not the standard's SHORT
};

constexpr std::array kExtendedRanges = {
    ExtendedRange{0xAA01, 0xAA03, 3},
    ExtendedRange{0xAA04, 0xAA04, 7},
    ExtendedRange{0xAA05, 0xAA09, 4},
    ExtendedRange{0xAA10, 0xAA15, 4},
    ExtendedRange{0xAB01, 0xAB01, 5},
    ExtendedRange{0xAB02, 0xAB02, 6},
    ExtendedRange{0xAB03, 0xAB04, 5},
};
// clang-format on

consteval bool IsAscending(std::span<const WriterTag> tags) {
  constexpr std::ranges::greater_equal kNotBelow;
  return std::ranges::adjacent_find(tags, kNotBelow, &WriterTag::tag) == tags.end();
}

}  // namespace

std::span<const WriterTag> WriterTagsOf(std::uint32_t group) noexcept {
  static_assert(IsAscending(kIfd0Tags) && IsAscending(kExifTags) && IsAscending(kGpsTags));
  switch (group) {
    case WRITER_IFD0:
      return kIfd0Tags;
    case WRITER_EXIF:
      return kExifTags;
    case WRITER_GPS:
      return kGpsTags;
    default:
      return {};
  }
}

const WriterTag* FindWriterTag(std::uint32_t group, std::uint32_t tag) noexcept {
  const auto tags = WriterTagsOf(group);
  const auto found = std::ranges::lower_bound(tags, tag, std::ranges::less{}, &WriterTag::tag);
  return found != tags.end() && found->tag == tag ? &*found : nullptr;
}

const ExtendedRange* FindExtendedRange(std::uint32_t id) noexcept {
  const auto holds = [id](const ExtendedRange& row) { return row.first <= id && id <= row.last; };
  const auto found = std::ranges::find_if(kExtendedRanges, holds);
  return found != kExtendedRanges.end() ? &*found : nullptr;
}
