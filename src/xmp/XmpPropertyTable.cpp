#include "xmp/XmpPropertyTable.h"

#include <algorithm>
#include <array>
#include <string>

#include "xmp/XmpSignature.h"

namespace {

enum class Schema : std::uint8_t {
  Xmp,
  Iptc4xmpCore,
  XmpRights,
  Photoshop,
  DublinCore,
  Aux,
  Exif,
  Tiff,
  MicrosoftPhoto,
  GPano,
};

constexpr std::size_t kSchemaCount = 10;

// The published namespaces, in the order of Schema.
//
// By design: Microsoft Photo stands here without the slash that its published form ends in, so a
// packet that declares the published form does not match.
//
// clang-format off
constexpr std::array<std::string_view, kSchemaCount> kNamespaces = {
    kXmpNamespace,
    "http://iptc.org/std/Iptc4xmpCore/1.0/xmlns/",
    "http://ns.adobe.com/xap/1.0/rights/",
    "http://ns.adobe.com/photoshop/1.0/",
    "http://purl.org/dc/elements/1.1/",
    "http://ns.adobe.com/exif/1.0/aux/",
    "http://ns.adobe.com/exif/1.0/",
    "http://ns.adobe.com/tiff/1.0/",
    "http://ns.microsoft.com/photo/1.0",
    "http://ns.google.com/photos/1.0/panorama/",
};

constexpr std::array<std::size_t, kSchemaCount> kNamespaceLengths = {
    28, 43, 35, 34, 32, 33, 29, 29, 33, 41,
};
// clang-format on

consteval bool NamespacesHaveTheirLengths() {
  for (std::size_t i = 0; i < kSchemaCount; ++i) {
    if (kNamespaces[i].size() != kNamespaceLengths[i]) return false;
  }
  return true;
}
static_assert(NamespacesHaveTheirLengths());

struct PropertyRow {
  Schema schema;
  std::string_view name;
  std::uint32_t tag;
};

// clang-format off
constexpr std::array<PropertyRow, 32> kProperties = {{
    {Schema::Xmp,            "CreatorTool",            0xAA02},
    {Schema::Xmp,            "Rating",                 0xAA01},
    {Schema::Xmp,            "Label",                  0xAA03},
    {Schema::Iptc4xmpCore,   "IntellectualGenre",      0xAA14},
    {Schema::Iptc4xmpCore,   "CiAdrExtadr",            0xAA12},
    {Schema::Iptc4xmpCore,   "CiAdrCity",              0xAA06},
    {Schema::Iptc4xmpCore,   "CiAdrCtry",              0xAA08},
    {Schema::Iptc4xmpCore,   "CiAdrRegion",            0xAA05},
    {Schema::Iptc4xmpCore,   "CiAdrPcode",             0xAA07},
    {Schema::Iptc4xmpCore,   "CiTelWork",              0xAA09},
    {Schema::Iptc4xmpCore,   "CiEmailWork",            0xAA10},
    {Schema::Iptc4xmpCore,   "CiUrlWork",              0xAA11},
    {Schema::Iptc4xmpCore,   "SubjectCode",            0xAA13},
    {Schema::Iptc4xmpCore,   "Scene",                  0xAA15},
    {Schema::XmpRights,      "WebStatement",           0xAB01},
    {Schema::XmpRights,      "Marked",                 0xAB04},
    {Schema::XmpRights,      "UsageTerms",             0xAB03},
    {Schema::Photoshop,      "SupplementalCategories", 0xAB02},
    {Schema::DublinCore,     "rights",                 0xAA04},
    {Schema::Aux,            "Lens",                   0xAB0B},
    {Schema::Exif,           "ExposureBiasValue",      0xAB14},
    {Schema::Exif,           "ShutterSpeedValue",      0xAB15},
    {Schema::Exif,           "ApertureValue",          0xAB16},
    {Schema::Exif,           "FocalLength",            0xAB17},
    {Schema::Exif,           "ExposureMode",           0xAB18},
    {Schema::Tiff,           "Make",                   0xAB11},
    {Schema::Tiff,           "Model",                  0xAB12},
    {Schema::MicrosoftPhoto, "Rating",                 0xAA01},
    {Schema::GPano,          "ProjectionType",         0xAB19},
    {Schema::GPano,          "PoseHeadingDegrees",     0xAB20},
    {Schema::GPano,          "PosePitchDegrees",       0xAB21},
    {Schema::GPano,          "PoseRollDegrees",        0xAB22},
}};

// So an item needs no look at its namespace.
consteval bool NoPropertyIsAnItem() {
  return std::ranges::none_of(kProperties,
                              [](const PropertyRow& row) { return row.name == kXmpItemName; });
}
static_assert(NoPropertyIsAnItem());

constexpr std::size_t kContainerSize = 3;  // of "Bag", "Alt" and "Seq"

struct ArrayRow {
  std::string_view segment;
  std::uint32_t tag;

  // The segment's two names.
  constexpr std::string_view Container() const {
    return segment.substr(segment.size() - kContainerSize - 1, kContainerSize);
  }
  constexpr std::string_view Property() const {
    return segment.substr(1, segment.size() - kContainerSize - 3);
  }
};

// The namespace of the property around the array is not compared.
constexpr std::array<ArrayRow, kXmpArrayCount> kArrays = {{
    {"/SubjectCode/Bag/",     0xAA13},
    {"/Scene/Bag/",           0xAA15},
    {"/UsageTerms/Alt/",      0xAB03},
    {"/rights/Alt/",          0xAA04},
    {"/ISOSpeedRatings/Seq/", 0xAB13},
}};
// clang-format on

consteval bool PropertiesAreUnique() {
  for (std::size_t i = 0; i < kProperties.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (kProperties[i].schema == kProperties[j].schema &&
          kProperties[i].name == kProperties[j].name) {
        return false;
      }
    }
  }
  return true;
}
static_assert(PropertiesAreUnique());

