#include "zu/measure/zuAngle.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::testing::thrown;

TEST(zuAngleTest, OutOfRangeThrowsAndKeepsTheAngle) {
  // Each way in, past the range on one side, a long not cut to 32 bits,
  // NaN, and a double far past any long.
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::function<void(zuAngle&)> failures[] = {
      [](zuAngle& a) { a.ResValue(360001); },
      [](zuAngle& a) { a.Degrees(-1); },
      [](zuAngle& a) { a.Degrees(0x100000000L + 90); },
      [nan](zuAngle& a) { a.Angle(nan); },
      [](zuAngle& a) { a.Angle(1e300); },
      [](zuAngle& a) { a = zuAngle(361); }};
  for (const auto& failure : failures) {
    zuAngle angle(45);
    EXPECT_EQ(thrown([&] { failure(angle); }).FirstResId(), 17174) << &failure - failures;
    EXPECT_EQ(angle.ResValue(), 45000);
  }
  const struct {
    double degrees;
    long stored, rounded;
  } accepted[] = {{360.0005, 360000, 360}, {-0.0, 0, 0}, {90.5, 90500, 91}, {90.4999, 90499, 90}};
  for (const auto& c : accepted) {
    const zuAngle angle(c.degrees);
    EXPECT_EQ(angle.ResValue(), c.stored) << c.degrees;
    EXPECT_EQ(angle.Degrees(), c.rounded) << c.degrees;
  }
}

// Sums and differences wrap into 0..360, and a sum of exactly 360 stays 360.
TEST(zuAngleTest, SumsAndDifferencesStayInRange) {
  const struct {
    int a, b;
    long sum, difference;
  } cases[] = {{350, 20, 10000, 330000}, {10, 20, 30000, 350000}, {180, 180, 360000, 0}};
  for (const auto& c : cases) {
    zuAngle sum(c.a), difference(c.a);
    sum += zuAngle(c.b);
    difference -= zuAngle(c.b);
    EXPECT_EQ(sum.ResValue(), c.sum) << c.a << "+" << c.b;
    EXPECT_EQ(difference.ResValue(), c.difference) << c.a << "-" << c.b;
    EXPECT_EQ((zuAngle(c.a) + zuAngle(c.b)).ResValue(), c.sum);
    EXPECT_EQ((zuAngle(c.a) - zuAngle(c.b)).ResValue(), c.difference);
  }
  EXPECT_TRUE(zuAngle(0) != zuAngle(360) && zuAngle(0) < zuAngle(360) && zuAngle(360) > zuAngle(0));
  EXPECT_TRUE(zuAngle(90) == zuAngle(90.0) && zuAngle(90) <= zuAngle(90) &&
              zuAngle(9) >= zuAngle(9));
}

}  // namespace
