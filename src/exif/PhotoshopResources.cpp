// Photoshop image resources, the "8BIM" blocks of APP13 and of TIFF tag 0x8649. All numbers are
// big-endian.

#include <algorithm>
#include <string_view>

#include "base/ByteCursor.h"
#include "exif/VxMetadata.h"

namespace {

constexpr std::uint32_t kResourceSignature = 0x3842494D;  // "8BIM"
constexpr std::size_t kMinBlockSize = 10;
constexpr std::size_t kMinResourceSize = 11;
constexpr std::uint16_t kIptcResource = 0x0404;
constexpr std::uint16_t kThumbnailResource = 0x040C;

constexpr std::uint32_t kThumbnailJpegFormat = 1;
constexpr std::uint16_t kThumbnailBitsPerPixel = 24;
constexpr std::uint16_t kThumbnailPlanes = 1;

struct Resource {
  std::uint16_t id = 0;
  std::uint32_t size = 0;
};

// Reads a header and leaves the cursor at the data. The name's length byte and characters together
// are padded to an even number.
bool ReadResourceHeader(ByteCursor& cursor, Resource* resource) {
  if (cursor.ReadU32() != kResourceSignature) return false;
  resource->id = cursor.ReadU16();
  const std::size_t nameLength = cursor.ReadU8();
  cursor.Skip(nameLength / 2 * 2 + 1);
  resource->size = cursor.ReadU32();
  return !cursor.WasShort();
}

}  // namespace

// A reader sees the bytes that the block has, also when a resource claims more.
HRESULT VxMetadata::m_fnParsePhotoshopIRB(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < kMinBlockSize) return E_FAIL;
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  while (cursor.Remaining() >= kMinResourceSize) {
    Resource resource;
    if (!ReadResourceHeader(cursor, &resource)) break;
    const bool isWhole = resource.size <= cursor.Remaining();
    const auto data = cursor.ReadBytes(std::min<std::size_t>(resource.size, cursor.Remaining()));
    if (resource.id == kIptcResource) m_fnParseIPTC(data);
    if (resource.id == kThumbnailResource && isWhole) m_fnParsePhotoshopThumbnail(data);
    cursor.Skip(resource.size % 2);
  }
  return S_OK;
}

HRESULT VxMetadata::m_fnParsePhotoshopThumbnail(std::span<const std::uint8_t> bytes) {
  if (m_pThumbnail || !m_bKeepsThumbnail) return S_OK;
  ByteCursor cursor(bytes, ByteOrder::BigEndian);
  const std::uint32_t format = cursor.ReadU32();
  cursor.Skip(16);
  const std::uint32_t compressedSize = cursor.ReadU32();
  const std::uint16_t bitsPerPixel = cursor.ReadU16();
  const std::uint16_t planes = cursor.ReadU16();
  if (cursor.WasShort() || format != kThumbnailJpegFormat ||
      bitsPerPixel != kThumbnailBitsPerPixel || planes != kThumbnailPlanes) {
    return E_FAIL;
  }
  if (compressedSize > cursor.Remaining()) return E_FAIL;
  SetThumbnail(cursor.ReadBytes(compressedSize));
  m_fnScanThumbnailSize();
  return S_OK;
}
