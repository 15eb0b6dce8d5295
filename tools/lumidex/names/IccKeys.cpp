#include <array>

#include "Tables.h"
#include "names/TagRow.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// The store's keys: header fields from 1 (ICC.1, section 7.2), tags from 256 (section 9.2).
// clang-format off
constexpr auto kRows = std::to_array<TagRow>({
    {1,   "ProfileSize"},
    {2,   "PreferredCMM"},
    {3,   "ProfileVersion", IccVersion},
    {4,   "DeviceClass", IccClass},
    {5,   "DataColorSpace"},
    {6,   "ConnectionSpace"},
    {7,   "CreationDateTime", IccDate},
    {8,   "FileSignature"},
    {9,   "PrimaryPlatform"},
    {10,  "ProfileFlags", IccFlags},
    {11,  "DeviceManufacturer"},
    {12,  "DeviceModel"},
    {13,  "DeviceAttributes", IccAttributes},
    {14,  "RenderingIntent", IccIntent},
    {15,  "Illuminant", IccXyz},
    {16,  "ProfileCreator"},
    {17,  "ProfileID", IccProfileId},
    {256, "Copyright"},
    {257, "ProfileDescription"},
    {258, "MediaWhitePoint", IccXyz},
    {259, "MediaBlackPoint", IccXyz},
    {260, "RedTRC", IccCurve},
    {261, "GreenTRC", IccCurve},
    {262, "BlueTRC", IccCurve},
    {263, "RedMatrixColumn", IccXyz},
    {264, "GreenMatrixColumn", IccXyz},
    {265, "BlueMatrixColumn", IccXyz},
    {266, "DeviceManufacturerDescription"},
});
// clang-format on
static_assert(IsAscending(kRows));

}  // namespace

TagRows IccRows() {
  return kRows;
}

}  // namespace tool
