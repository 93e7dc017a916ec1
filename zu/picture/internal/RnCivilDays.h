// RnCivilDays: proleptic Gregorian arithmetic on the library's day numbers.
//
// Day 1 is 0001-01-01 (a Monday); day numbers count on without gaps, so
// 1970-01-01 is day 719163. Computed in 64 bits so that no input overflows.
//
//   int64_t day = daysFromCivil(2024, 3, 5);   // 738950
//   CivilDate date = civilFromDays(day);        // {2024, 3, 5}
#pragma once

#include <cstdint>

namespace zu::internal {

struct CivilDate {
  int64_t year;
  int month;  // 1..12
  int day;    // 1..31
};

constexpr bool isLeapYear(int64_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

constexpr int daysInMonth(int64_t year, int month) {
  constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && isLeapYear(year) ? 29 : kDays[month - 1];
}

// The day number of a date (the month and day are not checked). The year
// must lie within +-2^50 so that the arithmetic stays in range.
constexpr int64_t daysFromCivil(int64_t year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const int64_t era = (year >= 0 ? year : year - 399) / 400;
  const int64_t yearOfEra = year - era * 400;
  const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468 + 719163;
}

constexpr CivilDate civilFromDays(int64_t days) {
  const int64_t z = days - 719163 + 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t dayOfEra = z - era * 146097;
  const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int64_t monthIndex = (5 * dayOfYear + 2) / 153;
  const int day = static_cast<int>(dayOfYear - (153 * monthIndex + 2) / 5 + 1);
  const int month = static_cast<int>(monthIndex < 10 ? monthIndex + 3 : monthIndex - 9);
  return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

// 0 Sunday .. 6 Saturday (day 1 is a Monday).
constexpr int weekDayIndex(int64_t days) {
  const int64_t index = days % 7;
  return static_cast<int>(index < 0 ? index + 7 : index);
}

static_assert(daysFromCivil(1, 1, 1) == 1);
static_assert(daysFromCivil(1970, 1, 1) == 719163);
static_assert(weekDayIndex(daysFromCivil(2024, 3, 5)) == 2);  // a Tuesday

}  // namespace zu::internal
