// Maker notes behind the camera and the place of the note.

#include "Exif.h"
#include "Seeds.h"
#include "support/SamsungPhoto.h"

namespace fuzz {
namespace {

using test::Bytes;
using test::Directory;
using test::Join;
using test::kNote;

struct Bounds {
  std::uint32_t lower = 0;
  std::uint32_t upper = 0;
};

// A note at the start of its file.
Bytes Note(std::uint8_t choice, const Bytes& note, const Bounds& bounds = {}) {
  return Join({{choice, 0, 0}, Control(0), Control(bounds.lower), Control(bounds.upper), note});
}

// A note behind one byte, so that its bounds count.
Bytes BoundedNote(const Directory& entries) {
  const Bytes note = kNote.BuildDirectory(entries, 0);
  const auto end = static_cast<std::uint32_t>(note.size() + 1);
  return Join({{0, 1, 0}, Control(0), Control(1), Control(end), {0}, note});
}

}  // namespace

Seeds MakerNoteSeeds() {
  const Bytes sample = samples::SamsungMakerNote();
  const Directory lens = {test::kNoteBound, kNote.Byte(0x21, {7}), kNote.Short(0xA003, {2})};
  const Directory empty = {kNote.Byte(0x21, {}), kNote.Raw(0xA003, 3, 0, {}),
                           kNote.Raw(0xA004, 12, 2, Bytes(16))};
  return {
      {"sample", Note(0, sample)},
      {"sample-be", Note(1, sample)},
      {"other-make", Note(2, sample)},
      {"lens", BoundedNote(lens)},
      {"texts",
       BoundedNote({kNote.Ascii(1, "a longer text"), kNote.Raw(2, 2, 8, test::Text("no zero."))})},
      {"empty-values", Note(0, kNote.BuildDirectory(empty, 0))},
      {"signed", Note(0, kNote.BuildDirectory(
                             {test::NoteSLong(3, {-1, 1}), test::NoteSRational(4, {{-1, 0}})}, 0))},
      {"no-entries", Note(0, {0, 0})},
      {"no-bytes", Note(0, {})},
  };
}

}  // namespace fuzz
