// The names and digits a date formats and parses with in one locale.
//
// Loading them reads some forty entries of the locale data; dates are made
// by the thousand with a handful of locales, so each thread remembers the
// symbols of the last locales it loaded. A remembered set is dropped when
// the run-time locale data changes.
//
//   const RnDateSymbols& symbols = dateSymbolsFor("fr_FR");
//   symbols.monthNames[0];   // "janvier"
#pragma once

#include <cstdint>

#include "zu/core/zuString.h"
#include "zu/locale/RnLocale.h"
#include "zu/picture/RnEraTables.h"

namespace zu::internal {

struct RnDateSymbols {
  RnLocale locale;  // `locale` resolved; "en_US" for an empty or unknown one
  zuString monthNames[12];
  zuString abbrMonthNames[12];
  zuString weekDayNames[7];
  zuString abbrWeekDayNames[7];
  zuString eraNames[2];
  uint32_t zeroDigit = '0';
  const cjkTable_s* altEras = nullptr;
  int altEraCount = 0;
};

// The calling thread's symbols for `locale`; valid until the thread asks
// for those of another locale.
const RnDateSymbols& dateSymbolsFor(const char* locale);

}  // namespace zu::internal
