// Times of day through a picture: RnTime formatting with "h:MM:SS A" in
// en_US and parsing the text back, against ICU's SimpleDateFormat with the
// pattern "h:mm:ss a". The ICU formatter is made once (its best case) and,
// in a second pair, made for each call, which is what a caller without a
// cache of formatters pays; RnTime reads its picture on every call anyway.
// An ISO 8601 date-time is read against ICU parsing the same extended form
// with a formatter made once.
#include <benchmark/benchmark.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <memory>
#include <vector>

#include "zu/datetime/ISODateTime.h"
#include "zu/picture/RnTime.h"

namespace {

constexpr int kTimes = 64;
const zuLiteral kPicture("h:MM:SS A");
const char kIcuPattern[] = "h:mm:ss a";

// Times spread over the day, morning and afternoon.
int timeOfDay(int index) {
  return (index * 1349117 + 3600000) % RnTime::MILLISPERDAY;
}

std::unique_ptr<icu::SimpleDateFormat> icuFormatter() {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(kIcuPattern),
                                                        icu::Locale("en_US"), status);
  format->setTimeZone(*icu::TimeZone::getGMT());
  return format;
}

void ourFormat(benchmark::State& state) {
  std::vector<RnTime> times;
  for (int i = 0; i < kTimes; ++i) times.emplace_back(timeOfDay(i) + 1, "en_US");
  int index = 0;
  for (auto _ : state) {
    zuString text = times[index].format(kPicture);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % kTimes;
  }
}

void icuFormatCached(benchmark::State& state) {
  const auto format = icuFormatter();
  int index = 0;
  for (auto _ : state) {
    icu::UnicodeString text;
    format->format(static_cast<UDate>(timeOfDay(index)), text);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % kTimes;
  }
}

void ourFormatNew(benchmark::State& state) {
  int index = 0;
  for (auto _ : state) {
    zuString text = RnTime(timeOfDay(index) + 1, "en_US").format(kPicture);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % kTimes;
  }
}

void icuFormatNew(benchmark::State& state) {
  int index = 0;
  for (auto _ : state) {
    icu::UnicodeString text;
    icuFormatter()->format(static_cast<UDate>(timeOfDay(index)), text);
    benchmark::DoNotOptimize(text);
    index = (index + 1) % kTimes;
  }
}

void ourParse(benchmark::State& state) {
  std::vector<zuString> texts;
  for (int i = 0; i < kTimes; ++i)
    texts.push_back(RnTime(timeOfDay(i) + 1, "en_US").format(kPicture));
  const zuString locale("en_US");
  int index = 0;
  for (auto _ : state) {
    RnTime time(texts[index], kPicture, locale);
    benchmark::DoNotOptimize(time);
    index = (index + 1) % kTimes;
  }
}

void icuParseCached(benchmark::State& state) {
  const auto format = icuFormatter();
  std::vector<icu::UnicodeString> texts(kTimes);
  for (int i = 0; i < kTimes; ++i) format->format(static_cast<UDate>(timeOfDay(i)), texts[i]);
  int index = 0;
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    UDate date = format->parse(texts[index], status);
    benchmark::DoNotOptimize(date);
    index = (index + 1) % kTimes;
  }
}

void ourIsoParse(benchmark::State& state) {
  const zuString text("2024-03-05T10:20:30.500+05:30");
  const zuString locale("en_US");
  for (auto _ : state) {
    ISODateTime value(text, locale, locale);
    benchmark::DoNotOptimize(value);
  }
}

void icuIsoParseCached(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  icu::SimpleDateFormat format(icu::UnicodeString("yyyy-MM-dd'T'HH:mm:ss.SSSXXX"),
                               icu::Locale("en_US"), status);
  const icu::UnicodeString text("2024-03-05T10:20:30.500+05:30");
  for (auto _ : state) {
    UErrorCode parseStatus = U_ZERO_ERROR;
    UDate date = format.parse(text, parseStatus);
    benchmark::DoNotOptimize(date);
  }
}

BENCHMARK(ourFormat)->Name("TimeFormat/ours");
BENCHMARK(icuFormatCached)->Name("TimeFormat/icu");
BENCHMARK(ourFormatNew)->Name("TimeFormatNewFormatter/ours");
BENCHMARK(icuFormatNew)->Name("TimeFormatNewFormatter/icu");
BENCHMARK(ourParse)->Name("TimeParse/ours");
BENCHMARK(icuParseCached)->Name("TimeParse/icu");
BENCHMARK(ourIsoParse)->Name("IsoDateTimeParse/ours");
BENCHMARK(icuIsoParseCached)->Name("IsoDateTimeParse/icu");

}  // namespace
