#include "Samples.h"

#include <array>
#include <string>

#include "Exif.h"
#include "IccProfile.h"
#include "Iptc.h"
#include "JpegEncoder.h"
#include "PngEncoder.h"
#include "Scenes.h"
#include "Xmp.h"
#include "support/Jpeg.h"

namespace samples {
namespace {

using test::Bytes;
using test::Directory;
using test::Jpeg;
using test::Tiff;

constexpr int kQuality = 85;
constexpr int kThumbnailQuality = 75;
constexpr std::uint16_t kWidth = 320;
constexpr std::uint16_t kHeight = 240;
constexpr std::uint16_t kUpright = 1;

// Scenes are drawn at twice their size and halved, which smooths their edges.
Picture Lake(Light light) {
  return Halve(DrawLake(2 * kWidth, 2 * kHeight, light));
}
Picture Sphere(int width) {
  return Halve(DrawLake(2 * width, width, Light::Day));
}

Bytes Thumbnail(const Picture& picture) {
  return EncodePicture(Halve(picture), kThumbnailQuality);
}

Bytes Finish(Jpeg& file, const Picture& picture) {
  AppendPicture(file, picture, kQuality);
  return file.Build();
}

// IFD0 with an EXIF directory.
Directory Image(const Tiff& tiff, const Camera& camera, const Directory& exif) {
  Directory ifd0 = ImageTags(tiff, camera, kUpright);
  ifd0.push_back(tiff.Child(0x8769, exif));
  return ifd0;
}

Bytes Landscape() {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Picture picture = Lake(Light::Day);
  Directory exif = ExifTags(tiff, {}, kWidth, kHeight);
  exif.push_back(tiff.Child(0xA005, InteropTags(tiff)));
  Directory ifd0 = Image(tiff, {}, exif);
  ifd0.push_back(tiff.Child(0x8825, GpsTags(tiff)));
  Jpeg file;
  file.Exif(BlockWithThumbnail(tiff, ifd0, Thumbnail(picture))).Icc(DisplayProfile());
  return Finish(file, picture);
}

Bytes Portrait() {
  constexpr std::uint16_t kTurnedRight = 6;
  const Tiff tiff(ByteOrder::BigEndian);
  const Picture picture = TurnLeft(Halve(DrawPortrait(2 * kHeight, 2 * kWidth)));
  Directory ifd0 = ImageTags(tiff, {}, kTurnedRight);
  ifd0.push_back(tiff.Child(0x8769, ExifTags(tiff, {125, 28, 200}, kWidth, kHeight)));
  Jpeg file;
  file.Exif(BlockWithThumbnail(tiff, ifd0, Thumbnail(picture)));
  return Finish(file, picture);
}

constexpr std::uint16_t kSphereWidth = 512;

Bytes PanoramaWith(const std::string& packet) {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Directory exif = ExifTags(tiff, {500, 80, 100}, kSphereWidth, kSphereWidth / 2);
  Jpeg file;
  file.Exif(tiff.Build(Image(tiff, {}, exif))).Xmp(packet);
  return Finish(file, Sphere(kSphereWidth));
}

Bytes Panorama() {
  return PanoramaWith(PanoramaPacket(kSphereWidth));
}
Bytes RatedPanorama() {
  return PanoramaWith(RatedPanoramaPacket(kSphereWidth));
}

Bytes PngPanorama() {
  constexpr int kSmallWidth = 128;
  return EncodePng(Sphere(kSmallWidth), PanoramaPacket(kSmallWidth));
}

Bytes People() {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Directory exif = ExifTags(tiff, {200, 40, 100}, kWidth, kHeight);
  Jpeg file;
  file.Exif(tiff.Build(Image(tiff, {}, exif))).Xmp(PeoplePacket());
  return Finish(file, Halve(DrawPeople(2 * kWidth, 2 * kHeight)));
}

Bytes Keywords(const Bytes& datasets, Light light) {
  constexpr std::uint16_t kIptcResource = 0x0404;
  Jpeg file;
  file.Photoshop(test::PhotoshopResource(kIptcResource, datasets));
  return Finish(file, Lake(light));
}

Bytes KeywordsUtf8() {
  return Keywords(Utf8Datasets(), Light::Evening);
}
Bytes KeywordsLatin1() {
  return Keywords(Latin1Datasets(), Light::Winter);
}

Bytes MakerNote() {
  const Tiff tiff(ByteOrder::BigEndian);
  Directory exif = ExifTags(tiff, {60, 35, 400}, kWidth, kHeight);
  const auto afterFocalLength = exif.begin() + 11;
  exif.insert(afterFocalLength, tiff.Undefined(0x927C, SamsungMakerNote()));
  Jpeg file;
  file.Exif(tiff.Build(Image(tiff, {"SAMSUNG", "NX10"}, exif)));
  return Finish(file, Lake(Light::Evening));
}

// The EXIF directory has neither sensitivity nor exposure time nor F-number: the time stands in
// IFD0, the rest in XMP. The lens is described by its focal lengths and apertures.
Bytes NeedsMerge() {
  const Tiff tiff(ByteOrder::LittleEndian);
  const Directory exif = {
      tiff.Undefined(0x9000, test::Text("0232")),
      tiff.Undefined(0x9101, {1, 2, 3, 0}),
      tiff.Undefined(0xA000, test::Text("0100")),
      tiff.Short(0xA001, {1}),
      tiff.Short(0xA002, {kWidth}),
      tiff.Short(0xA003, {kHeight}),
      tiff.Short(0xA405, {75}),
      tiff.Rational(0xA432, {{24, 1}, {70, 1}, {28, 10}, {28, 10}}),
  };
  Directory ifd0 = ImageTags(tiff, {}, kUpright);
  ifd0.push_back(tiff.Rational(0x829A, {{1, 60}}));
  ifd0.push_back(tiff.Child(0x8769, exif));
  Jpeg file;
  file.Exif(tiff.Build(ifd0)).Xmp(ExposurePacket());
  return Finish(file, Lake(Light::Night));
}

constexpr std::array kSamples = {
    Sample{"keywords-latin1.jpg", KeywordsLatin1},
    Sample{"keywords-utf8.jpg", KeywordsUtf8},
    Sample{"landscape-le.jpg", Landscape},
    Sample{"maker-note.jpg", MakerNote},
    Sample{"needs-merge.jpg", NeedsMerge},
    Sample{"panorama-rated.jpg", RatedPanorama},
    Sample{"panorama.jpg", Panorama},
    Sample{"panorama.png", PngPanorama},
    Sample{"people.jpg", People},
    Sample{"portrait-be.jpg", Portrait},
};

}  // namespace

std::span<const Sample> AllSamples() {
  return kSamples;
}

}  // namespace samples
