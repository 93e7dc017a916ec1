#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/locale/RnData.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/zuPicture.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

using zu::testing::str;
using zu::testing::thrown;

namespace {

constexpr int kUntouched = -7;

TEST(zuPictureTest, StatusFollowsTheValueKindAndTheEarlyExits) {
  struct Case {
    const char* value;  // null: the null value
    const char *picture, *expected;
    int status;
  } cases[] = {
      {"", "num{9}", "", 0},
      {"", "num{9}|num{}", "", 1},
      {nullptr, "num{9}", "", 0},
      {nullptr, "num{9}|null{'n/a'}", "n/a", 1},
      {"0", "zero{'none'}", "none", 1},
      {"0.00", "zero{'none'}", "", 0},
      {"00", "zero{}|num{99}", "00", 1},
      {"x", "", "x", kUntouched},
      {"5", "num{9}|'open", "", kUntouched},
      {"24-03-05T10:00", "date{YYYY-MM-DD}' 'time{HH:MM}", "", 0},  // the year has four digits
  };
  for (const Case& c : cases) {
    int status = kUntouched;
    const zuString out = zuPicture::format(zuString(c.value), c.picture, "en_US", &status, 0);
    EXPECT_EQ(str(out), c.expected) << c.picture;
    EXPECT_EQ(status, c.status) << c.picture;
  }
  int status = kUntouched;
  EXPECT_TRUE(zuPicture::parse(zuString(), "num{9}", "en_US", &status).IsNull());
  EXPECT_EQ(status, kUntouched);
  EXPECT_EQ(str(zuPicture::parse("12", "", "en_US", &status)), "12");
  EXPECT_EQ(status, kUntouched);
}

// What the dispatcher itself decides: bare bodies, alternatives, locale
// qualifiers, compound date-times, null and zero, styles. Each engine is
// reached through the dispatcher, both ways and with exact answers, by the
// allocation test's cases; the engines' own tests cover their symbols.
TEST(zuPictureTest, FormatsAndParsesThroughEveryCategory) {
  struct Case {
    bool parse;
    const char *locale, *picture, *input;
    const char* expected;  // null: the input must not parse
  } const cases[] = {
      {false, "en_US", "z,zz9", "1234", "1,234"},
      {false, "en_US", "num{999}|num{99999}", "12345", "12345"},
      {false, "en_US", "num(de_DE){z,zz9.99}", "1234.5", "1.234,50"},
      {false, "en_GB", "date{D MMM}' at 'time{HH:MM}", "2024-03-05T09:30", "5 Mar at 09:30"},
      {false, "en_US", "date{YYYY-MM-DD}Ttime{HH:MM}", "2024-03-05", "2024-03-05T00:00"},
      {false, "en_US", "null{'n/a'}|zero{'none'}|num{zz9}", "0", "none"},
      {true, "en_US", "num.currency{}", "($1,234.50)", "-1234.5"},  // a style's alternates
      {true, "en_US", "date{D/M/YYYY}time{HH:MM}", "5/3/202413:45", "2024-03-05T13:45:00"},
      {true, "en_US", "num{999}|date{YYYY-MM-DD}", "2024-03-05", "2024-03-05"},
      {true, "en_US", "zero{'none'}|num{zz9}", "none", "0"},
      {true, "en_US", "num{999}", "12a", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.parse ? "parse " : "format ") + c.picture + " " + c.input);
    int status = kUntouched;
    const zuString out = c.parse ? zuPicture::parse(c.input, c.picture, c.locale, &status)
                                 : zuPicture::format(c.input, c.picture, c.locale, &status, 0);
    EXPECT_EQ(status, c.expected != nullptr ? 1 : 0);
    EXPECT_EQ(str(out), c.expected != nullptr ? c.expected : "");
  }
  int status = kUntouched;
  EXPECT_TRUE(zuPicture::parse("n/a", "null{'n/a'}", "en_US", &status).IsNull());
  EXPECT_EQ(status, 1);
}

// The number, text, date and time tests share one reader with their own
// symbols: a wrapped body once, then each category's symbols bare.
TEST(zuPictureTest, ClassifiesPictures) {
  constexpr int kNum = 1, kText = 2, kDate = 4, kTime = 8, kNull = 16, kZero = 32, kDateTime = 64,
                kCompound = 128, kEmpty = 256;
  struct Case {
    const char* picture;
    int kinds;
  } cases[] = {
      {"num{z,zz9.99}", kNum | kCompound},
      {"'$'-()", kNum | kText | kDate | kTime | kCompound},
      {"99CR", kNum},
      {"AA99", kText},
      {"DATE{D}", 0},
      {"YYYY-MM-DD", kDate},
      {"HH:MM", kTime},
      {"null{}", kNull | kCompound},
      {"zero{'none'}", kZero | kCompound},
      {"num{}", kNum | kCompound | kEmpty},
      {"date{D}Ttime{H}", kDateTime},
      {"date{D} time{H}", kDateTime | kCompound},
      {"datetime.short{}", kDateTime},
      {"num{9} text{X}", kCompound},
      {"num{9}|text{X}", 0},
  };
  for (const Case& c : cases) {
    zuString date, time;
    const int kinds = (zuPicture::isNumericPicture(c.picture) ? kNum : 0) |
                      (zuPicture::isTextPicture(c.picture) ? kText : 0) |
                      (zuPicture::isDatePicture(c.picture) ? kDate : 0) |
                      (zuPicture::isTimePicture(c.picture) ? kTime : 0) |
                      (zuPicture::isNullPicture(c.picture) ? kNull : 0) |
                      (zuPicture::isZeroPicture(c.picture) ? kZero : 0) |
                      (zuPicture::isDateTimePicture(c.picture, date, time) ? kDateTime : 0) |
                      (zu::internal::isCompoundPicture(c.picture) ? kCompound : 0) |
                      (zu::internal::isEmptyPicture(c.picture) ? kEmpty : 0);
    EXPECT_EQ(kinds, c.kinds) << c.picture;
  }
  zuString date, time;
  ASSERT_TRUE(zuPicture::isDateTimePicture("'on 'date(fr_FR){D}' 'time{HH}", date, time));
  EXPECT_EQ(str(date), "date(fr_FR){D}");
  EXPECT_EQ(str(time), "time{HH}");
}

