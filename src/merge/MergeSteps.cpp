#include "merge/MergeSteps.h"

#include <array>

#include "makernote/SummaryKeys.h"
#include "merge/MergeConversions.h"

namespace {

// Tags of EXIF 2.32, which raw-style files and DNG also use in IFD0.
constexpr std::uint32_t kExposureTime = 0x829A;
constexpr std::uint32_t kFNumber = 0x829D;
constexpr std::uint32_t kExposureProgram = 0x8822;
constexpr std::uint32_t kIsoSpeed = 0x8827;
constexpr std::uint32_t kRecommendedIndex = 0x8832;
constexpr std::uint32_t kShutterSpeedValue = 0x9201;
constexpr std::uint32_t kExposureBias = 0x9204;
constexpr std::uint32_t kMeteringMode = 0x9207;
constexpr std::uint32_t kFocalLength = 0x920A;
constexpr std::uint32_t kImageWidth = 0xA002;
constexpr std::uint32_t kResolution = 0xA20E;  // of the focal plane
constexpr std::uint32_t kFocalLengthIn35mm = 0xA405;
constexpr std::uint32_t kLensSpec = 0xA432;

// Tags of IFD0 alone.
constexpr std::uint32_t kRawIso = 0x0017;
constexpr std::uint32_t kExposureIndex = 0x9215;
constexpr std::uint32_t kDngLensInfo = 0xC630;

// Keys under which XMP properties are filed.
constexpr std::uint32_t kXmpLens = 0xAB0B;
constexpr std::uint32_t kXmpIsoSpeedRatings = 0xAB13;
constexpr std::uint32_t kXmpExposureBiasValue = 0xAB14;
constexpr std::uint32_t kXmpShutterSpeedValue = 0xAB15;
constexpr std::uint32_t kXmpApertureValue = 0xAB16;
constexpr std::uint32_t kXmpFocalLength = 0xAB17;

consteval Place Ifd0(std::uint32_t tag) {
  return {BLOCK_IFD0, tag};
}
consteval Place Exif(std::uint32_t tag) {
  return {BLOCK_EXIF, tag};
}
consteval Place Note(SummaryKey key) {
  return {BLOCK_MAKERNOTE_SUMMARY, key};
}
consteval Place Xmp(std::uint32_t key) {
  return {BLOCK_XMP, key};
}

consteval MergeCondition Present(const Place& source, const Place& companion = {}) {
  return {source, 0, companion};
}

consteval MergeCondition OneRational(const Place& source, const Place& companion = {}) {
  return {source, 8, companion};
}

consteval MergeCondition FourRationals(const Place& source) {
  return {source, 32, {}};
}

// By design so spelled.
constexpr const char* kFactorLine = "[MDTEST2] SendorFormatFactor Parsed";

// Two lines a step: target, condition and conversion; log line. By design the lines of the lens
// steps name other tables than the ones that are read, the steps with two targets ask only for the
// first, and one line ends in a blank.
// clang-format off
constexpr auto kSteps = std::to_array<MergeStep>({
    {Exif(kIsoSpeed),                    Present(Note(SUMMARY_ISO)),          CapIso,
     "[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8827 USHORT)"},
    {Exif(kRecommendedIndex),            Present(Note(SUMMARY_ISO), Exif(kIsoSpeed)), CopyLargeIso,
     "[MDTEST2] ISO: Merge MakerNote -> ExifExt (0x8832 INT)"},
    {Exif(kIsoSpeed),                    Present(Ifd0(kRawIso)),              CopyIsoAsShort,
     "[MDTEST2] ISO: Merge ExifBasic -> ExifExt"},
    {Exif(kIsoSpeed),                    Present(Ifd0(kExposureIndex)),       DivideRational,
     "[MDTEST2] ISO: Merge ExifBasic -> ExifExt (Kodak)"},
    {Exif(kIsoSpeed),                    Present(Xmp(kXmpIsoSpeedRatings)),   ReadIsoText,
     "[MDTEST2] ISO: Merge XMP -> ExifExt"},

    {Exif(kExposureTime),                Present(Ifd0(kExposureTime)),        CopyValue,
     "[MDTEST2] ExposureTime: Merge ExifBasic -> ExifExt"},
    {Exif(kExposureTime),                OneRational(Exif(kShutterSpeedValue)), ConvertShutter,
     "[MDTEST2] ExposureTime: Merge ExifExt -> ExifExt"},
    {Exif(kExposureTime),                Present(Xmp(kXmpShutterSpeedValue)), ConvertShutterText,
     "[MDTEST2] ExposureTime: Merge XMP -> ExifExt"},

    {Exif(kFNumber),                     Present(Ifd0(kFNumber)),             CopyValue,
     "[MDTEST2] FNumber: Merge ExifBasic -> ExifExt"},
    {Exif(kFNumber),                     Present(Note(SUMMARY_F_NUMBER)),     CopyValue,
     "[MDTEST2] FNumber: Merge Makernote -> ExifExt"},
    {Exif(kFNumber),                     Present(Xmp(kXmpApertureValue)),     ConvertApertureText,
     "[MDTEST2] FNumber: Merge XMP -> ExifExt"},

    {Exif(kFocalLength),                 Present(Ifd0(kFocalLength)),         CopyValue,
     "[MDTEST2] FocalLength: Merge ExifBasic -> ExifExt"},
    {Exif(kFocalLength),                 Present(Xmp(kXmpFocalLength)),       ReadRational,
     "[MDTEST2] FocalLength: Merge XMP -> ExifExt"},

    {Exif(kExposureProgram),             Present(Ifd0(kExposureProgram)),     CopyValue,
     "[MDTEST2] ExifExposureProg: Merge ExifBasic -> ExifExt"},
    {Exif(kMeteringMode),                Present(Ifd0(kMeteringMode)),        CopyValue,
     "[MDTEST2] MeteringMode: Merge ExifBasic -> ExifExt"},
    {Exif(kExposureBias),                Present(Xmp(kXmpExposureBiasValue)), ReadSignedRational,
     "[MDTEST2] ExposureBias: Merge XMP -> ExifExt "},

    {Note(SUMMARY_LENS_NAME),            Present(Xmp(kXmpLens)),              ReadText,
     "[MDTEST2] LensName: Merge XMP -> MakerNote"},
    {Note(SUMMARY_LENS_MODEL),           FourRationals(Exif(kLensSpec)),      DescribeLens,
     "[MDTEST2] LensModel: Merge BasicExif -> MakerNote"},
    {Note(SUMMARY_LENS_MODEL),           FourRationals(Ifd0(kDngLensInfo)),   DescribeLens,
     "[MDTEST2] LensModel: Merge Exif -> MakerNote"},
    {Note(SUMMARY_SHORTEST_FOCAL_LENGTH), FourRationals(Exif(kLensSpec)),      SplitFocalLengths,
     "[MDTEST] LensInfo (FOCALLENGTH): Merge BasicExif -> MakerNote"},
    {Note(SUMMARY_F_NUMBER_AT_SHORTEST), FourRationals(Exif(kLensSpec)),      SplitFNumbers,
     "[MDTEST] LensInfo (APERTURE): Merge BasicExif -> MakerNote"},
    {Note(SUMMARY_SHORTEST_FOCAL_LENGTH), FourRationals(Ifd0(kDngLensInfo)),   SplitFocalLengths,
     "[MDTEST] LensInfo (FOCALLENGTH): Merge BasicExif -> MakerNote (DngLensModel)"},
    {Note(SUMMARY_F_NUMBER_AT_SHORTEST), FourRationals(Ifd0(kDngLensInfo)),   SplitFNumbers,
     "[MDTEST] LensInfo (APERTURE): Merge BasicExif -> MakerNote (DngLensModel)"},

    {Note(SUMMARY_SENSOR_FORMAT_FACTOR), OneRational(Exif(kFocalLength), Exif(kFocalLengthIn35mm)),
     ComputeFocalFactor, kFactorLine},
    {Note(SUMMARY_SENSOR_FORMAT_FACTOR), OneRational(Exif(kResolution), Exif(kImageWidth)),
     ComputeResolutionFactor, kFactorLine},
});
// clang-format on

}  // namespace

void MergeTarget::Set(std::uint32_t type, std::span<const std::uint8_t> bytes) {
  TagEntry& entry = m_store.m_fnFindOrInsert(*m_store.m_fnGetBlock(m_next.block), m_next.key);
  SetTagValue(entry, m_next.key, type, bytes, m_store.Memory());
  m_isSet = true;
  m_lacksData = m_lacksData || entry.m_pData == nullptr;
  ++m_next.key;
}

std::span<const MergeStep> MergeSteps() noexcept {
  return kSteps;
}
