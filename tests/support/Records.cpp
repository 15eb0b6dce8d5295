#include "support/Records.h"

#include <algorithm>

namespace test {

Records& Records::Raw(std::uint32_t group, std::uint32_t id, std::uint32_t type,
                      const Bytes& bytes) {
  WithoutData(group, id, static_cast<std::uint32_t>(bytes.size()));
  CInfoRecord& record = m_records.back();
  record.m_nType = type;
  record.m_pData = static_cast<std::uint8_t*>(m_values.Allocate(bytes.size()));
  std::copy(bytes.begin(), bytes.end(), record.m_pData);
  return *this;
}

Records& Records::Binary(std::uint32_t group, std::uint32_t id, const Bytes& bytes) {
  return Raw(group, id, LMD_RECORD_BYTES, bytes);
}

Records& Records::Ascii(std::uint32_t group, std::uint32_t id, std::string_view text) {
  return Raw(group, id, LMD_RECORD_ASCII, Join({Text(text), Zeros(1)}));
}

Records& Records::Integers(std::uint32_t group, std::uint32_t id,
                           const std::vector<std::uint32_t>& values) {
  Bytes bytes;
  for (const std::uint32_t value : values) {
    bytes = Join({bytes, U32(value, ByteOrder::LittleEndian)});
  }
  return Raw(group, id, LMD_RECORD_UINT32, bytes);
}

Records& Records::Rationals(std::uint32_t group, std::uint32_t id,
                            const std::vector<std::pair<std::uint32_t, std::uint32_t>>& values) {
  Bytes bytes;
  for (const auto& [numerator, denominator] : values) {
    bytes = Join({bytes, U32(numerator, ByteOrder::LittleEndian),
                  U32(denominator, ByteOrder::LittleEndian)});
  }
  return Raw(group, id, LMD_RECORD_URATIONAL, bytes);
}

Records& Records::WithoutData(std::uint32_t group, std::uint32_t id, std::uint32_t size) {
  m_records.push_back({group, id, 0, size, nullptr, 0});
  return *this;
}

}  // namespace test
