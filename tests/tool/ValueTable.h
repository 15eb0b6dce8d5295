#ifndef LUMIDEX_TESTS_TOOL_VALUETABLE_H_
#define LUMIDEX_TESTS_TOOL_VALUETABLE_H_

// Values as a store holds them, and their texts.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "base/TagMap.h"
#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"
#include "show/ValueText.h"
#include "support/Bytes.h"

namespace test {

class ValueTable {
 public:
  explicit ValueTable(std::int32_t block) : m_block(block) {}

  ValueTable& Set(std::uint32_t tag, std::uint32_t type, const Bytes& bytes) {
    SetTagValue(m_table.FindOrInsert(tag), tag, type, bytes, {m_nodes, m_budget});
    return *this;
  }
  ValueTable& Short(std::uint32_t tag, std::uint16_t value) {
    return Set(tag, TYPE_SHORT, U16(value, kHostByteOrder));
  }
  ValueTable& Rational(std::uint32_t tag,
                       std::initializer_list<std::pair<std::uint32_t, std::uint32_t>> values,
                       std::uint32_t type = TYPE_RATIONAL) {
    Bytes bytes;
    for (const auto& [numerator, denominator] : values) {
      bytes = Join({bytes, U32(numerator, kHostByteOrder), U32(denominator, kHostByteOrder)});
    }
    return Set(tag, type, bytes);
  }
  ValueTable& Ascii(std::uint32_t tag, std::string_view text) {
    return Set(tag, TYPE_ASCII, Join({Text(text), Zeros(1)}));
  }
  ValueTable& Undefined(std::uint32_t tag, const Bytes& bytes) {
    return Set(tag, TYPE_UNDEFINED, bytes);
  }
  ValueTable& Wide(std::uint32_t tag, WideStringView text) {
    return Set(tag, TYPE_WIDE_TEXT, WideBytes(text));
  }

  // The value of a tag in words.
  std::string operator[](std::uint32_t tag) const {
    return tool::ValueText(m_block, *m_table.Find(tag), m_table);
  }

 private:
  std::int32_t m_block;
  NodePool m_nodes;
  TagMap m_table{m_nodes};
  ParseBudget m_budget;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_TOOL_VALUETABLE_H_
