#ifndef LUMIDEX_EXIF_DIRECTORYWALK_H_
#define LUMIDEX_EXIF_DIRECTORYWALK_H_

// The walk that all TIFF directories share.

#include <cstddef>
#include <cstdint>

#include "exif/VxMetadata.h"

// A directory with more entries is taken for damage.
inline constexpr std::uint16_t kMaxDirectoryEntries = 512;

// Padding that editors leave behind; never stored.
inline constexpr std::uint16_t kPaddingTag = 0xEA1C;

// Reads an entry up to its value field. A number that is cut by the file's end is 0 as a whole.
inline DirectoryEntry ReadEntry(FileStream& stream, ByteOrder order) {
  constexpr std::size_t kSize = 8;
  DirectoryEntry entry;
  if (const auto bytes = stream.TakeFromWindow(kSize); !bytes.empty()) {
    entry.tag = LoadU16(bytes, order);
    entry.type = LoadU16(bytes.subspan(2), order);
    entry.count = LoadU32(bytes.subspan(4), order);
    return entry;
  }
  entry.tag = stream.ReadU16(order);
  entry.type = stream.ReadU16(order);
  entry.count = stream.ReadU32(order);
  return entry;
}

// Calls `handle` for each entry whose value may be read, with the stream at the value, and leaves
// the stream behind the last entry. S_FALSE for a directory without entries; E_FAIL when the count
// is too large or the budget is used up.
template <class Handler>
HRESULT WalkDirectory(FileStream& stream, const TiffFrame& frame, Handler&& handle) {
  const std::uint16_t entries = stream.ReadU16(frame.order);
  if (entries > kMaxDirectoryEntries) return E_FAIL;
  if (entries == 0) return S_FALSE;

  for (std::uint16_t i = 0; i < entries; ++i) {
    if (!stream.Budget().TakeEntry()) return E_FAIL;
    DirectoryEntry entry = ReadEntry(stream, frame.order);
    const std::uint64_t next = stream.Position() + 4;
    if (VxMetadata::m_fnCheckEntry(stream, entry.type, entry.count, frame)) {
      entry.valuePosition = static_cast<std::uint32_t>(stream.Position());
      handle(entry);
    }
    stream.Seek(next);
  }
  return S_OK;
}

#endif  // LUMIDEX_EXIF_DIRECTORYWALK_H_
