// A month name of a locale: RnData made for the locale plus one getter,
// against ICU's DateFormatSymbols::getMonths, once on symbols kept from an
// earlier call (the peer's best case) and once on symbols made for the call
// (what a caller without a cache pays, as RnData needs no cache).
#include <benchmark/benchmark.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>

#include <memory>
#include <vector>

#include "zu/locale/RnData.h"

namespace {

const char* const kLocales[] = {"de_CH", "fr_CA", "ja_JP", "en_US", "ar_EG", "pt_BR"};

void ourMonthName(benchmark::State& state) {
  int month = 0;
  size_t locale = 0;
  for (auto _ : state) {
    zuString name = RnData(kLocales[locale]).getMonthName(month);
    benchmark::DoNotOptimize(name);
    month = (month + 1) % 12;
    locale = (locale + 1) % std::size(kLocales);
  }
}

void icuMonthNameCached(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  std::vector<std::unique_ptr<icu::DateFormatSymbols>> symbols;
  for (const char* name : kLocales) {
    symbols.push_back(std::make_unique<icu::DateFormatSymbols>(icu::Locale(name), status));
  }
  int month = 0;
  size_t locale = 0;
  for (auto _ : state) {
    int32_t count = 0;
    icu::UnicodeString name = symbols[locale]->getMonths(count)[month];
    benchmark::DoNotOptimize(name);
    month = (month + 1) % 12;
    locale = (locale + 1) % std::size(kLocales);
  }
}

void icuMonthNameNew(benchmark::State& state) {
  int month = 0;
  size_t locale = 0;
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    icu::DateFormatSymbols symbols(icu::Locale(kLocales[locale]), status);
    int32_t count = 0;
    icu::UnicodeString name = symbols.getMonths(count)[month];
    benchmark::DoNotOptimize(name);
    month = (month + 1) % 12;
    locale = (locale + 1) % std::size(kLocales);
  }
}

BENCHMARK(ourMonthName)->Name("MonthNameCachedSymbols/ours");
BENCHMARK(icuMonthNameCached)->Name("MonthNameCachedSymbols/icu");
BENCHMARK(ourMonthName)->Name("MonthNameNewSymbols/ours");
BENCHMARK(icuMonthNameNew)->Name("MonthNameNewSymbols/icu");

}  // namespace
