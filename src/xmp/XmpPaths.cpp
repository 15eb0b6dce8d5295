#include "xmp/XmpPaths.h"

#include <algorithm>
#include <limits>

#include "xmp/TextSearch.h"

void XmpPaths::Reset(std::string_view packet) noexcept {
  m_packet = packet;
  m_nodes = std::vector<Node>();
}

XmpPathIndex XmpPaths::Add(XmpPathIndex parent, XmpSpan name) {
  constexpr std::size_t kFewPaths = 32;
  if (m_nodes.empty()) m_nodes.reserve(kFewPaths);
  m_nodes.push_back({parent, name});
  return static_cast<XmpPathIndex>(m_nodes.size());
}

bool XmpPaths::HasSlash(XmpPathIndex path) const noexcept {
  if (path == kXmpRootPath) return false;
  const XmpSpan name = NodeOf(path).name;
  if (name.length < kByteBlockSize && HasBlock(m_packet, name.start)) {
    return MarksBefore(LoadBlock(m_packet, name.start).AnyOf<'/'>(), name.length) != 0;
  }
  return Name(path).find('/') != std::string_view::npos;
}

std::string XmpPaths::Text(XmpPathIndex path) const {
  return Tail(path, std::numeric_limits<std::size_t>::max());
}

// Names are met from the last to the first, so the text is built backwards.
std::string XmpPaths::Tail(XmpPathIndex path, std::size_t length) const {
  std::string reversed;
  while (reversed.size() < length) {
    reversed += '/';
    std::string_view name = Name(path);
    name.remove_prefix(name.size() - std::min(name.size(), length - reversed.size()));
    reversed.append(name.rbegin(), name.rend());
    if (path == kXmpRootPath) break;
    path = Parent(path);
  }
  return {reversed.rbegin(), reversed.rend()};
}
