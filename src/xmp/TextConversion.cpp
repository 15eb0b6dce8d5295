#include "xmp/TextConversion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "xmp/ByteChunks.h"

namespace {

constexpr UINT kAnsiCodePage = 0;
constexpr UINT kUtf8CodePage = 65001;

// The system takes lengths as int and the buffers have one unit more; what does not fit has length
// 0, which no conversion accepts.
int SystemLength(std::size_t length) {
  constexpr auto kTooLong = static_cast<std::size_t>(std::numeric_limits<int>::max());
  return length < kTooLong ? static_cast<int>(length) : 0;
}

// Runs a system conversion that gives no more units than `needed` and takes its result up to the
// first zero. A conversion that fails gives the empty text. False when there is no memory for the
// buffer; `out` is then untouched.
template <typename Unit, typename Convert>
bool ConvertInto(std::basic_string<Unit>* out, int needed, Convert convert) {
  const int room = needed + 1;
  const std::unique_ptr<Unit[]> buffer(new (std::nothrow) Unit[static_cast<std::size_t>(room)]);
  if (!buffer) return false;
  const auto written = static_cast<std::size_t>(convert(buffer.get(), room));
  const std::basic_string_view<Unit> text(buffer.get(), written);
  out->assign(text.substr(0, text.find(Unit{0})));
  return true;
}

bool IsUsual(UINT codePage) {
  return codePage == kAnsiCodePage || codePage == kUtf8CodePage;
}

constexpr std::uint64_t kHighBits = 0x8080808080808080;

// Of a text that is a chunk at least the last chunk may overlap the one before.
bool IsAscii(std::string_view text) {
  std::uint64_t bits = 0;
  if (text.size() < kChunkSize) {
    for (const char character : text) bits |= static_cast<unsigned char>(character);
  } else {
    bits = LoadChunk(text, text.size() - kChunkSize);
    for (std::size_t at = 0; at < text.size() - kChunkSize; at += kChunkSize) {
      bits |= LoadChunk(text, at);
    }
  }
  return (bits & kHighBits) == 0;
}

// Most texts are ASCII up to their first zero, which both code pages read alike and which needs no
// call of the system. False, with `out` untouched, for others. Throws std::bad_alloc.
bool WidenAscii(std::string_view text, UINT codePage, WideString* out) {
  if (text.empty() || !IsPlainText(text, codePage)) return false;
  text = text.substr(0, text.find('\0'));
  *out = WideString(text.begin(), text.end());
  return true;
}

// The four lowest bytes of a chunk as UTF-16 units.
std::uint64_t WidenFour(std::uint64_t chunk) {
  chunk &= 0xFFFFFFFF;
  chunk = (chunk | chunk << 16) & 0x0000FFFF0000FFFF;
  return (chunk | chunk << 8) & 0x00FF00FF00FF00FF;
}

void WidenByte(std::string_view text, std::size_t at, std::span<std::uint8_t> out) {
  const auto unit = static_cast<WCHAR>(text[at]);
  std::memcpy(out.subspan(at * sizeof(WCHAR)).data(), &unit, sizeof(unit));
}

void WidenChunk(std::string_view text, std::size_t at, std::span<std::uint8_t> out) {
  const std::uint64_t chunk = LoadChunk(text, at);
  const std::array<std::uint64_t, 2> units = {WidenFour(chunk), WidenFour(chunk >> 32)};
  std::memcpy(out.subspan(at * sizeof(WCHAR)).data(), units.data(), sizeof(units));
}

struct XmlEntity {
  WideStringView text;
  WCHAR character;
};

// clang-format off
constexpr std::array<XmlEntity, 5> kXmlEntities = {{
    {LMD_W("&quot;"), LMD_W('"')},
    {LMD_W("&apos;"), LMD_W('\'')},
    {LMD_W("&lt;"),   LMD_W('<')},
    {LMD_W("&gt;"),   LMD_W('>')},
    {LMD_W("&amp;"),  LMD_W('&')},
}};
// clang-format on

// The entity at the start of a text, or its first unit standing for itself.
XmlEntity FirstEntity(WideStringView text) {
  for (const XmlEntity& entity : kXmlEntities) {
    if (text.starts_with(entity.text)) return entity;
  }
  return {text.substr(0, 1), text[0]};
}

}  // namespace

bool IsPlainText(std::string_view text, std::uint32_t codePage) noexcept {
  return IsUsual(codePage) && IsAscii(text) && (text.empty() || SystemLength(text.size()) != 0);
}

void WidenPlainText(std::string_view text, std::span<std::uint8_t> out) noexcept {
  if (text.size() < kChunkSize) {
    for (std::size_t i = 0; i < text.size(); ++i) WidenByte(text, i, out);
  } else {
    for (std::size_t at = 0; at < text.size() - kChunkSize; at += kChunkSize) {
      WidenChunk(text, at, out);
    }
    WidenChunk(text, text.size() - kChunkSize, out);
  }
  constexpr WCHAR kEnd = 0;
  std::memcpy(out.subspan(text.size() * sizeof(WCHAR)).data(), &kEnd, sizeof(kEnd));
}

HRESULT ConvertToWide(std::string_view text, WideString* out, std::uint32_t codePage) {
  if (out == nullptr) return E_POINTER;
  try {
    if (WidenAscii(text, codePage, out)) return S_OK;
  } catch (const std::bad_alloc&) {
    return E_POINTER;
  }
  const auto convert = [&text, codePage](WCHAR* buffer, int room) {
    return MultiByteToWideChar(codePage, 0, text.data(), SystemLength(text.size()), buffer, room);
  };
  // In the usual code pages a text has no more units than bytes, so that only for others the system
  // has to be asked.
  const int length = SystemLength(text.size());
  const int needed =
      IsUsual(codePage) ? length : SystemLength(static_cast<std::size_t>(convert(nullptr, 0)));
  return ConvertInto(out, needed, convert) ? S_OK : E_POINTER;
}

WideString ToWideString(std::string_view text, std::uint32_t codePage) {
  WideString wide;
  static_cast<void>(ConvertToWide(text, &wide, codePage));
  return wide;
}

std::string ToAnsiString(const WideString& text) {
  std::string bytes;
  const auto convert = [&text](char* buffer, int room) {
    return WideCharToMultiByte(kAnsiCodePage, 0, text.data(), SystemLength(text.size()), buffer,
                               room, nullptr, nullptr);
  };
  const int needed = SystemLength(static_cast<std::size_t>(convert(nullptr, 0)));
  static_cast<void>(ConvertInto(&bytes, needed, convert));
  return bytes;
}

WideString DecodeXmlEntities(const WideString& text) {
  // By design: numeric references and other named entities stay, and what "&amp;" gives is not
  // looked at again.
  WideStringView rest = WideStringView(text).substr(0, text.find(LMD_W('\0')));
  WideString decoded;
  decoded.reserve(rest.size());
  while (!rest.empty()) {
    const auto plain = rest.substr(0, rest.find(LMD_W('&')));
    decoded += plain;
    rest.remove_prefix(plain.size());
    if (rest.empty()) break;
    const auto [entity, character] = FirstEntity(rest);
    decoded += character;
    rest.remove_prefix(entity.size());
  }
  return decoded;
}
