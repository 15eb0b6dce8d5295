#include "core/RecordExtractors.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <span>
#include <string>

#include "base/ByteOrder.h"
#include "base/TypeSizes.h"

namespace {

// How the values of a TIFF type become record values.
enum class Widening { None, Zero, Sign };

struct Conversion {
  std::uint32_t tagType;
  std::uint32_t recordType;
  Widening widening;
};

// clang-format off
constexpr std::array kConversions = {
    Conversion{TYPE_SHORT,     LMD_RECORD_UINT32,    Widening::Zero},
    Conversion{TYPE_SSHORT,    LMD_RECORD_INT32,     Widening::Sign},
    Conversion{TYPE_ASCII,     LMD_RECORD_ASCII,     Widening::None},
    Conversion{TYPE_LONG,      LMD_RECORD_UINT32,    Widening::None},
    Conversion{TYPE_IFD,       LMD_RECORD_UINT32,    Widening::None},
    Conversion{TYPE_RATIONAL,  LMD_RECORD_URATIONAL, Widening::None},
    Conversion{TYPE_SLONG,     LMD_RECORD_INT32,     Widening::None},
    Conversion{TYPE_SRATIONAL, LMD_RECORD_SRATIONAL, Widening::None},
    Conversion{TYPE_DOUBLE,    LMD_RECORD_DOUBLE,    Widening::None},
    Conversion{TYPE_WIDE_TEXT, LMD_RECORD_WIDE_TEXT, Widening::None},
};
// clang-format on

constexpr Conversion FindConversion(std::uint32_t tagType) {
  const auto found = std::ranges::find(kConversions, tagType, &Conversion::tagType);
  return found != kConversions.end() ? *found
                                     : Conversion{tagType, LMD_RECORD_BYTES, Widening::None};
}

// Every value is converted: the types of TIFF need no search.
constexpr auto kTiffConversions = [] {
  std::array<Conversion, TYPE_IFD + 1> rows = {};
  for (std::uint32_t type = 0; type < rows.size(); ++type) rows[type] = FindConversion(type);
  return rows;
}();

Conversion ConversionOf(std::uint32_t tagType) {
  return tagType < kTiffConversions.size() ? kTiffConversions[tagType] : FindConversion(tagType);
}

// Writes 16-bit values as 32-bit ones. An odd last byte counts as a value whose high byte is 0, cut
// to the room that is left.
void Widen(std::span<const std::uint8_t> from, Widening widening, std::span<std::uint8_t> to) {
  for (std::size_t i = 0; 2 * i < from.size(); ++i) {
    const std::uint32_t value = widening == Widening::Sign
                                    ? static_cast<std::uint32_t>(HostValue<std::int16_t>(from, i))
                                    : HostValue<std::uint16_t>(from, i);
    const auto room = to.subspan(4 * i);
    std::memcpy(room.data(), &value, std::min(room.size(), sizeof(value)));
  }
}

void AppendEntry(OwnedRecords& records, std::uint32_t group, const TagEntry& entry) {
  const auto bytes = TagBytes(entry);
  if (bytes.size() != entry.m_nSize) return;
  const Conversion conversion = ConversionOf(entry.m_nType);
  const bool widens = conversion.widening != Widening::None;

  const CInfoRecord* record = records.Add(group, entry.m_nTag, conversion.recordType,
                                          widens ? 2 * bytes.size() : bytes.size());
  if (record == nullptr) return;
  if (widens) {
    Widen(bytes, conversion.widening, {record->m_pData, record->m_nSize});
  } else {
    std::copy(bytes.begin(), bytes.end(), record->m_pData);
  }
}

// By design the first entry's size bounds the entries after it.
void ExtractBlock(OwnedRecords& records, VxMetadata& store, std::uint32_t group,
                  std::int32_t block) {
  const TagMap& table = *store.m_fnGetBlock(block);
  TagMap::Iterator& cursor = *store.m_fnGetBlockCursor(block);
  if (table.IsEmpty()) return;
  const std::uint32_t bound = table.begin()->second.m_nSize;
  for (cursor = table.begin(); cursor != table.end(); ++cursor) {
    const TagEntry& entry = cursor->second;
    if (entry.m_nSize > bound) break;
    AppendEntry(records, group, entry);
  }
}

void AppendNumber(OwnedRecords& records, std::uint32_t group, std::uint32_t id,
                  std::uint32_t value) {
  const CInfoRecord* record = records.Add(group, id, LMD_RECORD_UINT32, sizeof(value));
  if (record != nullptr) std::memcpy(record->m_pData, &value, sizeof(value));
}

std::uint32_t ShortOr(VxMetadata& store, std::int32_t block, std::uint32_t tag,
                      std::uint32_t fallback) {
  std::uint32_t value = 0;
  return store.m_fnGetTagShort(block, tag, &value) == S_OK ? value : fallback;
}

// 1 for sRGB, 3 for Adobe RGB, else 0. By design the words of the interoperability index are looked
// for under the colour-space tag itself.
std::uint32_t ColorSpaceCode(VxMetadata& store) {
  constexpr std::uint32_t kColorSpaceTag = 0xA001;
  const std::uint32_t number = ShortOr(store, BLOCK_EXIF, kColorSpaceTag, 0);
  if (number == 1) return 1;
  if (number == 2) return 3;
  std::string text;
  if (store.m_fnGetTagString(BLOCK_EXIF, kColorSpaceTag, text) != S_OK) return 0;
  if (text == "R03") return 3;
  if (text == "R98") return 1;
  return 0;
}

void ExtractBasics(OwnedRecords& records, VxMetadata& store, std::uint32_t group, std::int32_t) {
  constexpr std::uint32_t kImageWidth = 256;
  constexpr std::uint32_t kImageLength = 257;
  constexpr std::uint32_t kOrientation = 274;
  constexpr std::uint32_t kSamplesPerPixel = 277;
  AppendNumber(records, group, kImageWidth, store.m_nImageWidth);
  AppendNumber(records, group, kImageLength, store.m_nImageHeight);
  AppendNumber(records, group, kOrientation, ShortOr(store, BLOCK_IFD0, kOrientation, 1));
  AppendNumber(records, group, kSamplesPerPixel, ShortOr(store, BLOCK_IFD0, kSamplesPerPixel, 3));
  AppendNumber(records, group, kColorSpaceId, ColorSpaceCode(store));
}

void AppendText(OwnedRecords& records, VxMetadata& store, std::uint32_t group, std::int32_t block,
                std::uint32_t tag) {
  std::array<std::uint8_t, 256> buffer;
  auto size = static_cast<std::int32_t>(buffer.size());
  if (store.m_fnGetTagData(block, tag, buffer.data(), &size) != S_OK) return;
  const CInfoRecord* record =
      records.Add(group, tag, LMD_RECORD_ASCII, static_cast<std::size_t>(size));
  if (record != nullptr) std::copy_n(buffer.begin(), size, record->m_pData);
}

void ExtractDates(OwnedRecords& records, VxMetadata& store, std::uint32_t group, std::int32_t) {
  constexpr std::uint32_t kDateTime = 306;
  constexpr std::uint32_t kDateTimeOriginal = 36867;
  AppendText(records, store, group, BLOCK_IFD0, kDateTime);
  AppendText(records, store, group, BLOCK_EXIF, kDateTimeOriginal);
}

struct Extractor {
  std::uint32_t category;
  void (*extract)(OwnedRecords&, VxMetadata&, std::uint32_t group, std::int32_t block);
  std::int32_t block;
};

// In the order of their records.
// clang-format off
constexpr std::array kExtractors = {
    Extractor{CATEGORY_BASICS,            ExtractBasics, 0},
    Extractor{CATEGORY_IFD0,              ExtractBlock,  BLOCK_IFD0},
    Extractor{CATEGORY_EXIF,              ExtractBlock,  BLOCK_EXIF},
    Extractor{CATEGORY_GPS,               ExtractBlock,  BLOCK_GPS},
    Extractor{CATEGORY_IPTC,              ExtractBlock,  BLOCK_IPTC},
    Extractor{CATEGORY_DATES,             ExtractDates,  0},
    Extractor{CATEGORY_IFD1,              ExtractBlock,  BLOCK_IFD1},
    Extractor{CATEGORY_MAKERNOTE_SUMMARY, ExtractBlock,  BLOCK_MAKERNOTE_SUMMARY},
    Extractor{CATEGORY_MAKERNOTE,         ExtractBlock,  BLOCK_MAKERNOTE},
    Extractor{CATEGORY_ICC,               ExtractBlock,  BLOCK_ICC},
    Extractor{CATEGORY_XMP,               ExtractBlock,  BLOCK_XMP},
    Extractor{CATEGORY_XMP,               ExtractBlock,  BLOCK_XMP_REGIONS},
};
// clang-format on

// What most photographs need at most.
constexpr std::size_t kUsualRecords = 32;

}  // namespace

OwnedRecords ExtractRecords(VxMetadata& store, std::uint32_t mask) {
  OwnedRecords records;
  records.Reserve(kUsualRecords);
  for (const Extractor& extractor : kExtractors) {
    if ((mask & extractor.category) == 0) continue;
    extractor.extract(records, store, extractor.category, extractor.block);
  }
  return records;
}
