#include "zu/datetime/zuDate.h"

#include <gtest/gtest.h>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "zu/datetime/internal/zuDateFormats.h"
#include "zu/datetime/internal/zuValueTestSupport.h"
#include "zu/datetime/zuDateTime.h"
#include "zu/locale/RnLocale.h"
#include "zu/picture/RnDate.h"
#include "zu/testing/zuCatalogueTestFiles.h"
#include "zu/testing/zuTestText.h"

namespace {

using namespace std::chrono;
using zu::internal::dayOf;
using zu::internal::monthOf;
using zu::internal::thrownId;
using zu::internal::yearOf;
using zu::testing::str;

constexpr unsigned kYear = 17185;
constexpr unsigned kMonth = 17186;
constexpr unsigned kDay = 17187;

zuDate dateOf(const year_month_day& ymd) {
  return zuDate(yearOf(ymd), monthOf(ymd), dayOf(ymd));
}

bool sameDate(const zuDate& date, const year_month_day& ymd) {
  return date.Year() == yearOf(ymd) && date.Month() == monthOf(ymd) && date.Day() == dayOf(ymd);
}

// The date as RnDate's canonical text, "" when empty.
std::string iso(const zuDate& date) {
  return str(date.Format(zuDate::ISO_EXTENDED));
}

TEST(zuDateTest, ValidatesYearThenMonthThenDayInSixtyFourBits) {
  struct Case {
    long year, month, day;
    unsigned id;
  };
  constexpr long k2to32 = 4294967296;  // narrowed to 32 bits it would be valid
  const Case cases[] = {
      {1900, 2, 29, kDay},   {2024, k2to32 + 1, 1, kMonth}, {2024, 1, k2to32 + 1, kDay},
      {214749, 1, 1, kYear}, {-1, 13, 40, kYear},           {2024, 13, 40, kMonth},
  };
  for (const Case& c : cases) {
    zuDate date(1999, 9, 9);
    EXPECT_EQ(thrownId([&] { date.Set(c.year, c.month, c.day); }), c.id)
        << c.year << "-" << c.month;
    EXPECT_EQ(str(date.Format(zuDate::PACKED)), "19990909") << "a throw leaves it";
  }
}

TEST(zuDateTest, AgreesWithChronoOnEveryDayFrom1600To2400) {
  const sys_days first{year{1600} / 1 / 1};
  const sys_days last{year{2400} / 12 / 31};
  const sys_days origin1900{year{1900} / 1 / 1};
  zuDate date = dateOf(year_month_day{first});
  for (sys_days day = first; day <= last; day += days{1}) {
    const year_month_day ymd{day};
    ASSERT_TRUE(sameDate(date, ymd)) << iso(date);
    const long dayOfYear = (day - sys_days{ymd.year() / 1 / 1}).count() + 1;
    ASSERT_EQ(date.JulianDate(), dayOfYear - 1);
    if (day >= origin1900) {
      const long since1900 = (day - origin1900).count() + 1;
      ASSERT_EQ(date.DaysSince1900(), since1900);
      ASSERT_EQ(date.DayOfWeekIndex(), static_cast<int>(weekday{day}.c_encoding()));
      zuDate back(2000, 1, 1);
      back.DaysSince1900(since1900);
      ASSERT_EQ(back.Compare(date), 0);
    } else {
      ASSERT_EQ(date.DaysSince1900(), dayOfYear);  // only the day of the year before 1900
      ASSERT_EQ(date.DayOfWeekIndex(), dayOfYear % 7);
    }
    if (day != last) {
      const zuDate before = date;
      zuDate again = ++date;
      ASSERT_EQ((--again).Compare(before), 0);
    }
  }
  EXPECT_EQ(thrownId([] { zuDate(2000, 1, 1).DaysSince1900(0); }), kDay);
  EXPECT_EQ(thrownId([] { zuDate(2000, 1, 1).DaysSince1900(78000000); }), kYear);
}

TEST(zuDateTest, DifferencesAgreeWithChronoAndLendTheMonthBeforeTheLaterDate) {
  std::mt19937_64 random(18);
  std::uniform_int_distribution<int> dayPick(0, 182620);  // 1900 .. 2399
  const sys_days origin{year{1900} / 1 / 1};
  for (int i = 0; i < 100000; ++i) {
    const sys_days a = origin + days{dayPick(random)};
    const sys_days b = origin + days{dayPick(random)};
    const zuDate first = dateOf(year_month_day{a});
    const zuDate second = dateOf(year_month_day{b});
    long count = -1;
    const int order = first.DaysDifference(second, count);
    ASSERT_EQ(count, std::abs((a - b).count()));
    ASSERT_EQ(order, a > b ? 1 : (a < b ? -1 : 0));
    long years = 0, months = 0, dayCount = 0, back[3] = {-1, -1, -1};
    ASSERT_EQ(first.Difference(second, years, months, dayCount), order);
    ASSERT_EQ(second.Difference(first, back[0], back[1], back[2]), -order);
    ASSERT_TRUE(years == back[0] && months == back[1] && dayCount == back[2]);
    // Only the month before the later date's lends its days: after a short
    // February the day count can end a little below 0.
    ASSERT_TRUE(years >= 0 && months >= 0 && months < 12 && dayCount >= -3 && dayCount <= 30);
  }
  // Only the month before the later date lends its days.
  struct Case {
    zuDate later, earlier;
    long fields;  // years * 10000 + months * 100 + days
  } const cases[] = {{zuDate(2024, 2, 29), zuDate(2023, 1, 31), 10100},  // both last days
                     {zuDate(2024, 3, 1), zuDate(2024, 1, 31), 99},      // February's 29: -1 day
                     {zuDate(2024, 1, 5), zuDate(2023, 12, 20), 16}};    // January lends 31
  for (const Case& c : cases) {
    long years = -1, months = -1, days = -1;
    EXPECT_EQ(c.later.Difference(c.earlier, years, months, days), 1);
    EXPECT_EQ(years * 10000 + months * 100 + days, c.fields) << iso(c.later);
  }
  zuDate first(2024, 3, 1);
  EXPECT_EQ(iso(first -= 1) + " " + iso(zuDate(2024, 2, 29) + 1), "2024-02-29 2024-03-01");
  EXPECT_EQ((first < zuDate(2024, 3, 1)) + (first >= first) + (first != zuDate(2024, 3, 1)), 3);
  EXPECT_EQ(zuDate::DaysInMonth(2024, 13) + zuDate::LeapYear(-400) + zuDate::LeapYear(2100), 0);
}

// The date Add gives, or the message id it throws: the amounts added to
// the fields, months above 12 carried forward, then the day counted on
// from the first of the month; nothing is carried backwards.
void expectAddAgreesWithChrono(const year_month_day& start, long years, long months, long days) {
  const long month = monthOf(start) + months;
  const long dayCount = dayOf(start) + days;
  unsigned id = 0;
  year_month_day expected{};
  if (month < 1) {
    id = yearOf(start) + years < 0 ? kYear : kMonth;
  } else {
    const year_month ym =
        year{static_cast<int>(yearOf(start) + years)} / January + std::chrono::months{month - 1};
    if (dayCount < 1) {
      id = static_cast<int>(ym.year()) < 0 ? kYear : kDay;
    } else {
      expected = year_month_day{sys_days{ym / 1} + std::chrono::days{dayCount - 1}};
      if (yearOf(expected) < 0 || yearOf(expected) > zuDate::kMaxYear) id = kYear;
    }
  }
  zuDate date = dateOf(start);
  ASSERT_EQ(thrownId([&] { date.Add(years, months, days); }), id)
      << iso(dateOf(start)) << " + " << years << "/" << months << "/" << days;
  ASSERT_TRUE(sameDate(date, id == 0 ? expected : start)) << iso(date);
}

TEST(zuDateTest, AddCarriesForwardAndSubtractNormalisesAsChronoPredicts) {
  std::mt19937_64 random(4);
  std::uniform_int_distribution<int> startPick(-150000, 150000);
  std::uniform_int_distribution<long> yearPick(-2100, 2100);
  std::uniform_int_distribution<long> monthPick(-30, 400);
  std::uniform_int_distribution<long> dayPick(-40, 200000);
  for (int i = 0; i < 200000; ++i) {
    const year_month_day start{sys_days{year{2000} / 1 / 1} + days{startPick(random)}};
    // Every other round adds at most a year's days: month ends and day 0.
    const long dayCount = i % 2 == 0 ? dayPick(random) : dayPick(random) % 400;
    expectAddAgreesWithChrono(start, yearPick(random), monthPick(random), dayCount);
  }
  expectAddAgreesWithChrono(year{2024} / 1 / 31, 0, 1, 0);  // February 31st: March 2nd

  // Subtract normalises both ways, for amounts of either sign.
  std::uniform_int_distribution<long> yearSpan(-2500, 2500), monthSpan(-5000, 5000);
  std::uniform_int_distribution<long> daySpan(-400000, 400000);
  for (int i = 0; i < 200000; ++i) {
    const year_month_day start{sys_days{year{2000} / 1 / 1} + days{startPick(random)}};
    const long years = yearSpan(random), months = monthSpan(random), dayCount = daySpan(random);
    const year_month ym =
        year{static_cast<int>(yearOf(start) - years)} / start.month() - std::chrono::months{months};
    const year_month_day expected{sys_days{ym / 1} + days{dayOf(start) - dayCount - 1}};
    const bool inRange = yearOf(expected) >= 0 && yearOf(expected) <= zuDate::kMaxYear;
    zuDate date = dateOf(start);
    ASSERT_EQ(thrownId([&] { date.Subtract(years, months, dayCount); }), inRange ? 0 : kYear);
    ASSERT_TRUE(sameDate(date, inRange ? expected : start)) << iso(date);
  }

  // The arithmetic is closed-form for any amounts.
  struct Case {
    bool subtract;
    long years, months, days;
    long packed;  // the result from 2024-01-31; 0 when 17185 is thrown
  };
  constexpr long kHuge = 1L << 41;  // beyond the 64-bit path
  const Case cases[] = {{false, LONG_MAX, LONG_MAX, LONG_MAX, 0},
                        {false, LONG_MIN, 0, 0, 0},
                        {false, -kHuge, 12 * kHuge, 0, 20240131},
                        {false, -400 * kHuge, 0, 146097 * kHuge, 20240131},
                        {true, LONG_MIN, LONG_MIN, LONG_MIN, 0},
                        {true, 400 * kHuge, 0, -146097 * kHuge, 20240131},
                        {true, 0, 0, 739281, 101},
                        {true, 0, 0, 739282, 0}};
  for (const Case& c : cases) {
    zuDate date(2024, 1, 31);
    const unsigned id = thrownId([&] {
      c.subtract ? date.Subtract(c.years, c.months, c.days) : date.Add(c.years, c.months, c.days);
    });
    EXPECT_EQ(id, c.packed == 0 ? kYear : 0) << c.years << "/" << c.months << "/" << c.days;
    EXPECT_EQ(str(date.Format(zuDate::PACKED)),
              std::to_string(c.packed == 0 ? 20240131 : c.packed));
  }
}

TEST(zuDateTest, Year4WidensBySplitAndCentury) {
  const long century = zuDate().Year() / 100 * 100;
  zuDate date(2024, 1, 1);
  struct Case {
    long split, year, widened;
  } const cases[] = {{30, 29, century + 29}, {30, 30, century - 70}, {30, 100, century},
                     {30, 101, 101},         {0, 95, century + 95},  {0, 100, century + 100}};
  for (const Case& c : cases) {
    ASSERT_EQ(date.CenturySplit(c.split), 1);
    EXPECT_EQ(date.Year4(c.year), c.widened) << c.split << " " << c.year;
  }
  EXPECT_EQ(date.CenturySplit(-1), 0);
  EXPECT_EQ(date.CenturySplit(130), 1);
  EXPECT_EQ(date.CenturySplit(), 30);
}

TEST(zuDateTest, FormatsByPublishedNumbers) {
  // 2024-02-05 in en_US, indexed by the format's published number.
  const char* const texts[] = {
      "20240205",       "240205",           "02/05/24",       "02-05-24",
      "Feb 5, 2024",    "February 5, 2024", "5 Feb 24",       "5 Feb 2024",
      "05/02/24",       "05-02-24",         "févr. 5, 2024",  "février 5, 2024",
      "5 févr. 24",     "5 févr. 2024",     "5 février 2024", "24/02/05",
      "02.05.24",       "05.02.24",         "24.02.05",       "05.02.2024",
      "02/05/2024",     "2024-02-05",       "02052024",       "020524",
      "2024年02月05日", "2024年02月05日",   "2024年02月05日", "Monday February 5, 2024",
      "Feb 5, 2024",    "05/02/2024",       "2/5/24",         "2024/02/05"};
  zuDate date(2024, 2, 5);
  date.Locale("en_US");
  for (int fmt = 0; fmt < 32; ++fmt) {
    EXPECT_EQ(str(date.Format(static_cast<zuDate::zuDateFmt>(fmt))), texts[fmt]) << fmt;
  }
  // The medium form takes its picture from the locale.
  date.Locale("de_DE");
  EXPECT_EQ(str(date.Format(zuDate::LOCALE_MEDIUM)), "05.02.2024");

  // Dates past the eight-digit bridge, any other number, and no date.
  EXPECT_EQ(str(zuDate(0, 2, 29).Format(zuDate::PACKED)), "229");
  const zuDate last(214748, 12, 31);
  EXPECT_EQ(str(last.Format(static_cast<zuDate::zuDateFmt>(40))), "2147481231");
  EXPECT_EQ(str(last.Format(zuDate::ERA)), "214748年12月31日");
  const zuDate empty("no date", zuDate::ISO_EXTENDED, 0, "en_US");
  EXPECT_EQ(str(empty.Format(zuDate::ISO_EXTENDED)) + str(empty.Format(zuDate::ERA)), "");
  EXPECT_EQ(str(empty.Format(zuDate::PACKED)), "0");
  EXPECT_EQ(str(empty.DayOfWeek(zuDate::ISO_EXTENDED)), "");
  EXPECT_EQ(empty.DaysSince1900() * 10 + empty.JulianDate(), -1);
}

TEST(zuDateTest, ParsesWhatItFormatsWhereTheYearDigitsCarryIt) {
  for (const char* locale : {"en_US", "fr_FR", "de_DE", "ja", "ko"}) {
    for (int fmt = 1; fmt <= 31; ++fmt) {
      zuDate probe(2024, 2, 5);
      probe.Locale(locale);
      const auto format = static_cast<zuDate::zuDateFmt>(fmt);
      const bool fullYear = str(probe.Format(format)).find("2024") != std::string::npos;
      // Two-digit years read as 20YY (split 0): only this century carries.
      const sys_days first{year{fullYear ? 1900 : 2000} / 1 / 1};
      const sys_days last{year{fullYear ? 2400 : 2099} / 12 / 31};
      int checked = 0;
      for (sys_days day = first; day <= last; day += days{97}, ++checked) {
        zuDate date = dateOf(year_month_day{day}), read(1, 1, 1);
        date.Locale(locale);
        read.Locale(locale);
        const zuString text = date.Format(format);
        ASSERT_EQ(read.Parse(text, format), 1) << fmt << " " << locale << " " << str(text);
        ASSERT_EQ(read.Compare(date), 0) << fmt << " " << locale << " " << str(text);
      }
      EXPECT_GT(checked, 300);
    }
  }
  zuDate date(2024, 1, 1);
  EXPECT_EQ(date.Parse("2024-03-05", static_cast<zuDate::zuDateFmt>(32)), 0);
  EXPECT_EQ(date.Parse("2024-03-05", zuDate::PACKED), 0);
  EXPECT_EQ(date.Parse("2024-02-30", zuDate::ISO_EXTENDED), 0);
  EXPECT_EQ(iso(date), "2024-01-01");
  EXPECT_EQ(date.CenturySplit(30) + date.Parse("05.03.29", zuDate::DD_MM_YY_DOT), 2);
  EXPECT_EQ(iso(date), "2029-03-05");
}

TEST(zuDateTest, EraFormWritesAndReadsByItsOwnRules) {
  struct Case {
    const char *text, *locale, *expected;  // "" when the parse fails
    bool written;                          // the expected date's era form
  } const cases[] = {
      {"1868年09月07日", "ja", "1868-09-07", true},  // before the era table
      {"明治 1年09月08日", "ja", "1868-09-08", true},
      {"令和 1年05月01日", "JA", "2019-05-01", true},
      {"2024年03月05日", "ja_JP", "2024-03-05", true},  // written without era in ja_JP
      {"2024년03월05일", "ko", "2024-03-05", true},
      {" 800年03月05日", "ja", "0800-03-05", true},
      {" 平成 31 年 4 月 30 日 ", "ja", "2019-04-30", false},
      {"令和 6年03月05日 (火)", "ja", "2024-03-05", false},  // what follows the day is ignored
      {"昭和 100年01月01日", "ja", "2025-01-01", false},     // not checked against the era's end
      {"令和元年05月01日", "ja", "", false},                 // ASCII digits only
      {"令和 6年03月05日", "en_US", "", false},              // era names in Japanese locales only
      {"平成 31年02月30日", "ja", "", false},                // no such day: 0, nothing thrown
      {"24年03月05日", "ja", "2024-03-05", false},           // Year4 with split 0
      {"99999999999年01月01日", "ja", "", false},
      {"999999年01月01日", "ja", "", false},
  };
  for (const Case& c : cases) {
    zuDate date(1999, 9, 9);
    date.Locale(c.locale);
    const int result = date.Parse(c.text, zuDate::ERA);
    EXPECT_EQ(result, c.expected[0] != '\0' ? 1 : 0) << c.text;
    EXPECT_EQ(iso(date), result != 0 ? c.expected : "1999-09-09") << c.text;
    EXPECT_EQ(c.written ? str(date.GetAltCalendarDateFormat()) : c.text, c.text) << c.locale;
  }
  zuDate japanese("令和 6年03月05日", zuDate::ERA, 0, "ja");
  EXPECT_EQ(japanese.GetYearFromAltCalendar(" 大正 15 "), 1926);
  EXPECT_EQ(japanese.GetYearFromAltCalendar("大正"), -1);
  EXPECT_EQ(japanese.GetYearFromAltCalendar("天保 3"), -1);
}

TEST(zuDateTest, NamesFollowTheAsianLocaleMapping) {
  zuDate date(2024, 2, 5);
  date.Locale("ko");
  EXPECT_EQ(str(date.DayOfWeek(zuDate::ISO_EXTENDED)), "월요일");
  EXPECT_EQ(str(date.DayOfWeek(zuDate::YYYY_MM_DD_KANJI)), "月曜日");   // ko under 24: ja
  EXPECT_EQ(str(date.DayOfWeek(zuDate::YYYY_MM_DD_HANGUL)), "Monday");  // 26: en
  EXPECT_EQ(str(date.MonthName(0, zuDate::YYYY_MM_DD_HANGUL)), "February");
  EXPECT_EQ(str(date.MonthName(13, zuDate::YYYY_MM_DD_HANGUL)), "");
  EXPECT_EQ(str(date.MonthNameFr(8)), "août");
  EXPECT_EQ(str(date.ShortMonthNameFr(0)), "févr.");
  date.Locale("de_DE");
  EXPECT_EQ(str(date.DayOfWeek(zuDate::YYYY_MM_DD_KANJI)), "Montag");
}

TEST(zuDateTest, LocaleFallsBackToTheThreadsDefault) {
  {
    const zu::testing::zuLocaleEnvironment environment(nullptr, "C");
    EXPECT_EQ(str(zuDate(2024, 1, 1).Locale()), "en_US");  // "x" gives en_US
    RnLocale::setLocale("de_DE");
    zuDate date(2024, 1, 1);
    EXPECT_EQ(str(date.Locale()), "de_DE");
    date.Locale("xx_YY");
    EXPECT_EQ(str(date.Locale()), "de_DE");
    RnLocale::setLocale("");

    // A locale the thread registered is interned: it outlives the entry.
    RnLocale::update("xx_QQ", "fr_FR");
    setenv("LANG", "xx_QQ", 1);
    const zuDate registered(2024, 1, 1);
    RnLocale::release(RnLocale::get(RnLocale::get("xx_QQ")));
    EXPECT_EQ(str(registered.Locale()), "xx_QQ");
    EXPECT_EQ(str(registered.Format(zuDate::MMM_D_YYYY)), "Jan 1, 2024");  // unknown now: en_US
  }
  RnLocale::setLocale("");
  std::setlocale(LC_ALL, "C");
}

// What the picture engine writes for format `fmt`: the date handed to
// RnDate as its eight digits under "YYYYMMDD", then formatted with the
// format's picture in its locale.
std::string engineText(const zuDate& date, int fmt) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "%04ld%02ld%02ld", date.Year(), date.Month(), date.Day());
  const zuString locale = date.Locale();
  const RnDate read(zuString(digits), zuString("YYYYMMDD"), locale, date.CenturySplit());
  if (date.Year() > 9999 || !read.isValid()) return "";
  using Rule = zu::internal::DateFormatRule;
  const zu::internal::DateFormatRow& row = zu::internal::kDateFormats[fmt];
  zuString picture(row.picture);
  if (row.rule == Rule::kKoreanOrCjk && str(locale) != "ko") {
    picture = zu::internal::kDateFormats[24].picture;
  }
  if (row.rule == Rule::kLocaleMedium || row.rule == Rule::kLocaleShort) {
    picture = RnDate::getDateFormat(row.rule == Rule::kLocaleShort ? 1 : 0, locale);
  }
  const char* in = row.rule == Rule::kFrench ? "fr" : static_cast<const char*>(locale);
  return str(RnDate(read.getDays(), in).format(picture));
}

