// Any bytes through the two locators of JPEG files and the packet reader.

#include <cstdint>

#include "LocatorChecks.h"
#include "container/ExifLocator.h"
#include "container/XmpLocators.h"

namespace {

using fuzz::Require;

void RequireExif(fuzz::View file, const fuzz::Place& place) {
  if (place.result != LMD_E_HAS_EXIF) return;
  Require(fuzz::HoldsAt(file, place.position, "\xFF\xE1"), "an EXIF segment has its marker");
  Require(fuzz::HoldsAt(file, place.position + 4, "Exif"), "an EXIF segment has its signature");
}

// A packet that was found lies behind the place at which it would be put.
void RequireXmp(fuzz::View file, const fuzz::Place& place) {
  if (place.result != LMD_E_XMP_FOUND) return;
  Require(place.position < file.size(), "the place of a packet lies in the file");
  std::uint64_t position = place.position;
  while (position < file.size() && !fuzz::HoldsAt(file, position, "http://ns.adobe.com/xap/1.0/")) {
    ++position;
  }
  Require(position < file.size(), "a packet that is found has its namespace");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::MemoryFiles files;
  static const WCHAR* const path = files.Add();
  static const WCHAR* const unusedPath = files.Add();

  const fuzz::RunChecks checks;
  const fuzz::View file(data, size);
  files.Put(path, file);

  const fuzz::Place exif = fuzz::PlaceOfJpegExif(file);
  fuzz::RequirePlace(path, exif, &LocateJpegExif);
  RequireExif(file, exif);

  const fuzz::Place xmp = fuzz::PlaceOfJpegXmp(file);
  fuzz::RequirePlace(path, xmp, [](FileStream& stream, std::uint64_t* position) {
    return LocateJpegXmp(&stream, position);
  });
  RequireXmp(file, xmp);
  fuzz::RequirePacketOf(path, unusedPath, file);
  return 0;
}
