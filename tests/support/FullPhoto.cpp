#include "support/FullPhoto.h"

#include "support/Jpeg.h"
#include "support/SamsungPhoto.h"

namespace test {
namespace {

constexpr std::string_view kPacket =
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
    "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
    "<rdf:Description xmlns:GPano=\"http://ns.google.com/photos/1.0/panorama/\" "
    "GPano:ProjectionType=\"equirectangular\">"
    "<r:PersonDisplayName>Ann</r:PersonDisplayName>"
    "<r:Rectangle>0.1, 0.2, 0.3, 0.4</r:Rectangle>"
    "<r:PersonTagType>Face</r:PersonTagType>"
    "</rdf:Description></rdf:RDF></x:xmpmeta>";

}  // namespace

Bytes FullPhoto() {
  const Tiff tiff(ByteOrder::BigEndian);
  const Bytes note = kNote.BuildDirectory({kNoteBound, kNote.Long(16, {7})}, 0);
  const Directory exif = {tiff.Ascii(36867, "2024:01:02 03:04:05"), tiff.Undefined(0x927C, note)};
  const Directory gps = {tiff.Byte(0, {2, 3, 0, 0})};
  const Directory ifd0 = {tiff.Ascii(271, "SAMSUNG"), tiff.Ascii(272, "NX10"),
                          tiff.Ascii(306, "2024:01:03 04:05:06"), tiff.Child(0x8769, exif),
                          tiff.Child(0x8825, gps)};
  const Directory ifd1 = {tiff.Short(0x0103, {6})};
  const Bytes city = Join({{0x1C, 2, 90, 0, 4}, Text("Oslo")});
  return Jpeg()
      .Exif(tiff.Build(ifd0, ifd1))
      .Xmp(kPacket)
      .Icc(Zeros(128))
      .Photoshop(PhotoshopResource(0x0404, city))
      .Frame(640, 480)
      .Scan()
      .Build();
}

}  // namespace test
