#include <cstdint>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "makernote/LensText.h"

namespace {

using Numbers = std::vector<std::uint32_t>;

struct Row {
  Numbers numbers;
  std::string_view text;
};

void ExpectTexts(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(FormatLensText(row.numbers), row.text);
}

TEST(LensText, DescribesZoomsAndPrimes) {
  ExpectTexts({
      {{24, 1, 70, 1, 28, 10, 28, 10}, "24.0-70.0 mm f/2.8"},
      {{50, 1, 50, 1, 14, 10, 14, 10}, "50.0 mm f/1.4"},
      {{18, 1, 55, 1, 35, 10, 56, 10}, "18.0-55.0 mm f/3.5-5.6"},
      {{105, 10, 55, 2, 2, 1, 4, 1}, "10.5-27.5 mm f/2.0-4.0"},
  });
}

TEST(LensText, ShowsOneApertureWhenTheShortEndIsSlower) {
  ExpectTexts({{{18, 1, 55, 1, 56, 10, 35, 10}, "18.0-55.0 mm f/5.6"}});
}

TEST(LensText, LeavesOutAnApertureOfFourZeros) {
  ExpectTexts(
      {{{24, 1, 70, 1, 0, 0, 0, 0}, "24.0-70.0 mm"}, {{50, 1, 50, 1, 0, 0, 0, 0}, "50.0 mm"}});
}

TEST(LensText, ComparesNumbersAndNotQuotients) {
  ExpectTexts({
      {{24, 1, 48, 2, 28, 10, 14, 5}, "24.0-24.0 mm f/2.8-2.8"},
      {{24, 2, 24, 1, 28, 10, 28, 5}, "12.0-24.0 mm f/2.8-5.6"},
      {{70, 1, 24, 1, 4, 1, 4, 1}, "70.0-24.0 mm f/4.0"},  // the order is kept
  });
}

TEST(LensText, PrintsWhatADivisionByZeroGives) {
  ExpectTexts({
      {{50, 1, 50, 1, 1, 0, 1, 0}, "50.0 mm f/inf"},      // the same numbers
      {{50, 1, 50, 1, 1, 0, 2, 0}, "50.0 mm f/inf-inf"},  // neither is larger
      {{50, 1, 50, 1, 1, 0, 4, 1}, "50.0 mm f/inf"},      // larger than the other
      {{50, 1, 50, 1, 4, 1, 1, 0}, "50.0 mm f/4.0-inf"},
      {{50, 1, 50, 1, 0, 0, 4, 1}, "50.0 mm f/nan-4.0"},  // not comparable
      {{50, 1, 50, 1, 4, 1, 0, 0}, "50.0 mm f/4.0-nan"},
      {{50, 1, 50, 1, 0, 0, 0, 1}, "50.0 mm f/nan-0.0"},
      {{50, 1, 50, 1, 0, 1, 0, 1}, "50.0 mm f/0.0"},
  });
}

TEST(LensText, IsEmptyWhenAFocalNumberIsZero) {
  ExpectTexts({
      {{0, 1, 70, 1, 28, 10, 28, 10}, ""},
      {{24, 0, 70, 1, 28, 10, 28, 10}, ""},
      {{24, 1, 0, 1, 28, 10, 28, 10}, ""},
      {{24, 1, 70, 0, 28, 10, 28, 10}, ""},
      {{0, 0, 0, 0, 0, 0, 0, 0}, ""},
  });
}

TEST(LensText, IsEmptyUnlessThereAreEightNumbers) {
  ExpectTexts({
      {{}, ""},
      {{24, 1, 70, 1, 28, 10}, ""},
      {{24, 1, 70, 1, 28, 10, 28}, ""},
      {{24, 1, 70, 1, 28, 10, 28, 10, 1}, ""},
  });
}

// 2.25 is exact, a tie. In single precision 0.15 lies above the middle and 0.65 below it; in double
// precision it is the other way round for both.
TEST(LensText, DividesInSinglePrecision) {
  ExpectTexts({
      {{9, 4, 9, 4, 15, 100, 65, 100}, "2.2 mm f/0.2-0.6"},
      {{16777217, 1, 16777217, 1, 0, 0, 0, 0}, "16777216.0 mm"},
  });
}

TEST(LensText, TakesNumbersAsUnsigned) {
  ExpectTexts({{{0xFFFFFFFF, 1, 0xFFFFFFFE, 1, 0xFFFFFFFF, 1, 0xFFFFFFFF, 2},
                "4294967296.0-4294967296.0 mm f/4294967296.0"}});
}

}  // namespace
