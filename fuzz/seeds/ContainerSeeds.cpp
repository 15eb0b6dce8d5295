// Whole photographs behind the category mask of their parse.

#include "Seeds.h"
#include "core/RecordExtractors.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/SamsungPhoto.h"
#include "support/Tiff.h"
#include "support/XmpPacket.h"

namespace fuzz {
namespace {

using test::Bytes;
using test::Jpeg;
using test::Tiff;

Bytes Parsed(std::uint32_t mask, const Bytes& file) {
  return test::Join({Control(mask), file});
}

// Values that the merge reads, none where it writes.
Bytes NeedsMerge(ByteOrder order) {
  const Tiff tiff(order);
  const test::Directory exif = {tiff.Rational(0x9201, {{8, 1}}), tiff.Rational(0x920A, {{50, 1}}),
                                tiff.Short(0xA405, {75}),
                                tiff.Rational(0xA432, {{24, 1}, {70, 1}, {28, 10}, {4, 1}})};
  return Jpeg()
      .Exif(tiff.Build({tiff.Ascii(271, "Maker"), tiff.Rational(0x829D, {{56, 10}}),
                        tiff.Child(0x8769, exif), tiff.Rational(0x9215, {{400, 1}})}))
      .Frame(640, 480)
      .Build();
}

Bytes XmpOnly() {
  return Jpeg()
      .Xmp(test::XmpPacket("xmp:Rating=\"3\" xmp:CreateDate=\"2024-01-02\"", test::kXmpBasic))
      .Frame(64, 48)
      .Build();
}

}  // namespace

Seeds ContainerSeeds() {
  using test::kNote;
  return {
      {"full", Parsed(kFullMask, test::FullPhoto())},
      {"full-twice", Parsed(kFullMask | 0x40000000, test::FullPhoto())},
      {"full-open", Parsed(kOpenMask, test::FullPhoto())},
      {"full-no-merge", Parsed(kFullMask | PARSE_NO_MERGE, test::FullPhoto())},
      {"needs-merge-le", Parsed(kOpenMask, NeedsMerge(ByteOrder::LittleEndian))},
      {"needs-merge-be", Parsed(kBasicMask, NeedsMerge(ByteOrder::BigEndian))},
      {"maker-note", Parsed(kOpenMask, test::SamsungJpeg({test::kNoteBound, kNote.Long(0xA003, {2}),
                                                          kNote.Long(0x21, {1})}))},
      {"xmp", Parsed(CATEGORY_XMP, XmpOnly())},
      {"frame-only", Parsed(CATEGORY_BASICS, Jpeg().Frame(1, 1).Build())},
  };
}

}  // namespace fuzz
