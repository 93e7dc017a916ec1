#include "zu/picture/internal/RnCivilDays.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using namespace zu::internal;

bool sameDate(const CivilDate& left, const CivilDate& right) {
  return left.year == right.year && left.month == right.month && left.day == right.day;
}

// The 32-bit forms against the 64-bit ones: every day of the first and the
// last years they take (the date sweeps take 1600..2400 against std::chrono),
// and a stride through the rest; both ways, and the round trip.
TEST(RnCivilDaysTest, FastFormsAgreeWithTheWideOnes) {
  const int64_t first = civil_detail::kFirstFastDay;
  const int64_t end = civil_detail::kEndFastDay;
  const int64_t ranges[][3] = {
      {first, first + 800 * 366, 1}, {end - 800 * 366, end, 1}, {first, end, 997}};
  int64_t compared = 0;
  for (const auto& range : ranges) {
    for (int64_t day = range[0]; day < range[1]; day += range[2]) {
      const CivilDate fast = civilFromDays(day);
      ASSERT_TRUE(sameDate(fast, civil_detail::civilFromDaysWide(day))) << day;
      ASSERT_EQ(daysFromCivil(fast.year, fast.month, fast.day), day);
      ASSERT_EQ(civil_detail::daysFromCivilWide(fast.year, fast.month, fast.day), day);
      ++compared;
    }
  }
  EXPECT_GT(compared, 900000);
  // Just outside the fast years, and fields out of range, take the wide forms.
  EXPECT_TRUE(sameDate(civilFromDays(first - 1), {-1, 12, 31}));
  EXPECT_TRUE(sameDate(civilFromDays(end), {civil_detail::kFastYears, 1, 1}));
  EXPECT_EQ(daysFromCivil(2024, 13, 1), daysFromCivil(2025, 1, 1));
  EXPECT_EQ(daysFromCivil(-400, 3, 1), daysFromCivil(0, 3, 1) - 146097);
}

}  // namespace
