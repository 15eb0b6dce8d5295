#ifndef LUMIDEX_RECORDS_HPP_
#define LUMIDEX_RECORDS_HPP_

// Metadata values as C++ values: what a parse hands out and what a host passes for writing, without
// a pointer. C++17.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "ILumidex.h"

namespace lumidex {

// An exact fraction. The denominator may be 0, as it may in a file.
template <class Integer>
struct BasicRational {
  Integer numerator = 0;
  Integer denominator = 1;

  // Not a number or infinite when the denominator is 0, as the division of doubles has it.
  double ToDouble() const {
    return static_cast<double>(numerator) / static_cast<double>(denominator);
  }
  friend bool operator==(const BasicRational& left, const BasicRational& right) {
    return left.numerator == right.numerator && left.denominator == right.denominator;
  }
  friend bool operator!=(const BasicRational& left, const BasicRational& right) {
    return !(left == right);
  }
};
using Rational = BasicRational<std::uint32_t>;
using SignedRational = BasicRational<std::int32_t>;

using Bytes = std::vector<std::uint8_t>;

// A value of each LMD_RECORD_... type. Texts are without their final zero; std::string is what the
// file holds, in no stated encoding, std::u16string is UTF-16.
using Value = std::variant<Bytes, std::string, std::u16string, std::vector<std::uint32_t>,
                           std::vector<std::int32_t>, std::vector<Rational>,
                           std::vector<SignedRational>, std::vector<double>>;

struct Record {
  std::uint32_t group = 0;  // LMD_GROUP_...
  std::uint32_t id = 0;     // the tag, or an identifier of the module's own
  Value value;

  // The value when it is of this type, else null.
  template <class Type>
  const Type* As() const {
    return std::get_if<Type>(&value);
  }
};

namespace detail {

// Whole items of a value's bytes; a rest that is no item is left out.
template <class Item>
std::vector<Item> ItemsOf(const CInfoRecord& record) {
  std::vector<Item> items(record.m_nSize / sizeof(Item));
  if (!items.empty()) std::memcpy(items.data(), record.m_pData, items.size() * sizeof(Item));
  return items;
}

// The characters up to the first zero.
template <class Text, class Char>
Text TextOf(const CInfoRecord& record) {
  const std::vector<Char> items = ItemsOf<Char>(record);
  Text text;
  for (const Char item : items) {
    if (item == 0) break;
    text.push_back(static_cast<typename Text::value_type>(item));
  }
  return text;
}

inline Value ValueOf(const CInfoRecord& record) {
  switch (record.m_nType) {
    case LMD_RECORD_INT32:
      return ItemsOf<std::int32_t>(record);
    case LMD_RECORD_SRATIONAL:
      return ItemsOf<SignedRational>(record);
    case LMD_RECORD_DOUBLE:
      return ItemsOf<double>(record);
    case LMD_RECORD_ASCII:
      return TextOf<std::string, char>(record);
    case LMD_RECORD_WIDE_TEXT:
      return TextOf<std::u16string, char16_t>(record);
    case LMD_RECORD_UINT32:
      return ItemsOf<std::uint32_t>(record);
    case LMD_RECORD_URATIONAL:
      return ItemsOf<Rational>(record);
    default:
      return ItemsOf<std::uint8_t>(record);
  }
}

inline std::vector<Record> RecordsOf(const CMETADATA_INFO_LIST* list) {
  std::vector<Record> records;
  if (list == nullptr || list->m_pRecords == nullptr) return records;
  for (std::int32_t i = 0; i < list->m_nCount; ++i) {
    const CInfoRecord& record = list->m_pRecords[i];
    records.push_back({record.m_nGroup, record.m_nId, ValueOf(record)});
  }
  return records;
}

// Records in the form in which the module takes them. The bytes are kept here.
class RawRecords {
 public:
  explicit RawRecords(const std::vector<Record>& records) {
    m_bytes.reserve(records.size());
    for (const Record& record : records) {
      m_bytes.push_back(std::visit([](const auto& value) { return BytesOf(value); }, record.value));
      Bytes& bytes = m_bytes.back();
      m_records.push_back({record.group, record.id, TypeOf(record.value),
                           static_cast<std::uint32_t>(bytes.size()), bytes.data(), 0.0});
    }
  }
  RawRecords(const RawRecords&) = delete;
  RawRecords& operator=(const RawRecords&) = delete;

  // Null when there are none, which is how the module is told so.
  const CInfoRecord* Data() const { return m_records.empty() ? nullptr : m_records.data(); }
  std::uint32_t Count() const { return static_cast<std::uint32_t>(m_records.size()); }

 private:
  // In the order of the alternatives of Value.
  static std::uint32_t TypeOf(const Value& value) {
    constexpr std::uint32_t kTypes[] = {
        LMD_RECORD_BYTES, LMD_RECORD_ASCII,     LMD_RECORD_WIDE_TEXT, LMD_RECORD_UINT32,
        LMD_RECORD_INT32, LMD_RECORD_URATIONAL, LMD_RECORD_SRATIONAL, LMD_RECORD_DOUBLE};
    static_assert(sizeof(kTypes) / sizeof(kTypes[0]) == std::variant_size_v<Value>);
    return kTypes[value.index()];
  }

  template <class Item>
  static Bytes BytesOf(const std::vector<Item>& items) {
    return Copy(items.data(), items.size() * sizeof(Item));
  }
  template <class Char>
  static Bytes BytesOf(const std::basic_string<Char>& text) {
    return Copy(text.c_str(), (text.size() + 1) * sizeof(Char));
  }
  static Bytes Copy(const void* data, std::size_t size) {
    Bytes bytes(size);
    if (size != 0) std::memcpy(bytes.data(), data, size);
    return bytes;
  }

  std::vector<Bytes> m_bytes;
  std::vector<CInfoRecord> m_records;
};

}  // namespace detail
}  // namespace lumidex

#endif  // LUMIDEX_RECORDS_HPP_
