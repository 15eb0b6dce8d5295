// Any bytes through the locator of PNG files and the packet reader.

#include <cstdint>

#include "LocatorChecks.h"
#include "container/XmpLocators.h"

namespace {

using fuzz::Require;

void RequireXmp(fuzz::View file, const fuzz::Place& place) {
  if (place.result != LMD_E_XMP_FOUND) return;
  constexpr std::string_view kStart("iTXtXML:com.adobe.xmp\0\0\0\0\0", 26);
  Require(fuzz::HoldsAt(file, place.position + 4, kStart), "a packet that is found has its chunk");
  Require(fuzz::NamesPanorama(file.subspan(place.position + 30)),
          "a packet that is found names a panorama");
}

void RequireNone(fuzz::View file, const fuzz::Place& place) {
  if (place.result != S_OK) return;
  Require(place.position + 8 > file.size() || fuzz::HoldsAt(file, place.position + 4, "IEND"),
          "the walk ends at the end chunk or where no chunk has room");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::MemoryFiles files;
  static const WCHAR* const path = files.Add();
  static const WCHAR* const unusedPath = files.Add();

  const fuzz::RunChecks checks;
  const fuzz::View file(data, size);
  files.Put(path, file);

  const fuzz::Place place = fuzz::PlaceOfPngXmp(file);
  fuzz::RequirePlace(path, place, [](FileStream& stream, std::uint64_t* position) {
    return LocatePngXmp(&stream, position);
  });
  RequireXmp(file, place);
  RequireNone(file, place);
  fuzz::RequirePacketOf(path, unusedPath, file);
  return 0;
}
