#include "zu/picture/RnTime.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "zu/testing/ScopedTimeZone.h"

namespace {

using zu::testing::ScopedTimeZone;

constexpr int kHour = RnTime::MILLISPERHOUR;
constexpr int kMinute = RnTime::MILLISPERMINUTE;

// Exposes the protected steps and lets a test choose the display zone.
class TestTime : public RnTime {
 public:
  TestTime(int millis, const char* locale) : RnTime(millis, locale) {}
  void setZone(int minutes, bool daylight) {
    zone_ = minutes * kMinute;
    daylight_ = daylight;
  }
  using RnTime::epoch;
};

int at(int hour, int minute, int second = 0, int milli = 0) {
  return TestTime::epoch(hour, minute, second, milli, 0);
}

// The fields as "HH:MM:SS.mmm", with " getMillis?" appended when getMillis()
// does not count the same time of day: one comparison checks all five.
std::string reading(const RnTime& time) {
  char text[48];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03d", time.getHour(), time.getMinute(),
                time.getSecond(), time.getMilliSecond());
  const int fields = ((time.getHour() * 60 + time.getMinute()) * 60 + time.getSecond()) * 1000 +
                     time.getMilliSecond();
  return std::string(text) + (time.getMillis() == fields ? "" : " getMillis?");
}

TEST(RnTimeTest, EpochRejectsFieldsOutOfRange) {
  struct Case {
    int hour, minute, second, milli, offset, expected;
  } const cases[] = {
      {24, 0, 0, 0, 0, 0},     {0, 60, 0, 0, 0, 0},
      {0, 0, 60, 0, 0, 0},     {0, 0, 0, 1000, 0, 0},
      {0, 0, 0, 0, 0, 1},      {23, 59, 59, 999, 0, 86400000},
      {1, 0, 0, 0, -kHour, 1}, {0, 0, 0, 0, INT32_MAX, INT32_MAX},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TestTime::epoch(c.hour, c.minute, c.second, c.milli, c.offset), c.expected)
        << c.hour << ":" << c.minute << " " << c.offset;
  }
}

TEST(RnTimeTest, ReadingsFollowTheDisplayZoneAndCountDays) {
  struct Case {
    int millis, zoneMinutes, add;
    std::string reading;
    int days;
  } const cases[] = {
      {at(13, 5, 7, 9), 0, 0, "13:05:07.009", 0}, {at(23, 59, 59, 999), 0, 1, "00:00:00.000", 1},
      {at(0, 0), 0, -1, "23:59:59.999", -1},      {at(20, 0), 330, 0, "01:30:00.000", 1},
      {at(2, 0), -300, 0, "21:00:00.000", -1},    {INT32_MAX, 0, INT32_MAX, "20:31:23.646", 24},
  };
  for (const Case& c : cases) {
    TestTime time(c.millis, "en_US");
    time.setZone(c.zoneMinutes, false);
    time += c.add;
    // getMillis() is the displayed time of day: the stored count less the
    // one that marks a time, in the display zone.
    EXPECT_EQ(reading(time), c.reading) << c.millis;
    EXPECT_EQ(time.getDays(), c.days) << c.millis;
  }
  RnTime invalid("en_US");
  invalid += 5;
  EXPECT_FALSE(invalid.isValid());
  EXPECT_EQ(invalid.getHour(), -1);
  EXPECT_EQ(std::string(invalid.format("HH:MM")), "");
}

TEST(RnTimeTest, FormatsEachSymbol) {
  struct Case {
    int millis, zoneMinutes;
    const char *locale, *picture, *expected;
  } const cases[] = {
      {at(0, 0), 0, "en_US", "h|hh|k|kk|H|HH|K|KK", "12|12|0|00|0|00|24|24"},
      {at(13, 7, 9, 45), 0, "en_US", "h:M:S A|hh:MM:SS.FFF AA", "1:7:9 PM|01:07:09.045 P"},
      {at(9, 5), 0, "en_US", "hhh|FF|AAA|zzz|ZZZZ|FFFF", "|||||"},
      {at(9, 5), 0, "en_US", "z|zz|Z|ZZ|t", "Z|Z|GMT|+00'00'|\t"},
      {at(9, 5), 330, "en_US", "z|zz|Z|ZZ|ZZZ", "+0530|+05:30|GMT+05:30|+05'30'|+05'30'"},
      {at(14, 3), 0, "ar", "h:MM A", "\u0662:\u0660\u0663 \u0645"},
      {at(14, 3), 0, "ja_JP", "H:MM A", "14:03 \u5348\u5f8c"},
      {at(14, 3), 0, "ja_JP", "\uff28:\uff2d\uff2d", "\uff11\uff14:\uff10\uff13"},
      {at(14, 3), -300, "en_US", "\uff5a\uff5a", "\uff0d\uff10\uff15\uff1a\uff10\uff10"},
  };
  for (const Case& c : cases) {
    // `millis` is the time as shown; the stored count is universal time.
    TestTime shown(c.millis - c.zoneMinutes * kMinute, c.locale);
    shown.setZone(c.zoneMinutes, false);
    EXPECT_EQ(std::string(shown.format(c.picture)), c.expected) << c.locale << " " << c.picture;
  }
}

