#include "zu/datetime/zuDateTime.h"

#include <gtest/gtest.h>
#include <unicode/timezone.h>

#include <chrono>
#include <memory>
#include <random>
#include <string>

#include "zu/datetime/internal/zuValueTestSupport.h"
#include "zu/testing/ScopedTimeZone.h"
#include "zu/testing/zuTestText.h"

namespace {

using namespace std::chrono;
using zu::internal::thrownId;
using zu::testing::ScopedTimeZone;
using zu::testing::str;

using Millis = sys_time<milliseconds>;

zuDateTime valueAt(Millis instant) {
  const sys_days day = floor<days>(instant);
  const year_month_day ymd{day};
  const hh_mm_ss<milliseconds> time{instant - day};
  return zuDateTime(static_cast<int>(ymd.year()), static_cast<unsigned>(ymd.month()),
                    static_cast<unsigned>(ymd.day()), time.hours().count(), time.minutes().count(),
                    time.seconds().count(), time.subseconds().count());
}

// YYYYMMDDHHMMSSFFF as one number, for comparisons by the million.
int64_t stamp(const zuDateTime& value) {
  const zuDate& d = value.Date();
  const zuTime& t = value.Time();
  const int64_t time = ((t.Hour() * 100 + t.Minute()) * 100 + t.Second()) * 1000 + t.Millisec();
  return (d.Year() * 10000 + d.Month() * 100 + d.Day()) * 1000000000 + time;
}

int64_t stamp(Millis instant) {
  return stamp(valueAt(instant));
}

std::string text(Millis instant) {
  return str(valueAt(instant).Format(zuDate::ISO_EXTENDED, zuTime::HH_MM_SS_FFF, 0, 0));
}

TEST(zuDateTimeTest, ArithmeticAgreesWithSysTimeAndKeepsTheValueWhenItThrows) {
  std::mt19937_64 random(99);
  std::uniform_int_distribution<int64_t> startPick(-3000000000000, 4000000000000);  // ~1875..2096
  std::uniform_int_distribution<long> dayPick(0, 20000);
  std::uniform_int_distribution<long> amountPick(0, 2000000000);
  for (int i = 0; i < 100000; ++i) {
    const Millis start{milliseconds{startPick(random)}};
    // Up to 55 years of days, 11 of hours, 951 of minutes, 63 of seconds.
    const long d = dayPick(random), h = amountPick(random) % 100000, mi = amountPick(random) / 4,
               s = amountPick(random), ms = amountPick(random);
    const milliseconds amount = days{d} + hours{h} + minutes{mi} + seconds{s} + milliseconds{ms};
    zuDateTime later = valueAt(start);
    later.Add(0, 0, d, h, mi, s, ms);
    ASSERT_EQ(stamp(later), stamp(start + amount)) << text(start + amount);
    zuDateTime earlier = valueAt(start);
    earlier.Subtract(0, 0, d, h, mi, s, ms);
    ASSERT_EQ(stamp(earlier), stamp(start - amount)) << text(start - amount);
  }

  // A throw leaves the whole value.
  zuDateTime last(214748, 12, 31, 23, 0, 0, 0);
  EXPECT_EQ(thrownId([&] { last.Add(0, 0, 0, 1, 0, 0, 0); }), 17185u);
  EXPECT_EQ(thrownId([&] { last.Add(0, 0, 0, -1, 0, 0, 0); }), 17234u);
  EXPECT_EQ(thrownId([&] { last.Subtract(0, 0, 0, 0, 0, 0, -1); }), 17237u);
  EXPECT_EQ(thrownId([&] { last.Set(2024, 2, 30, 1, 0, 0, 0); }), 17187u);
  EXPECT_EQ(thrownId([&] { last.Set(2024, 2, 1, 24, 0, 0, 0); }), 17234u);
  EXPECT_EQ(stamp(last), 2147481231230000000) << "nothing changed";
  zuDateTime first(0, 1, 1, 0, 0, 0, 0);
  EXPECT_EQ(thrownId([&] { first.Subtract(0, 0, 0, 0, 0, 0, 1); }), 17185u);
  EXPECT_EQ(first.Time().TotalSeconds() + first.Date().DaysSince1900(), 1);
}

TEST(zuDateTimeTest, DifferenceBorrowsADayForTheEarlierTime) {
  struct Case {
    long a[7], b[7];
    int order;
    long fields[7];
  } const cases[] = {
      {{2024, 3, 2, 1, 0, 0, 0}, {2024, 3, 1, 23, 0, 0, 0}, 1, {0, 0, 0, 2, 0, 0, 0}},
      {{2024, 3, 1, 23, 0, 0, 0}, {2024, 3, 2, 1, 0, 0, 0}, -1, {0, 0, 0, 2, 0, 0, 0}},
      {{2025, 4, 6, 12, 30, 0, 0}, {2024, 3, 5, 10, 0, 0, 1}, 1, {1, 1, 1, 2, 29, 59, 999}},
      {{2024, 3, 5, 10, 0, 0, 0}, {2024, 3, 5, 10, 0, 0, 0}, 0, {0, 0, 0, 0, 0, 0, 0}}};
  for (const Case& c : cases) {
    const zuDateTime a(c.a[0], c.a[1], c.a[2], c.a[3], c.a[4], c.a[5], c.a[6]);
    const zuDateTime b(c.b[0], c.b[1], c.b[2], c.b[3], c.b[4], c.b[5], c.b[6]);
    long f[7] = {-1, -1, -1, -1, -1, -1, -1};
    EXPECT_EQ(a.Difference(b, f[0], f[1], f[2], f[3], f[4], f[5], f[6]), c.order);
    for (int i = 0; i < 7; ++i) EXPECT_EQ(f[i], c.fields[i]) << &c - cases << ":" << i;
    EXPECT_EQ(a.Compare(b), c.order);
    EXPECT_EQ((a < b) - (a > b) + (a == b) - (a != b), c.order == 0 ? 1 : -c.order - 1);
  }
}

TEST(zuDateTimeTest, BreaksTimeValuesDownHourlyAsChronoDoes) {
  const sys_seconds first{sys_days{year{1900} / 1 / 1}};
  const sys_seconds last{sys_days{year{2100} / 12 / 31}};
  zuDate date(2000, 1, 1);
  zuTime time(0, 0, 0, 0);
  for (sys_seconds instant = first; instant <= last; instant += hours{1} + seconds{7}) {
    const int64_t value = instant.time_since_epoch().count();
    const int64_t expected = stamp(Millis{instant});
    ASSERT_EQ(stamp(zuDateTime(value, 0)), expected) << text(Millis{instant});
    date.Set(value, 0);
    time.Set(value, 0);
    ASSERT_EQ(stamp(zuDateTime(date, time)), expected) << text(Millis{instant});
  }
  EXPECT_EQ(thrownId([] { zuDate(INT64_MAX, 0); }), 17185u);
  EXPECT_EQ(thrownId([] { zuTime(INT64_MAX, 1); }), 17234u);
  EXPECT_EQ(thrownId([] { zuDateTime(INT64_MAX, 0); }), 17185u);
}

TEST(zuDateTimeTest, LocalDisplayAgreesWithIcuZonesHourlyAndFollowsTheFlag) {
  const char* const zones[] = {"UTC", "America/New_York", "Asia/Kolkata", "Australia/Lord_Howe"};
  for (const char* zone : zones) {
    ScopedTimeZone scoped(zone);
    const std::unique_ptr<icu::TimeZone> icuZone(icu::TimeZone::createTimeZone(zone));
    const Millis first{sys_days{year{2008} / 1 / 1}};
    const Millis last{sys_days{year{2022} / 12 / 31}};
    int64_t step = 0;
    for (Millis instant = first; instant <= last; instant += hours{1}, ++step) {
      const Millis moment = instant + milliseconds{step % 1000};
      int32_t raw = 0, daylight = 0;
      UErrorCode status = U_ZERO_ERROR;
      icuZone->getOffset(static_cast<UDate>(moment.time_since_epoch().count()), false, raw,
                         daylight, status);
      ASSERT_TRUE(U_SUCCESS(status));
      const zuDateTime value = valueAt(moment);
      ASSERT_EQ(str(value.FormatAsLocal(zuDate::ISO_EXTENDED, zuTime::HH_MM_SS_FFF, 0)),
                text(moment + milliseconds{raw + daylight}))
          << zone << " " << text(moment);
      const int64_t seconds = instant.time_since_epoch().count() / 1000;
      ASSERT_EQ(stamp(zuDateTime(seconds, 1)), stamp(instant + milliseconds{raw + daylight}))
          << zone << " " << text(instant);
    }
  }
  // The zone is read at every call; the flag picks local display.
  const zuDateTime value(2011, 12, 30, 10, 0, 0, 0);
  ScopedTimeZone tokyo("Asia/Tokyo");  // applied; Berlin below is not
  setenv("TZ", "Europe/Berlin", 1);    // no tzset(): Format re-reads the zone itself
  EXPECT_EQ(str(value.FormatAsLocal(zuDate::ISO_EXTENDED, zuTime::HH_MM, 0)), "2011-12-30 11:00");

  zuDateTime::FormatAsLocal(1);
  EXPECT_EQ(str(value.Format(zuDate::ISO_EXTENDED, zuTime::HH_MM, 1)), "11:00 2011-12-30");
  zuDateTime::FormatAsLocal(0);
  EXPECT_EQ(str(value.Format(zuDate::ISO_EXTENDED, zuTime::HH_MM, 1)), "10:00 2011-12-30");
  const zuDateTime empty(zuDate("none", zuDate::ISO_EXTENDED, 0, "en_US"), zuTime(23, 0, 0, 0));
  EXPECT_EQ(str(empty.FormatAsLocal(zuDate::PACKED, zuTime::HH_MM, 0)), "0 23:00");
  const zuDateTime edge(214748, 12, 31, 23, 0, 0, 0);
  EXPECT_EQ(str(edge.FormatAsLocal(zuDate::PACKED, zuTime::HH_MM, 0)), "2147481231 23:00");
}

}  // namespace
