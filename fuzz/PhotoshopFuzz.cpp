// A block of Photoshop image resources, with IPTC switched on or off by the first byte.

#include <algorithm>
#include <cstdint>
#include <span>

#include "FuzzInput.h"
#include "StoreReads.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using fuzz::Require;
  const fuzz::RunChecks checks;
  fuzz::FuzzInput input(data, size);
  const std::uint32_t flags = (input.TakeU8() & 1) != 0 ? 0U : PARSE_IPTC;
  const auto block = input.TakeRest();

  const auto store =
      fuzz::ReadTwice([&] { return fuzz::FreshStore(flags); },
                      [&](VxMetadata& fresh) { return fresh.m_fnParsePhotoshopIRB(block); });
  Require(flags != 0 || store->m_fnGetBlock(BLOCK_IPTC)->IsEmpty(),
          "what is switched off is not read");

  // A thumbnail is a part of the block.
  constexpr std::size_t kThumbnailHeaderSize = 28;
  if (!store->m_pThumbnail) return 0;
  Require(store->m_nThumbnailSize + kThumbnailHeaderSize <= block.size(),
          "a thumbnail is no larger than its resource");
  Require(store->m_nThumbnailFormat == THUMBNAIL_JPEG, "a resource's thumbnail is a JPEG");

  // Searching for a long one could take longer than all the rest.
  constexpr std::size_t kSearched = 256;
  const std::span thumbnail(store->m_pThumbnail.get(),
                            std::min<std::size_t>(store->m_nThumbnailSize, kSearched));
  Require(
      std::search(block.begin(), block.end(), thumbnail.begin(), thumbnail.end()) != block.end() ||
          thumbnail.empty(),
      "a thumbnail is made of the block's bytes");
  return 0;
}
