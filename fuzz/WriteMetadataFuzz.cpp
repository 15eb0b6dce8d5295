// WriteMetadata with typed records, a thumbnail and a packet on any source. The output is taken
// apart and its new segment parsed: every accepted record must be read back.
//
// Input: flags (1 byte), the case of the output (1), the number of records (1), the length of the
// packet (1) and of the thumbnail (2); the records, the packet, the thumbnail, the source. A record
// is the number of its tag (1), its size (1, or 3 from 255 on) and bytes that are repeated up to
// it.

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include <lumidex/ResultCodes.h>

#include "FuzzChecks.h"
#include "FuzzInput.h"
#include "FuzzObject.h"
#include "LocatorChecks.h"
#include "MemoryFiles.h"
#include "PacketModel.h"
#include "WriterModel.h"
#include "core/VxMetadataWrapper.h"
#include "support/Records.h"
#include "writer/AcceptedTags.h"

namespace {

using fuzz::FuzzObject;
using fuzz::MemoryFiles;
using fuzz::Require;
using fuzz::View;
using test::Bytes;

enum Flag : std::uint8_t {
  FLAG_ITEMS = 0x01,
  FLAG_PACKET = 0x02,
  FLAG_THUMBNAIL = 0x04,
  FLAG_OVERWRITE = 0x08,
  FLAG_NO_ITEM_COUNT = 0x10,    // items with a count of 0
  FLAG_LARGE_THUMBNAIL = 0x20,  // its length is told as more than any block takes
  FLAG_LARGE_PACKET = 0x40,     // more bytes than a segment takes
};

enum class Output { New, Existing, Source, Packet, None };

constexpr std::uint32_t kLargeThumbnail = 0xFFFFFFFF;
constexpr std::size_t kMaxPacket = 65504;
constexpr std::size_t kMaxBlock = 64000;

struct Request {
  std::uint8_t flags = 0;
  Output output = Output::New;
  test::Records records;
  Bytes packet;
  Bytes thumbnail;
  Bytes source;

  bool Has(Flag flag) const { return (flags & flag) != 0; }
  bool HasItems() const { return Has(FLAG_ITEMS) && records.Count() != 0; }

  std::uint32_t ItemCount() const { return Has(FLAG_NO_ITEM_COUNT) ? 0 : records.Count(); }
  std::span<const CInfoRecord> Items() const { return {records.Data(), ItemCount()}; }

  // As it is told to the module.
  std::uint32_t ThumbnailSize() const {
    if (!Has(FLAG_THUMBNAIL)) return 0;
    return Has(FLAG_LARGE_THUMBNAIL) ? kLargeThumbnail
                                     : static_cast<std::uint32_t>(thumbnail.size());
  }
};

struct TagOfGroup {
  std::uint32_t group;
  std::uint32_t tag;
};

// Every tag that is accepted, the pointers, and some that are dropped.
const std::vector<TagOfGroup>& Tags() {
  static const std::vector<TagOfGroup> tags = [] {
    std::vector<TagOfGroup> all;
    for (const test::AcceptedTags& row : test::AllAcceptedTags()) {
      for (const std::uint16_t tag : row.tags) all.push_back({row.group, tag});
    }
    for (const TagOfGroup& tag :
         {TagOfGroup{2, 0x8769}, TagOfGroup{2, 0x8825}, TagOfGroup{4, 0x8769}, TagOfGroup{4, 42035},
          TagOfGroup{8, 31}, TagOfGroup{16, 16}, TagOfGroup{64, 0xAA01}, TagOfGroup{64, 0xAB09},
          TagOfGroup{1024, 271}}) {
      all.push_back(tag);
    }
    return all;
  }();
  return tags;
}

void ReadRecord(fuzz::FuzzInput& input, test::Records& records) {
  constexpr std::uint8_t kLongSize = 255;
  constexpr std::size_t kMaxPattern = 16;
  constexpr std::uint8_t kWithoutData = 0x80;
  const std::uint8_t which = input.TakeU8();
  const TagOfGroup& tag = Tags()[(which & ~kWithoutData) % Tags().size()];
  std::size_t size = input.TakeU8();
  if (size == kLongSize) size = input.TakeU16();
  if ((which & kWithoutData) != 0) {
    records.WithoutData(tag.group, tag.tag, static_cast<std::uint32_t>(size));
    return;
  }
  const View pattern = input.Take(std::min(size, kMaxPattern));
  Bytes bytes;
  bytes.reserve(size + kMaxPattern);
  while (!pattern.empty() && bytes.size() < size) {
    bytes.insert(bytes.end(), pattern.begin(), pattern.end());
  }
  bytes.resize(size);
  records.Binary(tag.group, tag.tag, bytes);
}

// Mostly a file that does not exist yet.
Output OutputOf(std::uint8_t number) {
  constexpr std::uint8_t kCases = 16;
  const auto output = static_cast<Output>(number % kCases);
  return output <= Output::None ? output : Output::New;
}

Bytes Taken(View bytes) {
  return {bytes.begin(), bytes.end()};
}

Request Read(fuzz::FuzzInput& input) {
  constexpr std::uint8_t kMaxRecords = 64;
  Request request;
  request.flags = input.TakeU8();
  request.output = OutputOf(input.TakeU8());
  const int recordCount = input.TakeU8() % kMaxRecords;
  const std::size_t packetSize = input.TakeU8();
  const std::size_t thumbnailSize = input.TakeU16();
  for (int i = 0; i < recordCount; ++i) ReadRecord(input, request.records);
  request.packet = Taken(input.Take(packetSize));
  if (request.Has(FLAG_LARGE_PACKET)) request.packet.resize(kMaxPacket - 2 + packetSize % 4);
  request.thumbnail = Taken(input.Take(thumbnailSize));
  request.source = Taken(input.TakeRest());
  return request;
}

struct Outcome {
  HRESULT result = S_OK;
  std::optional<Bytes> output;

