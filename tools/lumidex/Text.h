#ifndef LUMIDEX_TOOL_TEXT_H_
#define LUMIDEX_TOOL_TEXT_H_

// Texts of the tool: UTF-8 inside, well-formed whatever a file holds, and the same on every
// platform, which is why the system's conversions are not used.

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "platform/Win32.h"

namespace tool {

// The parts in one text.
std::string Concat(std::initializer_list<std::string_view> parts);

// Appends a part to a list, behind a separator unless it is the first.
void AppendPart(std::string& list, std::string_view separator, std::string_view part);

// Well-formed UTF-8 from bytes; each maximal ill-formed part becomes one U+FFFD.
std::string CleanUtf8(std::string_view bytes);

// UTF-8 from UTF-16; an unpaired surrogate becomes U+FFFD.
std::string Utf8FromWide(WideStringView text);

// UTF-16 from UTF-8, with U+FFFD as in CleanUtf8.
WideString WideFromUtf8(std::string_view text);

// The code units of a UTF-16 value as stored: whole units in host order, an odd last byte left out.
WideString WideFromBytes(std::span<const std::uint8_t> bytes);

// The bytes as characters.
std::string TextFromBytes(std::span<const std::uint8_t> bytes);

// Safe to print in one line: control characters and those that turn the direction of writing become
// escapes such as \n, \x1B or \u202E. The text must be well-formed.
std::string Printable(std::string_view text);

// The number of code points of a well-formed text, which is taken for its width.
std::size_t Columns(std::string_view text);

// The text itself, or its beginning with "..." so that it has at most `columns` code points.
std::string Shorten(std::string_view text, std::size_t columns);

// The same with the number of code points behind it, "... (300 characters)".
std::string Cut(std::string_view text, std::size_t columns);

// The text filled up with blanks.
std::string Pad(std::string_view text, std::size_t columns);

std::string WithoutBlanksAround(std::string_view text);

// Whether a text has the form of a pattern in which "0" stands for any digit.
bool HasForm(std::string_view text, std::string_view form);

// "0a1b2c".
std::string HexBytes(std::span<const std::uint8_t> bytes);

// "0x0010": upper-case digits, at least `digits` of them.
std::string HexNumber(std::uint32_t value, int digits);

// The number with at most `decimals` decimals, rounded, without zeros at its end; "nan", "inf",
// "-inf".
std::string Number(double value, int decimals);

// The shortest text that is read back as the same number.
std::string ExactNumber(double value);

}  // namespace tool

#endif  // LUMIDEX_TOOL_TEXT_H_
