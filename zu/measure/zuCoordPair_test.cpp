#include "zu/measure/zuCoordPair.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>

#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::internal::point;
using zu::internal::span;
using zu::testing::thrown;

TEST(zuCoordPairTest, OrdersByYThenX) {
  const struct {
    zuCoordPair a, b;
    int less, equal;
  } cases[] = {{point(5, 1), point(1, 2), 1, 0},
               {point(1, 2), point(2, 2), 1, 0},
               {point(72000, 0), zuCoordPair(span("2.54cm"), span(1, 0)), 0, 1}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.a < c.b, c.less);
    EXPECT_EQ(c.b > c.a, c.less);
    EXPECT_FALSE(c.a > c.b);
    EXPECT_EQ(c.a == c.b, c.equal);
    EXPECT_EQ(c.a != c.b, 1 - c.equal);
  }
  EXPECT_EQ(point(1, 2) + point(10, 20) - point(100, 0), point(-89, 22));
  zuCoordPair moved = point(1, 1);
  moved += zuCoordPair(span("1mm"), span("1pt"));
  moved -= point(0, 1000);
  EXPECT_EQ(moved, point(2836, 1));
}

TEST(zuCoordPairTest, ScalesAndSnapsEachCoordinate) {
  zuCoordPair scaled(span("2cm"), span(3, 5));
  scaled.Scale(1.0, -0.5);
  EXPECT_EQ(scaled, zuCoordPair(span("2cm"), span(3, -3)));
  zuCoordPair snapped = point(7, 7);
  snapped.Grid(point(5, 0));
  EXPECT_EQ(snapped, point(5, 7));
  zuCoordPair rounded = point(8, 8);
  rounded.Round(zuCoordPair(span(3, 0), span(3, 5)));
  EXPECT_EQ(rounded, point(8, 10));
}

TEST(zuCoordPairTest, RotatesRightAnglesExactlyAndOthersClosely) {
  // Rounded degrees pick the exact turns (90.4 is 90, 0.4 no turn at all,
  // 359.6 the general formula); results keep the point's unit. Other
  // angles are checked against a reference below.
  const zuCoordPair centre(span("1in"), span("1in"));
  const std::pair<double, zuCoordPair> cases[] = {{90.4, point(72000, 0)},
                                                  {359.6, point(143998, 72503)}};
  for (const auto& [degrees, expected] : cases) {
    const zuCoordPair turned =
        zuCoordPair(span("2in"), span("1in")).RotatePoint(centre, zuAngle(degrees));
    EXPECT_EQ(turned, expected) << degrees;
    EXPECT_EQ(turned.X().Units(), zuUnitSpan::eInches);
  }
  const zuCoordPair metric(span("5.08cm"), span("2.54cm"));
  const zuCoordPair unturned = metric.RotatePoint(centre, zuAngle(0.4));
  EXPECT_TRUE(unturned == metric && unturned.X().Units() == zuUnitSpan::eCentimeters);
  EXPECT_EQ(thrown([&] {
              zuCoordPair(span(2, 1), span(3, 1)).RotatePoint(centre, zuAngle(90));
            }).FirstResId(),
            17107);

  std::mt19937 random(90);
  const auto coordinate = [&] { return static_cast<long>(random() % 2000001) - 1000000; };
  for (int i = 0; i < 20000; ++i) {
    const zuCoordPair p = point(coordinate(), coordinate());
    const zuCoordPair c = point(coordinate(), coordinate());
    const zuCoordPair wide(span(3, static_cast<int32_t>(random())),
                           span(3, static_cast<int32_t>(random())));
    zuCoordPair turned = wide;
    for (int turn = 0; turn < 4; ++turn) turned = turned.RotatePoint(c, zuAngle(90));
    ASSERT_EQ(turned, wide);  // exact, with wrap-around
    ASSERT_EQ(wide.RotatePoint(c, zuAngle(90)).RotatePoint(c, zuAngle(270)), wide);
    ASSERT_EQ(wide.RotatePoint(c, zuAngle(180)).RotatePoint(c, zuAngle(180)), wide);

    // Any angle within 1 mp of a long double reference, which turns by the
    // rounded degrees where those are a right angle below 360.
    const zuAngle angle(static_cast<double>(random() % 360000) / 1000);
    const long degrees = angle.Degrees();
    const bool right = degrees % 90 == 0 && degrees < 360;
    const long double theta = (right ? degrees : angle.Angle()) * 0.017453292519944444L;
    const long double dx = p.X().Value() - c.X().Value();
    const long double dy = c.Y().Value() - p.Y().Value();
    const long double x = c.X().Value() + dx * std::cos(theta) - dy * std::sin(theta);
    const long double y = c.Y().Value() - dx * std::sin(theta) - dy * std::cos(theta);
    const zuCoordPair q = p.RotatePoint(c, angle);
    ASSERT_LE(std::fabs(q.X().Value() - x), 1.0L) << angle.Angle();
    ASSERT_LE(std::fabs(q.Y().Value() - y), 1.0L) << angle.Angle();
  }
}

}  // namespace
