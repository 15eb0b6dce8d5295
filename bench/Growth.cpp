#include "Growth.h"

#include <memory>
#include <stdexcept>

#include "Measure.h"
#include "exif/VxMetadata.h"
#include "inputs/Blocks.h"
#include "inputs/XmpPackets.h"
#include "support/TempFile.h"

namespace bench {
namespace {

using test::Bytes;

constexpr Patience kPatience = {std::chrono::seconds(10), 7, 101};

constexpr std::size_t kSmallest = 64U * 1024;
constexpr std::size_t kSizes[] = {kSmallest, 16 * kSmallest, 256 * kSmallest};

// A smaller input is read several times in a row, or it alone would find the caches full of
// another's bytes.
constexpr std::size_t kBytesAtATime = 32 * kSmallest;

constexpr std::uint32_t kReadAll = PARSE_EXIF | PARSE_GPS | PARSE_IPTC | PARSE_XMP |
                                   PARSE_MAKERNOTE_SUMMARY | PARSE_MAKERNOTE | PARSE_ICC;

void Require(bool isRead) {
  if (!isRead) throw std::runtime_error("an input was not read whole");
}

bool HoldsData(const TagMap& table, std::uint32_t key) {
  const TagEntry* entry = table.Find(key);
  return entry != nullptr && !TagBytes(*entry).empty();
}

void ReadPacket(const Bytes& packet) {
  constexpr std::uint32_t kRightsKey = 0xAA04;
  VxMetadata store;
  store.m_nParseFlags = kReadAll;
  store.ParseXmp(packet.data(), static_cast<std::uint32_t>(packet.size()));
  Require(HoldsData(*store.m_fnGetBlock(BLOCK_XMP), kRightsKey));
}

void ReadDatasets(const Bytes& datasets) {
  VxMetadata store;
  store.m_nParseFlags = kReadAll;
  Require(SUCCEEDED(store.m_fnParseIPTC(datasets)));
  Require(HoldsData(*store.m_fnGetBlock(BLOCK_IPTC), kCaptionKey));
}

void OpenFile(VxMetadata& store, const WCHAR* path) {
  store.m_nParseFlags = kReadAll;
  Require(store.m_pFile.emplace().Open(path, LMD_W("rb")));
}

void ReadDirectories(const WCHAR* path) {
  VxMetadata store;
  OpenFile(store, path);
  Require(SUCCEEDED(store.m_fnParseTiffHeader(0, 0, 0)));
  Require(!store.m_mapSubIfd.empty());
  const TagMap& last = store.m_mapSubIfd.rbegin()->second;
  Require(last.Count() == kEntriesOfDirectory && HoldsData(last, kEntriesOfDirectory));
}

void ReadSegments(const WCHAR* path) {
  VxMetadata store;
  OpenFile(store, path);
  Require(SUCCEEDED(store.m_fnParseAppSegments()));
  Require(store.m_nImageWidth == kFrameWidth);
}

Operation OfSize(std::size_t size, std::function<void()> run) {
  const std::size_t runs = size < kBytesAtATime ? kBytesAtATime / size : 1;
  return {std::to_string(size), std::move(run), {}, static_cast<int>(runs)};
}

Subject InMemory(const char* name, Bytes (*make)(std::size_t), void (*read)(const Bytes&)) {
  Subject subject = {name, {}};
  for (const std::size_t size : kSizes) {
    const auto bytes = std::make_shared<const Bytes>(make(size));
    subject.operations.push_back(OfSize(bytes->size(), [=] { read(*bytes); }));
  }
  return subject;
}

Subject InFile(const char* name, Bytes (*make)(std::size_t), void (*read)(const WCHAR*)) {
  Subject subject = {name, {}};
  for (const std::size_t size : kSizes) {
    const Bytes bytes = make(size);
    const auto file = std::make_shared<const test::TempFile>(bytes);
    subject.operations.push_back(OfSize(bytes.size(), [=] { read(file->Path()); }));
  }
  return subject;
}

Bytes FlatXmp(std::size_t size) {
  return test::Text(FlatPacket(size));
}

Bytes NestedXmp(std::size_t size) {
  return test::Text(NestedPacket(size));
}

}  // namespace

void MeasureGrowth() {
  Measure({InMemory("XMP", &FlatXmp, &ReadPacket), InMemory("XMP, nested", &NestedXmp, &ReadPacket),
           InMemory("IPTC", &IptcDatasets, &ReadDatasets),
           InFile("directories", &TiffDirectories, &ReadDirectories),
           InFile("segments", &JpegSegments, &ReadSegments)},
          kPatience, Clock::Processor);
}

}  // namespace bench
