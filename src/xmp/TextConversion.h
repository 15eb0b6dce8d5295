#ifndef LUMIDEX_XMP_TEXTCONVERSION_H_
#define LUMIDEX_XMP_TEXTCONVERSION_H_

// Conversions between byte texts and UTF-16, and the five predefined XML entities. Every result is
// cut at its first zero. No state; callable from any thread.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Win32.h"

// Converts a byte text in a Windows code page (0 the ANSI code page, 65001 UTF-8). Ill-formed input
// is converted as the system does with flags 0, never rejected. E_POINTER, with `out` untouched,
// when `out` is null or there is no memory.
HRESULT ConvertToWide(std::string_view text, WideString* out, std::uint32_t codePage);

// The same as a result; empty when the conversion failed.
WideString ToWideString(std::string_view text, std::uint32_t codePage);

// Whether a text without a zero has the same characters in both of these code pages and is in one
// of them: ASCII, as most are.
bool IsPlainText(std::string_view text, std::uint32_t codePage) noexcept;

// The units of such a text and a final zero, as bytes in host byte order. There is room for them.
void WidenPlainText(std::string_view text, std::span<std::uint8_t> out) noexcept;

// Converts to the ANSI code page; what it cannot represent becomes the system's default character.
// Empty when there is no memory.
std::string ToAnsiString(const WideString& text);

// Replaces &quot; &apos; &lt; &gt; and &amp; in a single pass; anything else stays as it is.
WideString DecodeXmlEntities(const WideString& text);

#endif  // LUMIDEX_XMP_TEXTCONVERSION_H_
