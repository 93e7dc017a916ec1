// Numeric pictures: formatting 1234.5 through "z,zz9.99" in de_DE
// ("1.234,50") and reading that text back.
//
// Our calls do everything the picture dispatcher does per value: the
// RnNum is made from the value text and the locale name, and the picture is
// read on every call. The ICU peers get their best case: a
// LocalizedNumberFormatter (skeleton ".00", grouping on) or a NumberFormat
// made once; a second pair makes the formatter on every call.
#include <benchmark/benchmark.h>
#include <unicode/fmtable.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/numfmt.h>

#include <memory>

#include "zu/picture/RnNum.h"

namespace {

const zuLiteral kValue("1234.5");
const zuLiteral kLocale("de_DE");
const zuLiteral kPicture("z,zz9.99");
const zuLiteral kText("1.234,50");

void ourFormat(benchmark::State& state) {
  for (auto _ : state) {
    RnNum number(kValue, kLocale);
    zuString text = number.format(kPicture);
    benchmark::DoNotOptimize(text);
  }
}

void icuFormatCached(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::number::LocalizedNumberFormatter formatter =
      icu::number::NumberFormatter::forSkeleton(u".00", status).locale(icu::Locale("de_DE"));
  for (auto _ : state) {
    icu::UnicodeString text = formatter.formatDouble(1234.5, status).toString(status);
    benchmark::DoNotOptimize(text);
  }
  if (U_FAILURE(status)) state.SkipWithError("ICU failed");
}

void icuFormatNew(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  for (auto _ : state) {
    const icu::number::LocalizedNumberFormatter formatter =
        icu::number::NumberFormatter::forSkeleton(u".00", status).locale(icu::Locale("de_DE"));
    icu::UnicodeString text = formatter.formatDouble(1234.5, status).toString(status);
    benchmark::DoNotOptimize(text);
  }
  if (U_FAILURE(status)) state.SkipWithError("ICU failed");
}

void ourParse(benchmark::State& state) {
  for (auto _ : state) {
    RnNum number(zuString::EmptyString(), kLocale);
    bool parsed = number.parse(kText, kPicture);
    benchmark::DoNotOptimize(parsed);
    double value = number.getValue();
    benchmark::DoNotOptimize(value);
  }
}

void icuParseCached(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> format(
      icu::NumberFormat::createInstance(icu::Locale("de_DE"), status));
  const icu::UnicodeString text(u"1.234,50");
  for (auto _ : state) {
    icu::Formattable result;
    format->parse(text, result, status);
    double value = result.getDouble(status);
    benchmark::DoNotOptimize(value);
  }
  if (U_FAILURE(status)) state.SkipWithError("ICU failed");
}

BENCHMARK(ourFormat)->Name("NumFormatCachedFormatter/ours");
BENCHMARK(icuFormatCached)->Name("NumFormatCachedFormatter/icu");
BENCHMARK(ourFormat)->Name("NumFormatNewFormatter/ours");
BENCHMARK(icuFormatNew)->Name("NumFormatNewFormatter/icu");
BENCHMARK(ourParse)->Name("NumParseCachedFormat/ours");
BENCHMARK(icuParseCached)->Name("NumParseCachedFormat/icu");

}  // namespace
