#include "Growth.h"

#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

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

// Of a smaller input there are as many copies as have the bytes of the largest, read in turn: what
// grows is the input, and not the way of its bytes to the processor.
constexpr std::size_t kBytesAtATime = 256 * kSmallest;

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

// An operation that reads one of its inputs after the other.
template <typename Input>
Operation InTurn(std::size_t size, std::vector<std::shared_ptr<const Input>> inputs,
                 std::function<void(const Input&)> read) {
  const int runs = static_cast<int>(inputs.size());
  const auto run = [inputs = std::move(inputs), read = std::move(read),
                    next = std::size_t{0}]() mutable {
    read(*inputs[next]);
    next = (next + 1) % inputs.size();
  };
  return {std::to_string(size), run, {}, runs};
}

// Copies of one input, for all sizes.
template <typename Input>
Subject OfAllSizes(const char* name, Bytes (*make)(std::size_t),
                   std::function<void(const Input&)> read) {
  Subject subject = {name, {}};
  for (const std::size_t size : kSizes) {
    const Bytes bytes = make(size);
    std::vector<std::shared_ptr<const Input>> inputs;
    for (std::size_t i = 0; i < kBytesAtATime / size; ++i) {
      inputs.push_back(std::make_shared<const Input>(bytes));
    }
    subject.operations.push_back(InTurn<Input>(bytes.size(), std::move(inputs), read));
  }
  return subject;
}

Subject InMemory(const char* name, Bytes (*make)(std::size_t), void (*read)(const Bytes&)) {
  return OfAllSizes<Bytes>(name, make, read);
}

Subject InFile(const char* name, Bytes (*make)(std::size_t), void (*read)(const WCHAR*)) {
  return OfAllSizes<test::TempFile>(name, make,
                                    [read](const test::TempFile& file) { read(file.Path()); });
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
