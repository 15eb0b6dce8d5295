#ifndef LUMIDEX_BASE_TAGMAP_H_
#define LUMIDEX_BASE_TAGMAP_H_

// An ordered table of stored values: ascending by unsigned key, one entry a key, the last value
// written wins. The entries and their values lie in a pool that tables share. References to entries
// stay valid until Clear().
//
// The order is kept in runs of a few keys. Directories mostly ascend, so that a new key goes to the
// end of the last run; one that comes late moves the keys of its run, never all of them.

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "base/NodePool.h"
#include "base/TagEntry.h"

class TagMap {
 private:
  struct Run;

 public:
  // An entry under its key.
  struct Node {
    explicit Node(std::uint32_t key) noexcept : first(key) {}

    const std::uint32_t first;
    TagEntry second;
  };

  // Walks up the keys; end() is the same for all tables.
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = const Node;
    using difference_type = std::ptrdiff_t;
    using pointer = const Node*;
    using reference = const Node&;

    Iterator() = default;
    reference operator*() const noexcept { return *m_run->nodes[m_place]; }
    pointer operator->() const noexcept { return m_run->nodes[m_place]; }
    Iterator& operator++() noexcept {
      if (++m_place == m_run->count) *this = Iterator(m_run->next);
      return *this;
    }
    Iterator operator++(int) noexcept {
      const Iterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const Iterator&) const = default;

   private:
    friend class TagMap;
    explicit Iterator(const Run* run) noexcept : m_run(run) {}

    const Run* m_run = nullptr;  // null at the end
    std::size_t m_place = 0;
  };

  // The pool outlives the table, or is cleared after it.
  explicit TagMap(NodePool& pool) noexcept : m_pool(pool), m_runs(NodeAllocator<Run*>(pool)) {}
  TagMap(const TagMap&) = delete;
  TagMap& operator=(const TagMap&) = delete;

  // The entry under a key; an entry of zeros is inserted when there is none. Throws std::bad_alloc.
  TagEntry& FindOrInsert(std::uint32_t key) {
    return key >= m_nextKey ? Append(key) : FindOrInsertInside(key);
  }

  // The entry under a key, or null.
  const TagEntry* Find(std::uint32_t key) const noexcept {
    return key >= m_nextKey ? nullptr : FindInside(key);
  }

  bool Contains(std::uint32_t key) const noexcept { return Find(key) != nullptr; }
  bool IsEmpty() const noexcept { return m_runs.empty(); }
  std::size_t Count() const noexcept { return m_count; }

  Iterator begin() const noexcept { return IsEmpty() ? end() : Iterator(m_runs.front()); }
  Iterator end() const noexcept { return {}; }

  // Forgets the entries, whose memory stays with the pool.
  void Clear() noexcept;

 private:
  // Nodes in ascending order, at least one.
  struct Run {
    static constexpr std::size_t kCapacity = 16;
    static constexpr std::uint32_t kNoKey = 0xFFFFFFFF;  // less than none

    Run() noexcept { keys.fill(kNoKey); }

    bool IsFull() const noexcept { return count == kCapacity; }
    std::uint32_t LastKey() const noexcept { return keys[count - 1]; }

    // The place of the first key that is not less; the count when there is none.
    std::size_t PlaceOf(std::uint32_t key) const noexcept;

    // For both there must be room.
    void Append(Node& node) noexcept {
      keys[count] = node.first;
      nodes[count] = &node;
      ++count;
    }
    void Insert(std::size_t place, Node& node) noexcept;

    // Moves the upper half of the nodes to an empty run.
    void Split(Run& upper) noexcept;

    Run* next = nullptr;
    std::size_t count = 0;
    std::array<std::uint32_t, kCapacity> keys;
    std::array<Node*, kCapacity> nodes;
  };

  template <class T, class... Arguments>
  T& Make(Arguments&&... arguments) {
    return *::new (m_pool.Allocate(sizeof(T))) T(std::forward<Arguments>(arguments)...);
  }

  using Runs = std::vector<Run*, NodeAllocator<Run*>>;

  // The key lies behind all others.
  TagEntry& Append(std::uint32_t key) {
    Node& node = Make<Node>(key);
    if (IsEmpty() || m_runs.back()->IsFull()) AddRun(m_runs.size());
    m_runs.back()->Append(node);
    m_nextKey = std::uint64_t{key} + 1;
    ++m_count;
    return node.second;
  }
  const TagEntry* FindInside(std::uint32_t key) const noexcept;
  TagEntry& FindOrInsertInside(std::uint32_t key);
  Run& AddRun(std::size_t number);
  std::size_t NumberOf(std::uint32_t key) const noexcept;
  Run& RunOf(std::uint32_t key) const noexcept { return *m_runs[NumberOf(key)]; }

  NodePool& m_pool;
  Runs m_runs;                  // each is linked to the next as well
  std::uint64_t m_nextKey = 0;  // behind the last key; 0 without any
  std::size_t m_count = 0;
};

#endif  // LUMIDEX_BASE_TAGMAP_H_
