#include "zu/datetime/zuTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>

#include "zu/core/zuPosixResourceLoader.h"
#include "zu/core/zuResourceLoader.h"
#include "zu/datetime/internal/zuValueTestSupport.h"
#include "zu/testing/zuCatalogueTestFiles.h"
#include "zu/testing/zuTestText.h"

namespace {

using zu::internal::thrownId;
using zu::testing::str;

constexpr unsigned kHour = 17234;
constexpr unsigned kMinute = 17235;
constexpr unsigned kSecond = 17236;
constexpr unsigned kMillisecond = 17237;
constexpr int64_t kMillisPerDay = 86400000;

int64_t millisOf(const zuTime& time) {
  return ((time.Hour() * 60 + time.Minute()) * 60 + time.Second()) * 1000 + time.Millisec();
}

zuTime timeAt(int64_t millis) {
  return zuTime(millis / 3600000, millis / 60000 % 60, millis / 1000 % 60, millis % 1000);
}

TEST(zuTimeTest, ValidatesFieldsAndAmountsInOrder) {
  struct Case {
    long hour, minute, second, millisecond;
    unsigned set, add;  // thrown by Set, and by Add and Subtract of the same amounts
  } const cases[] = {{23, 59, 59, 999, 0, 0},
                     {24, 60, 60, 1000, kHour, 0},
                     {4294967296 + 12, 0, 0, 0, kHour, kHour},
                     {0, 60, -1, 0, kMinute, kSecond},
                     {0, 0, 0, -1, kMillisecond, kMillisecond},
                     {zuTime::kMaxHours + 1, -1, -1, -1, kHour, kHour},
                     {0, zuTime::kMaxMinutes + 1, 0, -1, kMinute, kMinute},
                     {0, 0, zuTime::kMaxSeconds + 1, 0, kSecond, kSecond},
                     {0, 0, 0, zuTime::kMaxMillis + 1, kMillisecond, kMillisecond}};
  for (const Case& c : cases) {
    zuTime set(1, 2, 3, 4), added(1, 2, 3, 4), subtracted(1, 2, 3, 4);
    EXPECT_EQ(thrownId([&] { set.Set(c.hour, c.minute, c.second, c.millisecond); }), c.set)
        << c.hour << ":" << c.minute;
    EXPECT_EQ(thrownId([&] { added.Add(c.hour, c.minute, c.second, c.millisecond); }), c.add);
    EXPECT_EQ(thrownId([&] { subtracted.Subtract(c.hour, c.minute, c.second, c.millisecond); }),
              c.add);
    // A throw leaves the value.
    EXPECT_TRUE(c.set == 0 || millisOf(set) == 3723004);
    EXPECT_TRUE(c.add == 0 || millisOf(added) + millisOf(subtracted) == 2 * 3723004);
  }
}

TEST(zuTimeTest, AddAndSubtractAgreeWithChronoUpToTheBounds) {
  std::mt19937_64 random(1234);
  std::uniform_int_distribution<int64_t> startPick(0, kMillisPerDay - 1);
  std::uniform_int_distribution<long> hourPick(0, zuTime::kMaxHours);
  std::uniform_int_distribution<long> minutePick(0, zuTime::kMaxMinutes);
  std::uniform_int_distribution<long> millisPick(0, zuTime::kMaxMillis);
  std::uniform_int_distribution<int> scalePick(0, 3);
  for (int i = 0; i < 200000; ++i) {
    // Amounts of every size: some up to the bounds, some small.
    const long shift = scalePick(random) * 10;
    long amounts[4] = {hourPick(random) >> shift, minutePick(random) >> shift,
                       minutePick(random) >> shift, millisPick(random) >> shift};
    // The first 16 rounds take every combination of zero and maximal amounts.
    const long maxima[4] = {zuTime::kMaxHours, zuTime::kMaxMinutes, zuTime::kMaxSeconds,
                            zuTime::kMaxMillis};
    for (int unit = 0; i < 16 && unit < 4; ++unit)
      amounts[unit] = (i >> unit & 1) ? maxima[unit] : 0;
    using std::chrono::milliseconds;
    const milliseconds start{startPick(random)};
    const milliseconds amount = std::chrono::hours{amounts[0]} + std::chrono::minutes{amounts[1]} +
                                std::chrono::seconds{amounts[2]} + milliseconds{amounts[3]};
    const auto floorDay = [](milliseconds total) {
      return std::chrono::floor<std::chrono::days>(total);
    };
    zuTime later = timeAt(start.count());
    ASSERT_EQ(later.Add(amounts[0], amounts[1], amounts[2], amounts[3]),
              floorDay(start + amount).count());
    ASSERT_EQ(millisOf(later), (start + amount - floorDay(start + amount)).count());
    zuTime earlier = timeAt(start.count());
    ASSERT_EQ(earlier.Subtract(amounts[0], amounts[1], amounts[2], amounts[3]),
              -floorDay(start - amount).count());
    ASSERT_EQ(millisOf(earlier), (start - amount - floorDay(start - amount)).count());
  }
  zuTime last(23, 59, 59, 999);
  EXPECT_EQ(last.Add(0, 0, 0, 1), 1);
  EXPECT_EQ(millisOf(last), 0);
}

TEST(zuTimeTest, FormsByPublishedNumbersShowTheFields) {
  // A row per time, a column per published form number, 7 for any other.
  struct Case {
    zuTime time;
    const char* texts[8];
  } const cases[] = {{zuTime(14, 5, 9, 7),
                      {"140509007", "14:05:09:007", "14:05:09", "14:05", "02:05:09:007 PM",
                       "02:05:09 PM", "02:05 PM", "140509007"}},
                     {zuTime(0, 5, 9, 7),
                      {"00509007", "00:05:09:007", "00:05:09", "00:05", "00:05:09:007 AM",
                       "00:05:09 AM", "00:05 AM", "509007"}},
                     {zuTime(12, 30, 0, 0),
                      {"123000000", "12:30:00:000", "12:30:00", "12:30", "12:30:00:000 AM",
                       "12:30:00 AM", "12:30 AM", "123000000"}}};
  for (int form = 0; form < 8; ++form) {
    for (const Case& c : cases) {
      EXPECT_EQ(str(c.time.Format(static_cast<zuTime::zuTimeFmt>(form))), c.texts[form]) << form;
    }
  }
}

TEST(zuTimeTest, ParsesItsOwnFormsForEverySecondOfTheDay) {
  for (int64_t second = 0; second < 86400; ++second) {
    const zuTime time = timeAt(second * 1000 + second % 1000);
    for (int form = 1; form <= 6; ++form) {
      // The form's last field: 1 and 4 keep milliseconds, 2 and 5 seconds,
      // 3 and 6 minutes.
      const int64_t unit = form % 3 == 1 ? 1 : (form % 3 == 2 ? 1000 : 60000);
      zuTime read(1, 1, 1, 1);
      const zuString text = time.Format(static_cast<zuTime::zuTimeFmt>(form));
      ASSERT_EQ(read.Parse(text), 1) << str(text);
      ASSERT_EQ(millisOf(read), millisOf(time) / unit * unit) << str(text);
    }
  }
}

TEST(zuTimeTest, ParsesByItsTokenRules) {
  struct Case {
    const char *text, *expected;  // form 1; "" for result 0 (unchanged), or the id thrown
    unsigned id;
  } const cases[] = {{"2:30pm", "14:30:00:000", 0},
                     {"12:30pm", "12:30:00:000", 0},
                     {"", "00:00:00:000", 0},
                     {"14:05:09.5", "14:05:09:005", 0},
                     {"1,2/3\\4_5;6'7-8", "01:02:03:004", 0},  // further numbers are ignored
                     {"10pm 30", "22:00:00:000", 0},   // reading stops at the first other token
                     {"7 30x PM", "07:30:00:000", 0},  // only the first other token is searched
                     {"7 Pm", "19:00:00:000", 0},
                     {"2147483648", "", 0},
                     {"24:00", "", kHour},
                     // Shapes that leave the quick reading for the general one
                     {"14::05", "14:05:00:000", 0},
                     {"0014:05", "14:05:00:000", 0},
                     {"14:05:09:007:99999999999", "14:05:09:007", 0},
                     {"123456", "", kHour},
                     // The lengths of the written forms, in other shapes
                     {"14:05:0x", "14:05:00:000", 0},
                     {"14:05:09:7pm", "14:05:09:007", 0}};
  for (const Case& c : cases) {
    zuTime time(3, 4, 5, 6);
    int result = -1;
    EXPECT_EQ(thrownId([&] { result = time.Parse(c.text); }), c.id) << c.text;
    if (c.id != 0) continue;
    EXPECT_EQ(result, c.expected[0] != '\0' ? 1 : 0) << c.text;
    EXPECT_EQ(str(time.Format(zuTime::HH_MM_SS_FFF)),
              c.expected[0] != '\0' ? c.expected : "03:04:05:006")
        << c.text;
  }
  EXPECT_EQ(thrownId([] { zuTime("99"); }), kHour);
}

// Day-half markers of a client's own: one language for both.
class GermanMarkers : public zuResourceLoader {
 public:
  int LoadResource(unsigned short id, zuString& text) override {
    if (id != 17244 && id != 17245) return 0;
    text = id == 17244 ? "vorm" : "nachm";
    return 1;
  }
};

// The markers are kept between calls, but every change to the loader is
// seen at the very next one: a client catalogue set and removed, an
// override set and cleared. Beside a client's markers the default ones are
// not read.
TEST(zuTimeTest, KeptMarkersFollowEveryChangeOfTheLoader) {
  const zu::testing::zuLocaleEnvironment locale("C", nullptr);
  const zu::testing::zuScratchFolder folder;
  folder.write("MarkerClientEn.msg", "17245\tabends\n");
  const zuModule client = zuLoadResourceDll(nullptr, (folder.path() + "/MarkerClient").c_str());
  ASSERT_NE(client, nullptr);
  const zuTime afternoon(14, 5, 0, 0);
  zuTime read(0, 0, 0, 0);
  GermanMarkers german;
  const struct Step {
    zuModule client;
    zuResourceLoader* override;
    const char *shown, *read;
    long hour;  // the hour `read` gives
  } steps[] = {{nullptr, nullptr, "02:05 PM", "2:05 pm", 14},
               {client, nullptr, "02:05 abends", "2:05 ABENDS", 14},
               {nullptr, nullptr, "02:05 PM", "2:05 PM", 14},
               {nullptr, &german, "02:05 nachm", "2:05 NACHM", 14},
               {nullptr, &german, "02:05 nachm", "2:05 pm", 2},
               {nullptr, nullptr, "02:05 PM", "2:05 PM", 14}};
  for (const Step& step : steps) {
    SCOPED_TRACE(step.shown);
    zuSetDLLHandle(step.client);
    zuPosixResourceLoader::Override(step.override);
    EXPECT_EQ(str(afternoon.Format(zuTime::HH_MM_MARKER)), step.shown);
    EXPECT_EQ(str(zuTime(9, 0, 0, 0).Format(zuTime::HH_MM_MARKER)),
              step.override != nullptr ? "09:00 vorm" : "09:00 AM");
    read.Set(0, 0, 0, 0);
    read.Parse(step.read);
    EXPECT_EQ(read.Hour(), step.hour);
  }
  zuSetDLLHandle(nullptr);

  // Without the library's catalogue the markers have no text: nothing
  // follows the blank, and nothing matches.
  zuPosixResourceLoader::UseResourceDLL(0);
  EXPECT_EQ(str(afternoon.Format(zuTime::HH_MM_MARKER)), "02:05 ");
  read.Parse("2:05 PM");
  EXPECT_EQ(read.Hour(), 2);
  zuPosixResourceLoader::UseResourceDLL(1);
}

}  // namespace
