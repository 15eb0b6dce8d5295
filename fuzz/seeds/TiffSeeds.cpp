// TIFF blocks behind their parse flags, their position and their bounds.

#include <string_view>

#include "IccProfile.h"
#include "Iptc.h"
#include "Seeds.h"
#include "Xmp.h"
#include "exif/VxMetadata.h"
#include "support/Jpeg.h"
#include "support/SamsungPhoto.h"
#include "support/Tiff.h"
#include "support/XmpPacket.h"

namespace fuzz {
namespace {

using test::Bytes;
using test::Directory;
using test::Entry;
using test::Join;
using test::Tiff;

constexpr std::uint32_t kReadAll = 0xFFF;

// A block at the start of its file, without bounds.
Bytes Alone(const Bytes& block, std::uint32_t flags = kReadAll) {
  return Join({Control(flags), Control(0), Control(0), Control(0), block});
}

// A block as it stands in its JPEG segment.
Bytes InSegment(const Bytes& block) {
  constexpr std::uint32_t kPayload = 6;
  constexpr std::uint32_t kBase = kPayload + 6;
  const auto end = static_cast<std::uint32_t>(kBase + block.size());
  return Join(
      {Control(kReadAll), Control(kBase), Control(kPayload), Control(end), Bytes(kBase), block});
}

// One entry of each type.
Directory EveryType(const Tiff& tiff) {
  Directory directory;
  for (std::uint16_t type = 0; type <= 15; ++type) {
    const auto tag = static_cast<std::uint16_t>(1000 + type);
    directory.push_back(tiff.Raw(tag, type, 2, Bytes(16, static_cast<std::uint8_t>(type + 1))));
  }
  return directory;
}

// IFD0 with one value.
Bytes Single(const Tiff& tiff, const Entry& entry) {
  return tiff.Build({tiff.Ascii(271, "Maker"), entry});
}

Directory RgbThumbnail(const Tiff& tiff) {
  return {tiff.Short(0x0100, {2}), tiff.Short(0x0101, {1}),   tiff.Short(0x0103, {1}),
          tiff.Short(0x0106, {2}), tiff.Long(0x0111, {0, 4}), tiff.Long(0x0117, {3, 3})};
}

// The thumbnail is the block itself, which is no JPEG; its length is cut by the file's.
Directory JpegThumbnail(const Tiff& tiff) {
  return {tiff.Short(0x0103, {6}), tiff.Long(0x0201, {8}), tiff.Long(0x0202, {5000})};
}

Bytes LeafRecords(const Tiff& tiff) {
  Bytes name = test::Text("ShootObj_back_type");
  name.resize(40);
  const Bytes magic = test::U32(0x504B5453, tiff.Order());
  const Bytes data = test::Text("14\n");
  const Bytes back = Join({magic, test::Zeros(4), name,
                           test::U32(static_cast<std::uint32_t>(data.size()), tiff.Order()), data});
  const Bytes list = Join({magic, test::Zeros(44),
                           test::U32(static_cast<std::uint32_t>(back.size()), tiff.Order()), back});
  return tiff.Build({tiff.Undefined(0x8606, list)});
}

Directory Camera(const Tiff& tiff) {
  const Directory interop = {tiff.Ascii(1, "R98"), tiff.Undefined(2, test::Text("0100"))};
  const Directory exif = {
      tiff.Rational(0x829A, {{1, 250}}),         tiff.Short(0x8827, {100}),
      tiff.Ascii(0x9003, "2024:01:02 03:04:05"), tiff.Rational(0x9201, {{8, 1}}),
      tiff.Rational(0x920A, {{50, 1}}),          tiff.Child(0xA005, interop)};
  const Directory gps = {tiff.Ascii(1, "N"), tiff.Rational(2, {{47, 1}, {30, 1}, {0, 1}})};
  return {tiff.Ascii(271, "Maker"), tiff.Ascii(272, "Model"), tiff.Child(0x8769, exif),
          tiff.Child(0x8825, gps)};
}

// A private note of a converter; the block's own maker note would go first.
Bytes DngNote(const Tiff& tiff) {
  return tiff.Build({tiff.Ascii(271, "SAMSUNG"), tiff.Ascii(272, "NX10"),
                     tiff.Undefined(0xC634, test::kNote.BuildDirectory({test::kNoteBound}, 0))});
}

// Exposure and lens where the merge looks for them.
Bytes NeedsMerge(const Tiff& tiff) {
  const Directory exif = {tiff.Rational(0x9201, {{8, 1}}), tiff.Rational(0x920A, {{50, 1}}),
                          tiff.Short(0xA405, {75}),
                          tiff.Rational(0xA432, {{24, 1}, {70, 1}, {28, 10}, {4, 1}})};
  return tiff.Build({tiff.Short(0x0017, {400}),
                     tiff.Byte(0x02BC, test::Text(samples::ExposurePacket())),
                     tiff.Rational(0x829A, {{1, 60}}), tiff.Rational(0x829D, {{56, 10}}),
                     tiff.Child(0x8769, exif), tiff.Rational(0x9215, {{400, 1}}),
                     tiff.Rational(0xC630, {{24, 1}, {70, 1}, {28, 10}, {4, 1}})});
}

// The same in XMP alone, and a sensor's resolution.
Bytes NeedsXmp(const Tiff& tiff) {
  const Directory exif = {tiff.Long(0xA002, {4000}), tiff.Rational(0xA20E, {{4000, 1}}),
                          tiff.Short(0xA210, {2})};
  return tiff.Build(
      {tiff.Byte(0x02BC, test::Text(samples::ExposurePacket())), tiff.Child(0x8769, exif)});
}

Bytes SizedThumbnailResource() {
  const Bytes jpeg = test::Jpeg().Frame(2, 1).Scan().Build();
  const Bytes size = test::U32(static_cast<std::uint32_t>(jpeg.size()));
  return test::PhotoshopResource(
      0x040C, Join({test::U32(1), test::Zeros(16), size, test::U16(24), test::U16(1), jpeg}));
}

void AddSeeds(Seeds& seeds, ByteOrder order) {
  const Tiff tiff(order);
  const std::string end = order == ByteOrder::BigEndian ? "-be" : "-le";
  const Bytes packet = test::Text(test::XmpPacket("xmp:Rating=\"3\"", test::kXmpBasic));
  const Bytes resources = test::PhotoshopResource(0x0404, samples::Latin1Datasets());
  const Directory camera = Camera(tiff);

  seeds["types" + end] = Alone(tiff.Build(EveryType(tiff)));
  seeds["camera" + end] = InSegment(tiff.Build(camera, JpegThumbnail(tiff)));
  seeds["whole-budget" + end] = Alone(tiff.Build(camera), kReadAll | 0x40000000);
  seeds["needs-xmp" + end] = Alone(NeedsXmp(tiff));
  seeds["photoshop-thumbnail" + end] =
      Alone(Single(tiff, tiff.Byte(0x8649, SizedThumbnailResource())));
  seeds["needs-merge" + end] = Alone(NeedsMerge(tiff));
  seeds["camera-no-merge" + end] = Alone(tiff.Build(camera), kReadAll | PARSE_NO_MERGE);
  seeds["rgb-thumbnail" + end] = InSegment(tiff.Build(camera, RgbThumbnail(tiff)));
  seeds["sub-ifds" + end] =
      Alone(tiff.Build({tiff.Children(0x014A, {EveryType(tiff), RgbThumbnail(tiff)})}));
  seeds["xmp" + end] = Alone(Single(tiff, tiff.Byte(0x02BC, packet)));
  seeds["iptc" + end] = Alone(Single(tiff, tiff.Undefined(0x83BB, samples::Utf8Datasets())));
  seeds["photoshop" + end] = Alone(Single(tiff, tiff.Byte(0x8649, resources)));
  seeds["icc" + end] = Alone(Single(tiff, tiff.Undefined(0x8773, samples::DisplayProfile())));
  seeds["leaf" + end] = Alone(LeafRecords(tiff));
  seeds["leaf-make" + end] = Alone(tiff.Build({tiff.Ascii(0x85FF, "x")}));
  seeds["embedded" + end] = Alone(Single(tiff, tiff.Undefined(0x002E, test::Zeros(8))));
  seeds["dng-note" + end] = Alone(DngNote(tiff));
  seeds["maker-note" + end] =
      InSegment(test::SamsungTiff({test::kNoteBound, test::kNote.Long(0xA003, {2})}, order));
  seeds["stop-magic" + end] = Alone(tiff.Build({}, {}, 26));
}

}  // namespace

Seeds TiffSeeds() {
  Seeds seeds;
  AddSeeds(seeds, ByteOrder::LittleEndian);
  AddSeeds(seeds, ByteOrder::BigEndian);
  return seeds;
}

}  // namespace fuzz
