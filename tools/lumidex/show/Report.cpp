#include <algorithm>
#include <array>
#include <vector>

#include "ResultNames.h"
#include "Text.h"
#include "base/TypeSizes.h"
#include "core/VxMetadataWrapper.h"
#include "names/Names.h"
#include "show/Glance.h"
#include "show/Show.h"
#include "show/ValueText.h"

namespace tool {
namespace {

constexpr std::size_t kIdColumns = 6;
constexpr std::size_t kNameColumns = 28;

constexpr std::uint32_t kRegionTag = 0xAB09;
constexpr std::string_view kHandedMark = "●";
constexpr std::string_view kLeftOutMark = "○";

// The block numbers in the order of the report.
constexpr std::array<std::int32_t, 4> kDirectoriesFirst = {BLOCK_IFD0, BLOCK_EXIF, BLOCK_GPS,
                                                           BLOCK_IFD1};
constexpr std::array<std::int32_t, 6> kOthersLast = {
    BLOCK_MAKERNOTE_SUMMARY, BLOCK_MAKERNOTE, BLOCK_IPTC, BLOCK_ICC, BLOCK_XMP, BLOCK_XMP_REGIONS};

// Escape sequences of a terminal, or nothing.
class Style {
 public:
  explicit Style(bool colour) : m_colour(colour) {}

  std::string Title(std::string_view text) const { return Wrap("1;36", text); }
  std::string Strong(std::string_view text) const { return Wrap("1", text); }
  std::string Good(std::string_view text) const { return Wrap("32", text); }
  std::string Faint(std::string_view text) const { return Wrap("2", text); }

 private:
  std::string Wrap(std::string_view code, std::string_view text) const {
    if (!m_colour) return std::string(text);
    return Concat({"\x1B[", code, "m", text, "\x1B[0m"});
  }

