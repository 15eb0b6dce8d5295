#ifndef LUMIDEX_XMP_XMPKNOWNPREFIX_H_
#define LUMIDEX_XMP_XMPKNOWNPREFIX_H_

// A prefix of up to 15 characters and its colon. Most names of a packet share theirs with the name
// before: a comparison or two of eight bytes then find the colon and the namespace.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "xmp/ByteChunks.h"

class XmpKnownPrefix {
 public:
  // None, which stands nowhere.
  XmpKnownPrefix() = default;

  // The length is at least 1 and at most kLongest.
  explicit XmpKnownPrefix(std::string_view prefix) noexcept : m_length(prefix.size()) {
    std::array<char, 2 * kChunkSize> bytes = {};
    std::ranges::copy(prefix, bytes.begin());
    bytes[m_length] = ':';
    const std::string_view text(bytes.data(), bytes.size());
    m_mask = FirstBytes(m_length + 1);
    m_head = LoadChunk(text, 0);
    if (m_length >= kChunkSize) m_tail = LoadChunk(text, m_length + 1 - kChunkSize);
  }

  bool StandsAt(std::string_view text, std::size_t at) const noexcept {
    if (at + kChunkSize > text.size() || (LoadChunk(text, at) & m_mask) != m_head) return false;
    return m_length < kChunkSize || HasTailAt(text, at + m_length + 1);
  }

  // Without the colon.
  std::size_t Length() const noexcept { return m_length; }

  static constexpr std::size_t kLongest = 2 * kChunkSize - 1;

 private:
  bool HasTailAt(std::string_view text, std::size_t end) const noexcept {
    return end <= text.size() && LoadChunk(text, end - kChunkSize) == m_tail;
  }

  std::size_t m_length = 0;
  std::uint64_t m_mask = 0;
  std::uint64_t m_head = 1;  // what no chunk has under an empty mask
  std::uint64_t m_tail = 0;  // the last bytes of one that is as long as a chunk
};

#endif  // LUMIDEX_XMP_XMPKNOWNPREFIX_H_
