#ifndef LUMIDEX_BASE_OWNEDRECORDS_H_
#define LUMIDEX_BASE_OWNEDRECORDS_H_

// Records and lists of the module's own: what hosts see of them is plain data; these free it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include <lumidex/ImageInfo.h>

// The bytes of records that live and die together. Most values are a few bytes, so that they stand
// in common blocks.
class RecordValues {
 public:
  RecordValues() = default;
  RecordValues(RecordValues&& other) noexcept { Swap(other); }
  RecordValues& operator=(RecordValues&& other) noexcept {
    Swap(other);
    return *this;
  }
  ~RecordValues() {
    while (m_blocks != nullptr) delete[] std::exchange(m_blocks, m_blocks->next)->Memory();
  }

  // Room for a value, aligned for any type that it may have; null when there is no memory.
  [[nodiscard]] std::uint8_t* Allocate(std::size_t size) noexcept {
    const std::size_t rounded = (size / kAlignment + 1) * kAlignment;
    if (rounded > m_free.size()) return AllocateBeyond(rounded);
    return TakeFree(rounded);
  }

 private:
  static constexpr std::size_t kAlignment = alignof(double);
  static constexpr std::size_t kFirstBlock = 1000;  // with its head still small for a heap
  static constexpr std::size_t kLargestBlock = 64U * 1024;

  // Stands in front of the bytes of a block.
  struct Block {
    std::byte* Memory() noexcept { return reinterpret_cast<std::byte*>(this); }

    Block* next;
  };
  static_assert(sizeof(Block) % kAlignment == 0);

  std::uint8_t* TakeFree(std::size_t size) noexcept {
    std::uint8_t* const value = m_free.data();
    m_free = m_free.subspan(size);
    return value;
  }

  // A large value gets a block of its own, and the block in use stays in use: of each at least half
  // is used.
  std::uint8_t* AllocateBeyond(std::size_t size) noexcept {
    if (size > m_nextBlock / 2) return AddBlock(size).data();
    m_free = AddBlock(m_nextBlock);
    if (m_free.empty()) return nullptr;
    m_nextBlock = std::min(2 * m_nextBlock, kLargestBlock);
    return TakeFree(size);
  }

  std::span<std::uint8_t> AddBlock(std::size_t size) noexcept {
    auto* const memory = new (std::nothrow) std::byte[sizeof(Block) + size];
    if (memory == nullptr) return {};
    m_blocks = new (memory) Block{m_blocks};
    return {reinterpret_cast<std::uint8_t*>(memory + sizeof(Block)), size};
  }

  void Swap(RecordValues& other) noexcept {
    std::swap(m_blocks, other.m_blocks);
    std::swap(m_free, other.m_free);
    std::swap(m_nextBlock, other.m_nextBlock);
  }

  Block* m_blocks = nullptr;
  std::span<std::uint8_t> m_free;  // of the block in use
  std::size_t m_nextBlock = kFirstBlock;
};

// Records with their values, to be read like any range.
class OwnedRecords {
 public:
  void Reserve(std::size_t count) { m_records.reserve(count); }

  // Adds a record with room for its value, which the caller fills. Null, and no record, when there
  // is no memory for the value.
  CInfoRecord* Add(std::uint32_t group, std::uint32_t id, std::uint32_t type, std::size_t size) {
    std::uint8_t* const value = m_values.Allocate(size);
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
  RecordValues m_values;
};

// A list that owns its records. Hosts find a table in front, as in an object with virtual
// operations; its one entry is the function that deletes the list.
struct OwnedRecordList final : public CMETADATA_INFO_LIST {
  OwnedRecordList() noexcept : CMETADATA_INFO_LIST{{&kTable, 1}, nullptr, 0} {}
  OwnedRecordList(const OwnedRecordList&) = delete;
  OwnedRecordList& operator=(const OwnedRecordList&) = delete;
  ~OwnedRecordList() { delete[] m_pRecords; }

  // Makes records those of an empty list. False when there is no memory for them: the list then has
  // their count alone.
  [[nodiscard]] bool Take(OwnedRecords records) noexcept {
    m_nCount = static_cast<std::int32_t>(records.size());
    m_pRecords = new (std::nothrow) CInfoRecord[records.size()];
    if (m_pRecords == nullptr) return false;
    std::ranges::copy(records, m_pRecords);
    m_values = std::move(records.m_values);
    return true;
  }

 private:
  using Destroy = void (*)(OwnedRecordList* list);
  static void DestroyList(OwnedRecordList* list) { delete list; }
  static constexpr Destroy kTable = DestroyList;

  RecordValues m_values;
};

#endif  // LUMIDEX_BASE_OWNEDRECORDS_H_
