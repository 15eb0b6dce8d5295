// IPTC datasets, Photoshop resources and ICC profiles.

#include "IccProfile.h"
#include "Iptc.h"
#include "Seeds.h"
#include "support/Jpeg.h"

namespace fuzz {
namespace {

using test::Bytes;
using test::Join;
using test::Text;
using test::U16;
using test::U32;
using test::Zeros;

Bytes Dataset(std::uint8_t record, std::uint8_t number, const Bytes& data) {
  return Join({{0x1C, record, number}, U16(static_cast<std::uint16_t>(data.size())), data});
}

// A resource of 2 x 1 pixels around a JPEG stream.
Bytes ThumbnailResource() {
  const Bytes jpeg = test::Jpeg().Frame(2, 1).Scan().Build();
  const auto size = static_cast<std::uint32_t>(jpeg.size());
  return test::PhotoshopResource(
      0x040C, Join({U32(1), U32(2), U32(1), U32(8), U32(8), U32(size), U16(24), U16(1), jpeg}));
}

// A resource with a name of five characters, and data of odd length.
Bytes NamedResource() {
  return Join({Text("8BIM"), U16(0x03ED), {5}, Text("Names"), U32(3), {1, 2, 3, 0}});
}

Bytes WithSwitch(std::uint8_t value, const Bytes& block) {
  return Join({{value}, block});
}

}  // namespace

Seeds IptcSeeds() {
  return {
      {"utf8", samples::Utf8Datasets()},
      {"latin1", samples::Latin1Datasets()},
      {"version", Dataset(2, 0, {0, 4})},
      {"envelope",
       Join({Dataset(1, 0, {0, 4}), Dataset(1, 20, {0, 1}), Dataset(2, 90, Text("Oslo"))})},
      {"unknown",
       Join({Dataset(2, 3, {}), Dataset(2, 200, Text("x")), Dataset(2, 120, Text("abc"))})},
      {"too-long", Join({Dataset(2, 25, Text("one")), {0x1C, 2, 25, 0, 99}, Text("two")})},
      {"extended", Join({{0x1C, 2, 25, 0x80, 4}, Zeros(8)})},
  };
}

Seeds PhotoshopSeeds() {
  const Bytes iptc = test::PhotoshopResource(0x0404, samples::Utf8Datasets());
  return {
      {"iptc", WithSwitch(0, iptc)},
      {"iptc-off", WithSwitch(1, iptc)},
      {"thumbnail", WithSwitch(0, ThumbnailResource())},
      {"several",
       WithSwitch(0, Join({NamedResource(), ThumbnailResource(), iptc, NamedResource()}))},
      {"short", WithSwitch(0, Text("8BIM\x04\x04"))},
  };
}

Seeds IccSeeds() {
  const Bytes profile = samples::DisplayProfile();
  const Bytes header(profile.begin(), profile.begin() + 128);
  const Bytes outside = Join({Text("cprt"), U32(0xFFFFFFF0), U32(0x20)});
  return {
      {"display", profile},
      {"header", header},
      {"no-tags", Join({header, U32(0)})},
      {"outside", Join({header, U32(2), outside, Text("desc"), U32(128), U32(12)})},
      {"endless", Join({header, U32(0xFFFFFFFF), Text("wtpt"), U32(128), U32(16)})},
      {"cut", Bytes(profile.begin(), profile.begin() + 99)},
  };
}

}  // namespace fuzz
