#ifndef LUMIDEX_XMP_VXXMPPARSER_H_
#define LUMIDEX_XMP_VXXMPPARSER_H_

// Turns the text of an XMP packet (RDF/XML, XMP part 1) into a flat list of properties: one for
// every attribute and every element without children. Containers and structures are ordinary
// elements here; what they mean follows from the path. A mismatched tag is logged, and the walk
// goes on.
//
// The packet is not copied: it must stay valid until the next Reset. Properties refer to it, and
// the walk keeps a number for each path and a span for each name, so that time and memory are
// linear in the packet however deep it is nested. One thread at a time.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "xmp/XmpBindings.h"
#include "xmp/XmpNameSet.h"
#include "xmp/XmpPaths.h"
#include "xmp/XmpRecords.h"
#include "xmp/XmpScanner.h"

// A property with texts of its own. They are the bytes of the packet: values are neither trimmed
// nor are their entities decoded.
struct XmpProperty {
  std::string path;       // of the parent elements, as in "xmpmeta/RDF/Description/"
  std::string name;       // without prefix
  std::string nameSpace;  // that is bound to the prefix, or the prefix itself
  std::string value;

  bool operator==(const XmpProperty&) const = default;
};

class VxXMPParser {
 public:
  explicit VxXMPParser(std::uint32_t ownerValue) : m_nOwnerValue(ownerValue) {}
  virtual ~VxXMPParser() = default;
  VxXMPParser(const VxXMPParser&) = delete;
  VxXMPParser& operator=(const VxXMPParser&) = delete;

  // Forgets the packet, the bindings and the properties, and gives their memory back.
  void Reset() noexcept;

  // Takes a packet of less than 4 GiB, after a Reset.
  void SetText(std::span<const std::uint8_t> packet) noexcept;

  // Keeps only properties with names that a set may hold, up to the next Reset. The set must stay
  // valid until then. Properties that are not kept count in the numbers of those that are.
  void KeepOnly(const XmpNameSet& names) noexcept { m_wanted = &names; }

  // Finds the root of the RDF and reads it. Without a root there are no properties.
  void ParseRoot();

  // Reads the element at a position and the tag after it. 1 when that one is named "xmpmeta", else
  // 0.
  int ParsePacket(std::uint32_t position);

  // Reads the element at a position with everything in it. Returns the position after it; that of
  // the text's last whole tag when the text ends before the element does; `position` itself when
  // there is no tag or an end tag.
  std::uint32_t ParseElement(std::uint32_t position, XmpPathIndex path);

  // As ScanXmpTag and ScanXmpAttribute, over the packet.
  [[nodiscard]] bool ReadTag(std::uint32_t position, XmpTag& tag) const noexcept {
    return ScanXmpTag(m_text, position, tag);
  }
  [[nodiscard]] bool ReadAttribute(std::uint32_t from, std::uint32_t to,
                                   XmpAttribute& attribute) const noexcept {
    return ScanXmpAttribute(m_text, from, to, attribute);
  }

  // Binds the prefixes that a tag declares and adds its other attributes as properties.
  void ParseAttributes(XmpPathIndex path, const XmpTag& tag) {
    if (tag.attrStart != 0) ReadAttributes(path, tag.attrStart, std::size_t{tag.attrEnd} + 1);
  }

  // Adds the text between a start tag and the end tag behind it.
  void ReadTextValue(XmpPathIndex path, const XmpTagMarks& start, std::size_t end);

  void AddProperty(XmpPathIndex path, XmpSpan prefix, XmpSpan name, XmpSpan value) {
    m_properties.Add({path, m_count++, name, ResolveNamespace(prefix), value});
  }

  // What is bound to a prefix, or the prefix itself.
  XmpSpan ResolveNamespace(XmpSpan prefix) noexcept {
    const XmpSpan* const bound = m_bindings.Find(prefix);
    return bound == nullptr ? prefix : *bound;
  }

  // Those that are kept.
  std::size_t PropertyCount() const noexcept { return m_properties.Count(); }
  XmpPathIndex PropertyPath(std::size_t index) const { return m_properties[index].path; }
  std::uint32_t PropertyNumber(std::size_t index) const { return m_properties[index].number; }
  std::string_view PropertyName(std::size_t index) const {
    return m_properties[index].name.In(m_text);
  }
  std::string_view PropertyNamespace(std::size_t index) const {
    return m_properties[index].nameSpace.In(m_text);
  }
  std::string_view PropertyValue(std::size_t index) const {
    return m_properties[index].value.In(m_text);
  }
  XmpProperty Property(std::size_t index) const;

  const XmpPaths& Paths() const noexcept { return m_paths; }

  std::uint32_t m_nOwnerValue;

 private:
  // The bytes from `first` up to `end`, which is not one of them.
  static XmpSpan Span(std::size_t first, std::size_t end) noexcept {
    return {XmpPosition(first), XmpPosition(end - first)};
  }

  // The same up to the first zero byte.
  XmpSpan Cut(std::size_t first, std::size_t end) const noexcept {
    XmpSpan span = Span(first, end);
    if (!m_isZeroFree) span.length = LengthToZero(span);
    return span;
  }
  std::uint32_t LengthToZero(XmpSpan span) const noexcept;

  // The part behind the last colon, which is at `colon`, of what stands between two positions. A
  // colon at the start is none.
  XmpSpan LocalName(std::size_t start, std::size_t colon, std::size_t end) const noexcept {
    return Cut(colon == start ? start : colon + 1, end);
  }

  // By design: a name without a colon gets the packet's first byte as its prefix.
  XmpSpan Prefix(std::size_t start, std::size_t colon) const noexcept {
    return colon == start ? Cut(0, 1) : Cut(start, colon);
  }

  // Whether the name that ends at a position may be one to keep.
  bool IsWanted(std::size_t end) const noexcept {
    return m_filter == nullptr || m_filter->MayHold(m_text, end);
  }

  XmpPathIndex AddPath(XmpPathIndex parent, const XmpTagMarks& tag);
  void ReadLeaf(XmpPathIndex path, const XmpTagMarks& start, std::size_t end);
  void ReadAttributes(XmpPathIndex path, std::size_t from, std::size_t end);

  // Binds a prefix or adds a property.
  void AddAttribute(XmpPathIndex path, const XmpAttributeMarks& marks);

  std::string_view m_text;
  bool m_isZeroFree = false;             // the tags that are read
  XmpBindings m_bindings;                // of the whole packet; never withdrawn
  const XmpNameSet* m_wanted = nullptr;  // all names without one
  const XmpNameSet* m_filter = nullptr;  // the same, when it can tell
  std::uint32_t m_count = 0;             // of properties, kept or not
  XmpRecords m_properties;
  XmpPaths m_paths;
};

#endif  // LUMIDEX_XMP_VXXMPPARSER_H_
