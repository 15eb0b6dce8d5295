#ifndef LUMIDEX_XMP_XMPNAMESET_H_
#define LUMIDEX_XMP_XMPNAMESET_H_

// Names by their lengths and first letters, which tell names apart well: the set turns most others
// away at once.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

class XmpNameSet {
 public:
  // A name is neither empty nor as long as there are lengths.
  constexpr void Add(std::string_view name) noexcept { m_letters[name.size()] |= Letter(name[0]); }

  // True for every name of the set and for a few others. An empty name has any first letter.
  bool MayHold(std::size_t length, char first) const noexcept {
    return length < m_letters.size() && (m_letters[length] & Letter(first)) != 0;
  }

 private:
  // A bit by the letter's low six bits.
  static constexpr std::uint64_t Letter(char first) noexcept {
    return std::uint64_t{1} << (static_cast<unsigned char>(first) % 64);
  }

  std::array<std::uint64_t, 32> m_letters = {};  // of each length
};

#endif  // LUMIDEX_XMP_XMPNAMESET_H_
