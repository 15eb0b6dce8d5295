#ifndef LUMIDEX_TOOL_NAMES_TAGROW_H_
#define LUMIDEX_TOOL_NAMES_TAGROW_H_

// The tables of names: one row for each tag or key, in ascending order.

#include <cstdint>
#include <span>

#include "values/Value.h"

namespace tool {

struct TagRow {
  std::uint32_t id;
  const char* name;
  Decoder decoder = nullptr;  // none: the value is printed plainly
};

using TagRows = std::span<const TagRow>;

TagRows TiffRows();     // TIFF 6.0, TIFF/EP, DNG
TagRows ExifRows();     // EXIF 2.32
TagRows InteropRows();  // DCF 2.0, in the EXIF block
TagRows GpsRows();      // EXIF 2.32
TagRows IptcRows();     // IIM 4.2
TagRows MakerNoteSummaryRows();
TagRows MakerNoteRows();
TagRows IccRows();  // ICC.1
TagRows XmpRows();
TagRows BasicsRows();  // the image basics, which no block holds

}  // namespace tool

#endif  // LUMIDEX_TOOL_NAMES_TAGROW_H_
