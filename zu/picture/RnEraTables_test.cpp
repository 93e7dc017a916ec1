#include "zu/picture/RnEraTables.h"

#include <gtest/gtest.h>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>

#include <memory>
#include <string>

#include "zu/locale/RnLocale.h"
#include "zu/picture/RnDate.h"
#include "zu/testing/RnDateSteps.h"

namespace {

using DateSteps = zu::testing::RnDateSteps;

// ICU's Japanese calendar, whose eras are kept independently of ours.
TEST(RnEraTablesTest, JapaneseErasAgreeWithIcuSince1873) {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Calendar> japanese(
      icu::Calendar::createInstance(icu::Locale("ja_JP@calendar=japanese"), status));
  ASSERT_TRUE(U_SUCCESS(status));
  japanese->setTimeZone(*icu::TimeZone::getGMT());
  const int count = getAltEraTableCount(RnLocale("ja_JP"));
  const int firstDay = DateSteps::epoch(1, 1, -27);  // 1873, when the Gregorian calendar came in
  const int lastDay = DateSteps::epoch(31, 12, 200);
  icu::GregorianCalendar gregorian(*icu::TimeZone::getGMT(), status);
  for (int days = firstDay; days <= lastDay; days += 3) {
    const RnDate date(days, "ja_JP");
    gregorian.set(date.getYear(), date.getMonth() - 1, date.getMonthDay());
    japanese->setTime(gregorian.getTime(status), status);
    const int era = getEpochEra(gJpEra, count, days);
    ASSERT_GE(era, 0);
    // ICU numbers its modern eras from 232 (Meiji).
    EXPECT_EQ(era + 232, japanese->get(UCAL_ERA, status)) << days;
    EXPECT_EQ(date.getYear() - gJpEra[era].firstYear + 1, japanese->get(UCAL_YEAR, status)) << days;
    ASSERT_TRUE(U_SUCCESS(status));
  }
}

TEST(RnEraTablesTest, FormatsAndParsesDatesInsideTheirEras) {
  struct Case {
    int year, month, day;
    const char *locale, *picture, *expected;
  } const cases[] = {
      {2019, 5, 1, "ja_JP", "gggYYYY'年'M'月'D'日'", "令和1年5月1日"},
      {2019, 5, 1, "ja_JP", "gggＹＹＹＹＹ'年'", "令和元年"},
      {2024, 3, 5, "ja_JP", "gYY.MM.DD", "R06.03.05"},
      {1989, 1, 7, "ja_JP", "ggYYYY", "昭64"},
      {2024, 3, 5, "zh_TW", "gggYYYY'年'", "中華民國113年"},
      {2024, 3, 5, "th_TH", "D/M/g YYYY", "5/3/พ.ศ. 2567"},
      {1955, 6, 1, "ko_KR", "ggYYYY", "檀紀4288"},
      {1860, 1, 1, "ja_JP", "gYYYY", "1860"},  // before the table: no era
  };
  for (const Case& c : cases) {
    const RnDate date(DateSteps::epoch(c.day, c.month, c.year - 1900), c.locale);
    EXPECT_STREQ(date.format(zuString(c.picture)), c.expected) << c.locale << " " << c.picture;
  }

  // Text is read only as a date inside its era.
  struct Read {
    const char *value, *locale, *picture, *expected;  // "" when the parse fails
  } const reads[] = {
      {"平成31年5月1日", "ja_JP", "gggYYYY'年'M'月'D'日'", ""},
      {"令和元年5月1日", "ja_JP", "gggYYYY'年'M'月'D'日'", "2019-05-01"},
      {"r1.5.1", "ja_JP", "gYYYY.M.D", "2019-05-01"},
      {"民国13年", "zh_CN", "gYYYY'年'", "1924-01-01"},
      {"公元2024年", "zh_CN", "gggYYYY'年'", "2024-01-01"},  // the common era is not applied
      {"พ.ศ. 67", "th_TH", "g YY", "1925-01-01"},            // 2467, in the old reckoning
      {"พ.ศ. 29", "th_TH", "g YY", "1986-01-01"},            // below the split: 2529
      {"2567", "th_TH", "YYYY", "2567-01-01"},               // without the era, Gregorian
      {"X2024", "en_US", "gYYYY", ""},
  };
  for (const Read& c : reads) {
    const RnDate date(zuString(c.value), zuString(c.picture), zuString(c.locale));
    const std::string text =
        date.isValid() ? static_cast<const char*>(date.format(RnDate::getKDL_DATE_FMT2())) : "";
    EXPECT_EQ(text, c.expected) << c.value;
  }
  EXPECT_EQ(getAltEraTable(RnLocale("de_DE")), nullptr);
  EXPECT_EQ(getAltEraTable(RnLocale("zh_HK")), gHkEra);
  EXPECT_EQ(getAltEraTable(RnLocale("ko_KR_HANI")), gKrEra);
}

}  // namespace
