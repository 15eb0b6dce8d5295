#ifndef LUMIDEX_CORE_RECORDEXTRACTORS_H_
#define LUMIDEX_CORE_RECORDEXTRACTORS_H_

// The second step of a parse: the store's values as result records.

#include <cstdint>
#include <vector>

#include <lumidex/ImageInfo.h>

#include "exif/VxMetadata.h"

// The bits of a category mask; each is also the group of the records that it produces. The mask is
// the store's parse flags as well.
enum Category : std::uint32_t {
  CATEGORY_BASICS = 0x001,  // image size, orientation, samples per pixel, colour space
  CATEGORY_IFD0 = 0x002,
  CATEGORY_EXIF = 0x004,
  CATEGORY_GPS = 0x008,
  CATEGORY_IPTC = 0x010,
  CATEGORY_DATES = 0x020,
  CATEGORY_XMP = 0x040,
  CATEGORY_MAKERNOTE_SUMMARY = 0x080,
  CATEGORY_IFD1 = 0x200,
  CATEGORY_MAKERNOTE = 0x400,
  CATEGORY_ICC = 0x800,
};

// What Open asks for, what ParseBasic asks for, and everything.
inline constexpr std::uint32_t kOpenMask = 0x4DF;
inline constexpr std::uint32_t kBasicMask = 0x00F;
inline constexpr std::uint32_t kFullMask = 0xEFF;

// Identifiers of image-basics records that are no tags.
inline constexpr std::uint32_t kColorSpaceId = 11;

// The records of the categories in `mask`, in their fixed order. The store's entries stay as they
// are; its cursors move. By design a block's records end at the first entry whose value is larger
// than that of the block's first entry.
std::vector<CInfoRecord> ExtractRecords(VxMetadata& store, std::uint32_t mask);

#endif  // LUMIDEX_CORE_RECORDEXTRACTORS_H_
