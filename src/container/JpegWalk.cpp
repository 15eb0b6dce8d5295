#include "container/JpegWalk.h"

#include <algorithm>
#include <array>

#include "exif/JpegMarkers.h"

bool BeginJpegWalk(FileStream& stream) {
  stream.Seek(0);
  return stream.ReadU8() == kMarkerPrefix && stream.ReadU8() == kSoiMarker;
}

bool ReadJpegSegment(FileStream& stream, JpegSegment* segment) {
  segment->start = stream.Position();
  if (stream.ReadU8() != kMarkerPrefix) return false;
  segment->marker = stream.ReadU8();
  segment->length = stream.ReadU16(ByteOrder::BigEndian);
  if (stream.WasShort()) return false;
  segment->payload = stream.Position();
  segment->next = segment->payload - 2 + segment->length;
  return true;
}

bool MatchesText(FileStream& stream, std::string_view text) {
  std::array<std::uint8_t, 32> bytes;
  const auto start = std::span(bytes).first(text.size());
  return stream.Read(start) == text.size() && std::equal(text.begin(), text.end(), start.begin());
}

bool IsExifSegment(FileStream& stream, const JpegSegment& segment) {
  stream.Seek(segment.payload);
  return segment.marker == kApp1Marker && MatchesText(stream, kExifSignature);
}
