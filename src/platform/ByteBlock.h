#ifndef LUMIDEX_PLATFORM_BYTEBLOCK_H_
#define LUMIDEX_PLATFORM_BYTEBLOCK_H_

// Bytes of a text that are compared all at once, which costs no guess at where among them one
// stands. Every processor with 64 bits of the x86 family can do it; others compare one by one, with
// the same results.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

// A mark is a bit by the byte's place, the first byte being the lowest bit.
using ByteMarks = std::uint32_t;

inline constexpr std::size_t kByteBlockSize = 32;

class PlainByteBlock {
 public:
  // There are kByteBlockSize bytes.
  explicit PlainByteBlock(const char* bytes) noexcept {
    std::copy_n(bytes, kByteBlockSize, m_bytes.begin());
  }

  // Marks the bytes that are one of the wanted.
  template <char... kWanted>
  ByteMarks AnyOf() const noexcept {
    ByteMarks marks = 0;
    for (std::size_t i = 0; i < kByteBlockSize; ++i) {
      marks |= ByteMarks{((m_bytes[i] == kWanted) || ...)} << i;
    }
    return marks;
  }

 private:
  std::array<char, kByteBlockSize> m_bytes;
};

#if defined(__SSE2__) || defined(_M_X64)

class ByteBlock {
 public:
  explicit ByteBlock(const char* bytes) noexcept : m_low(Load(bytes)), m_high(Load(bytes + 16)) {}

  template <char... kWanted>
  ByteMarks AnyOf() const noexcept {
    return BitsOf(IsAnyOf<kWanted...>(m_low)) | BitsOf(IsAnyOf<kWanted...>(m_high)) << 16;
  }

 private:
  static __m128i Load(const char* bytes) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  }
  static ByteMarks BitsOf(__m128i bytes) noexcept {
    return static_cast<ByteMarks>(_mm_movemask_epi8(bytes));
  }

  template <char kFirst, char... kOthers>
  static __m128i IsAnyOf(__m128i bytes) noexcept {
    const __m128i isFirst = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(kFirst));
    if constexpr (sizeof...(kOthers) == 0) {
      return isFirst;
    } else {
      return _mm_or_si128(isFirst, IsAnyOf<kOthers...>(bytes));
    }
  }

  __m128i m_low;
  __m128i m_high;
};

#else

using ByteBlock = PlainByteBlock;

#endif

#endif  // LUMIDEX_PLATFORM_BYTEBLOCK_H_
