#include "container/XmpPacket.h"

#include <algorithm>
#include <string_view>

#include <lumidex/ResultCodes.h>

#include "base/ByteOrder.h"
#include "container/PngChunks.h"
#include "container/PngCrc.h"
#include "exif/JpegMarkers.h"
#include "xmp/XmpSignature.h"

namespace {

constexpr std::size_t kMarkerSize = 2;
constexpr std::size_t kChunkLengthSize = 4;
constexpr std::size_t kCrcSize = 4;

static_assert(kSegmentPacketOffset == kMarkerSize + 2 + kXmpNamespace.size() + 1);
static_assert(kSegmentPacketOffset - kMarkerSize + kMaxSegmentPacket == 0xFFFF);
static_assert(kChunkPacketOffset == kChunkHeadSize + kXmpChunkHeader.size());

// Reads all of a packet file. One byte more than it may have tells whether it is larger; that costs
// the system less than the question for its size.
HRESULT ReadPacketFile(FileStream& file, std::size_t limit, std::span<const std::uint8_t>* packet) {
  static_assert(kMaxChunkPacket < FileStream::kWindowSize && kMaxSegmentPacket < kMaxChunkPacket);
  file.Seek(0);
  *packet = file.ReadBlock(limit + 1);
  if (packet->size() > limit) return LMD_E_BUFFER_TOO_SMALL;
  return file.HasFailed() ? LMD_E_READ_FAILED : S_OK;
}

}  // namespace

PacketBytes MakeXmpSegment(std::span<const std::uint8_t> packet) {
  PacketBytes segment(kSegmentPacketOffset + packet.size());
  const auto length = static_cast<std::uint16_t>(segment.size() - kMarkerSize);
  segment[0] = kMarkerPrefix;
  segment[1] = kApp1Marker;
  StoreU16(std::span(segment).subspan(kMarkerSize), length, ByteOrder::BigEndian);
  std::copy(kXmpNamespace.begin(), kXmpNamespace.end(),
            segment.begin() + kMarkerSize + sizeof(length));
  std::copy(packet.begin(), packet.end(), segment.begin() + kSegmentPacketOffset);
  return segment;
}

PacketBytes MakeXmpChunk(std::span<const std::uint8_t> packet) {
  PacketBytes chunk(kChunkPacketOffset + packet.size() + kCrcSize);
  const std::span<std::uint8_t> bytes(chunk);
  const auto length = static_cast<std::uint32_t>(kXmpChunkHeader.size() + packet.size());
  StoreU32(bytes, length, ByteOrder::BigEndian);
  StoreU32(bytes.subspan(kChunkLengthSize), kTextChunkType, ByteOrder::BigEndian);
  std::copy(kXmpChunkHeader.begin(), kXmpChunkHeader.end(), chunk.begin() + kChunkHeadSize);
  std::copy(packet.begin(), packet.end(), chunk.begin() + kChunkPacketOffset);
  const auto end = bytes.last(kCrcSize);
  const auto covered = bytes.subspan(kChunkLengthSize, kChunkHeadSize - kChunkLengthSize + length);
  StoreU32(end, PngCrc(covered), ByteOrder::BigEndian);
  return chunk;
}

HRESULT ReadAsXmpSegment(FileStream& packet, PacketBytes* segment) {
  std::span<const std::uint8_t> bytes;
  const HRESULT result = ReadPacketFile(packet, kMaxSegmentPacket, &bytes);
  if (SUCCEEDED(result)) *segment = MakeXmpSegment(bytes);
  return result;
}

HRESULT ReadAsXmpChunk(FileStream& packet, PacketBytes* chunk) {
  std::span<const std::uint8_t> bytes;
  const HRESULT result = ReadPacketFile(packet, kMaxChunkPacket, &bytes);
  if (SUCCEEDED(result)) *chunk = MakeXmpChunk(bytes);
  return result;
}
