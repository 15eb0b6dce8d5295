#ifndef LUMIDEX_TESTS_SUPPORT_BYTES_H_
#define LUMIDEX_TESTS_SUPPORT_BYTES_H_

// Byte strings for test inputs.

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/ByteOrder.h"
#include "platform/Win32.h"

namespace test {

using Bytes = std::vector<std::uint8_t>;

Bytes Join(std::initializer_list<Bytes> parts);

// The characters of a text, without a final zero.
Bytes Text(std::string_view text);

Bytes Zeros(std::size_t count);
Bytes U16(std::uint16_t value, ByteOrder order = ByteOrder::BigEndian);
Bytes U32(std::uint32_t value, ByteOrder order = ByteOrder::BigEndian);

// "0a1b2c", the form in which tests state expected bytes.
std::string Hex(std::span<const std::uint8_t> bytes);

// UTF-16 as stored, with its final zero.
Bytes WideBytes(WideStringView text);

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_BYTES_H_