  bool operator==(const Outcome&) const = default;
};

// What is decided before the source's contents count.
HRESULT Refusal(const Request& request) {
  if (fuzz::TypeOfFile(request.source) != FILETYPE_JPEG) return LMD_E_BAD_FORMAT;
  const bool mayNotReplace = request.output == Output::Existing ||
                             request.output == Output::Source || request.output == Output::Packet ||
                             request.output == Output::None;
  if (mayNotReplace && !request.Has(FLAG_OVERWRITE)) return LMD_E_DST_EXISTS;
  if (request.output == Output::Source) return LMD_E_DST_EXISTS;
  if (request.output == Output::Packet && request.Has(FLAG_PACKET)) return LMD_E_DST_EXISTS;
  if (request.HasItems() ? request.ItemCount() == 0 : !request.Has(FLAG_PACKET)) {
    return LMD_E_INVALID_ARG;
  }
  return S_OK;
}

// What is decided before the output is created.
HRESULT LateRefusal(const Request& request, const fuzz::WriterModel& model) {
  if (request.HasItems() && !request.Has(FLAG_OVERWRITE)) {
    const HRESULT result = fuzz::PlaceOfJpegExif(request.source).result;
    if (FAILED(result)) return result;
  }
  if (request.Has(FLAG_PACKET)) {
    const HRESULT result = fuzz::PlaceOfJpegXmp(request.source).result;
    if (FAILED(result)) return result;
    if (request.packet.size() > kMaxPacket) return LMD_E_BUFFER_TOO_SMALL;
  }
  if (request.HasItems() && model.BlockSize() > kMaxBlock) return LMD_E_BUFFER_TOO_SMALL;
  if (request.output == Output::None) return LMD_E_OPEN_FAILED;
  const bool isCut =
      !request.HasItems() && fuzz::PlaceOfJpegXmp(request.source).position > request.source.size();
  return isCut ? LMD_E_READ_FAILED : S_OK;
}

HRESULT Expected(const Request& request, const fuzz::WriterModel& model) {
  const HRESULT refusal = Refusal(request);
  return FAILED(refusal) ? refusal : LateRefusal(request, model);
}

class Writing {
 public:
  Outcome Run(const Request& request) {
    m_files.Put(m_source, request.source);
    m_files.Put(m_packet, request.packet);
    m_files.Remove(m_output);
    if (request.output == Output::Existing) m_files.Put(m_output, kOld);

    Outcome outcome;
    {
      const FuzzObject object;
      const auto thumbnail = reinterpret_cast<std::uintptr_t>(request.thumbnail.data());
      outcome.result = object->WriteMetadata(
          m_source, PathOf(request.output), request.ItemCount(),
          request.HasItems() ? request.records.Data() : nullptr, request.ThumbnailSize(), thumbnail,
          request.Has(FLAG_PACKET) ? m_packet : nullptr, request.Has(FLAG_OVERWRITE) ? 1 : 0);
    }
    Require(m_files.Get(m_source) == request.source, "the source stays as it was");
    if (request.output != Output::Packet || FAILED(outcome.result)) {
      Require(m_files.Get(m_packet) == request.packet, "the packet file stays as it was");
    }
    const WCHAR* const path = request.output == Output::Packet ? m_packet : m_output;
    if (m_files.Exists(path)) outcome.output = m_files.Get(path);
    return outcome;
  }

  // What stands where the output goes before a run.
  static std::optional<Bytes> Before(const Request& request) {
    if (request.output == Output::Existing) return kOld;
    if (request.output == Output::Packet) return request.packet;
    return std::nullopt;
  }

