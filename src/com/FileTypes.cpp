#include "com/FileTypes.h"

#include <algorithm>
#include <array>
#include <string_view>

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

}  // namespace

FileType TypeOf(std::span<const std::uint8_t> start) {
  if (start.size() < kTypeBytes) return FILETYPE_UNKNOWN;
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
