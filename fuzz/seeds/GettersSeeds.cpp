// Steps of one object: opening first, then every getter.

#include "RichPhoto.h"
#include "Seeds.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/SamsungPhoto.h"
#include "support/Tiff.h"
#include "support/XmpPacket.h"

namespace fuzz {
namespace {

using test::Bytes;

constexpr std::uint8_t kOwnFile = 0;
constexpr std::uint8_t kChanged = 1;
constexpr std::uint8_t kOpen = 0;
constexpr std::uint8_t kParseBasic = 1;
constexpr std::uint8_t kOperations = 11;

Bytes Session(std::uint8_t kind, const Bytes& steps, const Bytes& rest) {
  return test::Join({{kind, static_cast<std::uint8_t>(steps.size() / 2)}, steps, rest});
}

// Opens a photograph of the target's list and asks everything, with one parameter.
Bytes AskAll(std::uint8_t photo, std::uint8_t parameter) {
  Bytes steps = {kOpen, photo};
  for (std::uint8_t i = kParseBasic + 1; i < kOperations; ++i) {
    steps.push_back(i);
    steps.push_back(parameter);
  }
  return steps;
}

// The data methods with every kind of capacity.
Bytes AskData() {
  Bytes steps = {kOpen, 0};
  for (std::uint8_t i = 0; i < 28; ++i) {
    steps.push_back(4);
    steps.push_back(i);
  }
  return steps;
}

// Values of the maker note that the getters refuse or pass over.
Bytes OddNote() {
  using test::kNote;
  return test::SamsungJpeg({test::kNoteBound, kNote.Ascii(16, "text"),
                            test::NoteSRational(17, {{1, 2}, {3, 0}, {5, 6}}),
                            kNote.Undefined(18, {1, 2, 3}), kNote.Long(19, {1}),
                            kNote.Undefined(20, {1, 2, 3, 4}), kNote.Long(21, {1})});
}

// XMP that does not tell a projection, where no locator looks.
Bytes HiddenXmp() {
  const test::Tiff tiff(ByteOrder::LittleEndian);
  const auto packet = test::XmpPacket("xmp:Rating=\"3\"", test::kXmpBasic);
  return test::Jpeg()
      .Exif(tiff.Build({tiff.Undefined(0x02BC, test::Text(packet))}))
      .Frame(1, 1)
      .Build();
}

}  // namespace

Seeds GettersSeeds() {
  Seeds seeds = {
      {"before-open",
       Session(kChanged, {2, 0, 3, 0, 4, 0, 5, 0, 6, 0, 7, 0, 8, 0, 9, 0, 10, 0}, {})},
      {"data", Session(kChanged, AskData(), {})},
      {"own-rich", Session(kOwnFile, AskAll(0, 0), RichPhoto())},
      {"own-full", Session(kOwnFile, AskAll(0, 1), test::FullPhoto())},
      {"own-png", Session(kOwnFile, AskAll(0, 2), test::Png().Header().Xmp("flat").End().Build())},
      {"own-plain", Session(kOwnFile, AskAll(0, 0), test::Jpeg().Frame(1, 1).Build())},
      {"own-odd", Session(kOwnFile, AskAll(0, 1), OddNote())},
      {"own-hidden-xmp", Session(kOwnFile, AskAll(0, 0), HiddenXmp())},
      {"changed", Session(kChanged, AskAll(0, 1), {0x20, 0, 0xFF, 0x30, 1, 0})},
      {"reopen",
       Session(kChanged, {kOpen,       0, 4, 0, kOpen, 5, 4,     1,  9,  0, kOpen,       9, 9,  0,
                          kParseBasic, 0, 9, 0, 10,    0, kOpen, 11, 10, 0, kParseBasic, 3, 10, 0},
               {})},
  };
  for (std::uint8_t photo = 0; photo < 6; ++photo) {
    const auto parameter = static_cast<std::uint8_t>(2 * photo + 1);
    seeds["photo-" + std::to_string(photo)] = Session(kChanged, AskAll(parameter, photo), {});
  }
  return seeds;
}

}  // namespace fuzz
