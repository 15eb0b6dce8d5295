#ifndef LUMIDEX_FUZZ_FUZZCHECKS_H_
#define LUMIDEX_FUZZ_FUZZCHECKS_H_

// What every fuzz target asserts. A condition that does not hold ends the program with a line that
// names it; the input is then a finding.

#include <cstdint>
#include <ctime>
#include <span>
#include <vector>

#include <lumidex/ImageInfo.h>

#include "core/DebugLog.h"
#include "exif/VxMetadata.h"
#include "support/Bytes.h"

namespace fuzz {

// Aborts with "failed: <what>" unless the condition holds.
void Require(bool condition, const char* what);

// Placed before anything else of a run: at its end as many objects live as at its start, and no
// more processor time is spent than any input of 64 KiB may cost.
class RunChecks {
 public:
  RunChecks();
  ~RunChecks();
  RunChecks(const RunChecks&) = delete;
  RunChecks& operator=(const RunChecks&) = delete;

 private:
  std::int32_t m_objects;
  std::clock_t m_start;
};

// Opens the debug log for a run: each line begins with the prefix, ends in its one line feed behind
// the message, and is no longer than it may be.
class OpenLog {
 public:
  OpenLog();
  ~OpenLog();
  OpenLog(const OpenLog&) = delete;
  OpenLog& operator=(const OpenLog&) = delete;

 private:
  DebugLogSink m_sinkBefore;
};

// An entry with its key and its data, behind what is dumped already.
void AppendEntry(test::Bytes& dump, std::uint32_t key, const TagEntry& entry);

// Everything a store holds, for comparing two parses; reads all data of all tables.
test::Bytes DumpStore(VxMetadata& store);

// Everything the records say, in their order; reads all their data.
test::Bytes DumpRecords(std::span<const CInfoRecord> records);

// Holds for a value that came from a directory: its type is one that is stored, its size that of
// its type times its count, and a text ends in its zero. One that the merge or a Leaf record wrote
// has no count.
void RequireSoundValue(const TagEntry& entry);

// Holds for each entry of each table: its key, its type, its size against its count, a text's final
// zero. All data together are within the budget.
void RequireSoundStore(VxMetadata& store);

// Holds for each record: its group is one bit of the mask, its type is known, its size is whole
// values, it has data.
void RequireSoundRecords(std::span<const CInfoRecord> records, std::uint32_t mask);

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_FUZZCHECKS_H_
