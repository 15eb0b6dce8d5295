#include "exif/DirectoryWalk.h"

#include "base/TypeSizes.h"

namespace {

// Reads an entry up to its value field. A number that is cut by the file's end is 0 as a whole.
DirectoryEntry ReadEntry(FileStream& stream, ByteOrder order) {
  DirectoryEntry entry;
  if (const auto bytes = stream.TakeFromWindow(8); !bytes.empty()) {
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

// What every entry behind the file's end reads as: one of them stands for all.
bool IsZero(const DirectoryEntry& entry) {
  return entry.type == 0 && entry.tag == 0 && entry.count == 0;
}

// With the stream at an entry's value field: leaves it at the value and says whether the value may
// be read.
inline bool SeekToValue(FileStream& stream, std::uint16_t type, std::uint32_t count,
                        const TiffFrame& frame) {
  if (ValueSize(type, count) < 5) return true;
  const std::uint32_t position = frame.tiffBase + stream.ReadU32(frame.order);
  if (!frame.Allows(position)) return false;
  stream.Seek(position);
  return true;
}

}  // namespace

bool VxMetadata::m_fnCheckEntry(FileStream& stream, std::uint16_t type, std::uint32_t count,
                                const TiffFrame& frame) {
  return SeekToValue(stream, type, count, frame);
}

HRESULT WalkDirectory(VxMetadata& store, TagMap& table, const TiffFrame& frame,
                      EntryHandler handle) {
  FileStream& stream = *store.m_pFile;
  const std::uint16_t entries = stream.ReadU16(frame.order);
  if (entries > kMaxDirectoryEntries) return E_FAIL;
  if (entries == 0) return S_FALSE;

  for (std::uint16_t i = 0; i < entries; ++i) {
    if (!stream.Budget().TakeEntry()) return E_FAIL;
    DirectoryEntry entry = ReadEntry(stream, frame.order);
    const std::uint64_t next = stream.Position() + 4;
    if (SeekToValue(stream, entry.type, entry.count, frame)) {
      entry.valuePosition = static_cast<std::uint32_t>(stream.Position());
      handle(store, table, frame, entry);
    }
    stream.Seek(next);
    if (IsZero(entry) && stream.IsAtEnd()) break;
  }
  return S_OK;
}
