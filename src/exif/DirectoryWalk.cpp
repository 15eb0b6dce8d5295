#include "exif/DirectoryWalk.h"

#include <algorithm>

#include "base/TagValue.h"
#include "base/TypeSizes.h"

namespace {

// What every entry behind the file's end reads as: one of them stands for all.
bool IsZero(const DirectoryEntry& entry) {
  return entry.type == 0 && entry.tag == 0 && entry.count == 0;
}

// Whether a value does not fit into the four bytes of its field, which then points to it.
bool IsPointedTo(std::uint16_t type, std::uint32_t count) {
  return ValueSize(type, count) > 4;
}

// Reads an entry that the window may hold in part. A number that is cut by the file's end is 0 as a
// whole.
bool ReadFarEntry(FileStream& stream, const TiffFrame& frame, DirectoryEntry& entry) {
  entry.tag = stream.ReadU16(frame.order);
  entry.type = stream.ReadU16(frame.order);
  entry.count = stream.ReadU32(frame.order);
  const bool isReadable = VxMetadata::m_fnCheckEntry(stream, entry.type, entry.count, frame);
  entry.valuePosition = static_cast<std::uint32_t>(stream.Position());
  return isReadable;
}

// Reads an entry, leaves the stream at its value and says whether the value may be read. Whether it
// stands in the entry or elsewhere is a computation, not a branch: no predictor can know it.
inline bool ReadEntry(FileStream& stream, const TiffFrame& frame, DirectoryEntry& entry) {
  const std::uint64_t field = stream.Position() + 8;
  const auto bytes = stream.TakeFromWindow(12);
  if (bytes.empty()) return ReadFarEntry(stream, frame, entry);

  entry.tag = LoadU16(bytes, frame.order);
  entry.type = LoadU16(bytes.subspan(2), frame.order);
  entry.count = LoadU32(bytes.subspan(4), frame.order);
  const std::uint32_t pointed = frame.tiffBase + LoadU32(bytes.subspan(8), frame.order);
  const bool isPointed = IsPointedTo(entry.type, entry.count);
  const std::uint64_t position = field + (pointed - field) * isPointed;
  stream.Seek(position);
  entry.valuePosition = static_cast<std::uint32_t>(position);
  return !isPointed | frame.Allows(pointed);
}

inline void StoreEntry(VxMetadata& store, TagMap& table, const TiffFrame& frame,
                       const DirectoryEntry& entry, std::uint32_t maxCount) {
  m_fnStoreTagValue(table.FindOrInsert(entry.tag), entry.tag, *store.m_pFile, entry.type,
                    std::min(entry.count, maxCount), frame.order, store.ValuePool());
}

}  // namespace

bool VxMetadata::m_fnCheckEntry(FileStream& stream, std::uint16_t type, std::uint32_t count,
                                const TiffFrame& frame) {
  if (!IsPointedTo(type, count)) return true;
  const std::uint32_t position = frame.tiffBase + stream.ReadU32(frame.order);
  if (!frame.Allows(position)) return false;
  stream.Seek(position);
  return true;
}

HRESULT WalkDirectory(VxMetadata& store, TagMap& table, const TiffFrame& frame, EntryFilter filter,
                      std::uint32_t maxCount) {
  FileStream& stream = *store.m_pFile;
  const std::uint16_t entries = stream.ReadU16(frame.order);
  if (entries > kMaxDirectoryEntries) return E_FAIL;
  if (entries == 0) return S_FALSE;

  for (std::uint16_t i = 0; i < entries; ++i) {
    if (!stream.Budget().TakeEntry()) return E_FAIL;
    const std::uint64_t next = stream.Position() + 12;
    DirectoryEntry entry;
    const bool isWanted = ReadEntry(stream, frame, entry) && entry.tag != kPaddingTag;
    if (isWanted && filter(store, frame, entry)) {
      StoreEntry(store, table, frame, entry, maxCount);
    }
    stream.Seek(next);
    if (stream.IsAtEnd() && IsZero(entry)) break;
  }
  return S_OK;
}
