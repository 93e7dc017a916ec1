#include "zu/picture/internal/RnDateSymbols.h"

#include <array>
#include <cstring>

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/locale/RnData.h"
#include "zu/locale/internal/RnRunTimeStore.h"
#include "zu/picture/RnDate.h"
#include "zu/picture/internal/RnDateTimeUtil.h"

namespace zu::internal {

namespace {

constexpr std::size_t kRemembered = 8;

struct Remembered {
  zuString key;  // the locale as asked for
  uint64_t generation = 0;
  bool used = false;
  RnDateSymbols symbols;
};

void load(const char* name, RnDateSymbols& symbols) {
  symbols.locale = RnLocale(name);
  if (!symbols.locale.isValid()) symbols.locale = RnLocale(RnDate::getDEFAULT_LOCALE());
  const RnData data(symbols.locale.getName());
  for (int month = 0; month < 12; ++month) {
    symbols.monthNames[month] = data.getMonthName(month);
    symbols.abbrMonthNames[month] = data.getAbbrMonthName(month);
  }
  for (int weekDay = 0; weekDay < 7; ++weekDay) {
    symbols.weekDayNames[weekDay] = data.getWeekDayName(weekDay);
    symbols.abbrWeekDayNames[weekDay] = data.getAbbrWeekDayName(weekDay);
  }
  symbols.eraNames[RnData::BC] = data.getEraName(RnData::BC);
  symbols.eraNames[RnData::AD] = data.getEraName(RnData::AD);
  symbols.zeroDigit = localeZeroDigit(data);
  symbols.altEras = getAltEraTable(symbols.locale);
  symbols.altEraCount = getAltEraTableCount(symbols.locale);
}

struct Memo {
  std::array<Remembered, kRemembered> entries;
  std::size_t nextToReplace = 0;
};

}  // namespace

const RnDateSymbols& dateSymbolsFor(const char* locale) {
  Memo& memo = zuThreadMemo<Memo>::get();
  auto& remembered = memo.entries;
  std::size_t& nextToReplace = memo.nextToReplace;
  const char* name = locale != nullptr ? locale : "";
  const uint64_t generation = gRunTimeDataGeneration.load(std::memory_order_acquire);
  for (Remembered& entry : remembered) {
    if (entry.used && entry.generation == generation && std::strcmp(entry.key, name) == 0) {
      return entry.symbols;
    }
  }
  Remembered& entry = remembered[nextToReplace];
  nextToReplace = (nextToReplace + 1) % kRemembered;
  entry.used = false;
  load(name, entry.symbols);
  entry.key = zuString(name);
  entry.generation = generation;
  entry.used = true;
  return entry.symbols;
}

}  // namespace zu::internal
