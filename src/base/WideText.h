#ifndef LUMIDEX_BASE_WIDETEXT_H_
#define LUMIDEX_BASE_WIDETEXT_H_

// UTF-16 texts as stored values hold them: in host byte order, with a final zero.

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/ByteOrder.h"
#include "platform/Win32.h"

// The text up to its first zero; an odd last byte does not count.
inline WideString LoadWideText(std::span<const std::uint8_t> bytes) {
  WideString text;
  for (std::size_t i = 0; i < bytes.size() / sizeof(WCHAR); ++i) {
    const auto unit = HostValue<WCHAR>(bytes, i);
    if (unit == 0) break;
    text.push_back(unit);
  }
  return text;
}

// The bytes of a text and its final zero; they live as long as the text.
inline std::span<const std::uint8_t> WideTextBytes(const WideString& text) noexcept {
  return {reinterpret_cast<const std::uint8_t*>(text.c_str()), (text.size() + 1) * sizeof(WCHAR)};
}

#endif  // LUMIDEX_BASE_WIDETEXT_H_
