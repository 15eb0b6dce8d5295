#include "xmp/TextConversion.h"

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <new>

namespace {

constexpr UINT kAnsiCodePage = 0;

// The system takes lengths as int and the buffers have one unit more; what does not fit has length
// 0, which no conversion accepts.
int SystemLength(std::size_t length) {
  constexpr auto kTooLong = static_cast<std::size_t>(std::numeric_limits<int>::max());
  return length < kTooLong ? static_cast<int>(length) : 0;
}

// Runs a system conversion twice, first for the size of its result, and takes the result up to its
// first zero. A conversion that fails gives the empty text. False when there is no memory for the
// buffer; `out` is then untouched.
template <typename Unit, typename Convert>
bool ConvertInto(std::basic_string<Unit>* out, Convert convert) {
  const int needed = SystemLength(static_cast<std::size_t>(convert(nullptr, 0)));
  const int room = needed + 1;
  const std::unique_ptr<Unit[]> buffer(new (std::nothrow) Unit[static_cast<std::size_t>(room)]);
  if (!buffer) return false;
  const int written = convert(buffer.get(), room);
  buffer[static_cast<std::size_t>(written)] = 0;
  out->assign(buffer.get());
  return true;
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
  if (text[0] == LMD_W('&')) {
    for (const XmlEntity& entity : kXmlEntities) {
      if (text.starts_with(entity.text)) return entity;
    }
  }
  return {text.substr(0, 1), text[0]};
}

}  // namespace

HRESULT ConvertToWide(std::string text, WideString* out, std::uint32_t codePage) {
  if (out == nullptr) return E_POINTER;
  const auto convert = [&text, codePage](WCHAR* buffer, int room) {
    return MultiByteToWideChar(codePage, 0, text.data(), SystemLength(text.size()), buffer, room);
  };
  return ConvertInto(out, convert) ? S_OK : E_POINTER;
}

WideString ToWideString(const std::string& text, std::uint32_t codePage) {
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
  static_cast<void>(ConvertInto(&bytes, convert));
  return bytes;
}

WideString DecodeXmlEntities(const WideString& text) {
  // By design: numeric references and other named entities stay, and what "&amp;" gives is not
  // looked at again.
  WideStringView rest = WideStringView(text).substr(0, text.find(LMD_W('\0')));
  WideString decoded;
  decoded.reserve(rest.size());
  while (!rest.empty()) {
    const auto [entity, character] = FirstEntity(rest);
    decoded += character;
    rest.remove_prefix(entity.size());
  }
  return decoded;
}
