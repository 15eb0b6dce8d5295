#include "Exif.h"

#include <vector>

namespace samples {
namespace {

using test::Bytes;
using test::Directory;
using test::Entry;
using test::Join;
using test::Text;
using test::Tiff;
using test::U32;
using test::Zeros;

constexpr std::string_view kDate = "2024:06:01 10:30:00";

Bytes BigEndianNumbers(const std::vector<std::uint32_t>& numbers) {
  Bytes bytes;
  for (const std::uint32_t number : numbers) bytes = Join({bytes, U32(number)});
  return bytes;
}

// The numbers 1, 2, 3, ...: values whose meaning nobody has published.
Bytes Counting(std::size_t count) {
  Bytes bytes;
  while (bytes.size() < count) bytes.push_back(static_cast<std::uint8_t>(bytes.size() + 1));
  return bytes;
}

}  // namespace

Directory ImageTags(const Tiff& tiff, const Camera& camera, std::uint16_t orientation) {
  return {
      tiff.Ascii(0x010F, camera.make),
      tiff.Ascii(0x0110, camera.model),
      tiff.Short(0x0112, {orientation}),
      tiff.Rational(0x011A, {{72, 1}}),
      tiff.Rational(0x011B, {{72, 1}}),
      tiff.Short(0x0128, {2}),
      tiff.Ascii(0x0131, "make_samples"),
      tiff.Ascii(0x0132, kDate),
      tiff.Short(0x0213, {1}),
  };
}

Directory ExifTags(const Tiff& tiff, const Exposure& exposure, std::uint16_t width,
                   std::uint16_t height) {
  return {
      tiff.Rational(0x829A, {{1, exposure.timeDenominator}}),
      tiff.Rational(0x829D, {{exposure.fNumberTenths, 10}}),
      tiff.Short(0x8822, {2}),
      tiff.Short(0x8827, {exposure.iso}),
      tiff.Undefined(0x9000, Text("0232")),
      tiff.Ascii(0x9003, kDate),
      tiff.Ascii(0x9004, kDate),
      tiff.Undefined(0x9101, {1, 2, 3, 0}),
      tiff.Short(0x9207, {5}),
      tiff.Short(0x9209, {0}),
      tiff.Rational(0x920A, {{35, 1}}),
      tiff.Undefined(0xA000, Text("0100")),
      tiff.Short(0xA001, {1}),
      tiff.Short(0xA002, {width}),
      tiff.Short(0xA003, {height}),
  };
}

Directory GpsTags(const Tiff& tiff) {
  return {
      tiff.Byte(0x0000, {2, 3, 0, 0}),
      tiff.Ascii(0x0001, "N"),
      tiff.Rational(0x0002, {{47, 1}, {3, 1}, {2400, 100}}),
      tiff.Ascii(0x0003, "E"),
      tiff.Rational(0x0004, {{8, 1}, {29, 1}, {600, 100}}),
      tiff.Byte(0x0005, {0}),
      tiff.Rational(0x0006, {{17980, 10}}),
      tiff.Rational(0x0007, {{8, 1}, {30, 1}, {0, 1}}),
      tiff.Ascii(0x0012, "WGS-84"),
      tiff.Ascii(0x001D, "2024:06:01"),
  };
}

Directory InteropTags(const Tiff& tiff) {
  return {tiff.Ascii(0x0001, "R98"), tiff.Undefined(0x0002, Text("0100"))};
}

Bytes BlockWithThumbnail(const Tiff& tiff, const Directory& ifd0, const Bytes& thumbnail) {
  const auto build = [&](std::uint32_t offset) {
    const Directory ifd1 = {
        tiff.Short(0x0103, {6}),
        tiff.Rational(0x011A, {{72, 1}}),
        tiff.Rational(0x011B, {{72, 1}}),
        tiff.Short(0x0128, {2}),
        tiff.Long(0x0201, {offset}),
        tiff.Long(0x0202, {static_cast<std::uint32_t>(thumbnail.size())}),
    };
    Bytes block = tiff.Build(ifd0, ifd1);
    block.resize((block.size() + 1) / 2 * 2);
    return block;
  };
  const auto offset = static_cast<std::uint32_t>(build(0).size());
  return Join({build(offset), thumbnail});
}

Bytes SamsungMakerNote() {
  constexpr std::uint16_t kSignedLong = 9;
  constexpr std::uint16_t kSignedRational = 10;
  const Tiff tiff(ByteOrder::BigEndian);
  const Bytes quotients = BigEndianNumbers({25, 10, 0xFFFFFFFF, 4, 3, 1});  // 2.5, -0.25, 3
  const Directory directory = {
      tiff.Undefined(0x0001, Join({Text("0100"), Zeros(20)})),
      tiff.Long(0x0010, {5}),
      tiff.Raw(0x0011, kSignedRational, 3, quotients),
      tiff.Undefined(0x0012, Counting(16)),
      tiff.Undefined(0x0013, Counting(8)),
      tiff.Raw(0x0014, kSignedLong, 3, BigEndianNumbers({100, 200, 300})),
      tiff.Undefined(0x0015, Counting(20)),
      tiff.Short(0x0021, {3, 0, 0, 0, 0}),
      tiff.Short(0xA003, {7}),
  };
  return tiff.BuildDirectory(directory, 0);
}

}  // namespace samples
