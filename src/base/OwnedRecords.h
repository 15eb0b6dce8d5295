#ifndef LUMIDEX_BASE_OWNEDRECORDS_H_
#define LUMIDEX_BASE_OWNEDRECORDS_H_

// Records and lists of the module's own: what hosts see of them is plain data; these free it.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <lumidex/ImageInfo.h>

#include "base/MemoryBlocks.h"

// Records with their values, to be read like any range.
class OwnedRecords {
 public:
  void Reserve(std::size_t count) { m_records.reserve(count); }

  // Adds a record with room for its value, which the caller fills. Null, and no record, when there
  // is no memory for the value.
  CInfoRecord* Add(std::uint32_t group, std::uint32_t id, std::uint32_t type, std::size_t size) {
    auto* const value = static_cast<std::uint8_t*>(m_values.Allocate(size));
    if (value == nullptr) return nullptr;
    return &m_records.emplace_back(
        CInfoRecord{group, id, type, static_cast<std::uint32_t>(size), value, 0});
  }

  bool empty() const noexcept { return m_records.empty(); }
  std::size_t size() const noexcept { return m_records.size(); }
  const CInfoRecord* data() const noexcept { return m_records.data(); }
  const CInfoRecord& operator[](std::size_t index) const { return m_records[index]; }
  auto begin() const noexcept { return m_records.begin(); }
  auto end() const noexcept { return m_records.end(); }

 private:
  friend struct OwnedRecordList;

  std::vector<CInfoRecord> m_records;
  MemoryBlocks m_values;
};

// A list that owns its records. Hosts find a table in front, as in an object with virtual
// operations; its one entry is the function that deletes the list.
struct OwnedRecordList final : public CMETADATA_INFO_LIST {
  OwnedRecordList() noexcept : CMETADATA_INFO_LIST{{&kTable, 1}, nullptr, 0} {}
  OwnedRecordList(const OwnedRecordList&) = delete;
  OwnedRecordList& operator=(const OwnedRecordList&) = delete;

  // Makes records those of an empty list. False when there is no memory for them: the list then has
  // their count alone.
  [[nodiscard]] bool Take(OwnedRecords records) noexcept {
    m_memory = std::move(records.m_values);
    m_nCount = static_cast<std::int32_t>(records.size());
    auto* const array = m_memory.Allocate(records.size() * sizeof(CInfoRecord));
    if (array == nullptr) return false;
    m_pRecords = static_cast<CInfoRecord*>(array);
    std::uninitialized_copy(records.begin(), records.end(), m_pRecords);
    return true;
  }

 private:
  using Destroy = void (*)(OwnedRecordList* list);
  static void DestroyList(OwnedRecordList* list) { delete list; }
  static constexpr Destroy kTable = DestroyList;

  MemoryBlocks m_memory;  // of the records and their values
};

#endif  // LUMIDEX_BASE_OWNEDRECORDS_H_
