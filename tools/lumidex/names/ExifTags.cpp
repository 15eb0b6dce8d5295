#include <array>

#include "Tables.h"
#include "names/TagRow.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// clang-format off
constexpr auto kExifRows = std::to_array<TagRow>({
    {0x829A, "ExposureTime", ExposureSeconds},
    {0x829D, "FNumber", FNumber},
    {0x8822, "ExposureProgram", InWords<kExposurePrograms>},
    {0x8824, "SpectralSensitivity"},
    {0x8827, "PhotographicSensitivity", IsoSpeed},
    {0x8828, "OECF", ByteTotal},
    {0x8830, "SensitivityType", InWords<kSensitivityTypes>},
    {0x8831, "StandardOutputSensitivity", IsoSpeed},
    {0x8832, "RecommendedExposureIndex", IsoSpeed},
    {0x8833, "ISOSpeed", IsoSpeed},
    {0x8834, "ISOSpeedLatitudeyyy", IsoSpeed},
    {0x8835, "ISOSpeedLatitudezzz", IsoSpeed},
    {0x9000, "ExifVersion", DigitVersion},
    {0x9003, "DateTimeOriginal", DateAndTime},
    {0x9004, "DateTimeDigitized", DateAndTime},
    {0x9010, "OffsetTime"},
    {0x9011, "OffsetTimeOriginal"},
    {0x9012, "OffsetTimeDigitized"},
    {0x9101, "ComponentsConfiguration", Components},
    {0x9102, "CompressedBitsPerPixel"},
    {0x9201, "ShutterSpeedValue", ShutterApex},
    {0x9202, "ApertureValue", ApertureApex},
    {0x9203, "BrightnessValue", Brightness},
    {0x9204, "ExposureBiasValue", ExposureValue},
    {0x9205, "MaxApertureValue", ApertureApex},
    {0x9206, "SubjectDistance", Metres},
    {0x9207, "MeteringMode", InWords<kMeteringModes>},
    {0x9208, "LightSource", InWords<kLightSources>},
    {0x9209, "Flash", Flash},
    {0x920A, "FocalLength", Millimetres},
    {0x9214, "SubjectArea", SubjectArea},
    {0x927C, "MakerNote", ByteTotal},
    {0x9286, "UserComment", Comment},
    {0x9290, "SubSecTime"},
    {0x9291, "SubSecTimeOriginal"},
    {0x9292, "SubSecTimeDigitized"},
    {0x9400, "Temperature", Celsius},
    {0x9401, "Humidity", Percent},
    {0x9402, "Pressure", Hectopascals},
    {0x9403, "WaterDepth", Metres},
    {0x9404, "Acceleration"},
    {0x9405, "CameraElevationAngle", Degrees},
    {0xA000, "FlashpixVersion", DigitVersion},
    {0xA001, "ColorSpace", InWords<kColorSpaces>},
    {0xA002, "PixelXDimension"},
    {0xA003, "PixelYDimension"},
    {0xA004, "RelatedSoundFile"},
    {0xA005, "InteroperabilityIFDPointer"},
    {0xA20B, "FlashEnergy"},
    {0xA20C, "SpatialFrequencyResponse", ByteTotal},
    {0xA20E, "FocalPlaneXResolution", FocalPlaneResolution},
    {0xA20F, "FocalPlaneYResolution", FocalPlaneResolution},
    {0xA210, "FocalPlaneResolutionUnit", InWords<kLengthUnits>},
    {0xA214, "SubjectLocation"},
    {0xA215, "ExposureIndex"},
    {0xA217, "SensingMethod", InWords<kSensingMethods>},
    {0xA300, "FileSource", ByteInWords<kFileSources>},
    {0xA301, "SceneType", ByteInWords<kSceneTypes>},
    {0xA302, "CFAPattern"},
    {0xA401, "CustomRendered", InWords<kCustomRendered>},
    {0xA402, "ExposureMode", InWords<kExposureModes>},
    {0xA403, "WhiteBalance", InWords<kWhiteBalances>},
    {0xA404, "DigitalZoomRatio", ZoomRatio},
    {0xA405, "FocalLengthIn35mmFilm", Millimetres},
    {0xA406, "SceneCaptureType", InWords<kSceneCaptureTypes>},
    {0xA407, "GainControl", InWords<kGainControls>},
    {0xA408, "Contrast", InWords<kSoftToHard>},
    {0xA409, "Saturation", InWords<kLowToHigh>},
    {0xA40A, "Sharpness", InWords<kSoftToHard>},
    {0xA40B, "DeviceSettingDescription", ByteTotal},
    {0xA40C, "SubjectDistanceRange", InWords<kSubjectDistanceRanges>},
    {0xA420, "ImageUniqueID"},
    {0xA430, "CameraOwnerName"},
    {0xA431, "BodySerialNumber"},
    {0xA432, "LensSpecification", LensSpecification},
    {0xA433, "LensMake"},
    {0xA434, "LensModel"},
    {0xA435, "LensSerialNumber"},
    {0xA460, "CompositeImage", InWords<kCompositeImages>},
    {0xA461, "SourceImageNumberOfCompositeImage"},
    {0xA462, "SourceExposureTimesOfCompositeImage", ByteTotal},
    {0xA500, "Gamma"},
});

constexpr auto kInteropRows = std::to_array<TagRow>({
    {0x0001, "InteroperabilityIndex"},
    {0x0002, "InteroperabilityVersion", DigitVersion},
});
// clang-format on
static_assert(IsAscending(kExifRows) && IsAscending(kInteropRows));

}  // namespace

TagRows ExifRows() {
  return kExifRows;
}
TagRows InteropRows() {
  return kInteropRows;
}

}  // namespace tool
