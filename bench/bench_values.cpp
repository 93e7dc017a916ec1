// Dates, times and date-times as values against their peers: std::chrono's
// year_month_day (through sys_days) for day arithmetic, glibc's strftime,
// strptime, snprintf and localtime_r for text and local time, and ICU's
// SimpleDateFormat (made once, its best case) for names and parsing. Each
// pair walks the same 1024 dates or the same few texts.
#include <benchmark/benchmark.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

#include "zu/datetime/zuDateTime.h"

namespace {

using namespace std::chrono;

constexpr int kDays = 1024;
constexpr long kFirstSince1900 = 45000;  // 2023-03-16
const sys_days kOrigin1900{year{1900} / 1 / 1};

zuDate dateAt(int step) {
  const year_month_day ymd{kOrigin1900 + days{kFirstSince1900 - 1 + step}};
  return zuDate(static_cast<int>(ymd.year()), static_cast<unsigned>(ymd.month()),
                static_cast<unsigned>(ymd.day()));
}

std::tm tmAt(int step) {
  const year_month_day ymd{kOrigin1900 + days{kFirstSince1900 - 1 + step}};
  std::tm broken{};
  broken.tm_year = static_cast<int>(ymd.year()) - 1900;
  broken.tm_mon = static_cast<int>(static_cast<unsigned>(ymd.month())) - 1;
  broken.tm_mday = static_cast<int>(static_cast<unsigned>(ymd.day()));
  broken.tm_hour = step % 24;
  broken.tm_min = step % 60;
  broken.tm_sec = step * 7 % 60;
  return broken;
}

UDate icuDate(int step) {
  return static_cast<UDate>((kOrigin1900 + days{kFirstSince1900 - 1 + step}).time_since_epoch() /
                            milliseconds{1});
}

std::unique_ptr<icu::SimpleDateFormat> icuFormat(const char16_t* pattern) {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(pattern),
                                                        icu::Locale("en_US"), status);
  format->setTimeZone(*icu::TimeZone::getGMT());
  return format;
}

// --- Day arithmetic ---------------------------------------------------------------

void ourIncrement(benchmark::State& state) {
  zuDate date = dateAt(0);
  int step = 0;
  for (auto _ : state) {
    ++date;
    if (++step == kDays) {
      date = dateAt(0);
      step = 0;
    }
    benchmark::DoNotOptimize(date);
  }
}

void chronoIncrement(benchmark::State& state) {
  const year_month_day first{kOrigin1900 + days{kFirstSince1900 - 1}};
  year_month_day date = first;
  int step = 0;
  for (auto _ : state) {
    date = year_month_day{sys_days{date} + days{1}};
    if (++step == kDays) {
      date = first;
      step = 0;
    }
    benchmark::DoNotOptimize(date);
  }
}

void ourAddMonth(benchmark::State& state) {
  int step = 0;
  zuDate date = dateAt(0);
  for (auto _ : state) {
    date.Add(0, 1, 0);
    benchmark::DoNotOptimize(date);
    if (++step % 64 == 0) date = dateAt(step % kDays);
  }
}

// Add's forward carry: a day past the month's end runs into the next month.
void chronoAddMonth(benchmark::State& state) {
  int step = 0;
  year_month_day date{kOrigin1900 + days{kFirstSince1900 - 1}};
  for (auto _ : state) {
    const year_month next = date.year() / date.month() + months{1};
    date = year_month_day{sys_days{next / 1} + days{static_cast<unsigned>(date.day()) - 1}};
    benchmark::DoNotOptimize(date);
    if (++step % 64 == 0)
      date = year_month_day{kOrigin1900 + days{kFirstSince1900 - 1 + step % kDays}};
  }
}

void ourDaysSince1900(benchmark::State& state) {
  zuDate dates[kDays];
  for (int i = 0; i < kDays; ++i) dates[i] = dateAt(i);
  int step = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(dates[step].DaysSince1900());
    step = (step + 1) % kDays;
  }
}

