#include "com/FileTypes.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "exif/JpegMarkers.h"

namespace {

struct FileSignature {
  std::string_view bytes;
  FileType type;
};

// In the order in which they are tried.
// clang-format off
constexpr std::array kFileSignatures = {
    FileSignature{{"II\x2A\x00", 4},            FILETYPE_TIFF},
    FileSignature{{"MM\x00\x2A", 4},            FILETYPE_TIFF},
    FileSignature{{"\x89PNG\x0D\x0A\x1A\x0A", 8}, FILETYPE_PNG},
    FileSignature{{"\xFF\xD8", 2},              FILETYPE_JPEG},
};
// clang-format on

constexpr std::array<WideStringView, 5> kJpegExtensions = {
    LMD_W(".JPG"), LMD_W(".JPEG"), LMD_W(".JPE"), LMD_W(".JFIF"), LMD_W(".JIF")};

WCHAR ToUpper(WCHAR unit) {
  constexpr int kToUpper = LMD_W('A') - LMD_W('a');
  const bool isLower = unit >= LMD_W('a') && unit <= LMD_W('z');
  return isLower ? static_cast<WCHAR>(unit + kToUpper) : unit;
}

// Each of the extensions has one dot, so that a path that ends with one of them has it.
bool HasJpegExtension(WideStringView path) {
  return std::ranges::any_of(kJpegExtensions, [path](WideStringView extension) {
    if (path.size() < extension.size()) return false;
    const WideStringView end = path.substr(path.size() - extension.size());
    return std::ranges::equal(end, extension, {}, ToUpper);
  });
}

}  // namespace

FileType TypeOf(const WCHAR* path, std::span<const std::uint8_t> start) {
  if (start.size() < kTypeBytes) return FILETYPE_UNKNOWN;
  if (start[0] == kMarkerPrefix && HasJpegExtension(path)) {
    return start[1] == kSoiMarker ? FILETYPE_JPEG : FILETYPE_UNKNOWN;
  }
  for (const FileSignature& known : kFileSignatures) {
    const auto matches = [](char expected, std::uint8_t actual) {
      return static_cast<std::uint8_t>(expected) == actual;
    };
    if (std::equal(known.bytes.begin(), known.bytes.end(), start.begin(), matches)) {
      return known.type;
    }
  }
  return FILETYPE_UNKNOWN;
}
