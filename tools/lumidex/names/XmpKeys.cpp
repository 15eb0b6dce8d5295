#include <array>

#include "Tables.h"
#include "names/TagRow.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// Properties carry the usual prefix of their schema.
// clang-format off
constexpr auto kRows = std::to_array<TagRow>({
    {0xAA01, "xmp:Rating", Stars},
    {0xAA02, "xmp:CreatorTool"},
    {0xAA03, "xmp:Label"},
    {0xAA04, "dc:rights"},
    {0xAA05, "Iptc4xmpCore:CiAdrRegion"},
    {0xAA06, "Iptc4xmpCore:CiAdrCity"},
    {0xAA07, "Iptc4xmpCore:CiAdrPcode"},
    {0xAA08, "Iptc4xmpCore:CiAdrCtry"},
    {0xAA09, "Iptc4xmpCore:CiTelWork"},
    {0xAA10, "Iptc4xmpCore:CiEmailWork"},
    {0xAA11, "Iptc4xmpCore:CiUrlWork"},
    {0xAA12, "Iptc4xmpCore:CiAdrExtadr"},
    {0xAA13, "Iptc4xmpCore:SubjectCode"},
    {0xAA14, "Iptc4xmpCore:IntellectualGenre"},
    {0xAA15, "Iptc4xmpCore:Scene"},
    {0xAB01, "xmpRights:WebStatement"},
    {0xAB02, "photoshop:SupplementalCategories"},
    {0xAB03, "xmpRights:UsageTerms"},
    {0xAB04, "xmpRights:Marked", TextMarked},
    {0xAB09, "Region", PersonRegion},
    {0xAB0A, "RegionMarker"},
    {0xAB0B, "aux:Lens"},
    {0xAB11, "tiff:Make"},
    {0xAB12, "tiff:Model"},
    {0xAB13, "exif:ISOSpeedRatings"},
    {0xAB14, "exif:ExposureBiasValue", TextExposureValue},
    {0xAB15, "exif:ShutterSpeedValue", TextShutterApex},
    {0xAB16, "exif:ApertureValue", TextApertureApex},
    {0xAB17, "exif:FocalLength", TextMillimetres},
    {0xAB18, "exif:ExposureMode", TextExposureMode},
    {0xAB19, "GPano:ProjectionType"},
    {0xAB20, "GPano:PoseHeadingDegrees", TextDegrees},
    {0xAB21, "GPano:PosePitchDegrees", TextDegrees},
    {0xAB22, "GPano:PoseRollDegrees", TextDegrees},
});
// clang-format on
static_assert(IsAscending(kRows));

}  // namespace

TagRows XmpRows() {
  return kRows;
}

}  // namespace tool