TEST(zuPictureTest, ValidityRules) {
  struct Case {
    int (*test)(const zuString&);
    const char* picture;
    int valid;
  } cases[] = {
      // The valid bare patterns are every locale's, below.
      {zuPicture::isNumericPictureValid, "num{z,zz9.99}", 1},
      {zuPicture::isNumericPictureValid, "num{9E9E}", 0},
      {zuPicture::isDatePictureValid, "date{DDD}", 0},
      {zuPicture::isTimePictureValid, "time{HHH}", 0},
      {zuPicture::isTextPictureValid, "text{999-AA}", 1},
      {zuPicture::isTextPictureValid, "text{99#}", 0},
      {zuPicture::isDateTimePictureValid, "date{DDD}' 'time{HH}", 0},
      {zuPicture::isNullPictureValid, "null{'n/a'}", 1},
      {zuPicture::isNullPictureValid, "num{9}", 0},
      {zuPicture::isZeroPictureValid, "zero{9}", 1},
      {zuPicture::isZeroPictureValid, "zero{#}", 0},
  };
  for (const Case& c : cases) EXPECT_EQ(c.test(c.picture), c.valid) << c.picture;
}

// The built-in locales' patterns are pictures like any other: each passes
// the validity check of its category.
TEST(zuPictureTest, EveryLocalePatternIsValid) {
  zuStorage<zuString> names;
  RnData::getLocaleNames(names);
  ASSERT_GT(names.GetSize(), 100u);
  for (unsigned int n = 0; n < names.GetSize(); ++n) {
    const RnData data(str(names[n]).c_str());
    for (int style = RnData::SHORT_FMT; style <= RnData::FULL_FMT; ++style) {
      SCOPED_TRACE(str(names[n]) + " style " + std::to_string(style));
      EXPECT_TRUE(zuPicture::isDatePictureValid(data.getDateFormat(style)));
      EXPECT_TRUE(zuPicture::isTimePictureValid(data.getTimeFormat(style)));
      EXPECT_TRUE(zuPicture::isDateTimePictureValid(data.getDateTimeFormat(style, style)));
    }
    for (int category = RnData::NUMERIC; category <= RnData::PERCENT; ++category) {
      zuStorage<zuString> alternates;
      ASSERT_TRUE(zuPicture::getAlternates(data.getNumericFormat(category), alternates));
      EXPECT_GT(alternates.GetSize(), 0u) << str(names[n]);
      for (unsigned int a = 0; a < alternates.GetSize(); ++a) {
        EXPECT_TRUE(zuPicture::isNumericPictureValid(alternates[a]))
            << str(names[n]) << " " << str(alternates[a]);
      }
    }
  }
}

TEST(zuPictureTest, CompoundPicturesRaiseTheirMessage) {
  zuExFull errors[] = {thrown([] { zuPicture::format("123", "num{99}|num{9} text{X}", "en_US"); }),
                       thrown([] { zuPicture::parse("5 x", "num{9} text{X}", "en_US"); })};
  const char* names[] = {"zuPicture::formatCompound", "zuPicture::parseCompound"};
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(errors[i].FirstResId(), 16480);
    errors[i].Resolve();
    EXPECT_NE(str(errors[i][0].Text()).find(names[i]), std::string::npos);
  }
}

TEST(zuPictureTest, ObjectUsesItsLocaleAndFormatNewMovesTheDate) {
  setenv("TZ", "UTC", 1);  // dates and times are shown in local time
  tzset();
  const zuPicture german("de_DE");
  int status = kUntouched;
  EXPECT_EQ(str(german.format("1234.5", "num{z,zz9.99}", &status, 0)), "1.234,50");
  EXPECT_EQ(str(german.parse("1.234,50", "num{z,zz9.99}", &status)), "1234.5");
  // 23:30 five hours west of UTC is 04:30 the next day in UTC.
  const zuString value("2024-03-05T23:30:00-05:00");
  const zuString picture("date{YYYY-MM-DD}' 'time{HH:MM}");
  EXPECT_EQ(str(german.format(value, picture, &status, 0)), "2024-03-05 04:30");
  EXPECT_EQ(str(german.format_new(value, picture, &status, 0)), "2024-03-06 04:30");
}

}  // namespace
