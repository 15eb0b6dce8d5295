#include "faults/Inputs.h"

#include <string>

#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/SamsungPhoto.h"

namespace test {
namespace {

// More than two blocks of a copy, and so little that a copy is done at once.
constexpr std::size_t kLargeImage = 150000;
constexpr std::size_t kSmallImage = 1000;

// The first property is the longest, so that the records of all others follow.
constexpr std::string_view kPacket =
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
    "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
    "<rdf:Description xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" "
    "xmlns:aux=\"http://ns.adobe.com/exif/1.0/aux/\" "
    "xmlns:exif=\"http://ns.adobe.com/exif/1.0/\" "
    "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
    "xmlns:GPano=\"http://ns.google.com/photos/1.0/panorama/\" "
    "xmp:Rating=\"a rating whose text is longer than that of any other property here\" "
    "aux:Lens=\"Lens &amp; Hood 16-50mm of some length\" "
    "exif:ExposureBiasValue=\"-1/3\" exif:ApertureValue=\"497/100\" "
    "GPano:ProjectionType=\"equirectangular\" GPano:PoseHeadingDegrees=\"123.456789012\" "
    "GPano:PosePitchDegrees=\"-12.3456789012\" GPano:PoseRollDegrees=\"1.23456789012\">"
    "<exif:ISOSpeedRatings><rdf:Seq><rdf:li>400</rdf:li></rdf:Seq></exif:ISOSpeedRatings>"
    "<dc:rights><rdf:Alt><rdf:li>&lt;Ann &amp; Co&gt;, all rights</rdf:li></rdf:Alt></dc:rights>"
    "<r:PersonDisplayName>Ann Example of Oslo</r:PersonDisplayName>"
    "<r:Rectangle>0.1, 0.2, 0.3, 0.4</r:Rectangle>"
    "<r:PersonTagType>Face</r:PersonTagType>"
    "</rdf:Description></rdf:RDF></x:xmpmeta>";

Bytes IptcBlock() {
  return Join({{0x1C, 1, 90, 0, 3, 0x1B, 0x25, 0x47},
               {0x1C, 2, 0, 0, 2, 0, 4},
               Join({{0x1C, 2, 90, 0, 24}, Text("Oslo, the capital's name")}),
               Join({{0x1C, 2, 25, 0, 9}, Text("mountains")}),
               Join({{0x1C, 2, 25, 0, 10}, Text("snow-white")}),
               Join({{0x1C, 2, 120, 0, 20}, Text("A caption, with more")})});
}

// A thumbnail as a Photoshop resource holds it.
Bytes PhotoshopThumbnail() {
  const Bytes image = Jpeg().Frame(160, 120).Scan().Build();
  return Join(
      {U32(1), Zeros(16), U32(static_cast<std::uint32_t>(image.size())), U16(24), U16(1), image});
}

Bytes Resources() {
  return Join(
      {PhotoshopResource(0x0404, IptcBlock()), PhotoshopResource(0x040C, PhotoshopThumbnail())});
}

Bytes MakerNote() {
  return kNote.BuildDirectory(
      {kNoteBound, kNote.Long(16, {7}), NoteSRational(17, {{1, 2}, {3, 4}, {5, 8}}),
       NoteSLong(18, {1, -2, 3}), kNote.Byte(19, {1, 2, 3, 4, 5, 6}), NoteSLong(20, {9, 8, 7}),
       kNote.Byte(21, {6, 5, 4, 3, 2, 1}), kNote.Byte(0x21, {1}), kNote.Short(0xA003, {2})},
      0);
}

Bytes LeafRecord() {
  Bytes name = Text("ShootObj_back_type");
  name.resize(40);
  return Join({U32(0x504B5453), Zeros(4), name, U32(4), Text("11"), Zeros(2)});
}

Directory ExifDirectory(const Tiff& tiff) {
  const Directory interop = {tiff.Ascii(1, "R98"), tiff.Undefined(2, Text("0100"))};
  return {tiff.Rational(0x829B, {{1, 3}, {1, 3}, {1, 3}, {1, 3}}),
          tiff.Ascii(0x9003, "2024:01:02 03:04:05"),
          tiff.Rational(0x9201, {{8, 1}}),
          tiff.Rational(0x920A, {{50, 1}}),
          tiff.Undefined(0x927C, MakerNote()),
          tiff.Short(0xA001, {1}),
          tiff.Child(0xA005, interop),
          tiff.Short(0xA405, {75}),
          tiff.Rational(0xA432, {{16, 1}, {50, 1}, {35, 10}, {56, 10}})};
}

Bytes TiffBlock(bool withXmp) {
  const Tiff tiff(ByteOrder::BigEndian);
  const Directory gps = {tiff.Byte(0, {2, 3, 0, 0}), tiff.Ascii(1, "N"),
                         tiff.Rational(2, {{59, 1}, {54, 1}, {50, 1}})};
  const std::vector<Directory> subIfds = {{tiff.Short(256, {160}), tiff.Short(257, {120})},
                                          {tiff.Short(256, {80}), tiff.Ascii(270, "small one")}};
  Directory ifd0 = {tiff.Ascii(270, "A description that is longer than what stands behind it"),
                    tiff.Ascii(271, "SAMSUNG"),
                    tiff.Ascii(272, "NX10"),
                    tiff.Short(274, {6}),
                    tiff.Ascii(305, "Some software 1.2"),
                    tiff.Ascii(306, "2024:01:03 04:05:06"),
                    tiff.Children(0x014A, subIfds),
                    tiff.Undefined(0x83BB, IptcBlock()),
                    tiff.Undefined(0x8606, LeafRecord()),
                    tiff.Undefined(0x8649, Resources()),
                    tiff.Child(0x8769, ExifDirectory(tiff)),
                    tiff.Child(0x8825, gps)};
  if (withXmp) ifd0.push_back(tiff.Byte(0x02BC, Text(kPacket)));
  // The thumbnail's bytes are some of the block itself.
  const Directory ifd1 = {tiff.Short(0x0103, {6}), tiff.Long(0x0201, {8}), tiff.Long(0x0202, {99})};
  return tiff.Build(ifd0, ifd1);
}

Bytes Finish(Jpeg& jpeg, std::size_t imageSize) {
  return jpeg.Icc(Zeros(128))
      .Photoshop(Resources())
      .Frame(640, 480)
      .Scan()
      .Raw(Bytes(imageSize, 0x5A))
      .Build();
}

Png PngStart() {
  return Png().Header().Chunk("tEXt", Text("Comment")).Chunk("IDAT", Bytes(kLargeImage, 0x5A));
}

}  // namespace

Bytes RichPhoto() {
  return Finish(Jpeg().Exif(TiffBlock(true)).Xmp(kPacket), kSmallImage);
}

Bytes DistantPhoto() {
  Jpeg jpeg;
  for (int i = 0; i < 3; ++i) jpeg.Segment(0xE0, Zeros(32700));
  return Finish(jpeg.Exif(TiffBlock(true)).Xmp(kPacket), kSmallImage);
}

Bytes PhotoWithoutXmp() {
  return Finish(Jpeg().Segment(0xE0, Zeros(14)).Exif(TiffBlock(false)), kLargeImage);
}

Bytes PhotoWithEmptyXmp() {
  return Finish(Jpeg().Exif(TiffBlock(false)).Xmp("no packet"), kSmallImage);
}

// The packet stands a little before a window's middle, in a second window.
Bytes PhotoWithLargePacket() {
  Jpeg jpeg;
  for (int i = 0; i < 3; ++i) jpeg.Exif(Zeros(32694));
  return jpeg.Xmp(std::string(kPacket) + std::string(60000, ' ')).Frame(8, 8).Scan().Build();
}

Bytes PhotoWithStrayPacket() {
  Jpeg jpeg;
  for (int i = 0; i < 3; ++i) jpeg.Segment(0xE0, Zeros(32700));
  return jpeg.Xmp(kPacket).Frame(8, 8).Scan().Build();
}

Bytes PngWithLargePacket() {
  return PngStart().Xmp(std::string(kPacket) + std::string(60000, ' ')).End().Build();
}

Bytes PanoramaPng() {
  return PngStart().Xmp("no panorama").Xmp(kPacket).End().Build();
}

Bytes PlainPng() {
  return PngStart().Xmp("no panorama").End().Build();
}

Bytes PacketFile() {
  return Join({Text(kPacket), Bytes(30000, ' ')});
}

Records RichRecords() {
  Records records;
  records.Ascii(2, 271, "Maker")
      .Ascii(2, 272, "Model")
      .Integers(2, 274, {6})
      .Rationals(4, 0x829A, {{1, 250}})
      .Integers(4, 0x8827, {400})
      .Ascii(4, 0x9003, "2024:01:02 03:04:05")
      .Rationals(8, 2, {{59, 1}, {54, 1}, {50, 1}})
      .Ascii(16, 16, "Oslo")
      .Raw(64, 0xAB09, LMD_RECORD_WIDE_TEXT, WideBytes(LMD_W("text")))
      .Raw(64, 0xAA01, LMD_RECORD_WIDE_TEXT, WideBytes(LMD_W("text")));
  return records;
}

}  // namespace test
