// GregorianCalendarConvertor: the converter of locales that count in the
// Gregorian calendar; it leaves every date as it is.
//
//   GregorianCalendarConvertor gregorian;
//   int day = 29, month = 2, year = 2024;
//   gregorian.toGregorian(day, month, year);   // true, nothing changed
#pragma once

#include "zu/core/zuExport.h"
#include "zu/picture/ICalendarConverter.h"

class ZU_EXPORT GregorianCalendarConvertor final : public ICalendarConverter {
 public:
  // Both return true and change nothing, whatever the numbers.
  bool fromGregorian(int& day, int& month, int& year) override;
  bool toGregorian(int& day, int& month, int& year) override;
};
