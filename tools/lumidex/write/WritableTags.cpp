#include "write/WritableTags.h"

#include <algorithm>
#include <array>

#include "names/Names.h"
#include "writer/WriterTags.h"

namespace tool {
namespace {

constexpr std::array<WriterGroup, 3> kGroups = {WRITER_IFD0, WRITER_EXIF, WRITER_GPS};

constexpr std::array<TagRows (*)(), 10> kNames = {
    TiffRows,      ExifRows, InteropRows, GpsRows,   IptcRows, MakerNoteSummaryRows,
    MakerNoteRows, IccRows,  XmpRows,     BasicsRows};

}  // namespace

std::optional<WritableTag> FindWritableTag(std::string_view name) {
  for (const WriterGroup group : kGroups) {
    for (const WriterTag& accepted : WriterTagsOf(group)) {
      const TagRow* row = FindInGroup(group, accepted.tag);
      if (row == nullptr || row->name != name || accepted.type == TYPE_IFD) continue;
      return WritableTag{group, accepted.tag, accepted.type, row->decoder};
    }
  }
  return std::nullopt;
}

bool IsTagName(std::string_view name) {
  return std::any_of(kNames.begin(), kNames.end(), [&](TagRows (*table)()) {
    const TagRows rows = table();
    return std::any_of(rows.begin(), rows.end(),
                       [&](const TagRow& row) { return row.name == name; });
  });
}

}  // namespace tool
