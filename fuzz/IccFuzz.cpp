// An ICC profile.

#include <algorithm>
#include <cstdint>
#include <span>

#include "StoreReads.h"
#include "base/ByteOrder.h"

namespace {

using fuzz::Require;

constexpr std::size_t kFieldsEnd = 100;  // of the header fields that are kept
constexpr std::uint32_t kFieldCount = 17;
constexpr std::uint32_t kFirstTag = 256;
constexpr std::uint32_t kLastTag = 266;

void RequireSoundProfile(const TagMap& table, std::span<const std::uint8_t> profile) {
  for (const auto& [key, entry] : table) {
    Require((key >= 1 && key <= kFieldCount) || (key >= kFirstTag && key <= kLastTag),
            "a value is a header field or a known tag");
    Require(key < kFirstTag || entry.m_nSize + 8 <= profile.size(),
            "a tag's value lies behind its type header");
  }
  if (profile.size() < kFieldsEnd) return;
  for (std::uint32_t key = 1; key <= kFieldCount; ++key) {
    Require(table.Contains(key), "a whole header gives all fields");
  }
  Require(HostValue<std::uint32_t>(TagBytes(*table.Find(1))) ==
              LoadU32(profile.first(4), ByteOrder::BigEndian),
          "the profile size is the header's first number");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::RunChecks checks;
  const std::span profile(data, size);
  const auto read = [&](VxMetadata& store) { return store.m_fnParseICCProfile(profile); };
  const auto store = fuzz::ReadTwice([] { return fuzz::FreshStore(PARSE_ICC); }, read);
  RequireSoundProfile(*store->m_fnGetBlock(BLOCK_ICC), profile);

  const auto nothing = fuzz::ReadTwice([] { return fuzz::FreshStore(~PARSE_ICC); }, read);
  Require(nothing->m_fnGetBlock(BLOCK_ICC)->IsEmpty(), "what is switched off is not read");
  return 0;
}
