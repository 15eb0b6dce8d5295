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

class XmpBindings {
 public:
  // Forgets all bindings. Prefixes are parts of `packet` from now on, which must outlive them.
  void Reset(std::string_view packet) noexcept;

  // Binds a prefix, or binds it anew.
  void Bind(XmpSpan prefix, XmpSpan nameSpace);

  // What is bound to a prefix, or null. Valid until the next Bind or Reset.
  const XmpSpan* Find(XmpSpan prefix) noexcept {
    const std::uint64_t head = HeadOf(m_packet, prefix.start, prefix.length);
    if (m_last < m_count && IsOf(m_few[m_last], prefix, head)) return &m_few[m_last].nameSpace;
    return FindAnother(prefix, head);
  }

 private:
  // The head, which is most prefixes as a whole, tells them apart quickly.
  struct Binding {
    std::uint64_t head = 0;
    XmpSpan prefix;
    XmpSpan nameSpace;
  };

  bool IsOf(const Binding& binding, XmpSpan prefix, std::uint64_t head) const noexcept {
    return binding.head == head && binding.prefix.length == prefix.length &&
           (prefix.length <= kChunkSize || binding.prefix.In(m_packet) == prefix.In(m_packet));
  }

  XmpSpan* FindAnother(XmpSpan prefix, std::uint64_t head) noexcept;

  static constexpr std::size_t kFew = 16;

  std::string_view m_packet;
  std::array<Binding, kFew> m_few = {};  // the first ones, as many as m_count says
  std::size_t m_count = 0;
  std::size_t m_last = 0;                      // where the last one was found
  std::map<std::string_view, XmpSpan> m_many;  // those after the first ones
};

#endif  // LUMIDEX_XMP_XMPBINDINGS_H_
