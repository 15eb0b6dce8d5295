#ifndef LUMIDEX_TESTS_SUPPORT_TIFFSUITE_H_
#define LUMIDEX_TESTS_SUPPORT_TIFFSUITE_H_

// The base of suites that run for both byte orders:
//
//   class TiffDirectory : public test::TiffSuite {};
//   INSTANTIATE_TEST_SUITE_P(BothOrders, TiffDirectory, test::kBothOrders, test::OrderName);
//   TEST_P(TiffDirectory, RepeatedTagKeepsLastValue) { ... tiff.Build(...) ... }

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "base/ByteOrder.h"
#include "support/Bytes.h"
#include "support/StoreFile.h"
#include "support/Tiff.h"

namespace test {

// Tags that point to directories.
inline constexpr std::uint16_t kExifPointer = 0x8769;
inline constexpr std::uint16_t kGpsPointer = 0x8825;

inline const auto kBothOrders = testing::Values(ByteOrder::LittleEndian, ByteOrder::BigEndian);

inline std::string OrderName(const testing::TestParamInfo<ByteOrder>& order) {
  return order.param == ByteOrder::BigEndian ? "MM" : "II";
}

class TiffSuite : public testing::TestWithParam<ByteOrder> {
 protected:
  Bytes Word(std::uint16_t value) const { return U16(value, GetParam()); }
  Bytes Number(std::uint32_t value) const { return U32(value, GetParam()); }

  const Tiff tiff{GetParam()};
};

// An ASCII value as stored: the text with its final zero, which the count holds.
inline Stored AsciiValue(std::uint32_t tag, std::string_view text) {
  return {tag, 2, static_cast<std::uint32_t>(text.size() + 1), Hex(Text(text)) + "00"};
}

// A text that a reader made up itself: its count stays 0.
inline Stored MadeUpText(std::uint32_t tag, std::string_view text) {
  return {tag, 2, 0, Hex(Text(text)) + "00"};
}

// One SHORT and one LONG as stored, in host order.
inline Stored ShortValue(std::uint32_t tag, std::uint16_t value) {
  return {tag, 3, 1, Hex(U16(value, kHostByteOrder))};
}
inline Stored LongValue(std::uint32_t tag, std::uint32_t value) {
  return {tag, 4, 1, Hex(U32(value, kHostByteOrder))};
}

}  // namespace test

#endif  // LUMIDEX_TESTS_SUPPORT_TIFFSUITE_H_
