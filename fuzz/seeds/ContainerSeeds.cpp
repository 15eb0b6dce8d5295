// Whole photographs behind the category mask of their parse.

#include "Exif.h"
#include "IccProfile.h"
#include "Iptc.h"
#include "Seeds.h"
#include "Xmp.h"
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

// A JPEG thumbnail in IFD1, an interoperability directory, positions.
Bytes CameraPhoto(ByteOrder order) {
  const Tiff tiff(order);
  test::Directory exif = samples::ExifTags(tiff, {}, 640, 480);
  exif.push_back(tiff.Child(0xA005, samples::InteropTags(tiff)));
  test::Directory ifd0 = samples::ImageTags(tiff, {}, 6);
  ifd0.push_back(tiff.Child(0x8769, exif));
  ifd0.push_back(tiff.Child(0x8825, samples::GpsTags(tiff)));
  const Bytes thumbnail = Jpeg().Frame(16, 12).Scan().Build();
  return Jpeg().Exif(samples::BlockWithThumbnail(tiff, ifd0, thumbnail)).Frame(640, 480).Build();
}

// What editors add: datasets, a thumbnail among the resources, a profile, keywords and regions.
Bytes EditedPhoto() {
  const Bytes thumbnail = Jpeg().Frame(2, 1).Scan().Build();
  const auto size = static_cast<std::uint32_t>(thumbnail.size());
  const Bytes fields = test::Join({test::U32(1), test::U32(2), test::U32(1), test::U32(8),
                                   test::U32(8), test::U32(size), test::U16(24), test::U16(1)});
  const Bytes resources =
      test::Join({test::PhotoshopResource(0x0404, samples::Utf8Datasets()),
                  test::PhotoshopResource(0x040C, test::Join({fields, thumbnail}))});
  return Jpeg()
      .Xmp(
          "<x:xmpmeta xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><rdf:RDF><rdf:Description>"
          "<dc:subject><rdf:Bag><rdf:li>a</rdf:li><rdf:li>b</rdf:li></rdf:Bag></dc:subject>"
          "</rdf:Description></rdf:RDF></x:xmpmeta>")
      .Xmp(samples::PeoplePacket())
      .Icc(samples::DisplayProfile())
      .Photoshop(resources)
      .Frame(640, 480)
      .Build();
}

// Exposure and lens in XMP alone.
Bytes ExposureInXmp() {
  return Jpeg().Xmp(samples::ExposurePacket()).Frame(640, 480).Build();
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
      {"camera-le", Parsed(kFullMask, CameraPhoto(ByteOrder::LittleEndian))},
      {"camera-be", Parsed(kFullMask, CameraPhoto(ByteOrder::BigEndian))},
      {"edited", Parsed(kFullMask, EditedPhoto())},
      {"exposure-xmp", Parsed(kOpenMask, ExposureInXmp())},
      {"xmp", Parsed(CATEGORY_XMP, XmpOnly())},
      {"frame-only", Parsed(CATEGORY_BASICS, Jpeg().Frame(1, 1).Build())},
  };
}

}  // namespace fuzz
