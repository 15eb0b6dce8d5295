#ifndef LUMIDEX_XMP_XMPPATHS_H_
#define LUMIDEX_XMP_XMPPATHS_H_

// The paths of an XMP packet's elements as a tree of names: a path costs the same at every depth,
// and the text of one is put together only when it is asked for.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A part of the packet's text.
struct XmpSpan {
  std::uint32_t start;
  std::uint32_t length;

  // Empty when the span does not begin inside the packet.
  std::string_view In(std::string_view packet) const noexcept {
    if (start >= packet.size()) return {};
    return {packet.data() + start, std::min<std::size_t>(length, packet.size() - start)};
  }
};

// A path by its number. Paths are numbered as they are added, so a parent comes before its
// children.
using XmpPathIndex = std::uint32_t;

// The path of the packet's root element, "xmpmeta/".
inline constexpr XmpPathIndex kXmpRootPath = 0;

class XmpPaths {
 public:
  // Forgets all paths but the root and gives their memory back. Names are spans of `packet` from
  // now on, which must outlive them.
  void Reset(std::string_view packet) noexcept;

  XmpPathIndex Add(XmpPathIndex parent, XmpSpan name);

  std::size_t Count() const noexcept { return m_nodes.size() + 1; }

  // The path around one that is not the root.
  XmpPathIndex Parent(XmpPathIndex path) const noexcept { return NodeOf(path).parent; }

  // The last element's name.
  std::string_view Name(XmpPathIndex path) const noexcept {
    return path == kXmpRootPath ? kRootName : NodeOf(path).name.In(m_packet);
  }

  // Whether the last element's name has a slash in it.
  bool HasSlash(XmpPathIndex path) const noexcept;

  // All names from the root on, each followed by a slash.
  std::string Text(XmpPathIndex path) const;

  // The last `length` bytes of that text, or all of it; no more names are looked at than these
  // need.
  std::string Tail(XmpPathIndex path, std::size_t length) const;

 private:
  static constexpr std::string_view kRootName = "xmpmeta";

  struct Node {
    XmpPathIndex parent = kXmpRootPath;
    XmpSpan name;
  };

  const Node& NodeOf(XmpPathIndex path) const noexcept { return m_nodes[path - 1]; }

  std::string_view m_packet;
  std::vector<Node> m_nodes;  // of every path but the root
};

#endif  // LUMIDEX_XMP_XMPPATHS_H_
