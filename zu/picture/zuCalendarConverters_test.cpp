#include "zu/picture/zuCalendarConverters.h"

#include <gtest/gtest.h>

#include <memory>

#include "zu/picture/GregorianCalendarConvertor.h"
#include "zu/picture/HijriCalendarConvertor.h"
#include "zu/picture/internal/CalendarConverterTable.h"

namespace {

struct Ymd {
  int day, month, year;
  bool operator==(const Ymd&) const = default;
};

// Umm al-Qura dates as ICU gives them: Gregorian, then Hijri.
const struct {
  Ymd gregorian, hijri;
} kKnownDates[] = {
    {{11, 3, 2024}, {1, 9, 1445}},  // 1 Ramadan 1445
    {{7, 7, 2024}, {1, 1, 1446}},   // 1 Muharram 1446
    {{1, 3, 2025}, {1, 9, 1446}},   // 1 Ramadan 1446
    {{14, 3, 1937}, {1, 1, 1356}},  // start of the Umm al-Qura tables
    {{16, 11, 2077}, {30, 12, 1500}},
};

TEST(CalendarConverterTest, TableGivesGregorianWhileAlternatesAreOff) {
  EXPECT_FALSE(isAltCalendarEnabled());
  const std::shared_ptr<ICalendarConverter> gregorian = getCalendarConverter("en_US");
  ASSERT_NE(gregorian, nullptr);
  for (const char* locale : {"ar_SA", "", "xx"}) {
    EXPECT_EQ(getCalendarConverter(locale), gregorian) << locale;
  }
  EXPECT_NE(dynamic_cast<GregorianCalendarConvertor*>(gregorian.get()), nullptr);

  using zu::internal::lookupCalendarConverter;
  EXPECT_NE(dynamic_cast<HijriCalendarConvertor*>(lookupCalendarConverter("ar_SA", true).get()),
            nullptr);
  EXPECT_EQ(lookupCalendarConverter("ar_sa", true), gregorian);  // exact names only
  EXPECT_EQ(lookupCalendarConverter("ar_SA", false), gregorian);
}

TEST(CalendarConverterTest, HijriMatchesUmmAlQuraAndRejectsWhatItCannotReach) {
  HijriCalendarConvertor hijri;
  for (const auto& known : kKnownDates) {
    Ymd date = known.gregorian;
    EXPECT_TRUE(hijri.fromGregorian(date.day, date.month, date.year));
    EXPECT_EQ(date, known.hijri) << known.gregorian.year << "-" << known.gregorian.month;
    date = known.hijri;
    EXPECT_TRUE(hijri.toGregorian(date.day, date.month, date.year));
    EXPECT_EQ(date, known.gregorian) << known.hijri.year << "-" << known.hijri.month;
  }
  // Four Gregorian dates, then four Hijri ones: rejected, left as they were.
  const Ymd bad[] = {{30, 2, 2024}, {1, 13, 2024}, {1, 1, 0},          {1, 1, 10000},
                     {31, 1, 1446}, {1, 13, 1446}, {1, 1, 2147483647}, {1, 1, -2147483647}};
  for (int i = 0; i < 8; ++i) {
    Ymd date = bad[i];
    EXPECT_FALSE(i < 4 ? hijri.fromGregorian(date.day, date.month, date.year)
                       : hijri.toGregorian(date.day, date.month, date.year))
        << i;
    EXPECT_EQ(date, bad[i]);
  }
}

}  // namespace
