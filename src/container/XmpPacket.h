#ifndef LUMIDEX_CONTAINER_XMPPACKET_H_
#define LUMIDEX_CONTAINER_XMPPACKET_H_

// XMP packets in the form in which files carry them (XMP part 3, sections 1.1.3 and 1.1.5). The
// packet's own bytes are not looked into.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/FileStream.h"
#include "platform/Win32.h"

// The largest packet whose segment length, which counts itself and the signature, fits 16 bits.
inline constexpr std::size_t kMaxSegmentPacket = 65504;

// By design a chunk takes hardly more, although it could.
inline constexpr std::size_t kMaxChunkPacket = 65505;

// What stands before the packet in a segment and in a chunk, counted from their first byte.
inline constexpr std::uint32_t kSegmentPacketOffset = 33;
inline constexpr std::uint32_t kChunkPacketOffset = 30;

using PacketBytes = std::vector<std::uint8_t>;

// A packet as a whole APP1 segment of a JPEG file; at most kMaxSegmentPacket bytes.
PacketBytes MakeXmpSegment(std::span<const std::uint8_t> packet);

// A packet as a whole iTXt chunk of a PNG file.
PacketBytes MakeXmpChunk(std::span<const std::uint8_t> packet);

// Reads a packet file in one of these forms. LMD_E_BUFFER_TOO_SMALL when it is larger than the form
// takes; LMD_E_READ_FAILED.
HRESULT ReadAsXmpSegment(FileStream& packet, PacketBytes* segment);
HRESULT ReadAsXmpChunk(FileStream& packet, PacketBytes* chunk);

#endif  // LUMIDEX_CONTAINER_XMPPACKET_H_
