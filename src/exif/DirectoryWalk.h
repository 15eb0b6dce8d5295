#ifndef LUMIDEX_EXIF_DIRECTORYWALK_H_
#define LUMIDEX_EXIF_DIRECTORYWALK_H_

// The walk that all TIFF directories share.

#include <cstdint>

#include "exif/VxMetadata.h"

// A directory with more entries is taken for damage.
inline constexpr std::uint16_t kMaxDirectoryEntries = 512;

// Padding that editors leave behind; never stored.
inline constexpr std::uint16_t kPaddingTag = 0xEA1C;

// What is done with an entry of the directory that `table` is for, with the stream at the value.
using EntryHandler = void (*)(VxMetadata& store, TagMap& table, const TiffFrame& frame,
                              const DirectoryEntry& entry);

// Calls `handle` for each entry whose value may be read, and leaves the stream behind the last
// entry. Of the entries behind the file's end, which are all alike, only the first is walked.
// S_FALSE for a directory without entries; E_FAIL when the count is too large or the budget is used
// up.
HRESULT WalkDirectory(VxMetadata& store, TagMap& table, const TiffFrame& frame,
                      EntryHandler handle);

#endif  // LUMIDEX_EXIF_DIRECTORYWALK_H_
