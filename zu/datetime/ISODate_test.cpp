#include "zu/datetime/ISODate.h"

#include <gtest/gtest.h>

#include <string>

#include "zu/datetime/ISODateTime.h"
#include "zu/testing/ScopedTimeZone.h"

namespace {

using zu::testing::ScopedTimeZone;

TEST(ISODateTest, ReadsTheCalendarDateForms) {
  struct Case {
    const char *text, *expected;  // "" fails
  } const cases[] = {
      {"2024", "2024-01-01"},
      {"2024-03", "2024-03-01"},
      {"202403", "2024-03-01"},
      {"20240305", "2024-03-05"},
      {"2024-03-05", "2024-03-05"},
      {" 2024-03-05T10:00 ", "2024-03-05"},
      {"2024-0305", ""},
      {"2024-02-30", ""},
      {"0000-01-01", "1900-01-01"},  // a year below 100 is 1900 + year
      {"24-03-05", ""},              // the year has four digits
  };
  for (const Case& c : cases) {
    const ISODate date(c.text, "en_US");
    EXPECT_EQ(date.isValid(), c.expected[0] != '\0') << c.text;
    EXPECT_EQ(std::string(date.format(RnDate::getKDL_DATE_FMT2())), c.expected) << c.text;
  }
}

TEST(ISODateTimeTest, SplitsAtTAndShowsTheDisplayZone) {
  ScopedTimeZone zone("UTC");
  struct Case {
    const char *text, *picture, *expected;
  } const cases[] = {
      {"2024-03-05T10:20:30.500+05:30", "YYYY-MM-DDTHH:MM:SS.FFFzz", "2024-03-05T04:50:30.500Z"},
      {"20240305T102030.500Z", "YYYYMMDDTHHMMSS.FFFz", "20240305T102030.500Z"},
      {"2024-03-05T10:20", "D MMM YYYYTh:MM A", "5 Mar 2024T10:20 AM"},
      {"2024-03-05", "YYYY-MM-DDTHH:MM", ""},
      {"2024-03-05Tnoon", "YYYY-MM-DDTHH:MM", ""},
      {"24-03-05T10:20", "YYYY-MM-DDTHH:MM", ""},
  };
  for (const Case& c : cases) {
    const ISODateTime value(c.text, "en_US", "en_US");
    EXPECT_EQ(std::string(value.format(c.picture)), c.expected) << c.text;
  }
  // Shown in the process's zone until set to universal time.
  ScopedTimeZone kolkata("Asia/Kolkata");
  ISODateTime value("2024-03-05T10:00:00Z", "en_US", "en_US");
  EXPECT_EQ(std::string(value.format(ISODateTime::getKDL_DATETIME_FMT2())),
            "2024-03-05T15:30:00.000+05:30");
  value.setGMTime();
  EXPECT_EQ(std::string(value.format(ISODateTime::getKDL_DATETIME_FMT2())),
            "2024-03-05T10:00:00.000Z");
  EXPECT_EQ(value.getTime().getDays(), 0);
}

}  // namespace
