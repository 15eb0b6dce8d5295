#ifndef LUMIDEX_FUZZ_PACKETMODEL_H_
#define LUMIDEX_FUZZ_PACKETMODEL_H_

// Where EXIF segments and XMP packets stand in a file, told a second time from the bytes of the
// whole file: what the locators, the packet reader and the methods built on them must answer.

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/Win32.h"
#include "support/Bytes.h"

namespace fuzz {

using View = std::span<const std::uint8_t>;

// Whether the file has a text at a position, whole.
bool HoldsAt(View file, std::uint64_t position, std::string_view text);

// The file type that its first bytes tell.
std::uint32_t TypeOfFile(View file);

// The answer of a locator. The position is 0 where a locator leaves it alone.
struct Place {
  HRESULT result = S_OK;
  std::uint64_t position = 0;

  bool operator==(const Place&) const = default;
};

Place PlaceOfJpegExif(View file);
Place PlaceOfJpegXmp(View file);
Place PlaceOfPngXmp(View file);

// The same for a file of either type.
Place PlaceOfXmp(View file);

// The answers of GetXmpPacketSize and GetXmpPacket for a current file of a type.
struct PacketAnswer {
  HRESULT sizeResult = S_OK;
  std::uint32_t size = 0;
  HRESULT result = S_OK;
  std::uint32_t told = 0;
  View bytes;
};
PacketAnswer PacketOf(View file, std::uint32_t type);

// Whether the place for a packet lies in the head of an EXIF segment, whose length ends before the
// signature does. By design a packet goes there all the same; nobody finds it.
bool IsPlaceInHead(View image, const Place& place);

// A packet as the segment or the chunk that carries it.
test::Bytes SegmentOf(View packet);
test::Bytes ChunkOf(View packet);

// Whether a packet, as a PNG carries it, marks a panorama.
bool NamesPanorama(View packet);

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_PACKETMODEL_H_
