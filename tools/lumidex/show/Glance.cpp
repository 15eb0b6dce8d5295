#include "show/Glance.h"

#include <array>

#include "Text.h"
#include "core/VxMetadataWrapper.h"
#include "names/Names.h"
#include "show/ValueText.h"
#include "values/Decoders.h"

namespace tool {
namespace {

constexpr std::uint32_t kMake = 0x010F;
constexpr std::uint32_t kModel = 0x0110;
constexpr std::uint32_t kOrientation = 0x0112;
constexpr std::uint32_t kDateTime = 0x0132;
constexpr std::uint32_t kDateTimeOriginal = 0x9003;

// What belongs to an exposure, in the order in which photographers say it.
constexpr std::array<std::uint32_t, 4> kExposureTags = {0x829A, 0x829D, 0x920A, 0x8827};

std::string TextAt(VxMetadata& store, std::int32_t block, std::uint32_t tag) {
  const TagMap& table = *store.m_fnGetBlock(block);
  const TagEntry* entry = table.Find(tag);
  return entry != nullptr && entry->m_nSize != 0 ? ValueText(block, *entry, table) : std::string();
}

void Append(std::string& line, const std::string& part) {
  if (!part.empty()) AppendPart(line, ", ", part);
}

// Most makers repeat their name in the model.
std::string Camera(VxMetadata& store) {
  const std::string make = TextAt(store, BLOCK_IFD0, kMake);
  const std::string model = TextAt(store, BLOCK_IFD0, kModel);
  const std::string word = make.substr(0, make.find(' '));
  if (make.empty() || (!word.empty() && model.starts_with(word))) return model;
  return model.empty() ? make : make + " " + model;
}

std::string ExposureLine(VxMetadata& store) {
  std::string line = Camera(store);
  const std::string taken = TextAt(store, BLOCK_EXIF, kDateTimeOriginal);
  Append(line, taken.empty() ? TextAt(store, BLOCK_IFD0, kDateTime) : taken);
  for (const std::uint32_t tag : kExposureTags) Append(line, TextAt(store, BLOCK_EXIF, tag));
  return line;
}

// How the photograph must be turned, if at all, without the code behind the words.
std::string Turn(VxMetadata& store) {
  const std::string text = TextAt(store, BLOCK_IFD0, kOrientation);
  const auto code = text.find(" (");
  const bool isUpright = code == std::string::npos || text.starts_with("upright");
  return isUpright ? std::string() : text.substr(0, code);
}

std::string ImageLine(const Photo& photo, VxMetadata& store) {
  std::string line = FileTypeName(photo.type);
  if (photo.type == FILETYPE_JPEG) {
    Append(line, std::to_string(store.m_nImageWidth) + " x " +
                     std::to_string(store.m_nImageHeight) + " pixels");
  }
  Append(line, Turn(store));
  if (photo.isPanorama) Append(line, "panorama");
  Append(line, Position(*store.m_fnGetBlock(BLOCK_GPS)));
  return line;
}

}  // namespace

std::vector<std::string> Glance(Photo& photo) {
  std::vector<std::string> lines;
  const std::string exposure = ExposureLine(photo.store);
  if (!exposure.empty()) lines.push_back(exposure);
  lines.push_back(ImageLine(photo, photo.store));
  if (photo.type == FILETYPE_PNG) {
    lines.push_back("A PNG is not parsed: a host gets its XMP packet and its panorama flag.");
  }
  return lines;
}

}  // namespace tool
