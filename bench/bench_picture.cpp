// Formatting and parsing through picture clauses: zuPicture, given the
// picture text on every call, against ICU's formatters. ICU is measured with
// its formatter made once and reused (its best case) and, for formatting,
// with the formatter made for each call (what a caller with a picture per
// value pays). zuPicture keeps the last clauses each thread prepared (their
// alternatives and categories, see zuPreparedPicture.h), so after the first
// call ours finds the clause prepared, as ICU's cached case finds its
// formatter; the engines still read the value and write the text each time.
//
// The three cases: a date ("date{EEEE, D MMMM YYYY}", fr_FR, ICU pattern
// "EEEE, d MMMM y"), a number ("num{z,zz9.99}", de_DE, ICU pattern
// "#,##0.00") and a text ("text{999-AA}"). ICU has no text picture
// formatter; its peer applies the same picture with ICU's own strings and
// character classes: each "9" takes a digit, each "A" a letter, anything
// else is written as it stands.
#include <benchmark/benchmark.h>
#include <unicode/decimfmt.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/uchar.h>
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

// The text picture applied with ICU: symbols take the value's characters in
// turn, checked with ICU's classes; false when one does not fit.
bool icuApplyText(const icu::UnicodeString& picture, const icu::UnicodeString& value,
                  icu::UnicodeString& out) {
  int32_t next = 0;
  for (int32_t i = 0; i < picture.length(); ++i) {
    const char16_t symbol = picture.charAt(i);
    if (symbol != u'9' && symbol != u'A') {
      out.append(symbol);
      continue;
    }
    if (next >= value.length()) return false;
    const UChar32 character = value.char32At(next);
    if (symbol == u'9' ? !u_isdigit(character) : !u_isalpha(character)) return false;
    out.append(character);
    next += U16_LENGTH(character);
  }
  return next == value.length();
}

void icuText(benchmark::State& state) {
  const icu::UnicodeString picture(u"999-AA");
  const icu::UnicodeString value(u"123AB");
  for (auto _ : state) {
    icu::UnicodeString text;
    benchmark::DoNotOptimize(icuApplyText(picture, value, text));
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

// Parsing with ICU: the text must match the picture; the characters the
// symbols take are collected.
void icuTextParse(benchmark::State& state) {
  const icu::UnicodeString picture(u"999-AA");
  const icu::UnicodeString text(u"123-AB");
  for (auto _ : state) {
    icu::UnicodeString value;
    bool matched = picture.length() == text.length();
    for (int32_t i = 0; matched && i < picture.length(); ++i) {
      const char16_t symbol = picture.charAt(i);
      const char16_t character = text.charAt(i);
      if (symbol == u'9') {
        matched = u_isdigit(character);
      } else if (symbol == u'A') {
        matched = u_isalpha(character);
      } else {
        matched = symbol == character;
        continue;
      }
      value.append(character);
    }
    benchmark::DoNotOptimize(matched);
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
BENCHMARK(icuText)->Name("FormatText/icu_classes");
BENCHMARK(ourDateParse)->Name("ParseDate/ours");
BENCHMARK(icuDateParse)->Name("ParseDate/icu_cached");
BENCHMARK(ourNumberParse)->Name("ParseNumber/ours");
BENCHMARK(icuNumberParse)->Name("ParseNumber/icu_cached");
BENCHMARK(ourTextParse)->Name("ParseText/ours");
BENCHMARK(icuTextParse)->Name("ParseText/icu_classes");

}  // namespace
