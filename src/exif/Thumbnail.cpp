// IFD1, the thumbnail that it points to, and the pixel size of a JPEG thumbnail (EXIF 2.32, section
// 4.5.8; TIFF 6.0, section 8 for strips).

#include <algorithm>
#include <new>
#include <vector>

#include "base/ByteCursor.h"
#include "base/TagValue.h"
#include "exif/DirectoryWalk.h"
#include "exif/JpegMarkers.h"
#include "exif/VxMetadata.h"

namespace {

// IFD1 keeps whole values, but none with more values than this.
constexpr std::uint32_t kMaxIfd1Count = 65535;

constexpr std::uint32_t kImageWidth = 0x0100;
constexpr std::uint32_t kImageLength = 0x0101;
constexpr std::uint32_t kCompression = 0x0103;
constexpr std::uint32_t kPhotometricInterpretation = 0x0106;
constexpr std::uint32_t kStripOffsets = 0x0111;
constexpr std::uint32_t kStripByteCounts = 0x0117;
constexpr std::uint32_t kJpegInterchangeFormat = 0x0201;
constexpr std::uint32_t kJpegInterchangeFormatLength = 0x0202;

constexpr std::uint32_t kUncompressed = 1;
constexpr std::uint32_t kRgb = 2;

// The size scan gives up this many bytes before the end of the thumbnail: a frame header there
// would not be whole.
constexpr std::size_t kScanTail = 8;

// By design the thumbnail's scan takes the reserved marker C8 for a frame as well.
constexpr bool IsThumbnailFrameMarker(std::uint8_t marker) {
  return IsFrameMarker(marker) || marker == 0xC8;
}

// Makes the file's bytes at a position the thumbnail: as many as it has, when the budget allows
// them.
void TakeJpegThumbnail(VxMetadata& store, std::uint32_t position, std::uint32_t length) {
  FileStream& stream = *store.m_pFile;
  stream.Seek(position);
  store.SetThumbnail(stream.ReadBlock(length));
  store.m_fnScanThumbnailSize();
}

// Appends every strip to one thumbnail. Missing bytes of a strip are left out.
void TakeRgbThumbnail(VxMetadata& store, const TiffFrame& frame, const TagEntry& offsets,
                      const TagEntry& byteCounts) {
  FileStream& stream = *store.m_pFile;
  std::vector<std::uint8_t> pixels;
  for (std::uint32_t i = 0; i < offsets.m_nCount; ++i) {
    stream.Seek(static_cast<std::uint32_t>(frame.tiffBase + TagInteger(offsets, i)));
    const auto strip = stream.ReadBlock(TagInteger(byteCounts, i));
    pixels.insert(pixels.end(), strip.begin(), strip.end());
  }
  store.SetThumbnail(pixels);
  store.m_nThumbnailFormat = THUMBNAIL_RGB;
}

bool IsUncompressedRgb(VxMetadata& store) {
  std::uint32_t compression = 0;
  std::uint32_t photometric = 0;
  return store.m_fnGetTagShort(BLOCK_IFD1, kCompression, &compression) == S_OK &&
         store.m_fnGetTagShort(BLOCK_IFD1, kPhotometricInterpretation, &photometric) == S_OK &&
         compression == kUncompressed && photometric == kRgb;
}

void ReadRgbThumbnail(VxMetadata& store, const TiffFrame& frame) {
  if (!IsUncompressedRgb(store)) return;
  store.m_fnGetThumbTagInteger(kImageWidth, &store.m_nThumbnailWidth);
  store.m_fnGetThumbTagInteger(kImageLength, &store.m_nThumbnailHeight);

  const TagMap& table = *store.m_fnGetBlock(BLOCK_IFD1);
  const TagEntry* offsets = table.Find(kStripOffsets);
  const TagEntry* byteCounts = table.Find(kStripByteCounts);
  if (offsets == nullptr || byteCounts == nullptr) return;
  if (offsets->m_nCount != byteCounts->m_nCount) return;
  TakeRgbThumbnail(store, frame, *offsets, *byteCounts);
}

bool FilterIfd1Entry(VxMetadata&, const TiffFrame&, const DirectoryEntry& entry) {
  return entry.count <= kMaxIfd1Count;
}

}  // namespace

HRESULT VxMetadata::m_fnParseIFD1(const TiffFrame& frame) {
  const HRESULT result =
      WalkDirectory(*this, *m_fnGetBlock(BLOCK_IFD1), frame, FilterIfd1Entry, kMaxIfd1Count);
  if (FAILED(result)) return result;
  if (!m_bKeepsThumbnail) return S_OK;

  std::uint32_t offset = 0;
  std::uint32_t length = 0;
  if (m_fnGetThumbTagLong(kJpegInterchangeFormat, &offset) == S_OK &&
      m_fnGetThumbTagLong(kJpegInterchangeFormatLength, &length) == S_OK) {
    TakeJpegThumbnail(*this, frame.tiffBase + offset, length);
  } else {
    ReadRgbThumbnail(*this, frame);
  }
  return S_OK;
}

void VxMetadata::SetThumbnail(std::span<const std::uint8_t> bytes) {
  m_pThumbnail.reset();
  m_nThumbnailSize = 0;
  m_nThumbnailFormat = THUMBNAIL_JPEG;
  if (!Budget().TakeBytes(bytes.size())) return;
  m_pThumbnail.reset(new (std::nothrow) std::uint8_t[bytes.size()]);
  if (!m_pThumbnail) return;
  std::copy(bytes.begin(), bytes.end(), m_pThumbnail.get());
  m_nThumbnailSize = static_cast<std::uint32_t>(bytes.size());
}

void VxMetadata::m_fnScanThumbnailSize() {
  if (!m_pThumbnail) return;
  ByteCursor cursor({m_pThumbnail.get(), m_nThumbnailSize}, ByteOrder::BigEndian);
  while (cursor.Remaining() > kScanTail) {
    const std::size_t start = cursor.Position();
    if (cursor.ReadU8() != kMarkerPrefix) return;
    const std::uint8_t marker = cursor.ReadU8();
    if (IsStandAloneMarker(marker)) continue;
    const std::uint16_t length = cursor.ReadU16();
    if (IsThumbnailFrameMarker(marker)) {
      cursor.Skip(1);
      m_nThumbnailHeight = cursor.ReadU16();
      m_nThumbnailWidth = cursor.ReadU16();
      return;
    }
    cursor.Seek(start + 2 + length);
  }
}
