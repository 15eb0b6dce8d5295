#ifndef LUMIDEX_BASE_TAGMAP_H_
#define LUMIDEX_BASE_TAGMAP_H_

// An ordered table of stored values: ascending by unsigned key, one entry a key, the last value
// written wins. It owns the bytes of its entries. References to entries stay valid until Clear().

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <utility>

#include "base/NodePool.h"
#include "base/TagEntry.h"

class TagMap {
 public:
  using Container = std::map<std::uint32_t, TagEntry, std::less<>,
                             NodeAllocator<std::pair<const std::uint32_t, TagEntry>>>;
  using Iterator = Container::const_iterator;

  TagMap() = default;
  ~TagMap() { Clear(); }
  TagMap(const TagMap&) = delete;
  TagMap& operator=(const TagMap&) = delete;

  // The entry under a key; an entry of zeros is inserted when there is none.
  // Keys mostly come in ascending order.
  TagEntry& FindOrInsert(std::uint32_t key) {
    return m_entries.try_emplace(m_entries.end(), key)->second;
  }

  // The entry under a key, or null.
  const TagEntry* Find(std::uint32_t key) const noexcept {
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : &found->second;
  }

  bool Contains(std::uint32_t key) const noexcept { return m_entries.contains(key); }
  bool IsEmpty() const noexcept { return m_entries.empty(); }
  std::size_t Count() const noexcept { return m_entries.size(); }

  Iterator begin() const noexcept { return m_entries.begin(); }
  Iterator end() const noexcept { return m_entries.end(); }

  void Clear() noexcept {
    for (auto& [key, entry] : m_entries) FreeTagData(entry);
    m_entries.clear();
    m_nodes.Clear();
  }

 private:
  NodePool m_nodes;
  Container m_entries{NodeAllocator<Container::value_type>(m_nodes)};
};

#endif  // LUMIDEX_BASE_TAGMAP_H_
