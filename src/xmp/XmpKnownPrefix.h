#ifndef LUMIDEX_XMP_XMPKNOWNPREFIX_H_
#define LUMIDEX_XMP_XMPKNOWNPREFIX_H_

// A short prefix and its colon as the first bytes of a chunk. Most names of a packet share theirs
// with the name before: one comparison then finds the colon and the namespace.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "xmp/ByteChunks.h"

class XmpKnownPrefix {
 public:
  // None, which stands nowhere.
  XmpKnownPrefix() = default;

  // The first `length` bytes of a chunk, at least one; they leave room for the colon.
  XmpKnownPrefix(std::uint64_t chunk, std::uint32_t length) noexcept
      : m_mask(FirstBytes(length + 1)),
        m_bytes((chunk & FirstBytes(length)) | std::uint64_t{':'} << 8 * length),
        m_length(length) {}

  bool StandsAt(std::string_view text, std::size_t at) const noexcept {
    return at + kChunkSize <= text.size() && (LoadChunk(text, at) & m_mask) == m_bytes;
  }

  // Without the colon.
  std::uint32_t Length() const noexcept { return m_length; }

 private:
  std::uint64_t m_mask = 0;
  std::uint64_t m_bytes = 1;  // what no chunk has under an empty mask
  std::uint32_t m_length = 0;
};

#endif  // LUMIDEX_XMP_XMPKNOWNPREFIX_H_