void chronoDaysSince1900(benchmark::State& state) {
  year_month_day dates[kDays];
  for (int i = 0; i < kDays; ++i)
    dates[i] = year_month_day{kOrigin1900 + days{kFirstSince1900 - 1 + i}};
  int step = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize((sys_days{dates[step]} - kOrigin1900).count() + 1);
    step = (step + 1) % kDays;
  }
}

void ourSetDaysSince1900(benchmark::State& state) {
  zuDate date = dateAt(0);
  int step = 0;
  for (auto _ : state) {
    date.DaysSince1900(kFirstSince1900 + step);
    benchmark::DoNotOptimize(date);
    step = (step + 1) % kDays;
  }
}

void chronoSetDaysSince1900(benchmark::State& state) {
  int step = 0;
  for (auto _ : state) {
    year_month_day date{kOrigin1900 + days{kFirstSince1900 - 1 + step}};
    benchmark::DoNotOptimize(date);
    step = (step + 1) % kDays;
  }
}

// --- Dates as text ------------------------------------------------------------------

template <zuDate::zuDateFmt kFormat>
void ourDateFormat(benchmark::State& state) {
  zuDate dates[kDays];
  for (int i = 0; i < kDays; ++i) {
    dates[i] = dateAt(i);
    dates[i].Locale("en_US");
  }
  int step = 0;
  for (auto _ : state) {
    zuString text = dates[step].Format(kFormat);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

void strftimeDate(benchmark::State& state, const char* format) {
  std::tm dates[kDays];
  for (int i = 0; i < kDays; ++i) dates[i] = tmAt(i);
  int step = 0;
  char text[64];
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::strftime(text, sizeof text, format, &dates[step]));
    step = (step + 1) % kDays;
  }
}

void icuDateFormat(benchmark::State& state) {
  const auto format = icuFormat(u"MMMM d, y");
  int step = 0;
  for (auto _ : state) {
    icu::UnicodeString text;
    format->format(icuDate(step), text);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

// --- Times as text --------------------------------------------------------------------

zuTime timeAt(int step) {
  return zuTime(step % 24, step * 7 % 60, step * 13 % 60, step % 1000);
}

template <zuTime::zuTimeFmt kForm>
void ourTimeFormat(benchmark::State& state) {
  zuTime times[kDays];
  for (int i = 0; i < kDays; ++i) times[i] = timeAt(i);
  int step = 0;
  for (auto _ : state) {
    zuString text = times[step].Format(kForm);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

void snprintfTime(benchmark::State& state) {
  int step = 0;
  char text[64];
  for (auto _ : state) {
    const zuTime time = timeAt(step);
    benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%.2li:%.2li:%.2li", time.Hour(),
                                           time.Minute(), time.Second()));
    step = (step + 1) % kDays;
  }
}

void snprintfTimeMarker(benchmark::State& state) {
  int step = 0;
  char text[64];
  for (auto _ : state) {
    const zuTime time = timeAt(step);
    const long hour = time.Hour() >= 13 ? time.Hour() - 12 : time.Hour();
    benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "%.2li:%.2li:%.2li %s", hour,
                                           time.Minute(), time.Second(),
                                           time.Hour() <= 12 ? "AM" : "PM"));
    step = (step + 1) % kDays;
  }
}

void ourTimeParse(benchmark::State& state, const char* text) {
  const zuString value(text);
  zuTime time(0, 0, 0, 0);
  for (auto _ : state) benchmark::DoNotOptimize(time.Parse(value));
  if (time.Hour() != 14) state.SkipWithError("wrong time");
}

void strptimeTime(benchmark::State& state, const char* text, const char* format) {
  for (auto _ : state) {
    std::tm broken{};
    benchmark::DoNotOptimize(strptime(text, format, &broken));
    if (broken.tm_hour != 14) state.SkipWithError("wrong time");
  }
}

void icuTimeParse(benchmark::State& state, const char* text, const char16_t* pattern) {
  const auto format = icuFormat(pattern);
  const icu::UnicodeString value(text);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    benchmark::DoNotOptimize(format->parse(value, status));
  }
}