// The numeric formats are written without the picture engine; every format
// must still give the engine's text, in locales with their own digits too,
// for the years the bridge moves (0-99), drops (0000-02-29, above 9999)
// or pads (100-999). zuDateTime's numeric buffer must give its parts' text.
TEST(zuDateTest, FormatsGiveThePictureEnginesText) {
  std::vector<zuDate> dates;
  const long fixed[][3] = {{0, 1, 1},     {0, 2, 29},      {1, 1, 1},    {99, 12, 31},
                           {100, 1, 1},   {999, 12, 31},   {1000, 1, 1}, {1899, 12, 31},
                           {1900, 2, 28}, {2000, 2, 29},   {2024, 3, 5}, {9999, 12, 31},
                           {10000, 1, 1}, {214748, 12, 31}};
  for (const auto& [y, m, d] : fixed) dates.emplace_back(y, m, d);
  zuDate next(0, 1, 1);  // then every 9739th day, up to the year 10300
  while (dates.size() < 400) dates.push_back(next += 9739);
  int compared = 0;
  for (const char* locale : {"en_US", "fr_FR", "de_DE", "ja", "ko", "ar_EG", "fa_IR"}) {
    SCOPED_TRACE(locale);
    for (zuDate date : dates) {
      date.Locale(locale);
      for (int fmt = 1; fmt <= 31; ++fmt) {
        if (fmt == zuDate::ERA) continue;
        ASSERT_EQ(str(date.Format(static_cast<zuDate::zuDateFmt>(fmt))), engineText(date, fmt))
            << iso(date) << " format " << fmt;
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 7 * 400 * 30);

  // Date and time forms together, numeric or not, either order.
  const zuTime time(14, 5, 9, 7);
  for (const zuDate& date : {zuDate(2024, 3, 5), zuDate(99, 1, 2), zuDate(0, 2, 29)}) {
    for (int fmt = -1; fmt <= 32; ++fmt) {
      for (int form = -1; form <= 7; ++form) {
        const auto dateFmt = static_cast<zuDate::zuDateFmt>(fmt);
        const auto timeFmt = static_cast<zuTime::zuTimeFmt>(form);
        const std::string dateText = str(date.Format(dateFmt));
        const std::string timeText = str(time.Format(timeFmt));
        const zuDateTime both(date, time);
        EXPECT_EQ(str(both.Format(dateFmt, timeFmt, 0, 0)), dateText + " " + timeText);
        EXPECT_EQ(str(both.Format(dateFmt, timeFmt, 1, 0)), timeText + " " + dateText);
      }
    }
  }
}

}  // namespace
