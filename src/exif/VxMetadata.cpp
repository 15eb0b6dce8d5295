#include "exif/VxMetadata.h"

#include <algorithm>
#include <new>
#include <string_view>

TagMap* VxMetadata::FindSubIfd(std::int32_t block) {
  if ((block & kSubIfdBlock) == 0) return nullptr;
  const auto found = m_mapSubIfd.find(block);
  return found == m_mapSubIfd.end() ? nullptr : &found->second;
}

TagMap::Iterator* VxMetadata::m_fnGetBlockCursor(std::int32_t block) {
  if (block < BLOCK_IFD0 || block > kBlockCount) return nullptr;
  return &m_blocks[block - 1].cursor;
}

const TagEntry* VxMetadata::FindEntry(std::int32_t block, std::uint32_t tag) {
  const TagMap* table = m_fnGetBlock(block);
  return table == nullptr ? nullptr : table->Find(tag);
}

HRESULT VxMetadata::m_fnGetTagEntry(std::int32_t block, std::uint32_t tag, TagEntry* out) {
  const TagMap* table = m_fnGetBlock(block);
  if (out == nullptr || table == nullptr) return E_POINTER;
  const TagEntry* entry = table->Find(tag);
  if (entry == nullptr) return S_FALSE;

  out->m_nTag = entry->m_nTag;
  out->m_nType = entry->m_nType;
  out->m_nCount = entry->m_nCount;
  if (out->m_pData == nullptr) {
    out->m_nSize = entry->m_nSize;
    return S_OK;
  }
  if (out->m_nSize < entry->m_nSize) return S_FALSE;
  const auto bytes = TagBytes(*entry);
  std::copy(bytes.begin(), bytes.end(), out->m_pData);
  return S_OK;
}

HRESULT VxMetadata::m_fnGetTagData(std::int32_t block, std::uint32_t tag, std::uint8_t* buffer,
                                   std::int32_t* size) {
  if (buffer == nullptr || size == nullptr) return E_POINTER;
  const TagEntry* entry = FindEntry(block, tag);
  if (entry == nullptr) return E_FAIL;
  const auto bytes = TagBytes(*entry);
  if (bytes.empty()) return E_FAIL;
  if (*size <= 0) return S_OK;

  const auto capacity = static_cast<std::size_t>(*size);
  if (capacity > bytes.size()) {
    std::copy(bytes.begin(), bytes.end(), buffer);
    *size = static_cast<std::int32_t>(bytes.size());
    return S_OK;
  }
  std::copy_n(bytes.begin(), capacity, buffer);
  buffer[capacity - 1] = 0;
  return S_OK;
}

HRESULT VxMetadata::m_fnGetTagString(std::int32_t block, std::uint32_t tag, std::string& out) {
  const TagEntry* entry = FindEntry(block, tag);
  if (entry == nullptr) return E_FAIL;
  const auto bytes = TagBytes(*entry);
  const std::string_view whole(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const std::size_t length = whole.find('\0');
  if (length == whole.npos) return E_FAIL;
  try {
    out.assign(whole, 0, length);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
  return S_OK;
}

HRESULT VxMetadata::m_fnGetTagShort(std::int32_t block, std::uint32_t tag, std::uint32_t* out) {
  if (out == nullptr) return E_POINTER;
  const TagEntry* entry = FindEntry(block, tag);
  if (entry == nullptr || TagBytes(*entry).empty()) return E_FAIL;
  *out = static_cast<std::uint32_t>(HostValue<std::int16_t>(TagBytes(*entry)));
  return S_OK;
}

HRESULT VxMetadata::m_fnGetThumbTagInteger(std::uint32_t tag, std::uint32_t* out) {
  if (out == nullptr) return E_POINTER;
  const TagEntry* entry = FindEntry(BLOCK_IFD1, tag);
  if (entry == nullptr) return E_FAIL;
  *out = TagInteger(*entry, 0);
  return *out == kNoInteger ? E_FAIL : S_OK;
}

HRESULT VxMetadata::m_fnGetThumbTagLong(std::uint32_t tag, std::uint32_t* out) {
  if (out == nullptr) return E_POINTER;
  const TagEntry* entry = FindEntry(BLOCK_IFD1, tag);
  if (entry == nullptr || TagBytes(*entry).empty()) return E_FAIL;
  *out = HostValue<std::uint32_t>(TagBytes(*entry));
  return S_OK;
}

void VxMetadata::m_fnReset() {
  for (FixedTable& block : m_blocks) {
    block.entries.Clear();
    block.cursor = block.entries.end();
  }
  m_mapSubIfd.clear();
  m_nodes.Clear();
  m_pThumbnail.reset();
  m_nThumbnailSize = 0;
  m_nThumbnailWidth = 0;
  m_nThumbnailHeight = 0;
  m_nThumbnailFormat = THUMBNAIL_JPEG;
  m_nTiffMagic = 0;
}
