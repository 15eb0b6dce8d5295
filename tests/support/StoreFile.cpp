#include "support/StoreFile.h"

#include <ostream>
#include <stdexcept>

namespace test {

StoreFile::StoreFile(const Bytes& bytes, std::uint32_t flags) : m_file(bytes) {
  m_store.m_nParseFlags = flags;
  if (!m_store.m_pFile.emplace().Open(m_file.Path(), LMD_W("rb"))) {
    throw std::runtime_error("cannot open a test file");
  }
}

// The file is closed before it is removed.
StoreFile::~StoreFile() {
  m_store.m_pFile.reset();
}

std::optional<Stored> Find(VxMetadata& store, std::int32_t block, std::uint32_t key) {
  const TagMap* table = store.m_fnGetBlock(block);
  const TagEntry* entry = table == nullptr ? nullptr : table->Find(key);
  if (entry == nullptr) return std::nullopt;
  if (entry->m_nSize != TagBytes(*entry).size()) throw std::runtime_error("an entry without data");
  return Stored{entry->m_nTag, entry->m_nType, entry->m_nCount, Hex(TagBytes(*entry))};
}

std::vector<std::uint32_t> Keys(VxMetadata& store, std::int32_t block) {
  std::vector<std::uint32_t> keys;
  const TagMap* table = store.m_fnGetBlock(block);
  if (table == nullptr) return keys;
  for (const auto& [key, entry] : *table) keys.push_back(key);
  return keys;
}

void PrintTo(const Stored& stored, std::ostream* stream) {
  *stream << "tag " << stored.tag << " type " << stored.type << " count " << stored.count << " "
          << stored.hex;
}

std::string ThumbnailHex(VxMetadata& store) {
  if (store.m_pThumbnail == nullptr) return "none";
  return Hex({store.m_pThumbnail.get(), store.m_nThumbnailSize});
}

}  // namespace test
