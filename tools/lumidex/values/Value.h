#ifndef LUMIDEX_TOOL_VALUES_VALUE_H_
#define LUMIDEX_TOOL_VALUES_VALUE_H_

// A stored value as people read it, with what the decoders share.

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/TagEntry.h"
#include "base/TagMap.h"

namespace tool {

// A value and the table that it stands in: some values are read together with a neighbour.
struct Value {
  const TagEntry& entry;
  const TagMap& block;
};

// Puts a value into words. An empty text means that the value does not have the form that its tag
// asks for; it is then printed plainly.
using Decoder = std::string (*)(const Value&);

// The number of values of the entry's type that its bytes hold, the last of which may lack bytes
// that count as 0. The entry's own count is no measure: entries that no directory listed have none.
std::size_t ElementCount(const TagEntry& entry);

// Whether the entry's type is one of the integers or rationals.
bool IsNumeric(const TagEntry& entry);

// Value number `index` of an integer or rational type; not-a-number when there is none, or for a
// rational with the denominator 0.
double NumberAt(const TagEntry& entry, std::size_t index = 0);

// The same for a neighbour of a value.
double NumberAt(const Value& value, std::uint32_t tag, std::size_t index = 0);

// The text of an ASCII or UTF-16 entry, or of one of raw bytes, up to its first zero; well-formed.
std::string TextOf(const TagEntry& entry);

// The text of a neighbour; empty when there is none.
std::string TextOf(const Value& value, std::uint32_t tag);

// A value by its type alone: numbers, text, or bytes; many numbers of one byte are taken for bytes.
std::string PlainText(const TagEntry& entry);

// The numbers of a sequence with blanks between them.
std::string JoinNumbers(const TagEntry& entry, int decimals);

}  // namespace tool

#endif  // LUMIDEX_TOOL_VALUES_VALUE_H_
