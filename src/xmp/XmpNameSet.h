#ifndef LUMIDEX_XMP_XMPNAMESET_H_
#define LUMIDEX_XMP_XMPNAMESET_H_

// Names by their last characters, which tell names apart well and stand right before the "=" or the
// ">" that is found first: the set turns most other names away before anything else is known of
// them.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "xmp/ByteChunks.h"

class XmpNameSet {
 public:
  // The last characters of a name, of which it has at least as many.
  static constexpr std::size_t kEndingSize = 4;
  static constexpr std::uint32_t EndingOf(std::string_view name) noexcept {
    std::array<char, kEndingSize> ending = {};
    std::copy_n(name.end() - kEndingSize, kEndingSize, ending.begin());
    return std::bit_cast<std::uint32_t>(ending);
  }

  // Makes the high bits of a number depend on all of an ending.
  static constexpr std::uint32_t Spread(std::uint32_t ending) noexcept {
    return ending * 0x9E3779B1;
  }

  // A name has at least that many characters; one name may have two.
  constexpr void Add(std::string_view name) noexcept {
    if (name.size() < kEndingSize) {
      m_pair = static_cast<std::uint32_t>(name[1]) << 8 | static_cast<std::uint32_t>(name[0]);
      return;
    }
    const std::uint32_t ending = EndingOf(name);
    m_endings[Slot(ending) / 64] |= Bit(ending);
  }

  // Whether a name of the set may end at a position of a text: true for all of them and for a few
  // others.
  bool MayHold(std::string_view text, std::size_t end) const noexcept {
    if (end < kEndingSize) return true;
    const std::uint32_t ending = LoadHalf(text, end - kEndingSize);
    return (m_endings[Slot(ending) / 64] & Bit(ending)) != 0 || ending >> 16 == m_pair;
  }

 private:
  // One of 1024.
  static constexpr std::uint32_t Slot(std::uint32_t ending) noexcept {
    return Spread(ending) >> 22;
  }
  static constexpr std::uint64_t Bit(std::uint32_t ending) noexcept {
    return std::uint64_t{1} << Slot(ending) % 64;
  }

  std::array<std::uint64_t, 16> m_endings = {};  // a bit for each slot
  std::uint32_t m_pair = 0xFFFFFFFF;             // the name of two characters; none without one
};

#endif  // LUMIDEX_XMP_XMPNAMESET_H_
