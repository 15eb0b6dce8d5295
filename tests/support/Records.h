#ifndef LUMIDEX_TESTS_SUPPORT_RECORDS_H_
#define LUMIDEX_TESTS_SUPPORT_RECORDS_H_

// Lists of records as a host passes them for writing.
//
//   Records records;
//   records.Ascii(2, 271, "Maker").Integers(4, 34855, {400});

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "base/OwnedRecords.h"
#include "support/Bytes.h"

namespace test {

class Records {
 public:
  Records& Raw(std::uint32_t group, std::uint32_t id, std::uint32_t type, const Bytes& bytes);
  Records& Binary(std::uint32_t group, std::uint32_t id, const Bytes& bytes);
  Records& Ascii(std::uint32_t group, std::uint32_t id, std::string_view text);  // with a zero

  // 32 bits each, as a SHORT or a LONG is passed.
  Records& Integers(std::uint32_t group, std::uint32_t id,
                    const std::vector<std::uint32_t>& values);
  Records& Rationals(std::uint32_t group, std::uint32_t id,
                     const std::vector<std::pair<std::uint32_t, std::uint32_t>>& values);

  // A record of some size without data.
  Records& WithoutData(std::uint32_t group, std::uint32_t id, std::uint32_t size);

  const CInfoRecord* Data() const { return m_records.data(); }
  std::uint32_t Count() const { return static_cast<std::uint32_t>(m_records.size()); }

 private:
  std::vector<CInfoRecord> m_records;
  MemoryBlocks m_values;
};

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_RECORDS_H_
