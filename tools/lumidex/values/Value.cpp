#include "values/Value.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Text.h"
#include "base/ByteOrder.h"
#include "base/TypeSizes.h"

namespace tool {
namespace {

constexpr std::size_t kManyNumbers = 16;
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

template <class Part>
double Quotient(std::span<const std::uint8_t> bytes, std::size_t index) {
  const auto numerator = HostValue<Part>(bytes, 2 * index);
  const auto denominator = HostValue<Part>(bytes, 2 * index + 1);
  if (denominator == 0) return kNoNumber;
  return static_cast<double>(numerator) / static_cast<double>(denominator);
}

double NumberInBytes(std::uint32_t type, std::span<const std::uint8_t> bytes, std::size_t index) {
  switch (type) {
    case TYPE_BYTE:
      return HostValue<std::uint8_t>(bytes, index);
    case TYPE_SHORT:
      return HostValue<std::uint16_t>(bytes, index);
    case TYPE_LONG:
    case TYPE_IFD:
      return HostValue<std::uint32_t>(bytes, index);
    case TYPE_SSHORT:
      return HostValue<std::int16_t>(bytes, index);
    case TYPE_SLONG:
      return HostValue<std::int32_t>(bytes, index);
    case TYPE_RATIONAL:
      return Quotient<std::uint32_t>(bytes, index);
    case TYPE_SRATIONAL:
      return Quotient<std::int32_t>(bytes, index);
    default:
      return kNoNumber;
  }
}

// A quotient as a number, one without a value as it stands: "0/0".
std::string NumberText(const TagEntry& entry, std::size_t index, int decimals) {
  const double number = NumberAt(entry, index);
  if (!std::isnan(number)) return Number(number, decimals);
  const auto numerator = HostValue<std::uint32_t>(TagBytes(entry), 2 * index);
  return std::to_string(numerator) + "/0";
}

bool IsReadable(std::span<const std::uint8_t> bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](std::uint8_t b) { return 0x20 <= b && b < 0x7F; });
}

std::string BytesText(std::span<const std::uint8_t> bytes) {
  auto text = bytes;
  while (!text.empty() && text.back() == 0) text = text.first(text.size() - 1);
  if (text.size() > 1 && IsReadable(text)) return TextFromBytes(text);
  std::string out;
  for (const std::uint8_t byte : bytes) AppendPart(out, " ", HexBytes({&byte, 1}));
  return out;
}

}  // namespace

std::size_t ElementCount(const TagEntry& entry) {
  const std::uint32_t size = entry.m_nType == TYPE_WIDE_TEXT ? 2 : TypeSize(entry.m_nType);
  return (TagBytes(entry).size() + size - 1) / size;
}

bool IsNumeric(const TagEntry& entry) {
  switch (entry.m_nType) {
    case TYPE_BYTE:
    case TYPE_SHORT:
    case TYPE_LONG:
    case TYPE_IFD:
    case TYPE_SSHORT:
    case TYPE_SLONG:
    case TYPE_RATIONAL:
    case TYPE_SRATIONAL:
      return true;
    default:
      return false;
  }
}

double NumberAt(const TagEntry& entry, std::size_t index) {
  if (index >= ElementCount(entry)) return kNoNumber;
  return NumberInBytes(entry.m_nType, TagBytes(entry), index);
}

double NumberAt(const Value& value, std::uint32_t tag, std::size_t index) {
  const TagEntry* neighbour = value.block.Find(tag);
  return neighbour != nullptr ? NumberAt(*neighbour, index) : kNoNumber;
}

std::string TextOf(const TagEntry& entry) {
  const auto bytes = TagBytes(entry);
  if (entry.m_nType == TYPE_WIDE_TEXT) {
    const WideString text = WideFromBytes(bytes);
    return Utf8FromWide(WideStringView(text).substr(0, text.find(WCHAR{0})));
  }
  const std::string text = TextFromBytes(bytes);
  return CleanUtf8(std::string_view(text).substr(0, text.find('\0')));
}

std::string TextOf(const Value& value, std::uint32_t tag) {
  const TagEntry* neighbour = value.block.Find(tag);
  return neighbour != nullptr ? TextOf(*neighbour) : std::string();
}

std::string PlainText(const TagEntry& entry) {
  if (entry.m_nSize != 0 && entry.m_pData == nullptr) return "(no data)";
  if (entry.m_nType == TYPE_ASCII || entry.m_nType == TYPE_WIDE_TEXT) return TextOf(entry);
  const bool isFew = ElementCount(entry) <= kManyNumbers;
  if (!IsNumeric(entry) || (entry.m_nType == TYPE_BYTE && !isFew))
    return BytesText(TagBytes(entry));
  return JoinNumbers(entry, 4);
}

std::string JoinNumbers(const TagEntry& entry, int decimals) {
  const std::size_t count = ElementCount(entry);
  std::string out;
  for (std::size_t i = 0; i < count; ++i) AppendPart(out, " ", NumberText(entry, i, decimals));
  return out;
}

}  // namespace tool
