#ifndef LUMIDEX_TOOL_SHOW_RECORDVALUE_H_
#define LUMIDEX_TOOL_SHOW_RECORDVALUE_H_

// The values of result records by their type. In a size that is no multiple of a value's size the
// last value lacks bytes, which count as 0.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include <lumidex/ImageInfo.h>

namespace tool {

// The record's bytes; none when it has no data.
std::span<const std::uint8_t> RecordBytes(const CInfoRecord& record);

// The number of values of `size` bytes.
std::size_t RecordCount(const CInfoRecord& record, std::size_t size);

// The text of an ASCII or UTF-16 record without its final zero; well-formed UTF-8, in which a zero
// in the middle of the text stays.
std::string RecordText(const CInfoRecord& record);

}  // namespace tool

#endif  // LUMIDEX_TOOL_SHOW_RECORDVALUE_H_
