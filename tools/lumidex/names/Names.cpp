#include "names/Names.h"

#include <algorithm>
#include <array>

#include <lumidex/ImageInfo.h>

#include "Tables.h"
#include "Text.h"
#include "core/VxMetadataWrapper.h"
#include "exif/VxMetadata.h"

namespace tool {
namespace {

struct BlockRow {
  std::int32_t id;
  const char* title;
  TagRows (*rows)();
};

struct GroupRow {
  std::uint32_t id;
  const char* title;
  std::int32_t block;  // 0: a group without a block of its own
};

// clang-format off
constexpr auto kBlocks = std::to_array<BlockRow>({
    {BLOCK_IFD0,              "IFD0",               TiffRows},
    {BLOCK_EXIF,              "EXIF",               ExifRows},
    {BLOCK_GPS,               "GPS",                GpsRows},
    {BLOCK_IFD1,              "IFD1 (thumbnail)",   TiffRows},
    {BLOCK_IPTC,              "IPTC",               IptcRows},
    {BLOCK_MAKERNOTE_SUMMARY, "Maker-note summary", MakerNoteSummaryRows},
    {BLOCK_MAKERNOTE,         "Maker note",         MakerNoteRows},
    {BLOCK_ICC,               "ICC profile",        IccRows},
    {BLOCK_XMP,               "XMP",                XmpRows},
    {BLOCK_XMP_REGIONS,       "People regions",     XmpRows},
});

constexpr auto kGroups = std::to_array<GroupRow>({
    {CATEGORY_BASICS,            "basics",             0},
    {CATEGORY_IFD0,              "IFD0",               BLOCK_IFD0},
    {CATEGORY_EXIF,              "EXIF",               BLOCK_EXIF},
    {CATEGORY_GPS,               "GPS",                BLOCK_GPS},
    {CATEGORY_IPTC,              "IPTC",               BLOCK_IPTC},
    {CATEGORY_DATES,             "dates",              0},
    {CATEGORY_XMP,               "XMP",                BLOCK_XMP},
    {CATEGORY_MAKERNOTE_SUMMARY, "maker-note summary", BLOCK_MAKERNOTE_SUMMARY},
    {CATEGORY_IFD1,              "IFD1",               BLOCK_IFD1},
    {CATEGORY_MAKERNOTE,         "maker note",         BLOCK_MAKERNOTE},
    {CATEGORY_ICC,               "ICC profile",        BLOCK_ICC},
});

struct TypeRow {
  std::uint32_t id;
  const char* name;
};

constexpr auto kRecordTypes = std::to_array<TypeRow>({
    {LMD_RECORD_INT32,      "int32"},
    {LMD_RECORD_SRATIONAL,  "srational"},
    {LMD_RECORD_DOUBLE,     "double"},
    {LMD_RECORD_ASCII,      "ascii"},
    {LMD_RECORD_WIDE_TEXT,  "text"},
    {LMD_RECORD_BYTES,      "bytes"},
    {LMD_RECORD_UINT32,     "uint32"},
    {LMD_RECORD_URATIONAL,  "urational"},
});

constexpr auto kFileTypes = std::to_array<TypeRow>({
    {FILETYPE_JPEG, "JPEG"},
    {FILETYPE_TIFF, "TIFF"},
    {FILETYPE_PNG,  "PNG"},
});
// clang-format on
static_assert(IsAscending(kBlocks) && IsAscending(kGroups));
static_assert(IsAscending(kRecordTypes) && IsAscending(kFileTypes));

template <class Table, class Id>
auto FindId(const Table& table, Id id) {
  return FindInTable(table, [&](const auto& row) { return row.id == id; });
}

const TagRow* FindTag(TagRows rows, std::uint32_t tag) {
  const auto row = std::lower_bound(rows.begin(), rows.end(), tag,
                                    [](const TagRow& r, std::uint32_t id) { return r.id < id; });
  return row != rows.end() && row->id == tag ? &*row : nullptr;
}

// Directories hold each other's tags: raw-style files keep exposure values in IFD0.
const TagRow* FindInDirectories(TagRows first, std::uint32_t tag) {
  for (const TagRows rows : {first, TiffRows(), ExifRows()}) {
    if (const TagRow* row = FindTag(rows, tag)) return row;
  }
  return nullptr;
}

bool IsSubIfd(std::int32_t block) {
  return (block & kSubIfdBlock) != 0;
}

}  // namespace

const TagRow* FindInBlock(std::int32_t block, std::uint32_t tag) {
  if (IsSubIfd(block) || block == BLOCK_IFD0 || block == BLOCK_IFD1) {
    return FindInDirectories(TiffRows(), tag);
  }
  if (block == BLOCK_EXIF) {
    const TagRow* row = FindTag(InteropRows(), tag);
    return row != nullptr ? row : FindInDirectories(ExifRows(), tag);
  }
  const BlockRow* row = FindId(kBlocks, block);
  return row != nullptr ? FindTag(row->rows(), tag) : nullptr;
}

const TagRow* FindInGroup(std::uint32_t group, std::uint32_t id) {
  if (group == CATEGORY_BASICS) return FindTag(BasicsRows(), id);
  if (group == CATEGORY_DATES) return FindInDirectories(TiffRows(), id);
  const GroupRow* row = FindId(kGroups, group);
  return row != nullptr ? FindInBlock(row->block, id) : nullptr;
}

std::string BlockTitle(std::int32_t block) {
  if (IsSubIfd(block)) return Concat({"SubIFD ", std::to_string(block & ~kSubIfdBlock)});
  const BlockRow* row = FindId(kBlocks, block);
  return row != nullptr ? row->title : "?";
}

std::string GroupTitle(std::uint32_t group) {
  const GroupRow* row = FindId(kGroups, group);
  return row != nullptr ? row->title : "?";
}

std::string RecordTypeName(std::uint32_t type) {
  const TypeRow* row = FindId(kRecordTypes, type);
  return row != nullptr ? row->name : "?";
}

std::string FileTypeName(std::int32_t type) {
  const TypeRow* row = FindId(kFileTypes, static_cast<std::uint32_t>(type));
  return row != nullptr ? row->name : "unknown";
}

}  // namespace tool
