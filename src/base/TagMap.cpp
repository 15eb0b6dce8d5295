#include "base/TagMap.h"

#include <algorithm>
#include <type_traits>
#include <utility>

// Nodes and runs go with the pool.
static_assert(std::is_trivially_destructible_v<TagMap::Node>);

// All keys are compared, also the free ones behind the last: no branch depends on a photograph.
std::size_t TagMap::Run::PlaceOf(std::uint32_t key) const noexcept {
  std::uint32_t place = 0;
  for (const std::uint32_t one : keys) place += one < key ? 1 : 0;
  return place;
}

void TagMap::Run::Insert(std::size_t place, Node& node) noexcept {
  const auto open = [this, place](auto& column) {
    const auto begin = column.begin();
    std::copy_backward(begin + place, begin + count, begin + count + 1);
  };
  open(keys);
  open(nodes);
  keys[place] = node.first;
  nodes[place] = &node;
  ++count;
}

void TagMap::Run::Split(Run& upper) noexcept {
  constexpr std::size_t kHalf = kCapacity / 2;
  std::copy(keys.begin() + kHalf, keys.end(), upper.keys.begin());
  std::copy(nodes.begin() + kHalf, nodes.end(), upper.nodes.begin());
  upper.count = kCapacity - kHalf;
  count = kHalf;
  std::fill(keys.begin() + kHalf, keys.end(), kNoKey);
}

// There is a key that is not less.
const TagEntry* TagMap::FindInside(std::uint32_t key) const noexcept {
  const Run& run = RunOf(key);
  const std::size_t place = run.PlaceOf(key);
  return run.keys[place] == key ? &run.nodes[place]->second : nullptr;
}

void TagMap::Clear() noexcept {
  m_runs = Runs(m_runs.get_allocator());
  m_nextKey = 0;
  m_count = 0;
}

TagEntry& TagMap::FindOrInsertInside(std::uint32_t key) {
  Run* run = &RunOf(key);
  std::size_t place = run->PlaceOf(key);
  if (run->keys[place] == key) return run->nodes[place]->second;

  Node& node = Make<Node>(key);
  if (run->IsFull()) {
    run->Split(AddRun(NumberOf(key) + 1));
    run = &RunOf(key);
    place = run->PlaceOf(key);
  }
  run->Insert(place, node);
  ++m_count;
  return node.second;
}

// A new run, which the caller fills at once.
TagMap::Run& TagMap::AddRun(std::size_t number) {
  constexpr std::size_t kUsualRuns = 4;
  Run& run = Make<Run>();
  if (IsEmpty()) m_runs.reserve(kUsualRuns);
  m_runs.insert(m_runs.begin() + static_cast<std::ptrdiff_t>(number), &run);
  if (number > 0) run.next = std::exchange(m_runs[number - 1]->next, &run);
  return run;
}

// The number of the first run whose last key is not less; there is one. How often the runs are
// halved depends on their number alone.
std::size_t TagMap::NumberOf(std::uint32_t key) const noexcept {
  std::size_t first = 0;
  std::size_t count = m_runs.size();
  while (count > 1) {
    const std::size_t half = count / 2;
    first += m_runs[first + half - 1]->LastKey() < key ? half : 0;
    count -= half;
  }
  return first;
}
