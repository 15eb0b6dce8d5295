#include "PacketModel.h"

#include <algorithm>
#include <string>

#include <lumidex/ResultCodes.h>

#include "core/VxMetadataWrapper.h"

namespace fuzz {
namespace {

using test::Bytes;

constexpr std::string_view kSoi = "\xFF\xD8";
constexpr std::string_view kPngSignature = "\x89PNG\x0D\x0A\x1A\x0A";
constexpr std::string_view kNamespace = "http://ns.adobe.com/xap/1.0/";
constexpr std::string_view kChunkHeader("XML:com.adobe.xmp\0\0\0\0\0", 22);

// A big-endian number that the file has.
std::uint32_t NumberAt(View file, std::uint64_t position, std::size_t size) {
  std::uint32_t number = 0;
  for (const std::uint8_t byte : file.subspan(static_cast<std::size_t>(position), size)) {
    number = number << 8 | byte;
  }
  return number;
}

bool Has(View file, std::uint64_t position, std::uint64_t size) {
  return position <= file.size() && size <= file.size() - position;
}

struct Segment {
  std::uint64_t start = 0;
  std::uint32_t length = 0;

  std::uint64_t Next() const { return start + 2 + length; }
};

// Calls `visit` with each APP1 segment until it says true; says whether it did.
template <class Visit>
bool AnyApp1(View file, Visit&& visit) {
  for (Segment segment{2, 0}; Has(file, segment.start, 4); segment.start = segment.Next()) {
    if (file[segment.start] != 0xFF) return false;
    segment.length = NumberAt(file, segment.start + 2, 2);
    if (file[segment.start + 1] == 0xE1 && visit(segment)) return true;
  }
  return false;
}

bool IsExif(View file, const Segment& segment) {
  return HoldsAt(file, segment.start + 4, "Exif");
}

View Part(View file, std::uint64_t position, std::uint64_t size) {
  const std::uint64_t start = std::min<std::uint64_t>(position, file.size());
  return file.subspan(start, std::min(size, file.size() - start));
}

// The checksum of PNG chunks (PNG specification, annex D), half a byte at a time.
std::uint32_t Crc(View bytes) {
  constexpr std::uint32_t kSteps[16] = {0x00000000, 0x1DB71064, 0x3B6E20C8, 0x26D930AC,
                                        0x76DC4190, 0x6B6B51F4, 0x4DB26158, 0x5005713C,
                                        0xEDB88320, 0xF00F9344, 0xD6D6A3E8, 0xCB61B38C,
                                        0x9B64C2B0, 0x86D3D2D4, 0xA00AE278, 0xBDBDF21C};
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    crc = crc >> 4 ^ kSteps[crc % 16];
    crc = crc >> 4 ^ kSteps[crc % 16];
  }
  return ~crc;
}

// What both methods answer when there is a packet whose length field tells `length`. `header` of
// those bytes stand before the packet; `offset` is that of the packet itself.
void ReadPacket(View file, std::uint64_t offset, std::uint32_t length, std::uint32_t header,
                PacketAnswer* answer) {
  if (length < header) {
    answer->result = LMD_E_BAD_FORMAT;
  } else if (!Has(file, offset, length - header)) {
    answer->result = LMD_E_READ_FAILED;
  } else {
    answer->bytes = Part(file, offset, length - header);
  }
}

}  // namespace

bool HoldsAt(View file, std::uint64_t position, std::string_view text) {
  return Has(file, position, text.size()) &&
         std::ranges::equal(Part(file, position, text.size()), text,
                            [](std::uint8_t byte, char character) {
                              return byte == static_cast<std::uint8_t>(character);
                            });
}

std::uint32_t TypeOfFile(View file) {
  if (file.size() < 8) return FILETYPE_UNKNOWN;
  if (HoldsAt(file, 0, kSoi)) return FILETYPE_JPEG;
  if (HoldsAt(file, 0, kPngSignature)) return FILETYPE_PNG;
  const bool isTiff = HoldsAt(file, 0, {"II*\0", 4}) || HoldsAt(file, 0, {"MM\0*", 4});
  return isTiff ? FILETYPE_TIFF : FILETYPE_UNKNOWN;
}

