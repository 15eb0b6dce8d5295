// An XMP packet through the parser and into the store.

#include <algorithm>
#include <cstdint>
#include <span>

#include "StoreReads.h"
#include "xmp/VxXMPParser.h"

namespace {

using fuzz::Require;

bool LiesIn(std::string_view part, std::span<const std::uint8_t> packet) {
  const auto* const first = reinterpret_cast<const char*>(packet.data());
  return part.empty() ||
         (part.data() >= first && part.data() + part.size() <= first + packet.size());
}

// Names and values are parts of the packet, there are no more of them than it can spell, and each
// belongs to a path that exists.
void RequireSoundProperties(std::span<const std::uint8_t> packet) {
  VxXMPParser parser(0);
  parser.Reset();
  parser.SetText(packet);
  parser.ParseRoot();
  Require(parser.PropertyCount() <= packet.size(), "a property takes bytes of the packet");
  Require(parser.Paths().Count() <= packet.size() + 1, "a path takes bytes of the packet");
  for (std::size_t i = 0; i < parser.PropertyCount(); ++i) {
    Require(LiesIn(parser.PropertyName(i), packet), "a name is part of the packet");
    Require(LiesIn(parser.PropertyNamespace(i), packet), "a namespace is part of the packet");
    Require(LiesIn(parser.PropertyValue(i), packet), "a value is part of the packet");
    Require(parser.PropertyPath(i) < parser.Paths().Count(), "a property's path exists");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::RunChecks checks;
  const fuzz::OpenLog log;
  RequireSoundProperties({data, size});

  const auto read = [&](VxMetadata& store) {
    return store.ParseXmp(data, static_cast<std::uint32_t>(size));
  };
  const auto store = fuzz::ReadTwice([] { return fuzz::FreshStore(PARSE_XMP); }, read);

  // The packet once more: every property is replaced by itself, every region comes again.
  const TagMap& properties = *store->m_fnGetBlock(BLOCK_XMP);
  const TagMap& regions = *store->m_fnGetBlock(BLOCK_XMP_REGIONS);
  const std::size_t propertyCount = properties.Count();
  const std::size_t regionCount = regions.Count();
  Require(read(*store) == S_OK, "a packet can be read twice");
  fuzz::RequireSoundStore(*store);
  Require(properties.Count() == propertyCount, "a packet read again adds no property");
  Require(regions.Count() == 2 * regionCount, "a packet read again adds its regions");
  return 0;
}
