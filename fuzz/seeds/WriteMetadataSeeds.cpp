// Calls of WriteMetadata in the form that the target reads.

#include <string_view>

#include "Seeds.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"

namespace fuzz {
namespace {

using test::Bytes;

constexpr std::uint8_t kItems = 0x01;
constexpr std::uint8_t kPacket = 0x02;
constexpr std::uint8_t kThumbnail = 0x04;
constexpr std::uint8_t kOverwrite = 0x08;
constexpr std::uint8_t kNoItemCount = 0x10;
constexpr std::uint8_t kLargeThumbnail = 0x20;
constexpr std::uint8_t kLargePacket = 0x40;
constexpr std::uint8_t kNewOutput = 15;

struct Call {
  std::uint8_t flags = 0;
  std::uint8_t output = kNewOutput;
  std::uint8_t recordCount = 0;
  Bytes records;
  std::string_view packet;
  Bytes thumbnail;
  Bytes source;
};

Bytes Encoded(const Call& call) {
  const auto thumbnailSize = static_cast<std::uint16_t>(call.thumbnail.size());
  return test::Join(
      {{call.flags, call.output, call.recordCount, static_cast<std::uint8_t>(call.packet.size())},
       test::U16(thumbnailSize, ByteOrder::LittleEndian),
       call.records,
       test::Text(call.packet),
       call.thumbnail,
       call.source});
}

// Every tag that the target knows, each with `size` bytes of its own pattern.
Bytes AllTags(std::uint8_t count, std::uint8_t first, std::uint8_t size) {
  Bytes records;
  for (std::uint8_t i = 0; i < count; ++i) {
    records.push_back(static_cast<std::uint8_t>(first + i));
    records.push_back(size);
    for (std::uint8_t j = 0; j < size && j < 16; ++j) {
      records.push_back(static_cast<std::uint8_t>(0x41 + i + j));
    }
  }
  return records;
}

// One record of `size` bytes, all of them 'x'.
Bytes LargeRecord(std::uint8_t which, std::uint16_t size) {
  return test::Join(
      {{which, 255}, test::U16(size, ByteOrder::LittleEndian), test::Text("xxxxxxxxxxxxxxxx")});
}

}  // namespace

Seeds WriteMetadataSeeds() {
  const Bytes plain = test::Jpeg().Frame(8, 8).Scan().Build();
  const Bytes thumbnail = test::Jpeg().Frame(4, 3).Scan().Build();
  const Bytes few = AllTags(12, 0, 9);
  constexpr std::string_view kText = "<x>packet</x>";
  constexpr std::uint8_t kAll = kItems | kPacket | kThumbnail | kOverwrite;
  Seeds seeds = {
      {"items", Encoded({kItems, kNewOutput, 12, few, "", {}, plain})},
      {"packet", Encoded({kPacket, kNewOutput, 0, {}, kText, {}, plain})},
      {"everything", Encoded({kAll, kNewOutput, 12, few, kText, thumbnail, plain})},
      {"over-exif", Encoded({kItems | kThumbnail | kOverwrite, kNewOutput, 12, few, "", thumbnail,
                             test::FullPhoto()})},
      {"has-exif", Encoded({kItems, kNewOutput, 12, few, "", {}, test::FullPhoto()})},
      {"has-xmp", Encoded({kAll, kNewOutput, 12, few, kText, {}, test::FullPhoto()})},
      {"all-tags-1", Encoded({kItems, kNewOutput, 63, AllTags(63, 0, 8), "", {}, plain})},
      {"all-tags-2", Encoded({kItems, kNewOutput, 63, AllTags(63, 50, 24), "", {}, plain})},
      {"short-values", Encoded({kItems, kNewOutput, 63, AllTags(63, 0, 3), "", {}, plain})},
      {"without-data", Encoded({kItems, kNewOutput, 10, AllTags(10, 0x80, 5), "", {}, plain})},
      {"nothing-accepted",
       Encoded({kAll, kNewOutput, 2, {100, 1, 'x', 101, 1, 'x'}, kText, thumbnail, plain})},
      {"repeated-tag", Encoded({kItems,
                                kNewOutput,
                                2,
                                {1, 2, 'a', 'b', 1, 9, 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j', 'k'},
                                "",
                                {},
                                plain})},
      {"packet-behind-exif", Encoded({kItems | kPacket | kOverwrite,
                                      kNewOutput,
                                      12,
                                      few,
                                      kText,
                                      {},
                                      test::Jpeg().Exif(few).Scan().Build()})},
      {"packet-exif-of-length-1",
       Encoded({kPacket,
                kNewOutput,
                0,
                {},
                kText,
                {},
                test::Jpeg().SegmentOfLength(0xE1, 1, test::Text("Exif")).Build()})},
      {"no-item-count", Encoded({kItems | kNoItemCount, kNewOutput, 12, few, "", {}, plain})},
      {"no-items", Encoded({0, kNewOutput, 0, {}, "", {}, plain})},
      {"large-thumbnail",
       Encoded({kAll | kLargeThumbnail, kNewOutput, 12, few, kText, thumbnail, plain})},
      {"large-packet", Encoded({kPacket | kLargePacket, kNewOutput, 0, {}, kText, {}, plain})},
      {"long-text", Encoded({kItems, kNewOutput, 1, LargeRecord(0, 3000), "", {}, plain})},
      {"tiff", Encoded({kItems, kNewOutput, 12, few, "", {}, {'I', 'I', 42, 0, 8, 0, 0, 0}})},
  };
  // A text of this size fills the block: header, directory and text make 64000 bytes.
  constexpr std::uint16_t kLargest = 64000 - 8 - 6 - 12;
  seeds["fills-the-block"] =
      Encoded({kItems, kNewOutput, 1, LargeRecord(0, kLargest), "", {}, plain});
  seeds["exceeds-the-block"] =
      Encoded({kItems, kNewOutput, 1, LargeRecord(0, kLargest + 1), "", {}, plain});
  for (std::uint8_t output = 1; output < 5; ++output) {
    const std::string name = "output-" + std::to_string(output);
    seeds[name] = Encoded({kItems | kPacket, output, 12, few, kText, {}, plain});
    seeds[name + "-overwrite"] = Encoded({kItems | kOverwrite, output, 12, few, kText, {}, plain});
  }
  return seeds;
}

}  // namespace fuzz
