#include "inputs/Blocks.h"

#include <string>
#include <string_view>
#include <vector>

#include "support/Jpeg.h"
#include "support/Tiff.h"

namespace bench {
namespace {

using test::Bytes;

Bytes Dataset(std::uint8_t number, const Bytes& data) {
  return test::Join({{0x1C, 2, number}, test::U16(static_cast<std::uint16_t>(data.size())), data});
}

Bytes TextDataset(std::uint8_t number, std::string_view text) {
  return Dataset(number, test::Text(text));
}

Bytes DatasetsOfOnePhotograph() {
  constexpr std::size_t kPreviewSize = 500;
  return test::Join({
      Dataset(0, {0, 4}),
      TextDataset(5, "Harbour at night"),
      TextDataset(25, "harbour"),
      TextDataset(25, "night over the city"),
      TextDataset(55, "20230223"),
      TextDataset(80, "A. Photographer"),
      TextDataset(90, "Genova"),
      TextDataset(101, "Italia"),
      TextDataset(116, "All rights reserved by the photographer"),
      TextDataset(120,
                  "Cranes and ships in the lights of the harbour, seen from the old lighthouse"),
      Dataset(202, test::Zeros(kPreviewSize)),
  });
}

// Numbers, fractions, texts and blobs, as in a maker's directory.
test::Directory OneDirectory(const test::Tiff& tiff) {
  constexpr std::size_t kBlobSize = 976;
  const std::string text = "a text of some thirty bytes....";
  test::Directory directory;
  for (std::uint16_t tag = 1; tag <= kEntriesOfDirectory; tag += 4) {
    directory.push_back(tiff.Short(tag, {tag}));
    directory.push_back(tiff.Rational(static_cast<std::uint16_t>(tag + 1), {{tag, 10}}));
    directory.push_back(tiff.Ascii(static_cast<std::uint16_t>(tag + 2), text));
    directory.push_back(
        tiff.Undefined(static_cast<std::uint16_t>(tag + 3), test::Zeros(kBlobSize)));
  }
  return directory;
}

}  // namespace

Bytes IptcDatasets(std::size_t size) {
  const Bytes one = DatasetsOfOnePhotograph();
  Bytes bytes;
  while (bytes.size() + one.size() <= size) bytes.insert(bytes.end(), one.begin(), one.end());
  return bytes;
}

Bytes TiffDirectories(std::size_t size) {
  constexpr std::uint16_t kSubIfds = 0x014A;
  const test::Tiff tiff(ByteOrder::LittleEndian);
  const test::Directory directory = OneDirectory(tiff);
  const std::size_t sizeOfOne = tiff.BuildDirectory(directory, 0).size();
  return tiff.Build(
      {tiff.Children(kSubIfds, std::vector<test::Directory>(
                                   size / (sizeOfOne + sizeof(std::uint32_t)), directory))});
}

Bytes JpegSegments(std::size_t size) {
  constexpr std::size_t kLargeSegment = 8000;
  constexpr std::size_t kTables = 130;
  constexpr std::uint16_t kFrameHeight = 480;
  const Bytes large = test::Zeros(kLargeSegment);
  test::Jpeg jpeg;
  while (jpeg.NextOffset() < size) {
    jpeg.Segment(0xE1, test::Join({test::Text("http://ns.adobe.com/xmp/extension/"), large}));
    jpeg.Icc(large, 2, 3);
    jpeg.Segment(0xEB, large);
    jpeg.Segment(0xED, test::Text("Adobe_CM, not resources: 24 bytes or more"));
    jpeg.Segment(0xDB, test::Zeros(kTables));
    jpeg.Segment(0xFE, test::Text("a comment"));
  }
  return jpeg.Frame(kFrameWidth, kFrameHeight).Scan().Build();
}

}  // namespace bench
