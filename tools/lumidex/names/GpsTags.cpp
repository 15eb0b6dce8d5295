#include <array>

#include "Tables.h"
#include "names/TagRow.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// clang-format off
constexpr auto kRows = std::to_array<TagRow>({
    {0x0000, "GPSVersionID", ByteVersion},
    {0x0001, "GPSLatitudeRef"},
    {0x0002, "GPSLatitude", Latitude},
    {0x0003, "GPSLongitudeRef"},
    {0x0004, "GPSLongitude", Longitude},
    {0x0005, "GPSAltitudeRef", InWords<kGpsAltitudeRefs>},
    {0x0006, "GPSAltitude", Altitude},
    {0x0007, "GPSTimeStamp", ClockTime},
    {0x0008, "GPSSatellites"},
    {0x0009, "GPSStatus"},
    {0x000A, "GPSMeasureMode"},
    {0x000B, "GPSDOP"},
    {0x000C, "GPSSpeedRef"},
    {0x000D, "GPSSpeed", Speed},
    {0x000E, "GPSTrackRef"},
    {0x000F, "GPSTrack", Track},
    {0x0010, "GPSImgDirectionRef"},
    {0x0011, "GPSImgDirection", ImageDirection},
    {0x0012, "GPSMapDatum"},
    {0x0013, "GPSDestLatitudeRef"},
    {0x0014, "GPSDestLatitude", DestinationLatitude},
    {0x0015, "GPSDestLongitudeRef"},
    {0x0016, "GPSDestLongitude", DestinationLongitude},
    {0x0017, "GPSDestBearingRef"},
    {0x0018, "GPSDestBearing", Bearing},
    {0x0019, "GPSDestDistanceRef"},
    {0x001A, "GPSDestDistance", Distance},
    {0x001B, "GPSProcessingMethod", Comment},
    {0x001C, "GPSAreaInformation", Comment},
    {0x001D, "GPSDateStamp", GpsDate},
    {0x001E, "GPSDifferential", InWords<kGpsDifferentials>},
    {0x001F, "GPSHPositioningError", Metres},
});
// clang-format on
static_assert(IsAscending(kRows));

}  // namespace

TagRows GpsRows() {
  return kRows;
}

}  // namespace tool
