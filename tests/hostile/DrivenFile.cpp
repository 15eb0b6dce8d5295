#include "DrivenFile.h"

#include <gtest/gtest.h>

#include "Bounds.h"
#include "base/TypeSizes.h"
#include "core/RecordExtractors.h"
#include "core/VxMetadataWrapper.h"
#include "support/Jpeg.h"
#include "support/TempFile.h"
#include "support/Tiff.h"

namespace test {
namespace {

std::unique_ptr<DrivenFile> Drive(const WCHAR* path) {
  auto file = std::make_unique<DrivenFile>();
  VxMetadataWrapper::Read(file->store, path, FILETYPE_JPEG, kAllCategories);
  file->records = ExtractRecords(file->store, kAllCategories);
  EXPECT_TRUE(file->store.m_pFile);
  file->store.m_pFile.reset();
  return file;
}

}  // namespace

std::unique_ptr<DrivenFile> BoundedDrive(const Bytes& jpeg) {
  const TempFile file(jpeg);
  return Bounded(InputOf(jpeg.size()), [&] { return Drive(file.Path()); });
}

void ExpectLinearDrive(std::size_t parts, const std::function<Bytes(std::size_t parts)>& make,
                       const std::function<void(VxMetadata& store, std::size_t parts)>& check) {
  const TempFile small(make(parts));
  const TempFile large(make(parts * kTimes));
  ExpectLinear(parts, [&](std::size_t count) {
    const auto file = Drive(count == parts ? small.Path() : large.Path());
    check(file->store, count);
    return file->records.size();
  });
}

Bytes JpegOfPacket(std::string_view packet) {
  EXPECT_LE(packet.size(), 65504U);
  return Jpeg().Xmp(packet).Frame(640, 480).Scan().Build();
}

Bytes JpegOfLongPacket(std::string_view packet) {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Bytes block = tiff.Build({tiff.Byte(0x02BC, Text(packet))});
  // The segment ends behind the first byte of the packet, which follows header and directory.
  constexpr std::uint16_t kLength = 2 + 6 + 8 + 2 + 12 + 4 + 1;
  return Jpeg().SegmentOfLength(0xE1, kLength, Join({Text("Exif"), Zeros(2), block})).Build();
}

std::string Repeat(std::string_view text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

Stored XmpText(std::uint32_t tag, WideStringView text) {
  return {tag, TYPE_WIDE_TEXT, 0, Hex(WideBytes(text))};
}

}  // namespace test
