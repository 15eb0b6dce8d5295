#ifndef LUMIDEX_EXIF_IPTCDATASETS_H_
#define LUMIDEX_EXIF_IPTCDATASETS_H_

// The IPTC-IIM datasets that the module knows (IIM 4.2, chapters 5 and 6), each with the key under
// which the store and the result records hold it.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

struct IptcDataset {
  std::uint8_t record;
  std::uint8_t number;
  std::uint32_t key;
  std::string_view name;
};

enum IptcKey : std::uint32_t {
  IPTC_OTHER_ENVELOPE = 0,  // every record-1 dataset that is not in the table
  IPTC_CODED_CHARACTER_SET = 11,
  IPTC_RECORD_VERSION = 15,
};

// clang-format off
inline constexpr std::array kIptcDatasets = {
    IptcDataset{1,  90, IPTC_CODED_CHARACTER_SET, "CodedCharacterSet"},
    IptcDataset{2,   0, IPTC_RECORD_VERSION,      "RecordVersion"},
    IptcDataset{2,   5, 31, "ObjectName"},
    IptcDataset{2,  15, 37, "Category"},
    IptcDataset{2,  20, 38, "SupplementalCategory"},
    IptcDataset{2,  25, 22, "Keywords"},
    IptcDataset{2,  40, 29, "SpecialInstructions"},
    IptcDataset{2,  55, 27, "DateCreated"},
    IptcDataset{2,  60, 39, "TimeCreated"},
    IptcDataset{2,  62, 40, "DigitalCreationDate"},
    IptcDataset{2,  63, 41, "DigitalCreationTime"},
    IptcDataset{2,  80, 33, "Byline"},
    IptcDataset{2,  85, 34, "BylineTitle"},
    IptcDataset{2,  90, 16, "City"},
    IptcDataset{2,  92, 26, "SubLocation"},
    IptcDataset{2,  95, 23, "ProvinceState"},
    IptcDataset{2, 100, 18, "CountryCode"},
    IptcDataset{2, 101, 17, "CountryName"},
    IptcDataset{2, 103, 30, "TransmissionReference"},
    IptcDataset{2, 105, 20, "Headline"},
    IptcDataset{2, 110, 35, "Credit"},
    IptcDataset{2, 115, 36, "Source"},
    IptcDataset{2, 116, 32, "CopyrightNotice"},
    IptcDataset{2, 120, 19, "CaptionAbstract"},
    IptcDataset{2, 122, 28, "WriterEditor"},
};
// clang-format on
static_assert(std::ranges::is_sorted(kIptcDatasets, std::ranges::less{},
                                     [](const IptcDataset& row) {
                                       return row.record << 8 | row.number;
                                     }));

// Keys are below this one.
inline constexpr std::size_t kIptcKeyEnd =
    std::ranges::max(kIptcDatasets, std::ranges::less{}, &IptcDataset::key).key + 1;

// The rows' places by record and number, counted from 1: every dataset of a block is looked up.
inline constexpr auto kIptcPlaces = [] {
  std::array<std::array<std::uint8_t, 0x80>, 2> places = {};
  std::uint8_t place = 0;
  for (const IptcDataset& row : kIptcDatasets) places[row.record - 1U][row.number] = ++place;
  return places;
}();

// The row of a dataset, or null.
constexpr const IptcDataset* FindIptcDataset(std::uint32_t record, std::uint32_t number) noexcept {
  if (record == 0 || record > kIptcPlaces.size() || number >= kIptcPlaces[0].size()) return nullptr;
  const std::size_t place = kIptcPlaces[record - 1][number];
  return place == 0 ? nullptr : &kIptcDatasets[place - 1];
}

#endif  // LUMIDEX_EXIF_IPTCDATASETS_H_
