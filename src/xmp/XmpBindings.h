#ifndef LUMIDEX_XMP_XMPBINDINGS_H_
#define LUMIDEX_XMP_XMPBINDINGS_H_

// The namespaces that a packet binds to prefixes. Most packets bind a few and use one of them for
// many properties in a row; one that binds very many is still read in good time.

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>

#include "xmp/ByteChunks.h"
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
    return IsKnown(prefix) ? &m_known.nameSpace : FindAnother(prefix);
  }

 private:
  // The prefix's first bytes, which are most prefixes as a whole, tell it apart quickly.
  struct Binding {
    std::uint64_t head;
    XmpSpan prefix;
    XmpSpan nameSpace;
  };

  // What no prefix has under an empty mask.
  static constexpr Binding kNone = {1, {}, {}};

  // Whether a prefix is the one that was found last.
  bool IsKnown(XmpSpan prefix) const noexcept {
    return prefix.length == m_known.prefix.length &&
           std::size_t{prefix.start} + kChunkSize <= m_packet.size() &&
           (LoadChunk(m_packet, prefix.start) & m_knownBytes) == m_known.head;
  }
  void Know(const Binding& binding) noexcept;
  void KnowNone() noexcept;
  const XmpSpan* FindAnother(XmpSpan prefix) noexcept;
  const Binding* FindFirst(XmpSpan prefix) const noexcept;

  static constexpr std::size_t kFew = 24;

  std::string_view m_packet;
  Binding m_known = kNone;
  std::uint64_t m_knownBytes = 0;               // those of a chunk that are its prefix
  std::array<Binding, kFew> m_first;            // in their order; a prefix may be there repeatedly
  std::size_t m_count = 0;                      // of them
  std::map<std::string_view, XmpSpan> m_later;  // the last one of each prefix
};

#endif  // LUMIDEX_XMP_XMPBINDINGS_H_