// --- Local display --------------------------------------------------------------------

class BerlinTime {
 public:
  BerlinTime() {
    setenv("TZ", "Europe/Berlin", 1);
    tzset();
  }
  ~BerlinTime() {
    unsetenv("TZ");
    tzset();
  }
};

void ourFormatAsLocal(benchmark::State& state) {
  const BerlinTime zone;
  zuDateTime values[kDays];
  for (int i = 0; i < kDays; ++i) values[i] = zuDateTime(dateAt(i), timeAt(i));
  int step = 0;
  for (auto _ : state) {
    zuString text = values[step].FormatAsLocal(zuDate::ISO_EXTENDED, zuTime::HH_MM_SS, 0);
    benchmark::DoNotOptimize(text);
    step = (step + 1) % kDays;
  }
}

void libcFormatAsLocal(benchmark::State& state) {
  const BerlinTime zone;
  std::tm values[kDays];
  for (int i = 0; i < kDays; ++i) values[i] = tmAt(i);
  int step = 0;
  char text[64];
  for (auto _ : state) {
    std::tm utc = values[step];
    const std::time_t instant = timegm(&utc);
    std::tm local{};
    localtime_r(&instant, &local);
    benchmark::DoNotOptimize(std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local));
    step = (step + 1) % kDays;
  }
}

BENCHMARK(ourIncrement)->Name("DateIncrement/ours");
BENCHMARK(chronoIncrement)->Name("DateIncrement/chrono");
BENCHMARK(ourAddMonth)->Name("DateAddMonth/ours");
BENCHMARK(chronoAddMonth)->Name("DateAddMonth/chrono");
BENCHMARK(ourDaysSince1900)->Name("DaysSince1900Read/ours");
BENCHMARK(chronoDaysSince1900)->Name("DaysSince1900Read/chrono");
BENCHMARK(ourSetDaysSince1900)->Name("DaysSince1900Set/ours");
BENCHMARK(chronoSetDaysSince1900)->Name("DaysSince1900Set/chrono");
BENCHMARK(ourDateFormat<zuDate::ISO_EXTENDED>)->Name("DateFormatIso/ours");
BENCHMARK_CAPTURE(strftimeDate, iso, "%Y-%m-%d")->Name("DateFormatIso/strftime");
BENCHMARK(ourDateFormat<zuDate::MMMM_D_YYYY>)->Name("DateFormatLong/ours");
BENCHMARK_CAPTURE(strftimeDate, long, "%B %-d, %Y")->Name("DateFormatLong/strftime");
BENCHMARK(icuDateFormat)->Name("DateFormatLong/icu");
BENCHMARK(ourTimeFormat<zuTime::HH_MM_SS>)->Name("TimeFormat2/ours");
BENCHMARK(snprintfTime)->Name("TimeFormat2/snprintf");
BENCHMARK(ourTimeFormat<zuTime::HH_MM_SS_MARKER>)->Name("TimeFormat5/ours");
BENCHMARK(snprintfTimeMarker)->Name("TimeFormat5/snprintf");
BENCHMARK_CAPTURE(ourTimeParse, h24, "14:05:09")->Name("TimeParse24/ours");
BENCHMARK_CAPTURE(strptimeTime, h24, "14:05:09", "%H:%M:%S")->Name("TimeParse24/strptime");
BENCHMARK_CAPTURE(icuTimeParse, h24, "14:05:09", u"HH:mm:ss")->Name("TimeParse24/icu");
BENCHMARK_CAPTURE(ourTimeParse, h12, "2:30 PM")->Name("TimeParse12/ours");
BENCHMARK_CAPTURE(strptimeTime, h12, "2:30 PM", "%I:%M %p")->Name("TimeParse12/strptime");
BENCHMARK_CAPTURE(icuTimeParse, h12, "2:30 PM", u"h:mm a")->Name("TimeParse12/icu");
BENCHMARK(ourFormatAsLocal)->Name("FormatAsLocal/ours");
BENCHMARK(libcFormatAsLocal)->Name("FormatAsLocal/libc");

}  // namespace
