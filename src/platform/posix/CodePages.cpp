#include "platform/posix/CodePages.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Counts what a conversion gives and writes as much of it as there is room for.
template <typename Unit>
class Output {
 public:
  Output(Unit* out, int capacity)
      : m_room(out, static_cast<std::size_t>(capacity)), m_counting(capacity == 0) {}

  void Put(Unit unit) {
    if (m_count < m_room.size()) m_room[m_count] = unit;
    ++m_count;
  }

  int Result() const {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return m_count <= (m_counting ? kMost : m_room.size()) ? static_cast<int>(m_count) : 0;
  }

 private:
  std::span<Unit> m_room;
  std::size_t m_count = 0;
  bool m_counting;
};

// The characters of the bytes 0x80 to 0x9F in windows-1252; every other byte is its own character.
constexpr WCHAR kFirstMapped = 0x80;
// clang-format off
constexpr std::array<WCHAR, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
// clang-format on
constexpr WCHAR kAfterMapped = kFirstMapped + kWindows1252.size();

void DecodeWindows1252(std::span<const char> text, Output<WCHAR>& output) {
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    const bool isMapped = byte >= kFirstMapped && byte < kAfterMapped;
    output.Put(isMapped ? kWindows1252[byte - kFirstMapped] : WCHAR{byte});
  }
}

char EncodeWindows1252(WCHAR unit) {
  if (unit < kFirstMapped || (unit >= kAfterMapped && unit <= 0xFF)) return static_cast<char>(unit);
  for (std::size_t i = 0; i < kWindows1252.size(); ++i) {
    if (kWindows1252[i] == unit) return static_cast<char>(kFirstMapped + i);
  }
  return '?';
}

void EncodeWindows1252(std::span<const WCHAR> text, Output<char>& output) {
  for (const WCHAR unit : text) output.Put(EncodeWindows1252(unit));
}

// The well-formed UTF-8 sequences of more than one byte (The Unicode Standard, table 3-7). Bytes
// after the second are 0x80 to 0xBF.
struct Utf8Form {
  std::uint8_t firstLead;
  std::uint8_t lastLead;
  std::uint8_t lowestSecond;
  std::uint8_t highestSecond;
  std::uint8_t length;
};

// clang-format off
constexpr std::array<Utf8Form, 8> kUtf8Forms = {{
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
}};
// clang-format on

struct Decoded {
  char32_t character;
  std::size_t length;
};

// The character at the start of a text that is not empty; for an ill-formed one the replacement
// character with the length of its maximal ill-formed part.
Decoded DecodeUtf8(std::span<const char> text) {
  const auto byteAt = [text](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
  const std::uint8_t lead = byteAt(0);
  if (lead < 0x80) return {lead, 1};
  for (const Utf8Form& form : kUtf8Forms) {
    if (lead < form.firstLead || lead > form.lastLead) continue;
    char32_t character = lead & (0x7FU >> form.length);
    for (std::size_t i = 1; i < form.length; ++i) {
      if (i == text.size()) return {kReplacement, i};
      const std::uint8_t byte = byteAt(i);
      const std::uint8_t lowest = i == 1 ? form.lowestSecond : std::uint8_t{0x80};
      const std::uint8_t highest = i == 1 ? form.highestSecond : std::uint8_t{0xBF};
      if (byte < lowest || byte > highest) return {kReplacement, i};
      character = character << 6 | (byte & 0x3FU);
    }
    return {character, form.length};
  }
  return {kReplacement, 1};
}

void DecodeUtf8(std::span<const char> text, Output<WCHAR>& output) {
  while (!text.empty()) {
    const auto [character, length] = DecodeUtf8(text);
    text = text.subspan(length);
    if (character < 0x10000) {
      output.Put(static_cast<WCHAR>(character));
      continue;
    }
    output.Put(static_cast<WCHAR>(0xD7C0 + (character >> 10)));
    output.Put(static_cast<WCHAR>(0xDC00 + (character & 0x3FF)));
  }
}

// The character at the start of a text that is not empty; an unpaired surrogate is the replacement
// character.
Decoded DecodeUtf16(std::span<const WCHAR> text) {
  const char32_t first = text[0];
  if (first < 0xD800 || first > 0xDFFF) return {first, 1};
  if (first > 0xDBFF || text.size() < 2) return {kReplacement, 1};
  const char32_t second = text[1];
  if (second < 0xDC00 || second > 0xDFFF) return {kReplacement, 1};
  return {0x10000 + ((first - 0xD800) << 10 | (second - 0xDC00)), 2};
}

void EncodeUtf8(char32_t character, Output<char>& output) {
  const auto putTrail = [character, &output](int shift) {
    output.Put(static_cast<char>(0x80 | (character >> shift & 0x3F)));
  };
  if (character < 0x80) {
    output.Put(static_cast<char>(character));
  } else if (character < 0x800) {
    output.Put(static_cast<char>(0xC0 | character >> 6));
  } else if (character < 0x10000) {
    output.Put(static_cast<char>(0xE0 | character >> 12));
    putTrail(6);
  } else {
    output.Put(static_cast<char>(0xF0 | character >> 18));
    putTrail(12);
    putTrail(6);
  }
  if (character >= 0x80) putTrail(0);
}

void EncodeUtf8(std::span<const WCHAR> text, Output<char>& output) {
  while (!text.empty()) {
    const auto [character, length] = DecodeUtf16(text);
    text = text.subspan(length);
    EncodeUtf8(character, output);
  }
}

// The two conversions have the same calling convention and differ in the two encodings of each.
template <typename From, typename To>
struct CodePage {
  UINT number;
  void (*convert)(std::span<const From> text, Output<To>& output);
};

constexpr std::array<CodePage<char, WCHAR>, 2> kDecoders = {
    {{CP_ACP, DecodeWindows1252}, {CP_UTF8, DecodeUtf8}}};
constexpr std::array<CodePage<WCHAR, char>, 2> kEncoders = {
    {{CP_ACP, EncodeWindows1252}, {CP_UTF8, EncodeUtf8}}};

template <typename From, typename To>
int Convert(const std::array<CodePage<From, To>, 2>& codePages, UINT codePage, const From* text,
            int length, To* out, int capacity) {
  if (text == nullptr || length < 1 || capacity < 0) return 0;
  if (out == nullptr && capacity > 0) return 0;
  for (const CodePage<From, To>& candidate : codePages) {
    if (candidate.number != codePage) continue;
    Output<To> output(out, capacity);
    candidate.convert({text, static_cast<std::size_t>(length)}, output);
    return output.Result();
  }
  return 0;
}

}  // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, WCHAR* out,
                        int capacity) {
  if (flags != 0) return 0;
  return Convert(kDecoders, codePage, text, length, out, capacity);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, const WCHAR* text, int length, char* out,
                        int capacity, const char* defaultCharacter, BOOL* usedDefault) {
  if (flags != 0 || defaultCharacter != nullptr || usedDefault != nullptr) return 0;
  return Convert(kEncoders, codePage, text, length, out, capacity);
}
