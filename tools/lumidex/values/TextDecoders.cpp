#include <algorithm>
#include <array>
#include <string_view>

#include "Text.h"
#include "base/ByteOrder.h"
#include "base/TypeSizes.h"
#include "values/Decoders.h"

namespace tool {
namespace {

// The character codes in front of a comment (EXIF 2.32, 0x9286), 8 bytes each.
constexpr std::size_t kCharacterCodeSize = 8;
constexpr std::string_view kUnicodeCode = "UNICODE";
constexpr std::array<std::string_view, 3> kByteCodes = {"ASCII", "JIS", std::string_view("\0", 1)};

// The number of zero bytes at the even places less that at the odd ones: Latin text in UTF-16 shows
// its byte order by it.
int ZeroBalance(std::span<const std::uint8_t> bytes) {
  int balance = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == 0) balance += i % 2 == 0 ? 1 : -1;
  }
  return balance;
}

// A comment's UTF-16 is in the byte order of its file or of its writer; nothing says which.
std::string WideComment(std::span<const std::uint8_t> bytes) {
  ByteOrder order = ByteOrder::LittleEndian;
  if (ZeroBalance(bytes) > 0) order = ByteOrder::BigEndian;
  if (bytes.size() >= 2 && LoadU16(bytes, ByteOrder::BigEndian) == 0xFEFF) {
    order = ByteOrder::BigEndian;
  }
  WideString text;
  for (std::size_t i = 0; i + 2 <= bytes.size(); i += 2) {
    const std::uint16_t unit = LoadU16(bytes.subspan(i, 2), order);
    if (unit == 0) break;
    if (unit != 0xFEFF) text += static_cast<WCHAR>(unit);
  }
  return Utf8FromWide(text);
}

std::string ByteComment(std::span<const std::uint8_t> bytes) {
  const std::string text = TextFromBytes(bytes);
  return CleanUtf8(std::string_view(text).substr(0, text.find('\0')));
}

std::string DottedBytes(std::span<const std::uint8_t> bytes) {
  std::string out;
  for (const std::uint8_t byte : bytes) AppendPart(out, ".", std::to_string(byte));
  return out;
}

}  // namespace

std::string DateAndTime(const Value& value) {
  std::string text = TextOf(value.entry);
  if (!HasForm(text, "0000:00:00 00:00:00")) return {};
  text[4] = '-';
  text[7] = '-';
  return text;
}

std::string GpsDate(const Value& value) {
  std::string text = TextOf(value.entry);
  if (!HasForm(text, "0000:00:00")) return {};
  text[4] = '-';
  text[7] = '-';
  return text;
}

std::string DigitVersion(const Value& value) {
  const std::string digits = TextOf(value.entry);
  if (!HasForm(digits, "0000")) return {};
  const std::string major = digits[0] == '0' ? digits.substr(1, 1) : digits.substr(0, 2);
  const bool isShort = digits[3] == '0';
  return major + "." + digits.substr(2, isShort ? 1 : 2);
}

std::string ByteVersion(const Value& value) {
  const auto bytes = TagBytes(value.entry);
  return bytes.size() == 4 ? DottedBytes(bytes) : std::string();
}

// EXIF 2.32, 0x9101.
std::string Components(const Value& value) {
  constexpr std::array<const char*, 7> kNames = {"-", "Y", "Cb", "Cr", "R", "G", "B"};
  const auto bytes = TagBytes(value.entry);
  if (bytes.size() != 4) return {};
  std::string out;
  for (const std::uint8_t byte : bytes) {
    if (byte >= kNames.size()) return {};
    if (byte != 0) AppendPart(out, " ", kNames[byte]);
  }
  return out;
}

std::string Comment(const Value& value) {
  const auto bytes = TagBytes(value.entry);
  if (bytes.size() < kCharacterCodeSize) return {};
  const std::string code = TextFromBytes(bytes.first(kCharacterCodeSize));
  const auto text = bytes.subspan(kCharacterCodeSize);
  std::string out;
  if (code.starts_with(kUnicodeCode)) {
    out = WideComment(text);
  } else if (std::any_of(kByteCodes.begin(), kByteCodes.end(),
                         [&](std::string_view known) { return code.starts_with(known); })) {
    out = ByteComment(text);
  } else {
    return {};
  }
  out = WithoutBlanksAround(out);
  return out.empty() ? "(empty)" : out;
}

std::string WideBytes(const Value& value) {
  const WideString text = WideFromBytes(TagBytes(value.entry));
  return Utf8FromWide(WideStringView(text).substr(0, text.find(WCHAR{0})));
}

// The photographer's copyright, a zero, the editor's; a blank stands for the absent first one
// (EXIF 2.32, 0x8298).
std::string CopyrightParts(const Value& value) {
  const std::string text = TextFromBytes(TagBytes(value.entry));
  const auto end = text.find('\0');
  if (value.entry.m_nType != TYPE_ASCII || end == std::string::npos) return {};
  const std::string first = WithoutBlanksAround(CleanUtf8(std::string_view(text).substr(0, end)));
  const auto rest = std::string_view(text).substr(end + 1);
  const std::string second = WithoutBlanksAround(CleanUtf8(rest.substr(0, rest.find('\0'))));
  if (second.empty()) return first;
  return Concat({first, first.empty() ? "" : "; ", "edited: ", second});
}

std::string Characters(const Value& value) {
  return TextOf(value.entry);
}

std::string ByteTotal(const Value& value) {
  return std::to_string(TagBytes(value.entry).size()) + " bytes";
}

std::string Lines(const Value& value) {
  std::string_view text;
  const std::string whole = TextOf(value.entry);
  text = whole;
  std::string out;
  while (!text.empty()) {
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    if (!line.empty()) AppendPart(out, "; ", line);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
  return out;
}

// IIM 4.2, dataset 1:90: the escape sequence of ISO 2022 that chooses UTF-8.
std::string CharacterSet(const Value& value) {
  const TagEntry& entry = value.entry;
  const bool isUtf8 =
      NumberAt(entry, 0) == 0x1B && NumberAt(entry, 1) == '%' && NumberAt(entry, 2) == 'G';
  return isUtf8 ? "UTF-8 (ESC % G)" : "";
}

// The two bytes of the number stand in a 32-bit value each.
std::string RecordVersion(const Value& value) {
  if (ElementCount(value.entry) != 2) return {};
  return Number(NumberAt(value.entry, 0) * 256 + NumberAt(value.entry, 1), 0);
}

}  // namespace tool
