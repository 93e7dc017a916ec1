// RnCivilDays: proleptic Gregorian arithmetic on the library's day numbers.
//
// Day 1 is 0001-01-01 (a Monday); day numbers count on without gaps, so
// 1970-01-01 is day 719163. Dates in years 0 to 2^20 - 1, which hold every
// year the library formats, are converted in a few 32-bit operations; any
// other input in 64 bits, so that none overflows. Both give the same day
// numbers (RnCivilDays_test compares them).
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

// Days per month of a common year, January first.
inline constexpr int kCommonMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

constexpr int daysInMonth(int64_t year, int month) {
  return month == 2 && isLeapYear(year) ? 29 : kCommonMonthDays[month - 1];
}

namespace civil_detail {

// Years 0..kFastYears-1 and the day numbers of their dates are converted in
// 32-bit arithmetic (Neri and Schneider's Euclidean affine forms), counted
// in a calendar whose years are moved by kYearShift so that every value
// stays unsigned; the rest goes through the 64-bit forms below.
inline constexpr int64_t kFastYears = int64_t{1} << 20;
inline constexpr uint32_t kYearShift = 1468000;
inline constexpr uint32_t kDayShift = 536895458;  // day 0 of the shifted calendar
inline constexpr int64_t kUnixDay = 719163;       // 1970-01-01

constexpr int64_t daysFromCivilWide(int64_t year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const int64_t era = (year >= 0 ? year : year - 399) / 400;
  const int64_t yearOfEra = year - era * 400;
  const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468 + kUnixDay;
}

constexpr CivilDate civilFromDaysWide(int64_t days) {
  const int64_t z = days - kUnixDay + 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const int64_t dayOfEra = z - era * 146097;
  const int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const int64_t monthIndex = (5 * dayOfYear + 2) / 153;
  const int day = static_cast<int>(dayOfYear - (153 * monthIndex + 2) / 5 + 1);
  const int month = static_cast<int>(monthIndex < 10 ? monthIndex + 3 : monthIndex - 9);
  return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

// Dates in years 0..kFastYears-1, months 1..12, days 1..31.
constexpr int64_t daysFromCivilFast(uint32_t year, uint32_t month, uint32_t day) {
  const uint32_t january = month < 3 ? 1 : 0;  // January and February end the shifted year
  const uint32_t shiftedYear = year + kYearShift - january;
  const uint32_t shiftedMonth = january != 0 ? month + 12 : month;
  const uint32_t centuries = shiftedYear / 100;
  const uint32_t yearDays = 1461 * shiftedYear / 4 - centuries + centuries / 4;
  const uint32_t monthDays = (979 * shiftedMonth - 2919) / 32;
  return int64_t{static_cast<int32_t>(yearDays + monthDays + day - 1 - kDayShift)} + kUnixDay;
}

// Day numbers of dates in years 0..kFastYears-1.
constexpr CivilDate civilFromDaysFast(int64_t days) {
  const uint32_t shifted = static_cast<uint32_t>(days - kUnixDay) + kDayShift;
  const uint32_t n1 = 4 * shifted + 3;
  const uint32_t centuries = n1 / 146097;
  const uint32_t dayOfCentury = n1 % 146097 / 4;
  const uint32_t n2 = 4 * dayOfCentury + 3;
  const uint64_t u2 = uint64_t{2939745} * n2;
  const uint32_t yearOfCentury = static_cast<uint32_t>(u2 >> 32);
  const uint32_t dayOfYear = static_cast<uint32_t>(u2) / 2939745 / 4;
  const uint32_t n3 = 2141 * dayOfYear + 197913;
  const uint32_t month = n3 >> 16;
  const uint32_t day = (n3 & 0xFFFF) / 2141 + 1;
  const uint32_t january = dayOfYear >= 306 ? 1 : 0;
  const uint32_t year = 100 * centuries + yearOfCentury + january;
  return {int64_t{year} - kYearShift, static_cast<int>(january != 0 ? month - 12 : month),
          static_cast<int>(day)};
}

inline constexpr int64_t kFirstFastDay = daysFromCivilWide(0, 1, 1);
inline constexpr int64_t kEndFastDay = daysFromCivilWide(kFastYears, 1, 1);

}  // namespace civil_detail

// The day number of a date (the month and day are not checked). The year
// must lie within +-2^50 so that the arithmetic stays in range.
constexpr int64_t daysFromCivil(int64_t year, int month, int day) {
  if (year >= 0 && year < civil_detail::kFastYears && month >= 1 && month <= 12 && day >= 1 &&
      day <= 31) {
    return civil_detail::daysFromCivilFast(
        static_cast<uint32_t>(year), static_cast<uint32_t>(month), static_cast<uint32_t>(day));
  }
  return civil_detail::daysFromCivilWide(year, month, day);
}

constexpr CivilDate civilFromDays(int64_t days) {
  if (days >= civil_detail::kFirstFastDay && days < civil_detail::kEndFastDay) {
    return civil_detail::civilFromDaysFast(days);
  }
  return civil_detail::civilFromDaysWide(days);
}

// The same for callers that know their fields: a date in years
// 0..2^20 - 1 with month 1..12 and day 1..31, or the day number of one.
constexpr int64_t daysFromCivilInRange(uint32_t year, uint32_t month, uint32_t day) {
  return civil_detail::daysFromCivilFast(year, month, day);
}
constexpr CivilDate civilFromDaysInRange(int64_t days) {
  return civil_detail::civilFromDaysFast(days);
}

// 0 Sunday .. 6 Saturday (day 1 is a Monday).
constexpr int weekDayIndex(int64_t days) {
  const int64_t index = days % 7;
  return static_cast<int>(index < 0 ? index + 7 : index);
}

static_assert(daysFromCivil(1, 1, 1) == 1);
static_assert(daysFromCivil(0, 1, 1) == civil_detail::daysFromCivilWide(0, 1, 1));
static_assert(civilFromDays(civil_detail::kEndFastDay - 1).year == civil_detail::kFastYears - 1);
static_assert(daysFromCivil(1970, 1, 1) == 719163);
static_assert(weekDayIndex(daysFromCivil(2024, 3, 5)) == 2);  // a Tuesday

}  // namespace zu::internal
