#include "Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "Tables.h"
#include "base/ByteOrder.h"

namespace tool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The well-formed sequences of UTF-8 by their lead byte (The Unicode Standard, table 3-7): how many
// bytes follow, and the bounds of the first of them.
struct Utf8Lead {
  std::uint8_t first;
  std::uint8_t last;
  std::uint8_t followers;
  std::uint8_t low;
  std::uint8_t high;
};

// clang-format off
constexpr std::array<Utf8Lead, 8> kUtf8Leads = {{
    {0xC2, 0xDF, 1, 0x80, 0xBF},
    {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF},
    {0xED, 0xED, 2, 0x80, 0x9F},
    {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF},
    {0xF1, 0xF3, 3, 0x80, 0xBF},
    {0xF4, 0xF4, 3, 0x80, 0x8F},
}};
// clang-format on

// Takes one code point from the front of a text, or the maximal ill-formed part as U+FFFD.
char32_t TakeCodePoint(std::string_view& text) {
  const auto lead = static_cast<std::uint8_t>(text[0]);
  text.remove_prefix(1);
  if (lead < 0x80) return lead;
  const auto* row =
      FindInTable(kUtf8Leads, [&](const Utf8Lead& r) { return r.first <= lead && lead <= r.last; });
  if (row == nullptr) return kReplacement;
  char32_t value = lead & (0x3FU >> row->followers);
  for (int i = 0; i < row->followers; ++i) {
    if (text.empty()) return kReplacement;
    const auto next = static_cast<std::uint8_t>(text[0]);
    const bool fits = i == 0 ? row->low <= next && next <= row->high : (next & 0xC0) == 0x80;
    if (!fits) return kReplacement;
    value = value << 6 | (next & 0x3FU);
    text.remove_prefix(1);
  }
  return value;
}

void AppendUtf8(std::string& out, char32_t point) {
  const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
  if (point < 0x80) return put(point);
  if (point < 0x800) {
    put(0xC0 | point >> 6);
    return put(0x80 | (point & 0x3F));
  }
  if (point < 0x10000) {
    put(0xE0 | point >> 12);
  } else {
    put(0xF0 | point >> 18);
    put(0x80 | (point >> 12 & 0x3F));
  }
  put(0x80 | (point >> 6 & 0x3F));
  put(0x80 | (point & 0x3F));
}

void AppendUtf16(WideString& out, char32_t point) {
  if (point < 0x10000) {
    out += static_cast<WCHAR>(point);
    return;
  }
  out += static_cast<WCHAR>(0xD800 + ((point - 0x10000) >> 10));
  out += static_cast<WCHAR>(0xDC00 + ((point - 0x10000) & 0x3FF));
}

bool IsHighSurrogate(char32_t unit) {
  return 0xD800 <= unit && unit <= 0xDBFF;
}
bool IsLowSurrogate(char32_t unit) {
  return 0xDC00 <= unit && unit <= 0xDFFF;
}

// What must not reach a terminal as it is: the control characters, the line and paragraph
// separators, and the marks that turn the direction of writing.
bool NeedsEscape(char32_t point) {
  return point < 0x20 || (0x7F <= point && point <= 0x9F) || point == 0x200E || point == 0x200F ||
         (0x2028 <= point && point <= 0x202E) || (0x2066 <= point && point <= 0x2069);
}

std::string Escape(char32_t point) {
  if (point == '\n') return "\\n";
  if (point == '\r') return "\\r";
  if (point == '\t') return "\\t";
  const bool isByte = point < 0x100;
  const std::string digits = HexNumber(point, isByte ? 2 : 4).substr(2);
  return Concat({isByte ? "\\x" : "\\u", digits});
}

}  // namespace

std::string Concat(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (const std::string_view part : parts) out += part;
  return out;
}

void AppendPart(std::string& list, std::string_view separator, std::string_view part) {
  if (!list.empty()) list += separator;
  list += part;
}

std::string CleanUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  while (!bytes.empty()) AppendUtf8(out, TakeCodePoint(bytes));
  return out;
}

std::string Utf8FromWide(WideStringView text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char32_t unit = static_cast<char16_t>(text[i]);
    const char32_t next = i + 1 < text.size() ? static_cast<char16_t>(text[i + 1]) : 0;
    if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
      AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else {
      AppendUtf8(out, IsHighSurrogate(unit) || IsLowSurrogate(unit) ? kReplacement : unit);
    }
  }
  return out;
}

WideString WideFromUtf8(std::string_view text) {
  WideString out;
  while (!text.empty()) AppendUtf16(out, TakeCodePoint(text));
  return out;
}

WideString WideFromBytes(std::span<const std::uint8_t> bytes) {
  WideString out;
  out.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i < bytes.size() / 2; ++i) {
    out += static_cast<WCHAR>(HostValue<std::uint16_t>(bytes, i));
  }
  return out;
}

std::string TextFromBytes(std::span<const std::uint8_t> bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string Printable(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const char32_t point = TakeCodePoint(text);
    if (NeedsEscape(point)) {
      out += Escape(point);
    } else {
      AppendUtf8(out, point);
    }
  }
  return out;
}

std::size_t Columns(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80;
  }));
}

std::string Shorten(std::string_view text, std::size_t columns) {
  if (Columns(text) <= columns) return std::string(text);
  std::string out;
  for (std::size_t i = 0; i + 3 < columns; ++i) AppendUtf8(out, TakeCodePoint(text));
  return out + "...";
}

std::string Cut(std::string_view text, std::size_t columns) {
  const std::size_t all = Columns(text);
  if (all <= columns) return std::string(text);
  return Concat({Shorten(text, columns), " (", std::to_string(all), " characters)"});
}

std::string Pad(std::string_view text, std::size_t columns) {
  std::string out(text);
  const std::size_t width = Columns(text);
  if (width < columns) out.append(columns - width, ' ');
  return out;
}

std::string WithoutBlanksAround(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(" \t\r\n");
  return std::string(text.substr(first, last - first + 1));
}

bool HasForm(std::string_view text, std::string_view form) {
  return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                    [](char c, char f) { return f == '0' ? '0' <= c && c <= '9' : c == f; });
}

std::string HexBytes(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string out;
  out.reserve(bytes.size() * 2);
  for (const std::uint8_t byte : bytes) {
    out += kDigits[byte >> 4];
    out += kDigits[byte & 0x0F];
  }
  return out;
}

std::string HexNumber(std::uint32_t value, int digits) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string out = "0x";
  bool significant = false;
  for (int shift = 28; shift >= 0; shift -= 4) {
    const std::uint32_t digit = value >> shift & 0x0F;
    significant = significant || digit != 0 || shift < digits * 4;
    if (significant) out += kDigits[digit];
  }
  return out;
}

std::string Number(double value, int decimals) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
  std::array<char, std::numeric_limits<double>::max_exponent10 + 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::fixed, decimals);
  std::string text(buffer.data(), end.ptr);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string ExactNumber(double value) {
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end.ptr};
}

}  // namespace tool
