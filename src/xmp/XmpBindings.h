#ifndef LUMIDEX_XMP_XMPBINDINGS_H_
#define LUMIDEX_XMP_XMPBINDINGS_H_

// The namespaces that a packet binds to prefixes. Most packets bind a few and use one of them for
// many properties in a row; one that binds very many is still read in good time.

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "xmp/ByteChunks.h"
#include "xmp/XmpKnownPrefix.h"
#include "xmp/XmpPaths.h"

// The prefix of the attributes that bind others.
inline constexpr std::string_view kXmpBindingPrefix = "xmlns";

class XmpBindings {
 public:
  // Forgets all bindings. Prefixes are parts of `packet` from now on, which must outlive them.
  void Reset(std::string_view packet) noexcept;

  // Binds a prefix, or binds it anew.
  void Bind(XmpSpan prefix, XmpSpan nameSpace);

  // What is bound to a prefix, or null. Valid until the next call.
  const XmpSpan* Find(XmpSpan prefix) noexcept {
    if (prefix.length == m_known.Length() && m_known.StandsAt(m_packet, prefix.start)) {
      return &m_knownNamespace;
    }
    return FindAnother(prefix);
  }

  // The first ones' last prefix that was found or bound, and its namespace. None when it is an
  // unusual one.
  const XmpKnownPrefix& Known() const noexcept { return m_known; }
  XmpSpan KnownNamespace() const noexcept { return m_knownNamespace; }

 private:
  // The prefix's first bytes, which are most prefixes as a whole, tell it apart quickly.
  struct Binding {
    std::uint64_t head = 0;
    XmpSpan prefix = {};
    XmpSpan nameSpace = {};
    XmpKnownPrefix known;
  };

  void Know(const Binding& binding) noexcept {
    m_known = binding.known;
    m_knownNamespace = binding.nameSpace;
  }
  Binding* FindFew(XmpSpan prefix, std::uint64_t head) noexcept;
  const XmpSpan* FindAnother(XmpSpan prefix) noexcept;

  static constexpr std::size_t kFew = 16;

  std::string_view m_packet;
  XmpKnownPrefix m_known;
  XmpSpan m_knownNamespace = {};
  std::vector<Binding> m_few;                  // the first ones
  std::map<std::string_view, XmpSpan> m_many;  // those after the first ones
};

#endif  // LUMIDEX_XMP_XMPBINDINGS_H_
