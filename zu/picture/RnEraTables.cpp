#include "zu/picture/RnEraTables.h"

#include <cstdint>
#include <cstring>

#include "zu/locale/RnLocale.h"
#include "zu/picture/internal/RnCivilDays.h"

namespace {

constexpr int32_t day(int year, int month, int dayOfMonth) {
  return static_cast<int32_t>(zu::internal::daysFromCivil(year, month, dayOfMonth));
}

template <int N>
constexpr int rows(const cjkTable_s (&)[N]) {
  return N;
}

}  // namespace

// Meiji starts on the day its calendar reform names; later eras on the day
// after the emperor's death (or abdication, for 令和).
const cjkTable_s gJpEra[] = {
    {day(1868, 9, 8), 1868, {"M", "明", "明治"}},   {day(1912, 7, 30), 1912, {"T", "大", "大正"}},
    {day(1926, 12, 25), 1926, {"S", "昭", "昭和"}}, {day(1989, 1, 8), 1989, {"H", "平", "平成"}},
    {day(2019, 5, 1), 2019, {"R", "令", "令和"}},
};

const cjkTable_s gCnEra[] = {
    {day(1912, 1, 1), 1912, {"民国", "民国", "中华民国"}},
    {day(1949, 10, 1), 1, {"公元", "公元", "公元"}},
};

const cjkTable_s gTwEra[] = {
    {day(1912, 1, 1), 1912, {"民國", "民國", "中華民國"}},
};

const cjkTable_s gKrEra[] = {
    {day(1948, 9, 25), -2332, {"檀紀", "檀紀", "檀君紀元"}},
    {day(1962, 1, 1), 1, {"西紀", "西紀", "西曆紀元"}},
};

// The first year is one more than the Buddhist era's offset of 543: RnDate
// takes one off for every date after the old Thai new year (1 April).
const cjkTable_s gThEra[] = {
    {day(1912, 4, 1), -541, {"พ.ศ.", "พ.ศ.", "พุทธศักราช"}},
};

const cjkTable_s gHkEra[] = {
    {day(1912, 1, 1), 1912, {"民國", "民國", "中華民國"}},
    {day(1949, 10, 1), 1, {"公元", "公元", "公元"}},
};

namespace {

struct TableChoice {
  const cjkTable_s* table;
  int count;
};

TableChoice chooseTable(const RnLocale& locale) {
  if (!locale.isValid()) return {nullptr, 0};
  if (locale.isJapanese()) return {gJpEra, rows(gJpEra)};
  if (locale.isKorean()) return {gKrEra, rows(gKrEra)};
  if (locale.isThai()) return {gThEra, rows(gThEra)};
  if (!locale.isChinese()) return {nullptr, 0};
  const char* name = locale.getName();
  if (std::strcmp(name, "zh_TW") == 0) return {gTwEra, rows(gTwEra)};
  if (std::strcmp(name, "zh_HK") == 0) return {gHkEra, rows(gHkEra)};
  return {gCnEra, rows(gCnEra)};
}

}  // namespace

const cjkTable_s* getAltEraTable(const RnLocale& locale) {
  return chooseTable(locale).table;
}

int getAltEraTableCount(const RnLocale& locale) {
  return chooseTable(locale).count;
}

int32_t getNextEra(const cjkTable_s* table, int count, int era) {
  if (table == nullptr || era < -1 || era + 1 >= count) return INT32_MAX;
  return table[era + 1].startDay;
}

int getEpochEra(const cjkTable_s* table, int count, int32_t days) {
  if (table == nullptr || days <= 0) return -1;
  int era = -1;
  for (int row = 0; row < count && table[row].startDay <= days; ++row) era = row;
  return era;
}
