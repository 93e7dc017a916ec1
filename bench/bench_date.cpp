// Date pictures against ICU's SimpleDateFormat in fr_FR: formatting with
// "EEEE, D MMMM YYYY" (ICU: "EEEE d MMMM y"), our picture read on every
// call, against a formatter made once (the peer's best case) and one made
// per call; then parsing the formatted text back.
#include <benchmark/benchmark.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <iterator>
#include <memory>
#include <vector>

#include "zu/picture/RnDate.h"

namespace {

const char kPicture[] = "EEEE, D MMMM YYYY";
const char16_t kIcuPattern[] = u"EEEE d MMMM y";
constexpr int kFirstDay = 738000;  // 2021-07-26
constexpr int kDays = 1024;
constexpr double kMillisPerDay = 86400000.0;
// ICU's dates count milliseconds from 1970-01-01, day 719163 here.
constexpr int kUnixEpochDay = 719163;

std::unique_ptr<icu::SimpleDateFormat> newIcuFormat() {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(kIcuPattern),
                                                        icu::Locale("fr_FR"), status);
  format->setTimeZone(*icu::TimeZone::getGMT());
  return format;
}

UDate icuDate(int day) {
  return (day - kUnixEpochDay) * kMillisPerDay;
}

void ourFormat(benchmark::State& state) {
  const zuString picture(kPicture);
  RnDate date(kFirstDay, "fr_FR");
  int step = 0;
  for (auto _ : state) {
    zuString text = date.format(picture);
    benchmark::DoNotOptimize(text);
    date += ++step % kDays == 0 ? -kDays : 1;
  }
}

void ourFormatNew(benchmark::State& state) {
  const zuString picture(kPicture);
  int step = 0;
  for (auto _ : state) {
    zuString text = RnDate(kFirstDay + step, "fr_FR").format(picture);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

void icuFormatCached(benchmark::State& state) {
  auto format = newIcuFormat();
  int step = 0;
  for (auto _ : state) {
    icu::UnicodeString text;
    format->format(icuDate(kFirstDay + step), text);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

void icuFormatNew(benchmark::State& state) {
  int step = 0;
  for (auto _ : state) {
    icu::UnicodeString text;
    newIcuFormat()->format(icuDate(kFirstDay + step), text);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

void ourParse(benchmark::State& state) {
  const zuString picture(kPicture);
  const zuString locale("fr_FR");
  std::vector<zuString> texts;
  for (int day = 0; day < kDays; ++day)
    texts.push_back(RnDate(kFirstDay + day, "fr_FR").format(picture));
  int step = 0;
  for (auto _ : state) {
    RnDate date(texts[step], picture, locale);
    benchmark::DoNotOptimize(date);
    if (date.getDays() != kFirstDay + step) state.SkipWithError("wrong date");
    step = (step + 1) % kDays;
  }
}

void icuParseCached(benchmark::State& state) {
  auto format = newIcuFormat();
  std::vector<icu::UnicodeString> texts;
  for (int day = 0; day < kDays; ++day) {
    icu::UnicodeString text;
    format->format(icuDate(kFirstDay + day), text);
    texts.push_back(text);
  }
  int step = 0;
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    const UDate date = format->parse(texts[step], status);
    benchmark::DoNotOptimize(date);
    if (U_FAILURE(status) || date != icuDate(kFirstDay + step)) state.SkipWithError("wrong date");
    step = (step + 1) % kDays;
  }
}

BENCHMARK(ourFormat)->Name("DateFormatCachedFormatter/ours");
BENCHMARK(icuFormatCached)->Name("DateFormatCachedFormatter/icu");
BENCHMARK(ourFormatNew)->Name("DateFormatNewFormatter/ours");
BENCHMARK(icuFormatNew)->Name("DateFormatNewFormatter/icu");
BENCHMARK(ourParse)->Name("DateParse/ours");
BENCHMARK(icuParseCached)->Name("DateParse/icu");

}  // namespace
