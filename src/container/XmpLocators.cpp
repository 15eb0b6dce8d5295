#include "container/XmpLocators.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <lumidex/ResultCodes.h>

#include "base/Guarded.h"
#include "container/JpegWalk.h"
#include "container/PngChunks.h"
#include "exif/JpegMarkers.h"
#include "xmp/XmpSignature.h"

namespace {

constexpr std::string_view kPanoramaWord = "equirectangular";

// Its letter that other words have least leads to it.
constexpr char kRareLetter = 'q';
constexpr std::size_t kRarePlace = kPanoramaWord.find(kRareLetter);

// Whether the text up to its first zero names the panorama projection.
bool HoldsPanoramaWord(std::span<const std::uint8_t> bytes) {
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  text = text.substr(0, text.find('\0'));
  for (std::size_t at = text.find(kRareLetter, kRarePlace); at != text.npos;
       at = text.find(kRareLetter, at + 1)) {
    if (text.substr(at - kRarePlace).starts_with(kPanoramaWord)) return true;
  }
  return false;
}

bool IsPanoramaChunk(FileStream& stream, std::uint64_t data, std::uint32_t length) {
  stream.Seek(data);
  if (length < kXmpChunkHeader.size() || !MatchesText(stream, kXmpChunkHeader)) return false;
  return HoldsPanoramaWord(stream.ReadBlock(length - kXmpChunkHeader.size()));
}

HRESULT WalkChunks(FileStream& stream, std::uint64_t* position) {
  while (true) {
    stream.Seek(*position);
    const std::uint32_t length = stream.ReadU32(ByteOrder::BigEndian);
    if (stream.WasShort()) return S_OK;
    const std::uint32_t type = stream.ReadU32(ByteOrder::BigEndian);
    if (type == kEndChunkType) return S_OK;
    if (type == kTextChunkType && IsPanoramaChunk(stream, stream.Position(), length)) {
      return LMD_E_XMP_FOUND;
    }
    *position += kChunkOverhead + std::uint64_t{length};
  }
}

}  // namespace

HRESULT LocateJpegXmp(FileStream* stream, std::uint64_t* position) {
  if (stream == nullptr || position == nullptr) return LMD_E_INVALID_ARG;
  if (!BeginJpegWalk(*stream)) return LMD_E_BAD_FORMAT;
  *position = stream->Position();

  JpegSegment segment;
  while (ReadJpegSegment(*stream, &segment)) {
    if (IsExifSegment(*stream, segment)) *position = segment.next;
    stream->Seek(segment.payload);
    if (segment.marker == kApp1Marker && segment.length >= kXmpNamespace.size() &&
        MatchesText(*stream, kXmpNamespace)) {
      return LMD_E_XMP_FOUND;
    }
    stream->Seek(segment.next);
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
