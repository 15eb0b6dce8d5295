#ifndef LUMIDEX_XMP_XMPPROPERTYTABLE_H_
#define LUMIDEX_XMP_XMPPROPERTYTABLE_H_

// Which XMP properties are kept, and under which tag of BLOCK_XMP.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/Win32.h"
#include "xmp/XmpNameSet.h"
#include "xmp/XmpPaths.h"

// Tags that no property of the table has.
inline constexpr std::uint32_t kXmpRegionTag = 0xAB09;      // a people region, in BLOCK_XMP_REGIONS
inline constexpr std::uint32_t kXmpHasRegionsTag = 0xAB0A;  // 1 when the packet has any

// Names that mean something under any namespace: the items of arrays and the parts of regions.
inline constexpr std::string_view kXmpItemName = "li";
inline constexpr std::string_view kXmpPersonName = "PersonDisplayName";
inline constexpr std::string_view kXmpRectangleName = "Rectangle";
inline constexpr std::string_view kXmpPersonTypeName = "PersonTagType";

// The names of all properties that are kept or belong to a region.
extern const XmpNameSet kXmpKeptNames;

// The tag of a property. E_POINTER for a null `tag`; E_FAIL, with `tag` untouched, for one that is
// not kept.
HRESULT MapXmpProperty(std::string_view nameSpace, std::string_view name, std::uint32_t* tag);

// Which of the known arrays a path leads through: the first in the table's order whose segment the
// path holds anywhere. kXmpArrayCount when there is none.
inline constexpr std::size_t kXmpArrayCount = 5;
std::size_t FindXmpArray(std::string_view path);

// The same for the paths of a packet, in time linear in all their names. A path's answer follows
// from its parent's, so a deep path is not searched again for each of its items.
class XmpItemMapping {
 public:
  explicit XmpItemMapping(const XmpPaths& paths) : m_paths(paths) {}

  // The tag under which the items of an array are kept. E_FAIL, with `tag` untouched, when it is
  // not.
  HRESULT Map(XmpPathIndex path, std::uint32_t* tag);

 private:
  std::size_t FindArray(XmpPathIndex path) const;

  const XmpPaths& m_paths;
  std::vector<std::uint8_t> m_arrays;  // of the paths seen so far
};

#endif  // LUMIDEX_XMP_XMPPROPERTYTABLE_H_
