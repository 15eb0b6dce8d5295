// The marker segments of a JPEG file (ITU-T T.81, annex B; EXIF 2.32, section 4.7; XMP part 3;
// ICC.1, annex B).

#include <algorithm>
#include <array>
#include <string_view>

#include "base/ByteCursor.h"
#include "exif/JpegMarkers.h"
#include "exif/VxMetadata.h"
#include "xmp/XmpSignature.h"

namespace {

constexpr std::uint32_t kExifHeaderSize = 6;
constexpr std::string_view kPhotoshopSignature = "Photoshop 3.0";
constexpr std::size_t kPhotoshopHeaderSize = 14;
constexpr std::uint16_t kPhotoshopMinLength = 25;
constexpr std::string_view kIccSignature("ICC_PROFILE\0", 12);
constexpr std::size_t kIccHeaderSize = 14;
constexpr std::size_t kIccProfileHeaderSize = 128;

// A marker segment: `length` counts its own two bytes, `payload` is the position behind them.
struct Segment {
  std::uint8_t marker = 0;
  std::uint16_t length = 0;
  std::uint32_t payload = 0;
  std::uint32_t end = 0;
};

bool StartsWith(std::span<const std::uint8_t> bytes, std::string_view text) {
  return bytes.size() >= text.size() && std::equal(text.begin(), text.end(), bytes.begin());
}

// By design a segment's buffer holds `length` bytes: the payload and the two bytes behind it.
std::span<const std::uint8_t> ReadSegment(FileStream& stream, const Segment& segment) {
  stream.Seek(segment.payload);
  return stream.ReadBlock(segment.length);
}

// The first frame header tells the image size.
void ReadFrameHeader(VxMetadata& store) {
  if (store.m_nImageWidth != 0 && store.m_nImageHeight != 0) return;
  FileStream& stream = *store.m_pFile;
  stream.Seek(stream.Position() + 1);
  store.m_nImageHeight = stream.ReadU16(ByteOrder::BigEndian);
  store.m_nImageWidth = stream.ReadU16(ByteOrder::BigEndian);
}

// The packet handed on begins with the slash that ends the namespace and its zero byte; the
// signature is compared without them.
void ReadXmpSegment(VxMetadata& store, const Segment& segment) {
  const auto bytes = ReadSegment(*store.m_pFile, segment);
  const std::string_view signature = kXmpNamespace.substr(0, kXmpNamespace.size() - 1);
  if (!StartsWith(bytes, signature)) return;
  const auto packet = bytes.subspan(signature.size());
  store.ParseXmp(packet.data(), static_cast<std::uint32_t>(packet.size()));
}

void ReadApp1(VxMetadata& store, const Segment& segment) {
  FileStream& stream = *store.m_pFile;
  std::uint8_t start[kExifSignature.size()] = {};
  static_cast<void>(stream.Read(start));
  if (StartsWith(start, kExifSignature)) {
    store.m_fnParseTiffHeader(segment.payload + kExifHeaderSize, segment.payload, segment.end);
  } else if (StartsWith(start, kXmpScheme)) {
    ReadXmpSegment(store, segment);
  }
}

// A profile in one chunk is read whole, of a longer one only the header; the chunks behind the
// first are never read and nothing is put together.
HRESULT ReadIccChunk(VxMetadata& store, std::span<const std::uint8_t> bytes) {
  if (!StartsWith(bytes, kIccSignature) || bytes.size() < kIccHeaderSize) return E_FAIL;
  const std::uint8_t number = bytes[kIccSignature.size()];
  const std::uint8_t total = bytes[kIccSignature.size() + 1];
  if (number != 1) return E_FAIL;
  auto profile = bytes.subspan(kIccHeaderSize);
  if (total != 1) profile = profile.first(std::min(profile.size(), kIccProfileHeaderSize));
  return store.m_fnParseICCProfile(profile);
}

void ReadApp2(VxMetadata& store, const Segment& segment) {
  if ((store.m_nParseFlags & PARSE_ICC) == 0) return;
  ReadIccChunk(store, ReadSegment(*store.m_pFile, segment));
}

void ReadApp13(VxMetadata& store, const Segment& segment) {
  if (segment.length < kPhotoshopMinLength) return;
  const auto bytes = ReadSegment(*store.m_pFile, segment);
  if (!StartsWith(bytes, kPhotoshopSignature) || bytes.size() < kPhotoshopHeaderSize) return;
  store.m_fnParsePhotoshopIRB(bytes.subspan(kPhotoshopHeaderSize));
}

void ReadSegmentBody(VxMetadata& store, const Segment& segment) {
  if (IsFrameMarker(segment.marker)) return ReadFrameHeader(store);
  switch (segment.marker) {
    case kApp1Marker:
      return ReadApp1(store, segment);
    case kApp2Marker:
      return ReadApp2(store, segment);
    case kApp13Marker:
      return ReadApp13(store, segment);
    default:
      return;
  }
}

}  // namespace

// The walk ends at the first byte that is no marker prefix: behind a start-of-scan header, in the
// entropy-coded data. A length of 0 or 1 leads back into the length field itself and ends it as
// well, and so does one that leads past 4 GiB, where positions wrap: the walk would begin anew.
HRESULT VxMetadata::m_fnParseAppSegments() {
  if (!m_pFile || !m_pFile->IsOpen()) return E_POINTER;
  FileStream& stream = *m_pFile;
  stream.Seek(0);
  if (stream.ReadU8() != kMarkerPrefix || stream.ReadU8() != kSoiMarker) return S_OK;
  m_nImageWidth = 0;
  m_nImageHeight = 0;

  std::array<std::uint8_t, 4> head;
  while (stream.Read(head) == head.size() && head[0] == kMarkerPrefix) {
    Segment segment;
    segment.marker = head[1];
    segment.length = LoadU16(std::span(head).subspan(2), ByteOrder::BigEndian);
    segment.payload = static_cast<std::uint32_t>(stream.Position());
    segment.end = segment.payload - 2 + segment.length;
    ReadSegmentBody(*this, segment);
    if (segment.end < segment.payload - 2) break;
    stream.Seek(segment.end);
  }
  return S_OK;
}
