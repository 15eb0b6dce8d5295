#include "show/Photo.h"

#include <array>

#include "Text.h"
#include "com/Lumidex.h"
#include "core/DebugLog.h"
#include "core/VxMetadataWrapper.h"

namespace tool {
namespace {

std::vector<std::string>* g_lines = nullptr;

// A line comes with one line feed at its end, which is not part of the message.
void CollectLine(const char* line) {
  std::string text = line;
  if (text.ends_with('\n')) text.pop_back();
  g_lines->push_back(CleanUtf8(text));
}

// Opens the debug log's gate and collects its lines for as long as it lives.
class LogCapture {
 public:
  explicit LogCapture(std::vector<std::string>& lines)
      : m_gate(g_bDebugLogEnabled), m_sink(SetDebugLogSink(CollectLine)) {
    g_lines = &lines;
    g_bDebugLogEnabled = 1;
    SetDebugLogPrefix("");
  }
  ~LogCapture() {
    g_bDebugLogEnabled = m_gate;
    SetDebugLogSink(m_sink);
    g_lines = nullptr;
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

 private:
  int m_gate;
  DebugLogSink m_sink;
};

struct BlockGroup {
  std::int32_t block;
  std::uint32_t group;
};

// The blocks whose values become records one by one, in the order of the records of one group.
// clang-format off
constexpr std::array<BlockGroup, kBlockCount> kBlockGroups = {{
    {BLOCK_IFD0,              CATEGORY_IFD0},
    {BLOCK_EXIF,              CATEGORY_EXIF},
    {BLOCK_GPS,               CATEGORY_GPS},
    {BLOCK_IFD1,              CATEGORY_IFD1},
    {BLOCK_IPTC,              CATEGORY_IPTC},
    {BLOCK_MAKERNOTE_SUMMARY, CATEGORY_MAKERNOTE_SUMMARY},
    {BLOCK_MAKERNOTE,         CATEGORY_MAKERNOTE},
    {BLOCK_ICC,               CATEGORY_ICC},
    {BLOCK_XMP,               CATEGORY_XMP},
    {BLOCK_XMP_REGIONS,       CATEGORY_XMP},
}};
// clang-format on

void ReadStore(Photo& photo, const WideString& path, std::uint32_t mask) {
  VxMetadataWrapper::Read(photo.store, path.c_str(), FILETYPE_JPEG, mask);
  photo.store.m_pFile.reset();
  photo.records = ExtractRecords(photo.store, mask);
}

}  // namespace

void ReadPhoto(Photo& photo, ILumidex& lumidex, const std::string& file, std::uint32_t mask,
               bool trace) {
  photo.file = CleanUtf8(file);
  const WideString path = PathOf(file);
  photo.type = lumidex.GetFileType(path.c_str());
  photo.result = lumidex.Open(path.c_str());
  std::uint32_t flag = 0;
  photo.isPanorama = SUCCEEDED(photo.result) && lumidex.IsPanorama(&flag) == S_OK && flag == 1;
  if (photo.type != FILETYPE_JPEG) return;
  if (!trace) return ReadStore(photo, path, mask);
  const LogCapture capture(photo.log);
  ReadStore(photo, path, mask);
}

WideString PathOf(const std::string& file) {
  return WideFromUtf8(file);
}

bool IsCut(const WideString& path) {
  return path.size() >= CLumidex::kPathCapacity;
}

std::map<std::int32_t, HandedKeys> FindHanded(VxMetadata& store, std::uint32_t mask) {
  std::map<std::int32_t, HandedKeys> handed;
  std::map<std::uint32_t, std::vector<std::uint32_t>> idsByGroup;
  for (const CInfoRecord& record : ExtractRecords(store, mask)) {
    idsByGroup[record.m_nGroup].push_back(record.m_nId);
  }
  // Records keep the order of the blocks and of the keys in them, so that one pass pairs them.
  std::map<std::uint32_t, std::size_t> next;
  for (const auto& [block, group] : kBlockGroups) {
    const std::vector<std::uint32_t>& ids = idsByGroup[group];
    for (const auto& [key, entry] : *store.m_fnGetBlock(block)) {
      std::size_t& position = next[group];
      if (position == ids.size() || ids[position] != entry.m_nTag) continue;
      handed[block].insert(key);
      ++position;
    }
  }
  return handed;
}

}  // namespace tool
