// Cameras and editors put the same shooting values in different places. After a parse the merge
// fills the gaps, so that every reader of the store finds a value in one place.

#include <exception>

#include "base/ByteOrder.h"
#include "core/DebugLog.h"
#include "exif/VxMetadata.h"
#include "merge/MergeSteps.h"

namespace {

const TagEntry* FindEntry(VxMetadata& store, const Place& place) {
  return store.m_fnGetBlock(place.block)->Find(place.key);
}

void RunStep(VxMetadata& store, const MergeStep& step) {
  const auto& [place, size, companionPlace] = step.condition;
  const TagEntry* entry = FindEntry(store, place);
  if (entry == nullptr || (size != 0 && entry->m_nSize != size)) return;
  if (FindEntry(store, step.target) != nullptr) return;

  MergeSource source{entry->m_nType, TagBytes(*entry)};
  if (companionPlace.block != 0) {
    const TagEntry* companion = FindEntry(store, companionPlace);
    if (companion == nullptr) return;
    source.companion = HostValue<std::uint16_t>(TagBytes(*companion));
  }

  MergeTarget target(store, step.target);
  step.convert(source, target);
  if (target.IsSet()) DebugLog("%s", step.logLine);
}

}  // namespace

HRESULT VxMetadata::MergeMetadata() {
  if ((m_nParseFlags & PARSE_NO_MERGE) != 0) return S_OK;
  for (const MergeStep& step : MergeSteps()) {
    try {
      RunStep(*this, step);
    } catch (const std::exception&) {
      // Without memory for a conversion its target stays as it is, and the next source is tried.
    }
  }
  return S_OK;
}
