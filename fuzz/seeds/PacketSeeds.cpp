// Images with and without packets, for the locators and for embedding.

#include <algorithm>

#include "Seeds.h"
#include "support/FullPhoto.h"
#include "support/Jpeg.h"
#include "support/Png.h"
#include "support/Tiff.h"
#include "support/XmpPacket.h"

namespace fuzz {
namespace {

using test::Bytes;
using test::Jpeg;
using test::Png;

constexpr std::string_view kPanorama = "<x>equirectangular</x>";
constexpr std::string_view kFlat = "<x>cylindrical</x>";

Bytes Tiny() {
  const test::Tiff tiff(ByteOrder::LittleEndian);
  return tiff.Build({tiff.Ascii(271, "Cam")});
}

Bytes Cut(Bytes bytes, std::size_t count) {
  bytes.resize(bytes.size() - std::min(count, bytes.size()));
  return bytes;
}

// An APP1 segment of neither kind whose payload begins as the namespace does.
Jpeg& OtherScheme(Jpeg&& jpeg) {
  return jpeg.Segment(0xE1, test::Text("http://example.org/another/one/"));
}

Bytes Embedded(std::uint8_t kind, std::string_view packet, const Bytes& image,
               std::uint8_t padding = 0) {
  return test::Join({{kind, padding},
                     test::U16(static_cast<std::uint16_t>(packet.size()), ByteOrder::LittleEndian),
                     test::Text(packet),
                     image});
}

}  // namespace

Seeds JpegLocatorSeeds() {
  return {
      {"plain", Jpeg().Frame(8, 8).Scan().Build()},
      {"exif", Jpeg().Exif(Tiny()).Frame(8, 8).Scan().Build()},
      {"xmp", Jpeg().Xmp(kFlat).Frame(8, 8).Build()},
      {"exif-xmp", Jpeg().Exif(Tiny()).Xmp(kPanorama).Build()},
      {"xmp-exif", Jpeg().Xmp(kPanorama).Exif(Tiny()).Build()},
      {"app0-exif-app2-xmp", Jpeg()
                                 .Segment(0xE0, test::Text("JFIF"))
                                 .Exif(Tiny())
                                 .Segment(0xE2, test::Zeros(3))
                                 .Xmp(kFlat)
                                 .Build()},
      {"two-exif", Jpeg().Exif(Tiny()).Exif(Tiny()).Scan().Build()},
      {"other-scheme", OtherScheme(Jpeg()).Xmp(kFlat).Build()},
      {"exif-past-end", Jpeg().SegmentOfLength(0xE1, 0xFFF0, test::Text("Exif")).Build()},
      {"length-0", Jpeg().SegmentOfLength(0xE1, 0, test::Text("Exif")).Build()},
      {"xmp-of-28",
       Jpeg().SegmentOfLength(0xE1, 28, test::Text("http://ns.adobe.com/xap/1.0/")).Build()},
      {"xmp-of-27",
       Jpeg().SegmentOfLength(0xE1, 27, test::Text("http://ns.adobe.com/xap/1.0/")).Build()},
      {"cut-marker", Cut(Jpeg().Exif(Tiny()).Build(), 1)},
      {"not-a-jpeg", test::Text("\x89PNG")},
  };
}

Seeds PngLocatorSeeds() {
  return {
      {"plain", Png().Header().End().Build()},
      {"panorama", Png().Header().Xmp(kPanorama).End().Build()},
      {"flat", Png().Header().Xmp(kFlat).End().Build()},
      {"flat-panorama", Png().Header().Xmp(kFlat).Xmp(kPanorama).End().Build()},
      {"behind-end", Png().Header().End().Xmp(kPanorama).Build()},
      {"compressed",
       Png()
           .Chunk("iTXt", test::XmpChunkData(kPanorama, "XML:com.adobe.xmp", {1, 0, 0, 0, 0}))
           .End()
           .Build()},
      {"word-behind-zero", Png().Header().Xmp({"flat\0equirectangular", 20}).End().Build()},
      {"empty-chunk", Png().Chunk("iTXt", test::XmpChunkData("")).End().Build()},
      {"no-end", Png().Header().Chunk("IDAT", test::Zeros(4)).Build()},
      {"cut-chunk",
       Png().Header().ChunkOfLength("iTXt", 0xFFFFFFFF, test::XmpChunkData(kPanorama)).Build()},
      {"wrapping-length", Png().Header().ChunkOfLength("IDAT", 0xFFFFFFF4, {}).Build()},
      {"cut-length", Cut(Png().Header().End().Build(), 9)},
      {"not-a-png", test::Text("\xFF\xD8")},
  };
}

Seeds EmbedXmpSeeds() {
  constexpr std::uint8_t kCopy = 7;
  constexpr std::uint8_t kInPlace = 6;
  constexpr std::uint8_t kLargest = 252;  // 65504 bytes
  const Bytes jpeg = Jpeg().Exif(Tiny()).Frame(8, 8).Scan().Build();
  const Bytes png = Png().Header().End().Build();
  Seeds seeds = {
      {"jpeg", Embedded(kCopy, kFlat, jpeg)},
      {"jpeg-without-exif", Embedded(kCopy, kFlat, Jpeg().Frame(8, 8).Build())},
      {"jpeg-with-xmp", Embedded(kCopy, kFlat, Jpeg().Xmp(kFlat).Build())},
      {"jpeg-empty-packet", Embedded(kCopy, "", jpeg)},
      {"jpeg-in-place", Embedded(kInPlace, kFlat, jpeg)},
      {"jpeg-exif-past-end",
       Embedded(kCopy, kFlat, Jpeg().SegmentOfLength(0xE1, 0xFFF0, test::Text("Exif")).Build())},
      {"png", Embedded(kCopy, kPanorama, png)},
      {"png-flat", Embedded(kCopy, kFlat, png)},
      {"png-with-panorama", Embedded(kCopy, kFlat, Png().Xmp(kPanorama).End().Build())},
      {"png-with-flat", Embedded(kCopy, kPanorama, Png().Xmp(kFlat).End().Build())},
      {"png-in-place", Embedded(kInPlace, kPanorama, png)},
      {"png-in-place-no-end", Embedded(kInPlace, kPanorama, Png().Header().Build())},
      {"png-in-place-two-ends",
       Embedded(kInPlace, kPanorama, Png().Header().End().Chunk("IDAT", {1}).End().Build())},
      {"tiff", Embedded(kCopy, kFlat, Tiny())},
  };
  for (std::uint8_t kind = 0; kind < 5; ++kind) {
    seeds["case-" + std::to_string(kind)] = Embedded(kind, kFlat, kind % 2 == 0 ? png : jpeg);
  }
  for (std::uint8_t more = 0; more < 3; ++more) {
    const auto padding = static_cast<std::uint8_t>(kLargest + more);
    seeds["jpeg-largest-" + std::to_string(more)] = Embedded(kCopy, kFlat, jpeg, padding);
    seeds["png-largest-" + std::to_string(more)] = Embedded(kCopy, kPanorama, png, padding);
  }
  return seeds;
}

}  // namespace fuzz
