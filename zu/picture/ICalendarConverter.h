// ICalendarConverter: turns day, month and year between the Gregorian
// calendar and the calendar a locale counts dates in.
//
// Date parsing reads the numbers in the locale's calendar and converts them
// to Gregorian before it builds the date value; formatting goes the other
// way. Converters are stateless and shared (see getCalendarConverter in
// zuCalendarConverters.h).
//
//   std::shared_ptr<ICalendarConverter> converter = getCalendarConverter("ar_SA");
//   int day = 1, month = 9, year = 1445;
//   if (!converter->toGregorian(day, month, year)) { /* not a date */ }
#pragma once

#include "zu/core/zuExport.h"

class ZU_EXPORT ICalendarConverter {
 public:
  // Converts a Gregorian date in place into this converter's calendar;
  // false (arguments unchanged) when that cannot be done.
  virtual bool fromGregorian(int& day, int& month, int& year) = 0;
  // Converts a date of this converter's calendar in place into Gregorian;
  // false (arguments unchanged) when no Gregorian date is found.
  virtual bool toGregorian(int& day, int& month, int& year) = 0;
  virtual ~ICalendarConverter();
};
