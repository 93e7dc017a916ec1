// The converter table: which calendar converter serves a locale.
//
// The table knows "en_US" (Gregorian) and "ar_SA" (Umm al-Qura Hijri), but
// choosing by locale is switched off in this build: every locale gets the
// Gregorian converter until isAltCalendarEnabled() says otherwise.
//
//   std::shared_ptr<ICalendarConverter> converter = getCalendarConverter("de_DE");
//   converter->toGregorian(day, month, year);
#pragma once

#include <memory>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/picture/ICalendarConverter.h"

// The shared converter for `locale` (its exact name; a null string counts as
// ""): the table's entry when alternate calendars are enabled and the table
// has one, otherwise the "en_US" (Gregorian) entry. The table is built once,
// on first use, and only read afterwards: any thread may call this.
ZU_EXPORT std::shared_ptr<ICalendarConverter> getCalendarConverter(const zuString& locale);
// Whether converters are chosen by locale. Always false in this build.
ZU_EXPORT bool isAltCalendarEnabled();
