// Formatting and parsing through picture clauses: zuPicture, reading the
// picture text on every call, against ICU's formatters. ICU is measured with
// its formatter made once and reused (its best case) and, for formatting,
// with the formatter made for each call (what a caller with a picture per
// value pays, as zuPicture needs no cache).
//
// The three cases: a date ("date{EEEE, D MMMM YYYY}", fr_FR, ICU pattern
// "EEEE, d MMMM y"), a number ("num{z,zz9.99}", de_DE, ICU pattern
// "#,##0.00") and a text ("text{999-AA}", ICU: a UnicodeString assembled by
// hand, there being no text picture formatter).
#include <benchmark/benchmark.h>
#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/unistr.h>

#include <memory>

#include "zu/picture/zuPicture.h"

namespace {

const zuLiteral kDatePicture("date{EEEE, D MMMM YYYY}");
const zuLiteral kNumberPicture("num{z,zz9.99}");
const zuLiteral kTextPicture("text{999-AA}");
const char16_t kIcuDatePattern[] = u"EEEE, d MMMM y";
const char16_t kIcuNumberPattern[] = u"#,##0.00";
// 2024-03-05 00:00 UTC in ICU's milliseconds since 1970.
constexpr UDate kIcuDate = 1709596800000.0;

std::unique_ptr<icu::SimpleDateFormat> icuDateFormat() {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(kIcuDatePattern),
                                                        icu::Locale("fr_FR"), status);
  format->setTimeZone(*icu::TimeZone::getGMT());
  return format;
}

std::unique_ptr<icu::DecimalFormat> icuNumberFormat() {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale german("de_DE");
  auto symbols = new icu::DecimalFormatSymbols(german, status);
  return std::make_unique<icu::DecimalFormat>(icu::UnicodeString(kIcuNumberPattern), symbols,
                                              status);
}

// --- Formatting ---------------------------------------------------------------

void ourDate(benchmark::State& state) {
  const zuLiteral value("2024-03-05");
  const zuLiteral locale("fr_FR");
  for (auto _ : state) {
    zuString text = zuPicture::format(value, kDatePicture, locale);
    benchmark::DoNotOptimize(text);
  }
}

void icuDateCached(benchmark::State& state) {
  auto format = icuDateFormat();
  for (auto _ : state) {
    icu::UnicodeString text;
    format->format(kIcuDate, text);
    benchmark::DoNotOptimize(text);
  }
}

void icuDatePerCall(benchmark::State& state) {
  for (auto _ : state) {
    icu::UnicodeString text;
    icuDateFormat()->format(kIcuDate, text);
    benchmark::DoNotOptimize(text);
  }
}

void ourNumber(benchmark::State& state) {
  const zuLiteral value("1234.5");
  const zuLiteral locale("de_DE");
  for (auto _ : state) {
    zuString text = zuPicture::format(value, kNumberPicture, locale);
    benchmark::DoNotOptimize(text);
  }
}

void icuNumberCached(benchmark::State& state) {
  auto format = icuNumberFormat();
  for (auto _ : state) {
    icu::UnicodeString text;
    format->format(1234.5, text);
    benchmark::DoNotOptimize(text);
  }
}

void icuNumberPerCall(benchmark::State& state) {
  for (auto _ : state) {
    icu::UnicodeString text;
    icuNumberFormat()->format(1234.5, text);
    benchmark::DoNotOptimize(text);
  }
}

void ourText(benchmark::State& state) {
  const zuLiteral value("123AB");
  const zuLiteral locale("en_US");
  for (auto _ : state) {
    zuString text = zuPicture::format(value, kTextPicture, locale);
    benchmark::DoNotOptimize(text);
  }
}

void icuText(benchmark::State& state) {
  const icu::UnicodeString value(u"123AB");
  for (auto _ : state) {
    icu::UnicodeString text(value, 0, 3);
    text.append(u'-').append(value, 3, 2);
    benchmark::DoNotOptimize(text);
  }
}

// --- Parsing --------------------------------------------------------------------

void ourDateParse(benchmark::State& state) {
  const zuLiteral text("mardi, 5 mars 2024");
  const zuLiteral locale("fr_FR");
  for (auto _ : state) {
    zuString value = zuPicture::parse(text, kDatePicture, locale);
    benchmark::DoNotOptimize(value);
  }
}

void icuDateParse(benchmark::State& state) {
  auto format = icuDateFormat();
  const icu::UnicodeString text(u"mardi, 5 mars 2024");
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    UDate date = format->parse(text, status);
    benchmark::DoNotOptimize(date);
  }
}

void ourNumberParse(benchmark::State& state) {
  const zuLiteral text("1.234,50");
  const zuLiteral locale("de_DE");
  for (auto _ : state) {
    zuString value = zuPicture::parse(text, kNumberPicture, locale);
    benchmark::DoNotOptimize(value);
  }
}

void icuNumberParse(benchmark::State& state) {
  auto format = icuNumberFormat();
  const icu::UnicodeString text(u"1.234,50");
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Formattable number;
    format->parse(text, number, status);
    benchmark::DoNotOptimize(number);
  }
}

void ourTextParse(benchmark::State& state) {
  const zuLiteral text("123-AB");
  const zuLiteral locale("en_US");
  for (auto _ : state) {
    zuString value = zuPicture::parse(text, kTextPicture, locale);
    benchmark::DoNotOptimize(value);
  }
}

void icuTextParse(benchmark::State& state) {
  const icu::UnicodeString text(u"123-AB");
  for (auto _ : state) {
    icu::UnicodeString value(text, 0, 3);
    value.append(text, 4, 2);
    benchmark::DoNotOptimize(value);
  }
}

BENCHMARK(ourDate)->Name("FormatDate/ours");
BENCHMARK(icuDateCached)->Name("FormatDate/icu_cached");
BENCHMARK(icuDatePerCall)->Name("FormatDate/icu_per_call");
BENCHMARK(ourNumber)->Name("FormatNumber/ours");
BENCHMARK(icuNumberCached)->Name("FormatNumber/icu_cached");
BENCHMARK(icuNumberPerCall)->Name("FormatNumber/icu_per_call");
BENCHMARK(ourText)->Name("FormatText/ours");
BENCHMARK(icuText)->Name("FormatText/icu_unicodestring");
BENCHMARK(ourDateParse)->Name("ParseDate/ours");
BENCHMARK(icuDateParse)->Name("ParseDate/icu_cached");
BENCHMARK(ourNumberParse)->Name("ParseNumber/ours");
BENCHMARK(icuNumberParse)->Name("ParseNumber/icu_cached");
BENCHMARK(ourTextParse)->Name("ParseText/ours");
BENCHMARK(icuTextParse)->Name("ParseText/icu_unicodestring");

}  // namespace