  bool m_colour;
};

struct Row {
  bool isHanded = false;
  std::string id;
  std::string name;
  std::string value;
};

struct Section {
  std::string title;
  std::vector<Row> rows;
};

// Directories and XMP have tags that are known by their hexadecimal numbers; the module's own keys
// are small numbers.
std::string IdText(std::int32_t block, std::uint32_t key) {
  switch (block) {
    case BLOCK_IPTC:
    case BLOCK_MAKERNOTE_SUMMARY:
    case BLOCK_ICC:
    case BLOCK_XMP_REGIONS:
      return std::to_string(key);
    default:
      return HexNumber(key, 4);
  }
}

Section BlockSection(std::int32_t block, const TagMap& table, const HandedKeys& handed) {
  Section section{BlockTitle(block), {}};
  for (const auto& [key, entry] : table) {
    // The place of a region that was dropped has no tag.
    const bool isRegion = block == BLOCK_XMP_REGIONS;
    const TagRow* row = FindInBlock(block, isRegion ? kRegionTag : entry.m_nTag);
    section.rows.push_back({handed.contains(key), IdText(block, key),
                            row != nullptr ? row->name : "-", ValueText(block, entry, table)});
  }
  return section;
}

Row BasicsRow(const CInfoRecord& record, bool isHanded) {
  const TagRow* row = FindInGroup(record.m_nGroup, record.m_nId);
  return {isHanded, HexNumber(record.m_nId, 4), row != nullptr ? row->name : "-",
          BasicsText(record)};
}

std::string ThumbnailText(const VxMetadata& store) {
  const bool isJpeg = store.m_nThumbnailFormat == THUMBNAIL_JPEG;
  std::string text;
  if (store.m_nThumbnailWidth != 0) {
    text = Concat({std::to_string(store.m_nThumbnailWidth), " x ",
                   std::to_string(store.m_nThumbnailHeight), " pixels, "});
  }
  return Concat({text, isJpeg ? "JPEG" : "uncompressed RGB", ", ",
                 std::to_string(store.m_nThumbnailSize), " bytes"});
}

Section ImageSection(VxMetadata& store, std::uint32_t mask) {
  Section section{"Image", {}};
  const bool isHanded = (mask & CATEGORY_BASICS) != 0;
  for (const CInfoRecord& record : ExtractRecords(store, CATEGORY_BASICS)) {
    section.rows.push_back(BasicsRow(record, isHanded));
  }
  const auto add = [&](const char* name, const std::string& text) {
    section.rows.push_back({false, "", name, text});
  };
  if (store.m_pThumbnail != nullptr) add("Thumbnail", ThumbnailText(store));
  if (store.m_nTiffMagic != 0) add("TIFF magic", std::to_string(store.m_nTiffMagic));
  if (store.m_nEmbeddedJpegPos != 0) {
    add("Embedded JPEG at", std::to_string(store.m_nEmbeddedJpegPos));
  }
  return section;
}

std::vector<Section> SectionsOf(VxMetadata& store, std::uint32_t mask) {
  const auto handed = FindHanded(store, mask);
  std::vector<Section> sections;
  const auto add = [&](std::int32_t block, const TagMap& table) {
    const auto keys = handed.find(block);
    if (table.IsEmpty()) return;
    sections.push_back(
        BlockSection(block, table, keys != handed.end() ? keys->second : HandedKeys{}));
  };
  for (const std::int32_t block : kDirectoriesFirst) add(block, *store.m_fnGetBlock(block));
  for (const auto& [block, table] : store.m_mapSubIfd) add(block, table);
  for (const std::int32_t block : kOthersLast) add(block, *store.m_fnGetBlock(block));
  sections.push_back(ImageSection(store, mask));
  return sections;
}

std::size_t HandedCount(const Section& section) {
  return static_cast<std::size_t>(std::count_if(section.rows.begin(), section.rows.end(),
                                                [](const Row& r) { return r.isHanded; }));
}

std::string RowText(const Row& row, std::size_t nameColumns, std::size_t cut, const Style& style) {
  const std::string value = Cut(row.value, cut);
  const std::string name =
      Concat({" ", Pad(row.id, kIdColumns), " ", Pad(row.name, nameColumns), "  "});
  if (!row.isHanded) {
    return Concat({"  ", style.Faint(Concat({kLeftOutMark, name, value})), "\n"});
  }
  return Concat({"  ", style.Good(kHandedMark), name, style.Strong(value), "\n"});
}

std::string SectionText(const Section& section, std::size_t cut, const Style& style) {
  std::size_t nameColumns = kNameColumns;
  for (const Row& row : section.rows) nameColumns = std::max(nameColumns, row.name.size());
  const std::string count =
      std::to_string(HandedCount(section)) + " of " + std::to_string(section.rows.size());
  std::string out = Concat({"\n", style.Title(section.title), "  ", style.Faint(count), "\n"});
  for (const Row& row : section.rows) out += RowText(row, nameColumns, cut, style);
  return out;
}

std::string Legend(const std::vector<Section>& sections, const Options& options,
                   const Style& style) {
  std::size_t handed = 0;
  std::size_t all = 0;
  for (const Section& section : sections) {
    handed += HandedCount(section);
    all += section.rows.size();
  }
  const std::string source =
      options.mask ? Concat({"are among the records of mask ", HexNumber(*options.mask, 3)})
                   : "reach a host through Open";
  const std::string others = Concat(
      {kLeftOutMark, " ", std::to_string(all - handed), " do not: no record is made of them"});
  return Concat({"  ", style.Good(kHandedMark), " ", std::to_string(handed), " values ", source,
                 "   ", style.Faint(others), "\n"});
}

std::string TraceText(const std::vector<std::string>& log, const Style& style) {
  std::string out = Concat({"\n", style.Title("Trace"), "\n"});
  for (const std::string& line : log) {
    out += Concat({"  ", Printable(WithoutBlanksAround(line)), "\n"});
  }
  return log.empty() ? out + "  (no lines)\n" : out;
}

}  // namespace

std::string Report(Photo& photo, const Options& options, bool colour) {
  const Style style(colour);
  std::string out = style.Strong(Printable(photo.file)) + "\n";
  for (const std::string& line : Glance(photo)) out += Concat({"  ", line, "\n"});
  if (photo.type == FILETYPE_JPEG) {
    const auto sections = SectionsOf(photo.store, options.MaskOr(kOpenMask));
    out += Legend(sections, options, style);
    for (const Section& section : sections) out += SectionText(section, options.cut, style);
  }
  if (options.trace) out += TraceText(photo.log, style);
  return out + "\n";
}

}  // namespace tool
