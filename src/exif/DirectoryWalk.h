#ifndef LUMIDEX_EXIF_DIRECTORYWALK_H_
#define LUMIDEX_EXIF_DIRECTORYWALK_H_

// The walk that all TIFF directories share.

#include <cstdint>

#include "exif/VxMetadata.h"

// A directory with more entries is taken for damage.
inline constexpr std::uint16_t kMaxDirectoryEntries = 512;

// Padding that editors leave behind; never stored.
inline constexpr std::uint16_t kPaddingTag = 0xEA1C;

// More values than these are cut off. The count is cut, so a text keeps as many bytes.
inline constexpr std::uint32_t kMaxStoredCount = 1024;

// Says whether an entry's value goes to the table of its directory. One that points to more reads
// that first. The stream stands at the value, also afterwards when the value is to be stored.
using EntryFilter = bool (*)(VxMetadata& store, const TiffFrame& frame,
                             const DirectoryEntry& entry);

// Stores the entries whose value may be read and that the filter lets through, each with at most
// `maxCount` values, and leaves the stream behind the last entry. Of the entries behind the file's
// end, which are all alike, only the first is walked. S_FALSE for a directory without entries;
// E_FAIL when their number is too large or the budget is used up.
HRESULT WalkDirectory(VxMetadata& store, TagMap& table, const TiffFrame& frame, EntryFilter filter,
                      std::uint32_t maxCount = kMaxStoredCount);

#endif  // LUMIDEX_EXIF_DIRECTORYWALK_H_
