#include "WriterModel.h"

#include <algorithm>

#include "FuzzChecks.h"
#include "writer/AcceptedTags.h"

namespace fuzz {
namespace {

using Data = std::span<const std::uint8_t>;

constexpr std::uint32_t kIfd0Group = 2;
constexpr std::uint32_t kExifGroup = 4;
constexpr std::uint32_t kGpsGroup = 8;
constexpr std::uint32_t kExifPointer = 0x8769;
constexpr std::uint32_t kGpsPointer = 0x8825;

// That a store keeps of one tag.
constexpr std::size_t kMostValues = 1024;

// The type written for a record, or 0 when it is dropped.
std::uint32_t TypeWritten(const CInfoRecord& record) {
  for (const test::AcceptedTags& row : test::AllAcceptedTags()) {
    if (row.group != record.m_nGroup) continue;
    if (std::ranges::find(row.tags, record.m_nId) != row.tags.end()) return row.type;
  }
  return 0;
}

std::size_t EntriesSize(std::size_t entries) {
  return 6 + 12 * entries;
}

void RequireEntry(const TagEntry* entry, std::uint32_t type, std::uint32_t count, Data bytes) {
  Require(entry != nullptr, "an accepted record is read back");
  Require(entry->m_nType == type, "it has the type that is written for its tag");
  Require(entry->m_nCount == count, "it has all its values");
  Require(std::ranges::equal(TagBytes(*entry), bytes), "its bytes are those of the record");
}

}  // namespace

// Integers of a record have 32 bits each; of those written as 16 bits the low half counts.
WriterModel::Value WriterModel::ValueOf(std::uint32_t type, Data record) {
  const bool isShort = type == TYPE_SHORT || type == TYPE_SSHORT;
  const std::size_t unit = isShort ? 4 : TypeSize(type);
  const std::size_t count = record.size() / unit;
  const std::size_t kept = std::min(count, kMostValues);
  Value value;
  value.type = type;
  value.count = static_cast<std::uint32_t>(kept);
  value.written = count * TypeSize(type);
  for (std::size_t i = 0; i < kept * unit; ++i) {
    if (!isShort || i % 4 < 2) value.bytes.push_back(record[i]);
  }
  if (type == TYPE_ASCII && kept != 0 && value.bytes.back() != 0) value.bytes.push_back(0);
  return value;
}

void WriterModel::Accept(const CInfoRecord& record) {
  if (record.m_nSize == 0 || record.m_pData == nullptr) return;
  if (record.m_nGroup == kIfd0Group && record.m_nId == kExifPointer) m_hasExifPointer = true;
  if (record.m_nGroup == kIfd0Group && record.m_nId == kGpsPointer) m_hasGpsPointer = true;
  const std::uint32_t type = TypeWritten(record);
  if (type == 0) return;
  Value value = ValueOf(type, {record.m_pData, record.m_nSize});
  if (value.count != 0) m_directories[record.m_nGroup][record.m_nId] = std::move(value);
}

WriterModel::WriterModel(std::span<const CInfoRecord> records, std::size_t thumbnailSize) {
  for (const CInfoRecord& record : records) Accept(record);
  m_hasExifPointer = m_hasExifPointer || m_directories.contains(kExifGroup);
  m_hasGpsPointer = m_hasGpsPointer || m_directories.contains(kGpsGroup);
  if (m_directories.empty() && !m_hasExifPointer && !m_hasGpsPointer) return;

  constexpr std::size_t kHeaderSize = 8;
  const std::size_t pointers = std::size_t{m_hasExifPointer} + std::size_t{m_hasGpsPointer};
  m_blockSize = kHeaderSize + 12 * pointers;
  static_cast<void>(m_directories[kIfd0Group]);
  for (const auto& [group, directory] : m_directories) {
    m_blockSize += EntriesSize(directory.size());
    for (const auto& [tag, value] : directory) m_blockSize += value.written > 4 ? value.written : 0;
  }
  constexpr std::size_t kResolutions = 16;
  if (thumbnailSize != 0) m_blockSize += EntriesSize(6) + kResolutions + thumbnailSize;
}

void WriterModel::RequireReadBack(VxMetadata& store, Data thumbnail) const {
  constexpr std::pair<std::uint32_t, std::int32_t> kTables[] = {
      {kIfd0Group, BLOCK_IFD0}, {kExifGroup, BLOCK_EXIF}, {kGpsGroup, BLOCK_GPS}};
  for (const auto& [group, block] : kTables) {
    const TagMap& table = *store.m_fnGetBlock(block);
    const auto found = m_directories.find(group);
    Require(table.Count() == (found == m_directories.end() ? 0 : found->second.size()),
            "nothing but the accepted records is written");
    if (found == m_directories.end()) continue;
    for (const auto& [tag, value] : found->second) {
      RequireEntry(table.Find(tag), value.type, value.count, value.bytes);
    }
  }
  const bool hasThumbnail = m_blockSize != 0 && !thumbnail.empty();
  Require(store.m_fnGetBlock(BLOCK_IFD1)->Count() == (hasThumbnail ? 6U : 0U),
          "the thumbnail has its directory");
  Require(store.m_nThumbnailSize == (hasThumbnail ? thumbnail.size() : 0),
          "the thumbnail has its size");
  Require(!hasThumbnail || std::equal(thumbnail.begin(), thumbnail.end(), store.m_pThumbnail.get()),
          "the thumbnail is read back");
}

}  // namespace fuzz
