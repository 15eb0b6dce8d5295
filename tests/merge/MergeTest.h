#ifndef LUMIDEX_TESTS_MERGE_MERGETEST_H_
#define LUMIDEX_TESTS_MERGE_MERGETEST_H_

// A store filled by hand, the merge over it, and the log lines that it sends.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/TypeSizes.h"
#include "exif/VxMetadata.h"
#include "support/StoreFile.h"

namespace test {

using Lines = std::vector<std::string>;

inline constexpr std::uint32_t kFocalLength = 0x920A;
inline constexpr std::uint32_t kMillion = 1000000;  // the denominator of computed rationals

class MergeTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // An entry with a value; its count is one, as no merged entry has it.
  void Put(std::int32_t block, std::uint32_t key, std::uint32_t type, const Bytes& bytes);

  void PutShort(std::int32_t block, std::uint32_t key, std::uint16_t value);
  void PutLong(std::int32_t block, std::uint32_t key, std::uint32_t value);
  void PutRational(std::int32_t block, std::uint32_t key, std::uint32_t numerator,
                   std::uint32_t denominator);
  void PutXmp(std::uint32_t key, WideStringView text);

  // An entry that says it has a size but got no memory for it.
  void PutWithoutData(std::int32_t block, std::uint32_t key, std::uint32_t type,
                      std::uint32_t size);

  // Runs the merge and gives the lines it sent, without prefix and line feed.
  Lines Merge();

  VxMetadata m_store;
};

// What the merge writes: a count of 0 and bytes in host order.
Stored MergedShort(std::uint32_t tag, std::uint16_t value);
Stored MergedRational(std::uint32_t tag, std::uint32_t numerator, std::uint32_t denominator,
                      std::uint32_t type = TYPE_RATIONAL);
Stored MergedText(std::uint32_t tag, std::string_view text);

// The bytes of rationals in host order.
Bytes Rationals(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& values);

}  // namespace test

#endif  // LUMIDEX_TESTS_MERGE_MERGETEST_H_
