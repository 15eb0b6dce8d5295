#include "IccProfile.h"

#include <array>
#include <string_view>
#include <vector>

namespace samples {
namespace {

using test::Bytes;
using test::Join;
using test::Text;
using test::U16;
using test::U32;
using test::Zeros;

// Three numbers in parts of 65536.
Bytes Xyz(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
  return Join({U32(x), U32(y), U32(z)});
}

Bytes XyzTag(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
  return Join({Text("XYZ "), Zeros(4), Xyz(x, y, z)});
}

Bytes TextTag(std::string_view text) {
  return Join({Text("text"), Zeros(4), Text(text), Zeros(1)});
}

// The text in ASCII; the Unicode and the ScriptCode form stay empty (6.5.17).
Bytes DescriptionTag(std::string_view text) {
  const auto length = static_cast<std::uint32_t>(text.size() + 1);
  return Join(
      {Text("desc"), Zeros(4), U32(length), Text(text), Zeros(1), Zeros(4 + 4 + 2 + 1 + 67)});
}

// A curve of a single number is a gamma in parts of 256.
Bytes GammaTag(std::uint16_t gamma) {
  return Join({Text("curv"), Zeros(4), U32(1), U16(gamma)});
}

struct Tag {
  std::string_view signature;
  Bytes data;
};

std::vector<Tag> Tags() {
  constexpr std::uint16_t kGamma22 = 0x0233;
  return {
      {"desc", DescriptionTag("Gamma 2.2 with the primaries of sRGB")},
      {"cprt", TextTag("No copyright, use freely")},
      {"wtpt", XyzTag(0xF6D6, 0x10000, 0xD32D)},
      {"rXYZ", XyzTag(0x6FA2, 0x38F5, 0x0390)},
      {"gXYZ", XyzTag(0x6299, 0xB785, 0x18DA)},
      {"bXYZ", XyzTag(0x24A0, 0x0F84, 0xB6CF)},
      {"rTRC", GammaTag(kGamma22)},
      {"gTRC", GammaTag(kGamma22)},
      {"bTRC", GammaTag(kGamma22)},
  };
}

Bytes Header(std::uint32_t size) {
  const Bytes made = Join({U16(2024), U16(6), U16(1), Zeros(6)});
  const Bytes illuminant = Xyz(0xF6D6, 0x10000, 0xD32D);
  return Join({U32(size),
               Zeros(4),
               {2, 0x10, 0, 0},
               Text("mntrRGB XYZ "),
               made,
               Text("acsp"),
               Zeros(4 + 4 + 4 + 4 + 8 + 4),
               illuminant,
               Zeros(4 + 44)});
}

}  // namespace

Bytes DisplayProfile() {
  constexpr std::size_t kHeaderSize = 128;
  const std::vector<Tag> tags = Tags();
  Bytes table = U32(static_cast<std::uint32_t>(tags.size()));
  Bytes data;
  const std::size_t dataStart = kHeaderSize + 4 + 12 * tags.size();
  for (const Tag& tag : tags) {
    const auto offset = static_cast<std::uint32_t>(dataStart + data.size());
    const auto size = static_cast<std::uint32_t>(tag.data.size());
    table = Join({table, Text(tag.signature), U32(offset), U32(size)});
    data = Join({data, tag.data});
    data.resize((data.size() + 3) / 4 * 4);
  }
  const auto size = static_cast<std::uint32_t>(dataStart + data.size());
  return Join({Header(size), table, data});
}

}  // namespace samples