  // Takes a written file apart: SOI, the new segment, the packet, the rest of the source.
  void RequireWritten(const Request& request, const fuzz::WriterModel& model, View output) {
    const fuzz::Place xmp = fuzz::PlaceOfJpegXmp(request.source);
    const std::size_t segmentSize =
        request.HasItems() && model.BlockSize() != 0 ? model.BlockSize() + 10 : 0;
    const std::uint64_t position =
        request.HasItems() ? fuzz::PlaceOfJpegExif(request.source).position : xmp.position;
    const View rest = View(request.source).subspan(static_cast<std::size_t>(position));
    const View head = request.HasItems()
                          ? View(request.source).first(2)
                          : View(request.source).first(static_cast<std::size_t>(position));
    const Bytes packet = request.Has(FLAG_PACKET) ? fuzz::SegmentOf(request.packet) : Bytes{};
    Require(output.size() == head.size() + segmentSize + packet.size() + rest.size(),
            "the output has its parts and nothing more");
    Require(std::ranges::equal(output.first(head.size()), head), "it begins as the source does");
    const View segment = output.subspan(head.size(), segmentSize);
    output = output.subspan(head.size() + segmentSize);
    Require(std::ranges::equal(output.first(packet.size()), packet), "then comes the packet");
    Require(std::ranges::equal(output.subspan(packet.size()), rest), "then what the source has");
    if (!segment.empty()) RequireSegment(request, model, segment);
    if (request.Has(FLAG_PACKET)) RequirePacketIsFound(request);
  }

 private:
  const WCHAR* PathOf(Output output) const {
    switch (output) {
      case Output::Source:
        return m_source;
      case Output::Packet:
        return m_packet;
      case Output::None:
        return nullptr;
      default:
        return m_output;
    }
  }

  // The new segment behind an SOI marker of its own, so that the old one does not win.
  void RequireSegment(const Request& request, const fuzz::WriterModel& model, View segment) {
    const Bytes head = test::Join({{0xFF, 0xE1},
                                   test::U16(static_cast<std::uint16_t>(segment.size() - 2)),
                                   test::Text("Exif"),
                                   {0, 0, 'I', 'I', 42, 0, 8, 0, 0, 0}});
    Require(std::ranges::equal(segment.first(head.size()), head), "the segment has its head");
    m_files.Put(m_parsed, test::Join({{0xFF, 0xD8}, Taken(segment), {0xFF, 0xD9}}));
    VxMetadata store;
    VxMetadataWrapper::Read(store, m_parsed, FILETYPE_JPEG, 0xC | PARSE_NO_MERGE);
    fuzz::RequireSoundStore(store);
    model.RequireReadBack(
        store,
        View(request.thumbnail).first(request.Has(FLAG_THUMBNAIL) ? request.thumbnail.size() : 0));
  }

  void RequirePacketIsFound(const Request& request) {
    const Bytes written = m_files.Get(m_output);
    const FuzzObject object;
    Require(fuzz::MakeCurrent(object, m_output, m_unused), "the output is a JPEG");
    fuzz::RequirePacket(object, written, FILETYPE_JPEG);
    const fuzz::Place place = fuzz::PlaceOfJpegXmp(request.source);
    if (!request.HasItems() && fuzz::IsPlaceInHead(request.source, place)) return;
    Require(std::ranges::equal(fuzz::PacketOf(written, FILETYPE_JPEG).bytes, request.packet),
            "the packet comes back unchanged");
  }

  static inline const Bytes kOld = {'o', 'l', 'd'};

  MemoryFiles m_files;
  const WCHAR* m_source = m_files.Add();
  const WCHAR* m_packet = m_files.Add();
  const WCHAR* m_output = m_files.Add();
  const WCHAR* m_parsed = m_files.Add();
  const WCHAR* m_unused = m_files.Add();
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Writing writing;

  const fuzz::RunChecks checks;
  fuzz::FuzzInput input(data, size);
  const Request request = Read(input);
  const fuzz::WriterModel model(request.Items(),
                                request.thumbnail.empty() ? 0 : request.ThumbnailSize());
  const Outcome outcome = writing.Run(request);
  Require(outcome.result == Expected(request, model), "the result is the documented one");
  if (SUCCEEDED(outcome.result)) {
    Require(outcome.output.has_value(), "there is an output");
    writing.RequireWritten(request, model, *outcome.output);
  } else if (outcome.result != LMD_E_READ_FAILED) {
    Require(outcome.output == Writing::Before(request), "a refused call leaves the output alone");
  }
  Require(writing.Run(request) == outcome, "a second call does the same");
  return 0;
}