// What the names of a segment and FindArray rely on.
consteval bool SegmentsEndInContainers() {
  for (const ArrayRow& row : kArrays) {
    const auto end = row.segment.substr(row.segment.size() - 5);
    if (end != "/Bag/" && end != "/Alt/" && end != "/Seq/") return false;
  }
  return true;
}
static_assert(SegmentsEndInContainers());

constexpr std::size_t LongestSegment() {
  std::size_t longest = 0;
  for (const ArrayRow& row : kArrays) longest = std::max(longest, row.segment.size());
  return longest;
}

constexpr std::string_view NamespaceOf(const PropertyRow& row) {
  return kNamespaces[static_cast<std::size_t>(row.schema)];
}

// The rows by the endings of their names: chains, each of which mostly is one row.
struct RowChains {
  static constexpr std::size_t kNone = kProperties.size();
  static_assert(kNone <= UINT8_MAX);

  static constexpr std::size_t ChainOf(std::string_view name) noexcept {
    return XmpNameSet::Spread(XmpNameSet::EndingOf(name)) >> 26;
  }

  std::array<std::uint8_t, 64> first = {};
  std::array<std::uint8_t, kProperties.size()> next = {};
};

consteval RowChains ChainRows() {
  RowChains chains;
  chains.first.fill(RowChains::kNone);
  for (std::size_t i = kProperties.size(); i-- != 0;) {
    std::uint8_t& first = chains.first[RowChains::ChainOf(kProperties[i].name)];
    chains.next[i] = first;
    first = static_cast<std::uint8_t>(i);
  }
  return chains;
}
constexpr RowChains kRowChains = ChainRows();

consteval XmpNameSet KeptNames() {
  XmpNameSet names;
  for (const PropertyRow& row : kProperties) names.Add(row.name);
  for (const std::string_view name :
       {kXmpItemName, kXmpPersonName, kXmpRectangleName, kXmpPersonTypeName}) {
    names.Add(name);
  }
  return names;
}

// The names of the properties that are arrays.
consteval XmpNameSet ArrayNames() {
  XmpNameSet names;
  for (const ArrayRow& row : kArrays) names.Add(row.Property());
  return names;
}
constexpr XmpNameSet kArrayNames = ArrayNames();

// Whether a parent's last name ends with a whole name.
bool EndsWithName(std::string_view parent, std::string_view name) {
  if (!parent.ends_with(name)) return false;
  return parent.size() == name.size() || parent[parent.size() - name.size() - 1] == '/';
}

}  // namespace

constinit const XmpNameSet kXmpKeptNames = KeptNames();

HRESULT MapXmpProperty(std::string_view nameSpace, std::string_view name, std::uint32_t* tag) {
  if (tag == nullptr) return E_POINTER;
  if (name.size() < XmpNameSet::kEndingSize) return E_FAIL;
  for (std::size_t i = kRowChains.first[RowChains::ChainOf(name)]; i != RowChains::kNone;
       i = kRowChains.next[i]) {
    const PropertyRow& row = kProperties[i];
    if (row.name != name || NamespaceOf(row) != nameSpace) continue;
    *tag = row.tag;
    return S_OK;
  }
  return E_FAIL;
}

std::size_t FindXmpArray(std::string_view path) {
  const auto found = std::find_if(kArrays.begin(), kArrays.end(), [path](const ArrayRow& row) {
    return path.find(row.segment) != path.npos;
  });
  return static_cast<std::size_t>(found - kArrays.begin());
}

HRESULT XmpItemMapping::Map(XmpPathIndex path, std::uint32_t* tag) {
  if (m_arrays.empty()) m_arrays.reserve(m_paths.Count());
  while (m_arrays.size() <= path) {
    const auto next = static_cast<XmpPathIndex>(m_arrays.size());
    m_arrays.push_back(static_cast<std::uint8_t>(FindArray(next)));
  }
  const std::size_t array = m_arrays[path];
  if (array == kXmpArrayCount) return E_FAIL;
  *tag = kArrays[array].tag;
  return S_OK;
}

// The answer of the parent, or a segment that the last name completes. Only a name with a slash,
// as odd packets have it, can hold more of one than a container; the end of the parent's path is
// then all of it that the segment can reach into.
std::size_t XmpItemMapping::FindArray(XmpPathIndex path) const {
  if (path == kXmpRootPath) return kXmpArrayCount;
  const XmpPathIndex parent = m_paths.Parent(path);
  const std::string_view name = m_paths.Name(path);
  const std::size_t known = m_arrays[parent];
  if (m_paths.HasSlash(path)) {
    std::string text = m_paths.Tail(parent, LongestSegment() - 1);
    text += name;
    text += '/';
    return std::min(known, FindXmpArray(text));
  }
  if (name.size() != kContainerSize) return known;
  const std::string_view property = m_paths.Name(parent);
  if (!kArrayNames.MayHold(property, property.size())) return known;
  for (std::size_t array = 0; array < known; ++array) {
    const ArrayRow& row = kArrays[array];
    if (row.Container() == name && EndsWithName(property, row.Property())) return array;
  }
  return known;
}
