#include "container/XmpLocators.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <lumidex/ResultCodes.h>

#include "base/Guarded.h"
#include "exif/JpegMarkers.h"
#include "xmp/XmpSignature.h"

namespace {

constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};

// The keyword of an XMP chunk, its zero, no compression, no language, no translated keyword.
constexpr std::string_view kXmpChunkHeader("XML:com.adobe.xmp\0\0\0\0\0", 22);
constexpr std::string_view kPanoramaWord = "equirectangular";
constexpr std::string_view kExifSignature = "Exif";

bool Matches(FileStream& stream, std::string_view text) {
  std::array<std::uint8_t, 32> bytes;
  const auto start = std::span(bytes).first(text.size());
  return stream.Read(start) == text.size() && std::equal(text.begin(), text.end(), start.begin());
}

// Whether the text up to its first zero names the panorama projection.
bool HoldsPanoramaWord(std::span<const std::uint8_t> text) {
  const auto end = std::find(text.begin(), text.end(), std::uint8_t{0});
  return std::search(text.begin(), end, kPanoramaWord.begin(), kPanoramaWord.end()) != end;
}

bool IsPanoramaChunk(FileStream& stream, std::uint64_t data, std::uint32_t length) {
  stream.Seek(data);
  if (length < kXmpChunkHeader.size() || !Matches(stream, kXmpChunkHeader)) return false;
  const ByteBuffer text = stream.ReadBlock(length - kXmpChunkHeader.size());
  return HoldsPanoramaWord(text.Bytes());
}

HRESULT WalkChunks(FileStream& stream, std::uint64_t* position) {
  constexpr std::uint32_t kEnd = 0x49454E44;                // "IEND"
  constexpr std::uint32_t kInternationalText = 0x69545874;  // "iTXt"
  constexpr std::uint64_t kChunkOverhead = 12;              // length, type and CRC
  while (true) {
    stream.Seek(*position);
    const std::uint32_t length = stream.ReadU32(ByteOrder::BigEndian);
    if (stream.WasShort()) return S_OK;
    const std::uint32_t type = stream.ReadU32(ByteOrder::BigEndian);
    if (type == kEnd) return S_OK;
    if (type == kInternationalText && IsPanoramaChunk(stream, stream.Position(), length)) {
      return LMD_E_XMP_FOUND;
    }
    *position += kChunkOverhead + length;
  }
}

}  // namespace

HRESULT LocateJpegXmp(FileStream* stream, std::uint64_t* position) {
  if (stream == nullptr || position == nullptr) return LMD_E_INVALID_ARG;
  stream->Seek(0);
  if (stream->ReadU8() != kMarkerPrefix || stream->ReadU8() != kSoiMarker) return LMD_E_BAD_FORMAT;
  *position = stream->Position();

  while (stream->ReadU8() == kMarkerPrefix) {
    const std::uint8_t marker = stream->ReadU8();
    const std::uint16_t length = stream->ReadU16(ByteOrder::BigEndian);
    if (stream->WasShort()) break;
    const std::uint64_t payload = stream->Position();
    const std::uint64_t next = payload - 2 + length;
    if (marker == kApp1Marker) {
      if (Matches(*stream, kExifSignature)) *position = next;
      stream->Seek(payload);
      if (length >= kXmpNamespace.size() && Matches(*stream, kXmpNamespace)) return LMD_E_XMP_FOUND;
    }
    stream->Seek(next);
  }
  return S_OK;
}

HRESULT LocatePngXmp(FileStream* stream, std::uint64_t* position) {
  if (stream == nullptr || position == nullptr) return LMD_E_INVALID_ARG;
  stream->Seek(0);
  std::array<std::uint8_t, kPngSignature.size()> signature;
  static_cast<void>(stream->Read(signature));
  if (signature != kPngSignature) return LMD_E_BAD_FORMAT;
  *position = signature.size();
  return Guarded([&] { return WalkChunks(*stream, position); }, LMD_E_OUT_OF_MEMORY);
}
