#ifndef LUMIDEX_MERGE_MERGESTEPS_H_
#define LUMIDEX_MERGE_MERGESTEPS_H_

// The merge as data: where a value belongs, where else it may stand, and how it is carried over.
// Each step fills one gap and leaves what is there alone, so among the steps of one target the
// first whose source gives a value wins.

#include <cstdint>
#include <span>

#include "exif/VxMetadata.h"

// An entry of a table of the store.
struct Place {
  std::int32_t block = 0;  // 0 for no place at all
  std::uint32_t key = 0;
};

// What a step reads. The step is passed over unless all of it holds.
struct MergeCondition {
  Place source;            // is present
  std::uint32_t size = 0;  // its size in bytes; 0 for any
  Place companion;         // is present as well, where one is named
};

// A source as its conversion sees it.
struct MergeSource {
  std::uint32_t type = 0;
  std::span<const std::uint8_t> bytes;  // none when the value has no data
  std::uint16_t companion = 0;          // the first 16 bits of the companion
};

// Writes what a conversion makes of its source.
class MergeTarget {
 public:
  MergeTarget(VxMetadata& store, const Place& place) : m_store(store), m_next(place) {}

  // Sets the target; a further call sets the entry under the next key.
  void Set(std::uint32_t type, std::span<const std::uint8_t> bytes);

  // Whether the target was set and all its data found room.
  bool IsSet() const noexcept { return m_isSet && !m_lacksData; }

 private:
  VxMetadata& m_store;
  Place m_next;
  bool m_isSet = false;
  bool m_lacksData = false;
};

struct MergeStep {
  Place target;  // is absent
  MergeCondition condition;
  void (*convert)(const MergeSource& source, MergeTarget& target);  // may set nothing
  const char* logLine;                                              // sent when the target was set
};

// The steps in the order in which they run.
std::span<const MergeStep> MergeSteps() noexcept;

#endif  // LUMIDEX_MERGE_MERGESTEPS_H_
