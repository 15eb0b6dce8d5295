#include <array>

#include "Tables.h"
#include "names/TagRow.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// Values that the module computes or gathers under identifiers of its own, and maker-note tags.
// What the interface hands out by number alone is named like its methods.
// clang-format off
constexpr auto kBasicsRows = std::to_array<TagRow>({
    {11,  "ColorSpace", InWords<kColorSpaceCodes>},
    {256, "ImageWidth"},
    {257, "ImageLength"},
    {274, "Orientation", InWords<kOrientations>},
    {277, "SamplesPerPixel"},
});

constexpr auto kSummaryRows = std::to_array<TagRow>({
    {1,  "Vendor", InWords<kMakerNoteVendors>},
    {2,  "LensName"},
    {3,  "LensModel"},
    {4,  "LensId"},
    {7,  "ISO", IsoSpeed},
    {9,  "FNumber", FNumber},
    {10, "PictureStyle"},
    {11, "SensorFormatFactor", Times},
    {12, "ShortestFocalLength", Millimetres},
    {13, "LongestFocalLength", Millimetres},
    {14, "FNumberAtShortestFocalLength", FNumber},
    {15, "FNumberAtLongestFocalLength", FNumber},
});

constexpr auto kMakerNoteRows = std::to_array<TagRow>({
    {0x0010, "Info16"},
    {0x0011, "Info17"},
    {0x0012, "Info18"},
    {0x0013, "Info19"},
    {0x0014, "Info20"},
    {0x0015, "Info21"},
    {0x0021, "PictureStyle"},
    {0xA003, "LensId"},
});
// clang-format on
static_assert(IsAscending(kBasicsRows) && IsAscending(kSummaryRows) && IsAscending(kMakerNoteRows));

}  // namespace

TagRows BasicsRows() {
  return kBasicsRows;
}
TagRows MakerNoteSummaryRows() {
  return kSummaryRows;
}
TagRows MakerNoteRows() {
  return kMakerNoteRows;
}

}  // namespace tool
