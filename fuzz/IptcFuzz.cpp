// A block of IPTC-IIM datasets.

#include <algorithm>
#include <cstdint>
#include <span>

#include "StoreReads.h"
#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "exif/IptcDatasets.h"

namespace {

using fuzz::Require;

bool IsKnownKey(std::uint32_t key) {
  return key == IPTC_OTHER_ENVELOPE ||
         std::ranges::find(kIptcDatasets, key, &IptcDataset::key) != kIptcDatasets.end();
}

// A text has one zero, its last character; a number is one byte of the block.
void RequireSoundValues(const TagMap& table) {
  for (const auto& [key, entry] : table) {
    const auto bytes = TagBytes(entry);
    Require(IsKnownKey(key), "a value's key is that of a dataset");
    if (entry.m_nType == TYPE_WIDE_TEXT && !bytes.empty()) {
      Require((LoadWideText(bytes).size() + 1) * sizeof(WCHAR) == bytes.size(),
              "a text has no zero before its last");
    }
    for (std::size_t i = 0; entry.m_nType == TYPE_LONG && i < bytes.size() / 4; ++i) {
      Require(HostValue<std::uint32_t>(bytes, i) <= 0xFF, "a number is one byte of the block");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::RunChecks checks;
  const fuzz::OpenLog log;
  const auto read = [&](VxMetadata& store) { return store.m_fnParseIPTC({data, size}); };
  const auto store = fuzz::ReadTwice([] { return fuzz::FreshStore(PARSE_IPTC); }, read);
  const auto other = fuzz::ReadTwice([] { return fuzz::FreshStore(PARSE_IPTC); }, read);
  const TagMap& table = *store->m_fnGetBlock(BLOCK_IPTC);
  RequireSoundValues(table);

  // The block once more: each text goes on with the lines that come again.
  read(*other);
  fuzz::RequireSoundStore(*other);
  const TagMap& longer = *other->m_fnGetBlock(BLOCK_IPTC);
  RequireSoundValues(longer);
  Require(longer.Count() == table.Count(), "a block read again has the same datasets");
  for (const auto& [key, entry] : table) {
    const auto before = LoadWideText(TagBytes(entry));
    const auto after = LoadWideText(TagBytes(*longer.Find(key)));
    if (entry.m_nType != TYPE_WIDE_TEXT) continue;
    Require(after.size() > before.size() && after.starts_with(before),
            "a text that is read again goes on");
  }
  return 0;
}