Place PlaceOfJpegExif(View file) {
  if (!HoldsAt(file, 0, kSoi)) return {LMD_E_BAD_FORMAT, 0};
  Place place = {S_OK, 2};
  const bool found = AnyApp1(file, [&](const Segment& segment) {
    if (!IsExif(file, segment)) return false;
    place.position = segment.start;
    return true;
  });
  if (found) place.result = LMD_E_HAS_EXIF;
  return place;
}

Place PlaceOfJpegXmp(View file) {
  if (!HoldsAt(file, 0, kSoi)) return {LMD_E_BAD_FORMAT, 0};
  Place place = {S_OK, 2};
  const bool found = AnyApp1(file, [&](const Segment& segment) {
    if (IsExif(file, segment)) place.position = segment.Next();
    return segment.length >= kNamespace.size() && HoldsAt(file, segment.start + 4, kNamespace);
  });
  if (found) place.result = LMD_E_XMP_FOUND;
  return place;
}

Place PlaceOfPngXmp(View file) {
  if (!HoldsAt(file, 0, kPngSignature)) return {LMD_E_BAD_FORMAT, 0};
  std::uint64_t position = kPngSignature.size();
  while (Has(file, position, 4) && !HoldsAt(file, position + 4, "IEND")) {
    const std::uint32_t length = NumberAt(file, position, 4);
    const bool isXmp = HoldsAt(file, position + 4, "iTXt") && length >= kChunkHeader.size() &&
                       HoldsAt(file, position + 8, kChunkHeader);
    if (isXmp && NamesPanorama(Part(file, position + 30, length - kChunkHeader.size()))) {
      return {LMD_E_XMP_FOUND, position};
    }
    position += std::uint64_t{12} + length;
  }
  return {S_OK, position};
}

Place PlaceOfXmp(View file) {
  return TypeOfFile(file) == FILETYPE_PNG ? PlaceOfPngXmp(file) : PlaceOfJpegXmp(file);
}

bool IsPlaceInHead(View image, const Place& place) {
  std::string head("\xFF\xE1\0\0Exif", 8);
  for (char length = 0; length < 6; ++length) {
    head[3] = length;
    const auto offset = static_cast<std::uint64_t>(2 + length);
    if (place.position > offset && HoldsAt(image, place.position - offset, head)) return true;
  }
  return false;
}

PacketAnswer PacketOf(View file, std::uint32_t type) {
  constexpr std::uint32_t kSegmentHeader = 31;
  const bool isPng = type == FILETYPE_PNG;
  PacketAnswer answer;
  Place place = {S_OK, 0};
  if (isPng || type == FILETYPE_JPEG) place = isPng ? PlaceOfPngXmp(file) : PlaceOfJpegXmp(file);
  if (place.result != LMD_E_XMP_FOUND) {
    answer.sizeResult = place.result == S_OK ? LMD_E_NOT_FOUND : place.result;
    answer.result = answer.sizeResult;
    return answer;
  }
  // By design the packet of a JPEG is taken to stand at the place where a new one would.
  if (isPng) {
    const std::uint32_t length = NumberAt(file, place.position, 4);
    answer.size = length - static_cast<std::uint32_t>(kChunkHeader.size());
    answer.told = answer.size;
    ReadPacket(file, place.position + 30, length, kChunkHeader.size(), &answer);
  } else {
    answer.size = NumberAt(file, place.position + 2, 2);
    answer.told = answer.size - 29;
    ReadPacket(file, place.position + 33, answer.size, kSegmentHeader, &answer);
  }
  return answer;
}

Bytes SegmentOf(View packet) {
  const auto length = static_cast<std::uint16_t>(packet.size() + 31);
  return test::Join({{0xFF, 0xE1},
                     test::U16(length),
                     test::Text(kNamespace),
                     test::Zeros(1),
                     Bytes(packet.begin(), packet.end())});
}

Bytes ChunkOf(View packet) {
  const Bytes content = test::Join(
      {test::Text("iTXt"), test::Text(kChunkHeader), Bytes(packet.begin(), packet.end())});
  const auto length = static_cast<std::uint32_t>(packet.size() + kChunkHeader.size());
  return test::Join({test::U32(length), content, test::U32(Crc(content))});
}

bool NamesPanorama(View packet) {
  const std::string_view text(reinterpret_cast<const char*>(packet.data()), packet.size());
  return text.substr(0, text.find('\0')).find("equirectangular") != std::string_view::npos;
}

}  // namespace fuzz
