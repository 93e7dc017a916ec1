#include "zu/datetime/ISOTime.h"

#include <gtest/gtest.h>

#include <string>

#include "zu/testing/ScopedTimeZone.h"

namespace {

using zu::testing::ScopedTimeZone;

TEST(ISOTimeTest, ReadsTheCalendarTimeForms) {
  struct Case {
    const char *tz, *text, *expected;  // "" fails
  } const cases[] = {
      {"UTC", "10", "10:00:00.000Z"},
      {"UTC", "10:20", "10:20:00.000Z"},
      {"UTC", "102030", "10:20:30.000Z"},
      {"UTC", " 2024-03-05T10:20:30.500 ", "10:20:30.500Z"},
      {"UTC", "103015.500Z", "10:30:15.500Z"},
      {"UTC", "103015.500+0530", "05:00:15.500Z"},
      {"UTC", "10:30:15-09:30", "20:00:15.000Z"},
      {"Asia/Kolkata", "10:00:00", "04:30:00.000Z"},
      {"Asia/Kolkata", "10:00:00Z", "10:00:00.000Z"},
      {"UTC", "10:30:15.5", ""},
      {"UTC", "103015.500+05:30", ""},
      {"UTC", "10:30Z", ""},
      {"UTC", "24:00:00", ""},
  };
  for (const Case& c : cases) {
    ScopedTimeZone zone(c.tz);
    const ISOTime time(c.text, "en_US");
    EXPECT_EQ(time.isValid(), c.expected[0] != '\0') << c.tz << " " << c.text;
    EXPECT_EQ(std::string(time.format(RnTime::getKDL_TIME_FMT2())), c.expected) << c.text;
  }
  // Read with the default symbols, written with the caller's.
  ScopedTimeZone zone("UTC");
  const ISOTime arabic("14:05:00Z", "ar");
  ASSERT_TRUE(arabic.isValid());
  EXPECT_EQ(std::string(arabic.format("h:MM A")), "\u0662:\u0660\u0665 \u0645");
  EXPECT_EQ(std::string(ISOTime("not a time", "en_US").format("HH")), "");
}

}  // namespace
