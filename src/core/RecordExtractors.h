#ifndef LUMIDEX_CORE_RECORDEXTRACTORS_H_
#define LUMIDEX_CORE_RECORDEXTRACTORS_H_

// The second step of a parse: the store's values as result records.

#include <cstdint>

#include <lumidex/ImageInfo.h>

#include "base/OwnedRecords.h"
#include "exif/VxMetadata.h"

// The bits of a category mask; each is also the group of the records that it produces. The mask is
// the store's parse flags as well.
enum Category : std::uint32_t {
  CATEGORY_BASICS = LMD_GROUP_BASICS,  // image size, orientation, samples per pixel, colour space
  CATEGORY_IFD0 = LMD_GROUP_IFD0,
  CATEGORY_EXIF = LMD_GROUP_EXIF,
  CATEGORY_GPS = LMD_GROUP_GPS,
  CATEGORY_IPTC = LMD_GROUP_IPTC,
  CATEGORY_DATES = LMD_GROUP_DATES,
  CATEGORY_XMP = LMD_GROUP_XMP,
  CATEGORY_MAKERNOTE_SUMMARY = LMD_GROUP_MAKERNOTE_SUMMARY,
  CATEGORY_IFD1 = LMD_GROUP_IFD1,
  CATEGORY_MAKERNOTE = LMD_GROUP_MAKERNOTE,
  CATEGORY_ICC = LMD_GROUP_ICC,
};

// What Open asks for, what ParseBasic asks for, and everything.
inline constexpr std::uint32_t kOpenMask = 0x4DF;
inline constexpr std::uint32_t kBasicMask = 0x00F;
inline constexpr std::uint32_t kFullMask = 0xEFF;

// Identifiers of image-basics records that are no tags.
inline constexpr std::uint32_t kColorSpaceId = LMD_ID_COLOR_SPACE;

// The records of the categories in `mask`, in their fixed order. The store's entries stay as they
// are; its cursors move. By design a block's records end at the first entry whose value is larger
// than that of the block's first entry.
OwnedRecords ExtractRecords(VxMetadata& store, std::uint32_t mask);

#endif  // LUMIDEX_CORE_RECORDEXTRACTORS_H_
