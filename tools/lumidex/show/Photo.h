#ifndef LUMIDEX_TOOL_SHOW_PHOTO_H_
#define LUMIDEX_TOOL_SHOW_PHOTO_H_

// One file as `show` sees it: what the interface answers, and, for a JPEG, what the parse driver
// reads and extracts.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <lumidex/ILumidex.h>

#include "base/OwnedRecords.h"
#include "exif/VxMetadata.h"

namespace tool {

struct Photo {
  std::string file;       // as given, well-formed UTF-8
  std::int32_t type = 0;  // GetFileType's answer
  HRESULT result = S_OK;  // Open's answer
  bool isPanorama = false;
  VxMetadata store;  // empty unless the file is a JPEG
  OwnedRecords records;
  std::vector<std::string> log;  // the parse's lines of the debug log, without their line feed
};

// Asks the interface about a file, then reads it for the categories of `mask`. The debug log is
// collected when `trace` is set.
void ReadPhoto(Photo& photo, ILumidex& lumidex, const std::string& file, std::uint32_t mask,
               bool trace);

// The text of `file` that one of the methods of the interface takes.
WideString PathOf(const std::string& file);

// Whether the object keeps less than the whole path: what it reads of the file after Open, it reads
// by the part that it keeps.
bool IsCut(const WideString& path);

// The keys of a block whose values are among the records. A block's records end early, at the first
// value larger than the block's first one.
using HandedKeys = std::set<std::uint32_t>;

// For every block the keys that the records of a parse with `mask` hold.
std::map<std::int32_t, HandedKeys> FindHanded(VxMetadata& store, std::uint32_t mask);

}  // namespace tool

#endif  // LUMIDEX_TOOL_SHOW_PHOTO_H_
