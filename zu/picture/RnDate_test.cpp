#include "zu/picture/RnDate.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "zu/testing/RnDateSteps.h"

namespace {

using namespace std::chrono;

using DateSteps = zu::testing::RnDateSteps;

std::string canonical(const RnDate& date) {
  return date.isValid() ? static_cast<const char*>(date.format(RnDate::getKDL_DATE_FMT2())) : "";
}

TEST(RnDateTest, AgreesWithChronoOnEveryDayFrom1600To2400) {
  const sys_days first{year{1600} / 1 / 1};
  const sys_days last{year{2400} / 12 / 31};
  int days = static_cast<int>((first - sys_days{year{1} / 1 / 1}).count()) + 1;  // 0001-01-01 is 1
  RnDate date(days, "en_US");
  for (sys_days day = first; day <= last; day += std::chrono::days{1}, ++days, date += 1) {
    const year_month_day ymd{day};
    const weekday weekDay{day};
    const sys_days thursday =
        day - std::chrono::days{weekDay.iso_encoding() - 1} + std::chrono::days{3};
    const year isoYear = year_month_day{thursday}.year();
    const int isoWeek = static_cast<int>((thursday - sys_days{isoYear / 1 / 1}).count() / 7 + 1);
    const int yearDay = static_cast<int>((day - sys_days{ymd.year() / 1 / 1}).count() + 1);

    ASSERT_EQ(date.getDays(), days);
    ASSERT_EQ(date.getYear(), static_cast<int>(ymd.year())) << days;
    ASSERT_EQ(date.getMonth(), static_cast<int>(static_cast<unsigned>(ymd.month())));
    ASSERT_EQ(date.getMonthDay(), static_cast<int>(static_cast<unsigned>(ymd.day())));
    ASSERT_EQ(date.getWeekDay(), static_cast<int>(weekDay.c_encoding()) + 1);
    ASSERT_EQ(date.getYearDay(), yearDay);
    ASSERT_EQ(date.getISOWeek(), isoWeek) << days;
    ASSERT_EQ(date.getISOYear(), static_cast<int>(isoYear)) << days;
    ASSERT_EQ(DateSteps::epoch(date.getMonthDay(), date.getMonth(), date.getYear() - 1900), days);
    ASSERT_EQ(DateSteps::epochWeekYear(date.getISOYear() - 1900, isoWeek, date.getWeekDay()), days);
    ASSERT_EQ(DateSteps::epochWeekMonth(date.getYear() - 1900, date.getMonth(), date.getWeekMonth(),
                                        date.getWeekDay()),
              days);
  }
}

TEST(RnDateTest, ParsesByThePictureRules) {
  struct Case {
    const char *value, *picture;
    int split;
    const char* expected;  // "" when the parse fails
  } const cases[] = {
      {"5 03 2024", "DD MM YYYY", 30, ""},
      {"29", "YY", 30, "2029-01-01"},
      {"30", "YY", 30, "1930-01-01"},
      {"99", "YY", 0, "2099-01-01"},
      {"0029", "YYYY", 0, "1929-01-01"},
      {"Jan 5, 2009 x", "MMM D, YYYY", 30, ""},
      {"day 5 3 2024", "'Day' D M YYYY", 30, ""},  // quoted text matches exactly
      {"3 2024", "DDDM YYYY", 30, "2024-03-01"},   // a long D run reads nothing
      {"x5/3/2024", "?D/M/YYYY", 30, "2024-03-05"},
      {"5 \t 3 2024", "D+M*YYYY", 30, "2024-03-05"},
      {"060 2024", "JJJ YYYY", 30, "2024-02-29"},
      {"060 3 2023", "JJJ M YYYY", 30, ""},
      {"2020-W53-5", "YYYY-'W'WW-e", 30, "2021-01-01"},
      {"2021-W53-5", "YYYY-'W'WW-e", 30, ""},
      {"2024 03 w1 Mon", "YYYY MM 'w'w EEE", 30, "2024-03-04"},
      {"Monday 5 March 2024", "EEEE D MMMM YYYY", 30, ""},
      {"3 3 2024", "E M YYYY", 30, "2024-03-01"},
      {"31 2 2024", "D M YYYY", 30, ""},
      {"BC 2024", "G YYYY", 30, ""},
      {"2024\t\t3", "YYYYttM", 30, "2024-03-01"},
      {"20240305", "YYYYMMDD", 30, "2024-03-05"},
      {"2024－03-05", "YYYY-MM-DD", 30, "2024-03-05"},  // full-width "-"
      {"2024", "YYYYY", 30, ""},
      {"2024 05", "YYYY WW", 30, "2024-01-29"},
  };
  for (const Case& c : cases) {
    const RnDate date(zuString(c.value), zuString(c.picture), zuString("en_US"), c.split);
    EXPECT_EQ(canonical(date), c.expected) << c.value << " | " << c.picture;
  }
  // Without a year the current one is taken.
  const RnDate dayOnly(zuString("Day 5"), zuString("'Day' D"), zuString("en_US"));
  EXPECT_EQ(dayOnly.getYear() * 10000 + dayOnly.getMonth() * 100 + dayOnly.getMonthDay(),
            RnDate(zuString("en_US")).getYear() * 10000 + 105);
}

TEST(RnDateTest, FormatsEverySymbol) {
  struct Case {
    int year, month, day;
    const char *picture, *locale, *expected;
  } const cases[] = {
      {2024, 3, 5, "D DD J JJJ M MM MMM MMMM", "en_US", "5 05 65 065 3 03 Mar March"},
      {2024, 3, 5, "E EEE EEEE e YY YYYY w WW G", "en_US", "3 Tue Tuesday 2 24 2024 1 10 AD"},
      {2024, 3, 5, "DDD JJ MMMMM EE YYY WWW GG", "en_US", "      "},
      {2024, 3, 5, "? + * t", "en_US", "? + * \t"},
      {2024, 12, 31, "\xEF\xBC\xA4/\xEF\xBC\xAD", "en_US", "３１/１２"},
      {2024, 12, 31, "ＹＹＹＹＹ'年'ＭＭＭＭ'月'Ｄ'日'", "ja_JP", "二〇二四年十二月３１日"},
      {2024, 12, 31, "D MMMM", "ru_RU", "31 декабря"},
      {1, 1, 1, "YYYY-MM-DD EEEE", "en_US", "0001-01-01 Monday"},
      {9999, 12, 31, "YYYY-MM-DD", "en_US", "9999-12-31"},
  };
  for (const Case& c : cases) {
    const RnDate date(DateSteps::epoch(c.day, c.month, c.year - 1900), c.locale);
    EXPECT_STREQ(date.format(zuString(c.picture)), c.expected) << c.picture << " " << c.locale;
  }
  EXPECT_STREQ(RnDate(0, "en_US").format(zuString("YYYY")), "");
  EXPECT_STREQ(RnDate(DateSteps::epoch(5, 1, 109), "en_US").toString(), "Jan 5, 2009");
}

TEST(RnDateTest, StylePatternsRoundTripInManyLocales) {
  const char* locales[] = {"en_US", "ja_JP", "ko_KR", "zh_CN", "zh_TW", "ar_SA", "th_TH",
                           "de_DE", "fr_FR", "ru_RU", "hi_IN", "es_ES", "he_IL", "fi_FI"};
  const int dates[][3] = {{1931, 1, 1}, {1969, 7, 20}, {1999, 12, 31}, {2000, 2, 29},
                          {2009, 1, 5}, {2024, 3, 5},  {2029, 6, 15},  {2024, 9, 30}};
  for (const char* locale : locales) {
    for (int style = 1; style <= 4; ++style) {
      const zuString picture = RnDate::getDateFormat(style, zuString(locale));
      for (const auto& d : dates) {
        const RnDate date(DateSteps::epoch(d[2], d[1], d[0] - 1900), locale);
        const zuString text = date.format(picture);
        const RnDate back(text, picture, zuString(locale));
        EXPECT_EQ(back.getDays(), date.getDays())
            << locale << " " << static_cast<const char*>(text);
      }
    }
  }
}

TEST(RnDateTest, MovesAndStaysWithinTheHeldYears) {
  RnDate date(DateSteps::epoch(29, 2, 124), "en_US");
  date += -365;
  EXPECT_EQ(canonical(date), "2023-03-01");
  date += 2147483647;
  EXPECT_FALSE(date.isValid());
  RnDate first(1, "en_US");
  first += -1;
  EXPECT_FALSE(first.isValid());
  EXPECT_FALSE(RnDate(3652060, "en_US").isValid());
  EXPECT_EQ(DateSteps::epoch(1, 1, 2147483647), 0);
  EXPECT_EQ(DateSteps::epochWeekYear(-2147483647 - 1, 1, 1), 0);
}

TEST(RnDateTest, ResolvesStylesAndToday) {
  EXPECT_STREQ(RnDate::getDateFormat(9, zuString("nowhere")), "MMM D, YYYY");
  EXPECT_STREQ(RnDate::getLocalDateFormat(3, zuString("en_US")), "MMMM d, yyyy");
  RnDate today(zuString("en_US"));
  EXPECT_TRUE(today.isValid());
  today.setGMDate();
  today.setToday();
  EXPECT_TRUE(today.isValid());
}

}  // namespace
