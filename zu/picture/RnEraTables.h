// RnEraTables: the alternate era systems of Japanese, Chinese, Korean and
// Thai locales, used by the date pictures' "g" symbols.
//
// Each table lists its eras in order of their first day. A year inside an
// era counts from the era's first year: era year n is Gregorian year
// firstYear + n - 1 (the Thai table adds the old new-year rule, see RnDate).
//
//   const cjkTable_s* table = getAltEraTable(RnLocale("ja_JP"));
//   int count = getAltEraTableCount(RnLocale("ja_JP"));     // 5
//   RnDate date(zuString("2024-03-05"), RnDate::getKDL_DATE_FMT2(), zuString("ja_JP"));
//   int era = getEpochEra(table, count, date.getDays());
//   table[era].names[2];                                     // "令和"
//
// The tables are constant data; every function is safe from any thread.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"

class RnLocale;

// One era: the day (RnDate day number) from which it is in use, the
// Gregorian year that is its year 1, and its names in short, medium and
// long form (the "g", "gg" and "ggg" symbols).
struct ZU_EXPORT cjkTable_s {
  int32_t startDay;
  int32_t firstYear;
  const char* names[3];
};

// Japanese eras from 明治 to 令和.
ZU_EXPORT extern const cjkTable_s gJpEra[];
// Chinese: 民国 from 1912, and the common era from 1949-10-01.
ZU_EXPORT extern const cjkTable_s gCnEra[];
// Taiwan: 民國 from 1912.
ZU_EXPORT extern const cjkTable_s gTwEra[];
// Korean: 檀紀 (1948 to 1961), then 西紀.
ZU_EXPORT extern const cjkTable_s gKrEra[];
// Thai: the Buddhist era พ.ศ. since its official adoption on 1912-04-01.
ZU_EXPORT extern const cjkTable_s gThEra[];
// Hong Kong: 民國 from 1912, and the common era from 1949-10-01.
ZU_EXPORT extern const cjkTable_s gHkEra[];

// The era table of a locale: Japanese, Korean and Thai locales by language;
// zh_TW, zh_HK and every other Chinese locale (zh_CN's table); null for
// every other locale.
ZU_EXPORT const cjkTable_s* getAltEraTable(const RnLocale& locale);
// The number of rows of that table, 0 when the locale has none.
ZU_EXPORT int getAltEraTableCount(const RnLocale& locale);
// The first day of the era after `era`; INT32_MAX for the last era (and
// for an index outside the table).
ZU_EXPORT int32_t getNextEra(const cjkTable_s* table, int count, int era);
// The era in force on day `days`: the last row whose start is not after
// it; -1 before the first era, for an invalid day and without a table.
ZU_EXPORT int getEpochEra(const cjkTable_s* table, int count, int32_t days);
