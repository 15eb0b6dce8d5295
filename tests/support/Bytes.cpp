#include "support/Bytes.h"

namespace test {

Bytes Join(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

Bytes Text(std::string_view text) {
  return {text.begin(), text.end()};
}

Bytes Zeros(std::size_t count) {
  return Bytes(count);
}

Bytes U16(std::uint16_t value, ByteOrder order) {
  const auto high = static_cast<std::uint8_t>(value >> 8);
  const auto low = static_cast<std::uint8_t>(value);
  if (order == ByteOrder::BigEndian) return {high, low};
  return {low, high};
}

Bytes U32(std::uint32_t value, ByteOrder order) {
  const Bytes high = U16(static_cast<std::uint16_t>(value >> 16), order);
  const Bytes low = U16(static_cast<std::uint16_t>(value), order);
  return order == ByteOrder::BigEndian ? Join({high, low}) : Join({low, high});
}

std::string Hex(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

Bytes WideBytes(WideStringView text) {
  Bytes bytes;
  for (const WCHAR unit : text) {
    bytes.push_back(static_cast<std::uint8_t>(unit));
    bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  bytes.insert(bytes.end(), {0, 0});
  return bytes;
}

}  // namespace test
