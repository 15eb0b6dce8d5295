#ifndef LUMIDEX_FUZZ_STOREREADS_H_
#define LUMIDEX_FUZZ_STOREREADS_H_

// A reader of the store, run twice on fresh stores that must be sound and equal afterwards.

#include <cstdint>
#include <memory>

#include "FuzzChecks.h"
#include "exif/VxMetadata.h"

namespace fuzz {

// What is left of a budget when all but this much of it is spent: walks and values end early, and
// a run that asks for endless work is as short as any other.
inline ParseBudget SmallBudget() {
  constexpr std::uint32_t kEntries = 1024;
  constexpr std::uint64_t kBytes = 256 * 1024;
  ParseBudget budget;
  for (std::uint32_t i = kEntries; i < kMaxWalkedEntries; ++i) Require(budget.TakeEntry(), "entry");
  Require(budget.TakeBytes(kMaxStoredBytes - kBytes), "bytes");
  return budget;
}

// A store before its readers run, with an open file unless `path` is null.
inline std::unique_ptr<VxMetadata> FreshStore(std::uint32_t parseFlags,
                                              const WCHAR* path = nullptr) {
  auto store = std::make_unique<VxMetadata>();
  store->m_nParseFlags = parseFlags;
  if (path == nullptr) return store;
  Require(store->m_pFile.emplace().Open(path, LMD_W("rb")), "a file in memory can be opened");
  return store;
}

// Runs `read(store)` on two stores of `make()` and returns the second, for further checks. What
// `read` returns must be the same, too.
template <class Make, class Read>
std::unique_ptr<VxMetadata> ReadTwice(const Make& make, const Read& read) {
  std::unique_ptr<VxMetadata> first = make();
  const HRESULT result = read(*first);
  RequireSoundStore(*first);
  const test::Bytes dump = DumpStore(*first);
  first.reset();

  std::unique_ptr<VxMetadata> second = make();
  Require(read(*second) == result, "a second run returns the same");
  Require(DumpStore(*second) == dump, "a second run stores the same");
  return second;
}

}  // namespace fuzz

#endif  // LUMIDEX_FUZZ_STOREREADS_H_
