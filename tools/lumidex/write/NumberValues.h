#ifndef LUMIDEX_TOOL_WRITE_NUMBERVALUES_H_
#define LUMIDEX_TOOL_WRITE_NUMBERVALUES_H_

// Values of numbers in the layout of records: a byte each for BYTE and UNDEFINED, 32 bits each for
// other integers, numerator and denominator of 32 bits each for rationals.

#include <string_view>
#include <vector>

#include "base/TypeSizes.h"
#include "values/Value.h"
#include "write/NumberText.h"
#include "write/ParsedValue.h"

namespace tool {

void AppendFraction(std::vector<std::uint8_t>& bytes, const Fraction& fraction);

// Numbers of a TIFF type, separated by commas, each with the unit that `show` prints behind it, or
// without. What `decoder` reads as one number, or as a certain count of them, has that many.
ParsedValue ParseNumbers(std::string_view text, TagType type, Decoder decoder);

// The type of the records that hold values of a TIFF type: one of LMD_RECORD_...
std::uint32_t RecordTypeOf(TagType type);

}  // namespace tool

#endif  // LUMIDEX_TOOL_WRITE_NUMBERVALUES_H_
