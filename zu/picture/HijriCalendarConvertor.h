// HijriCalendarConvertor: the Umm al-Qura Hijri calendar of Saudi Arabia.
//
// Gregorian to Hijri is ICU's Umm al-Qura calendar. Hijri to Gregorian is a
// search: start from today's local date, convert it, and move by the
// estimated distance (354 days a year, 29 a month, 1 a day) until the Hijri
// date matches, giving up after 10 guesses.
//
//   HijriCalendarConvertor hijri;
//   int day = 11, month = 3, year = 2024;
//   hijri.fromGregorian(day, month, year);     // 1, 9, 1445 (1 Ramadan)
//   hijri.toGregorian(day, month, year);       // 11, 3, 2024
//
// Stateless; both operations may run on several threads at once (each
// thread keeps its own ICU calendar).
#pragma once

#include "zu/core/zuExport.h"
#include "zu/picture/ICalendarConverter.h"

class ZU_EXPORT HijriCalendarConvertor final : public ICalendarConverter {
 public:
  // False for a Gregorian date that does not exist or whose year is
  // outside 1..9999, and when ICU fails.
  bool fromGregorian(int& day, int& month, int& year) override;
  // False when 10 guesses do not reach the date (a day or month the Hijri
  // calendar does not have, or a year too far from today).
  bool toGregorian(int& day, int& month, int& year) override;
};
