// The part of VxMetadata that reads XMP packets: which properties go into BLOCK_XMP, and the people
// regions, which go into BLOCK_XMP_REGIONS as one text each.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/TagEntry.h"
#include "base/TagMap.h"
#include "base/TypeSizes.h"
#include "base/WideText.h"
#include "exif/StoredText.h"
#include "exif/VxMetadata.h"
#include "xmp/TextConversion.h"
#include "xmp/VxXMPParser.h"
#include "xmp/XmpPropertyTable.h"

namespace {

constexpr std::uint32_t kUtf8 = 65001;

// Writes the kept ones of a parser's properties to the store.
class PropertyWriter {
 public:
  PropertyWriter(VxMetadata& store, const VxXMPParser& parser)
      : m_store(store), m_parser(parser), m_items(parser.Paths()) {}

  void Run();

 private:
  // A property's number in the parser.
  using Index = std::size_t;

  // The last property of a tag.
  struct TagProperty {
    std::uint32_t tag;
    Index index;
  };

  bool FindTag(Index index, std::string_view name, std::uint32_t& tag);
  void KeepLast(std::uint32_t tag, Index index);
  bool IsFollowedBy(Index index, std::string_view name) const;
  Index ReadRegion(Index index);
  void WriteMarker();
  void WriteText(TagEntry& entry, std::uint32_t tag, const WideString& text);
  void WriteValue(TagEntry& entry, std::uint32_t tag, std::string_view value);
  WideString Value(Index index) const;

  VxMetadata& m_store;
  const VxXMPParser& m_parser;
  XmpItemMapping m_items;
  std::vector<TagProperty> m_lastOfTag;  // ascending by tag
  bool m_hasMarker = false;
};

// The last property of a tag is the one that stays, so only that one is converted and stored.
void PropertyWriter::Run() {
  for (Index i = 0; i < m_parser.PropertyCount(); ++i) {
    const std::string_view name = m_parser.PropertyName(i);
    std::uint32_t tag = 0;
    if (FindTag(i, name, tag)) {
      KeepLast(tag, i);
    } else if (name == kXmpPersonName || name == kXmpRectangleName) {
      WriteMarker();
      i = ReadRegion(i);
    }
  }
  TagMap& table = *m_store.m_fnGetBlock(BLOCK_XMP);
  for (const auto& [tag, index] : m_lastOfTag) {
    WriteValue(m_store.m_fnFindOrInsert(table, tag), tag, m_parser.PropertyValue(index));
  }
}

// There are no more tags than the table has.
void PropertyWriter::KeepLast(std::uint32_t tag, Index index) {
  constexpr std::size_t kFewTags = 16;
  if (m_lastOfTag.empty()) m_lastOfTag.reserve(kFewTags);
  const auto place = std::ranges::lower_bound(m_lastOfTag, tag, {}, &TagProperty::tag);
  if (place != m_lastOfTag.end() && place->tag == tag) {
    place->index = index;
  } else {
    m_lastOfTag.insert(place, {tag, index});
  }
}

bool PropertyWriter::FindTag(Index index, std::string_view name, std::uint32_t& tag) {
  if (name == kXmpItemName) return m_items.Map(m_parser.PropertyPath(index), &tag) == S_OK;
  return MapXmpProperty(m_parser.PropertyNamespace(index), name, &tag) == S_OK;
}

// By the packet's very next property. Only local names count for regions.
bool PropertyWriter::IsFollowedBy(Index index, std::string_view name) const {
  const Index next = index + 1;
  return next < m_parser.PropertyCount() &&
         m_parser.PropertyNumber(next) == m_parser.PropertyNumber(index) + 1 &&
         m_parser.PropertyName(next) == name;
}

// Stores the region that begins at a property and returns the last property that belongs to it.
// Name, rectangle and type belong together only when they follow each other in this order.
PropertyWriter::Index PropertyWriter::ReadRegion(Index index) {
  Index rectangle = index;
  WideString person;
  if (m_parser.PropertyName(index) == kXmpPersonName) {
    if (!IsFollowedBy(index, kXmpRectangleName)) return index;
    rectangle = index + 1;
    person = Value(index);
  }
  // By design: the slot is there before the region is checked. One without a type is dropped and
  // leaves its slot empty; the next region takes the next key.
  TagMap& regions = *m_store.m_fnGetBlock(BLOCK_XMP_REGIONS);
  TagEntry& entry = m_store.m_fnFindOrInsert(regions, static_cast<std::uint32_t>(regions.Count()));
  if (!IsFollowedBy(rectangle, kXmpPersonTypeName)) return rectangle;
  const Index personType = rectangle + 1;
  constexpr WCHAR kLineFeed = 10;
  WriteText(entry, kXmpRegionTag,
            Value(rectangle) + kLineFeed + person + kLineFeed + Value(personType));
  return personType;
}

void PropertyWriter::WriteMarker() {
  if (m_hasMarker) return;
  m_hasMarker = true;
  constexpr std::array<std::uint8_t, 4> kOne = {1, 0, 0, 0};
  TagMap& table = *m_store.m_fnGetBlock(BLOCK_XMP);
  SetTagValue(m_store.m_fnFindOrInsert(table, kXmpHasRegionsTag), kXmpHasRegionsTag, TYPE_SLONG,
              kOne, m_store.Memory());
}

// Stores a text with its final zero.
void PropertyWriter::WriteText(TagEntry& entry, std::uint32_t tag, const WideString& text) {
  SetTagValue(entry, tag, TYPE_WIDE_TEXT, WideTextBytes(text), m_store.Memory());
}

void PropertyWriter::WriteValue(TagEntry& entry, std::uint32_t tag, std::string_view value) {
  if (value.find('&') == value.npos) {
    SetTagText(entry, tag, value, kUtf8, m_store.Memory());
  } else {
    WriteText(entry, tag, DecodeXmlEntities(ToWideString(value, kUtf8)));
  }
}

WideString PropertyWriter::Value(Index index) const {
  return DecodeXmlEntities(ToWideString(m_parser.PropertyValue(index), kUtf8));
}

// Holds a parser for one packet. Its properties refer to the packet, so they go with it.
class ParserUse {
 public:
  explicit ParserUse(VxXMPParser& parser) : m_parser(parser) { m_parser.Reset(); }
  ~ParserUse() { m_parser.Reset(); }
  ParserUse(const ParserUse&) = delete;
  ParserUse& operator=(const ParserUse&) = delete;

 private:
  VxXMPParser& m_parser;
};

}  // namespace

HRESULT VxMetadata::ParseXmp(const std::uint8_t* packet, std::uint32_t length) {
  if ((m_nParseFlags & PARSE_XMP) == 0) return S_OK;
  if (!m_pXmpParser) return E_POINTER;
  const ParserUse use(*m_pXmpParser);
  if (packet != nullptr) m_pXmpParser->SetText({packet, length});
  m_pXmpParser->KeepOnly(kXmpKeptNames);
  m_pXmpParser->ParseRoot();
  PropertyWriter(*this, *m_pXmpParser).Run();
  return S_OK;
}
