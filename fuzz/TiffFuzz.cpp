// A TIFF block anywhere in a file, with any bounds and parse flags, and the accessors on what it
// gave. With a bit of the flags that means nothing else, the parse has the whole budget.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "MemoryFiles.h"
#include "StoreReads.h"

namespace {

using fuzz::Require;

constexpr std::uint32_t kWholeBudgetBit = 0x40000000;

std::unique_ptr<VxMetadata> OpenStore(std::uint32_t flags, const WCHAR* path) {
  static const ParseBudget small = fuzz::SmallBudget();
  auto store = fuzz::FreshStore(flags, path);
  if ((flags & kWholeBudgetBit) == 0) store->Budget() = small;
  return store;
}

// The accessors copy what the entry holds, into buffers of every interesting size.
void RequireAccessorsAgree(VxMetadata& store, std::int32_t block, const TagEntry& entry) {
  const auto bytes = TagBytes(entry);
  TagEntry copy;
  Require(store.m_fnGetTagEntry(block, entry.m_nTag, &copy) == S_OK, "a stored tag is found");
  Require(copy.m_nSize == entry.m_nSize, "the size asked for is that of the entry");

  std::vector<std::uint8_t> buffer(bytes.size() + 1, 0xEE);
  auto size = static_cast<std::int32_t>(buffer.size());
  const HRESULT result = store.m_fnGetTagData(block, entry.m_nTag, buffer.data(), &size);
  Require((result == S_OK) == !bytes.empty(), "a value with bytes is copied");
  if (result != S_OK) return;
  Require(static_cast<std::size_t>(size) == bytes.size(), "the size given is that of the value");
  Require(std::equal(bytes.begin(), bytes.end(), buffer.begin()), "the value is copied whole");
  Require(buffer.back() == 0xEE, "a larger buffer gets no terminator");

  std::vector<std::uint8_t> exact(bytes.size());
  Require(store.m_fnGetTagData(block, entry.m_nTag, exact.data(), &size) == S_OK,
          "a value is copied into a buffer of its size");
  Require(exact.back() == 0, "a buffer of the value's size ends in zero");

  std::string text;
  const bool hasZero = std::ranges::find(bytes, std::uint8_t{0}) != bytes.end();
  Require((store.m_fnGetTagString(block, entry.m_nTag, text) == S_OK) == hasZero,
          "a value with a zero is a text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::MemoryFiles files;
  static const WCHAR* const path = files.Add();

  const fuzz::RunChecks checks;
  fuzz::FuzzInput input(data, size);
  const std::uint32_t flags = input.TakeU32();
  const std::uint32_t tiffBase = input.TakeU32();
  const std::uint32_t segStart = input.TakeU32();
  const std::uint32_t segEnd = input.TakeU32();
  files.Put(path, input.TakeRest());

  const auto store = fuzz::ReadTwice(
      [&] { return OpenStore(flags, path); },
      [&](VxMetadata& fresh) { return fresh.m_fnParseTiffHeader(tiffBase, segStart, segEnd); });
  for (std::int32_t block = BLOCK_IFD0; block <= BLOCK_IFD1; ++block) {
    for (const auto& [tag, entry] : *store->m_fnGetBlock(block)) {
      RequireAccessorsAgree(*store, block, entry);
    }
  }
  store->MergeMetadata();
  fuzz::RequireSoundStore(*store);
  return 0;
}