TEST(RnTimeTest, ZoneComesFromTheProcessAndItsNameFromTheLocale) {
  struct Case {
    const char *tz, *locale;
    int zoneMinutes;
    bool daylight;
    const char* expected;
  } const cases[] = {
      {"America/New_York", "en_US", -300, false, "EST"},
      {"America/New_York", "en_US", -240, true, "EDT"},
      {"America/New_York", "en_US", -240, false, "GMT-04:00"},
      {"America/Adak", "en_US", -600, false, "HAST"},
      {"UTC", "de_DE", 120, true, "MESZ"},
  };
  for (const Case& c : cases) {
    ScopedTimeZone zone(c.tz);
    TestTime time(at(12, 0), c.locale);
    time.setZone(c.zoneMinutes, c.daylight);
    EXPECT_EQ(std::string(time.format("Z")), c.expected) << c.tz << " " << c.locale;
  }
  // The local zone is the process zone at the moment, daylight or not.
  struct Zone {
    const char* tz;
    int standardMinutes, daylightMinutes;
  } const zones[] = {
      {"Asia/Kolkata", 330, 330},
      {"America/New_York", -300, -240},
      {"Australia/Lord_Howe", 630, 660},
  };
  for (const Zone& c : zones) {
    ScopedTimeZone zone(c.tz);
    TestTime time(at(12, 0), "en_US");
    time.setLocalTime();
    EXPECT_EQ(time.getTimeZone() / kMinute,
              time.isDaylight() ? c.daylightMinutes : c.standardMinutes)
        << c.tz;
  }
}

TEST(RnTimeTest, ParsesFields) {
  struct Case {
    const char *locale, *picture, *text;
    const char* reading;  // "": the parse fails
    int zoneMinutes;
  } const cases[] = {
      {"en_US", "hh", "13", "", 0},
      {"en_US", "M", "7", "00:07:00.000", 0},
      {"en_US", "h:MM AA", "7:30 p", "19:30:00.000", 0},
      {"en_US", "k A", "0 PM", "12:00:00.000", 0},
      {"en_US", "HH:MM", "10:20 ", "", 0},
      {"en_US", "HH:MM:SS.FFF", "10:20:30.5", "", 0},
      {"en_US", "HH:MM:SS.FFF", "10:20:30.500", "10:20:30.500", 0},
      {"en_US", "HH?MM+SS*A", "10x20 \t 30PM", "10:20:30.000", 0},
      {"en_US", "HH+MM", "1020", "", 0},
      {"en_US", "HHMMz", "1020+0530", "10:20:00.000", 330},
      {"en_US", "HH:MMzz", "10:20-09:30", "10:20:00.000", -570},
      {"en_US", "HH:MM Z", "10:20 gmt+01:00", "10:20:00.000", 60},
      {"en_US", "HH:MM Z", "10:20 EDT", "10:20:00.000", -240},
      {"en_US", "HH:MMz", "10:20+2400", "", 0},
      {"ja_JP", "\uff28:\uff2d\uff2d", "\uff11\uff14\uff1a\uff10\uff13", "14:03:00.000", 0},
  };
  for (const Case& c : cases) {
    const RnTime time(c.text, c.picture, c.locale);
    const std::string label = std::string(c.picture) + " <- " + c.text;
    EXPECT_EQ(time.isValid() ? reading(time) : "", c.reading) << label;
    EXPECT_EQ(time.isValid() ? time.getTimeZone() : 0, c.zoneMinutes * kMinute) << label;
  }
}

TEST(RnTimeTest, LocaleTimeStylesRoundTrip) {
  const char* const locales[] = {"en_US", "ja_JP", "ko_KR", "zh_CN", "zh_TW", "ar_SA", "de_DE",
                                 "fr_FR", "hi_IN", "ru_RU", "th_TH", "es_ES", "he_IL", "ar"};
  const int times[] = {at(0, 0),      at(0, 59, 1), at(11, 59, 59), at(12, 0),
                       at(12, 30, 5), at(13, 1, 2), at(23, 59, 58)};
  ScopedTimeZone zone("UTC");
  for (const char* locale : locales) {
    for (int style = 1; style <= 4; ++style) {
      const zuString picture = RnTime::getTimeFormat(style, locale);
      // "HH:MM:SS" or "HH:MM" compared
      const size_t compared = std::string(picture).find('S') != std::string::npos ? 8 : 5;
      for (int millis : times) {
        const RnTime time(millis, locale);
        const zuString text = time.format(picture);
        const RnTime back(text, picture, locale);
        const std::string label = std::string(locale) + " " + std::string(text);
        ASSERT_TRUE(back.isValid()) << label;
        EXPECT_EQ(reading(back).substr(0, compared), reading(time).substr(0, compared)) << label;
        EXPECT_EQ(std::string(back.format(picture)), std::string(text)) << label;
      }
    }
  }
}

}  // namespace
