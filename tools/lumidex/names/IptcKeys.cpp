#include <array>

#include "Tables.h"
#include "names/TagRow.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// The store's keys, with the names of the datasets (IIM 4.2, chapters 5 and 6).
// clang-format off
constexpr auto kRows = std::to_array<TagRow>({
    {0,  "EnvelopeRecord", Lines},
    {11, "CodedCharacterSet", CharacterSet},
    {15, "RecordVersion", RecordVersion},
    {16, "City", Lines},
    {17, "CountryName", Lines},
    {18, "CountryCode", Lines},
    {19, "Caption", Lines},
    {20, "Headline", Lines},
    {22, "Keywords", Lines},
    {23, "ProvinceState", Lines},
    {26, "SubLocation", Lines},
    {27, "DateCreated", Lines},
    {28, "WriterEditor", Lines},
    {29, "SpecialInstructions", Lines},
    {30, "TransmissionReference", Lines},
    {31, "ObjectName", Lines},
    {32, "CopyrightNotice", Lines},
    {33, "ByLine", Lines},
    {34, "ByLineTitle", Lines},
    {35, "Credit", Lines},
    {36, "Source", Lines},
    {37, "Category", Lines},
    {38, "SupplementalCategory", Lines},
    {39, "TimeCreated", Lines},
    {40, "DigitalCreationDate", Lines},
    {41, "DigitalCreationTime", Lines},
});
// clang-format on
static_assert(IsAscending(kRows));

}  // namespace

TagRows IptcRows() {
  return kRows;
}

}  // namespace tool
