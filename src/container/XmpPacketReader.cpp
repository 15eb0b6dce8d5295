#include "container/XmpPacketReader.h"

#include <algorithm>
#include <span>

#include <lumidex/ResultCodes.h>

#include "base/FileStream.h"
#include "container/PngChunks.h"
#include "container/XmpLocators.h"
#include "container/XmpPacket.h"
#include "core/VxMetadataWrapper.h"

namespace {

constexpr std::uint32_t kChunkHeader = static_cast<std::uint32_t>(kXmpChunkHeader.size());
constexpr std::uint32_t kSegmentHeader = kSegmentPacketOffset - 2;  // the marker does not count

// Where a packet is said to stand: the start of its segment or chunk, and the length given there.
struct PacketPlace {
  std::uint64_t position = 0;
  std::uint32_t length = 0;
};

HRESULT LocatePacket(FileStream& stream, std::uint32_t fileType, PacketPlace* place) {
  const bool isPng = fileType == FILETYPE_PNG;
  if (!isPng && fileType != FILETYPE_JPEG) return LMD_E_NOT_FOUND;
  const HRESULT located =
      isPng ? LocatePngXmp(&stream, &place->position) : LocateJpegXmp(&stream, &place->position);
  if (located != LMD_E_XMP_FOUND) return FAILED(located) ? located : LMD_E_NOT_FOUND;

  if (isPng) {
    stream.Seek(place->position);
    place->length = stream.ReadU32(ByteOrder::BigEndian);
    return place->length > kChunkHeader ? S_OK : LMD_E_BAD_FORMAT;
  }
  stream.Seek(place->position + 2);
  place->length = stream.ReadU16(ByteOrder::BigEndian);
  return stream.WasShort() ? LMD_E_READ_FAILED : S_OK;
}

HRESULT OpenAtPacket(FileStream& stream, const WCHAR* path, std::uint32_t fileType,
                     PacketPlace* place) {
  if (!stream.Open(path, LMD_W("rb"))) return LMD_E_OPEN_FAILED;
  return LocatePacket(stream, fileType, place);
}

// Fills the buffer only with all the bytes, which are read into another one first.
HRESULT ReadWhole(FileStream& stream, std::uint64_t position, std::span<std::uint8_t> buffer) {
  const std::uint64_t size = stream.Size();
  if (position > size || buffer.size() > size - position) return LMD_E_READ_FAILED;
  stream.Seek(position);
  const auto bytes = stream.ReadBlock(buffer.size());
  if (bytes.size() < buffer.size()) return LMD_E_READ_FAILED;
  std::ranges::copy(bytes, buffer.begin());
  return S_OK;
}

}  // namespace

HRESULT ReadXmpPacketSize(const WCHAR* path, std::uint32_t fileType, std::uint32_t* size) {
  FileStream stream;
  PacketPlace place;
  const HRESULT result = OpenAtPacket(stream, path, fileType, &place);
  if (FAILED(result)) return result;
  *size = fileType == FILETYPE_PNG ? place.length - kChunkHeader : place.length;
  return S_OK;
}

HRESULT ReadXmpPacket(const WCHAR* path, std::uint32_t fileType, std::uint32_t* size,
                      std::uint8_t* buffer, std::uint32_t room) {
  FileStream stream;
  PacketPlace place;
  HRESULT result = OpenAtPacket(stream, path, fileType, &place);
  if (FAILED(result)) return result;

  const bool isPng = fileType == FILETYPE_PNG;
  const std::uint32_t header = isPng ? kChunkHeader : kSegmentHeader;
  if (place.length < header) return LMD_E_BAD_FORMAT;
  const std::uint32_t count = place.length - header;
  if (count > room) return LMD_E_BUFFER_TOO_SMALL;
  const std::uint32_t offset = isPng ? kChunkPacketOffset : kSegmentPacketOffset;
  result = ReadWhole(stream, place.position + offset, {buffer, count});
  if (SUCCEEDED(result)) *size = isPng ? count : count + 2;
  return result;
}
