#include "zu/measure/zuRect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::internal::point;
using zu::internal::span;
using zu::testing::thrown;

zuUnitSpan mp(long value) {
  return span(3, value);
}

zuRect rect(long left, long top, long right, long bottom) {
  return zuRect(mp(left), mp(top), mp(right), mp(bottom));
}

TEST(zuRectTest, SettersKeepTheEdgesInOrder) {
  EXPECT_EQ(zuRect(point(5, 5), point(1, 1)), rect(1, 1, 5, 5));
  EXPECT_EQ(rect(5, 1, 1, 5), rect(1, 1, 5, 5));
  const struct {
    void (*set)(zuRect&);
    zuRect expected;
  } cases[] = {
      {[](zuRect& r) { r.Left(mp(20)); }, rect(10, 0, 20, 10)},  // past the right: swapped
      {[](zuRect& r) { r.Right(mp(-1)); }, rect(-1, 0, 0, 10)},
      {[](zuRect& r) { r.Top(mp(15)); }, rect(0, 10, 10, 15)},
      {[](zuRect& r) { r.LeftWidth(mp(2), mp(-4)); }, rect(-2, 0, 2, 10)},
      {[](zuRect& r) { r.RightWidth(mp(2), mp(4)); }, rect(-2, 0, 2, 10)},
      {[](zuRect& r) { r.TopHeight(mp(2), mp(4)); }, rect(0, 2, 10, 6)},
      {[](zuRect& r) { r.BottomHeight(mp(2), mp(4)); }, rect(0, -2, 10, 2)},
      {[](zuRect& r) { r.Width(mp(4), 1); }, rect(6, 0, 10, 10)},
      {[](zuRect& r) { r.Height(mp(-4), 0); }, rect(0, -4, 10, 0)},
      {[](zuRect& r) { r.TopLeft(point(12, 3)); }, rect(10, 3, 12, 10)},
      {[](zuRect& r) { r.TopRight(point(3, 12)); }, rect(0, 10, 3, 12)},
      {[](zuRect& r) { r.BottomLeft(point(3, 4)); }, rect(3, 0, 10, 4)},
      {[](zuRect& r) { r.BottomRight(point(-3, 4)); }, rect(-3, 0, 0, 4)},
      {[](zuRect& r) { r -= point(1, 2); }, rect(-1, -2, 9, 8)},
      {[](zuRect& r) { r += point(2147483647, 0); }, rect(-2147483639, 0, 2147483647, 10)}};
  for (const auto& c : cases) {
    zuRect r = rect(0, 0, 10, 10);
    c.set(r);
    EXPECT_EQ(r, c.expected) << &c - cases;
  }
  const zuRect r = rect(-3, 1, 0, 8);
  EXPECT_EQ(r.Centre(), point(-2, 4));  // halves truncated
  EXPECT_TRUE(r.TopRight() == point(0, 1) && r.BottomLeft() == point(-3, 8));
  zuRect kept = rect(0, 0, 10, 10);
  EXPECT_EQ(thrown([&] { kept.Rect(mp(1), span(2, 1), mp(2), mp(3)); }).FirstResId(), 17107);
  EXPECT_EQ(thrown([&] { kept.ChangeUnits(zuUnitSpan::UnitCode(2)); }).FirstResId(), 17107);
  EXPECT_EQ(kept, rect(0, 0, 10, 10));
  kept.ChangeUnits(zuUnitSpan::eCentimeters);
  EXPECT_TRUE(kept.Right().Units() == zuUnitSpan::eCentimeters && kept.Right().Value() == 88);
}

TEST(zuRectTest, TestsPointsAndRectangles) {
  // Unions, intersections and the two tests are checked against a model
  // below; here what the model leaves out.
  const zuRect r = rect(0, 0, 10, 10);
  EXPECT_TRUE(r.Contains(point(0, 10)) && r.Contains(point(10, 0)) && !r.Contains(point(11, 5)));
  EXPECT_TRUE(r.Contains(rect(0, 0, 10, 10)) && !r.Contains(rect(1, 1, 11, 5)));
  EXPECT_TRUE(rect(1, 1, 1, 5).IsDegenerate() && !r.IsDegenerate());
  EXPECT_EQ(rect(5, 5, 6, 6) | zuRect(), rect(0, 0, 6, 6));  // all zero adds the origin
}

// A rectangle's edges as plain numbers: left, top, right, bottom.
std::array<long, 4> edges(const zuRect& r) {
  return {r.Left().Value(), r.Top().Value(), r.Right().Value(), r.Bottom().Value()};
}

TEST(zuRectTest, CombinesAsIntervalsDo) {
  std::mt19937 random(4);
  const auto any = [&] {
    long e[4];
    for (long& edge : e) edge = static_cast<long>(random() % 21) - 10;
    return rect(e[0], e[1], e[2], e[3]);
  };
  for (int i = 0; i < 20000; ++i) {
    const zuRect a = any(), b = any(), c = any();
    const auto [l1, t1, r1, b1] = edges(a);
    const auto [l2, t2, r2, b2] = edges(b);
    const long l = std::max(l1, l2), t = std::max(t1, t2), r = std::min(r1, r2);
    const long bottom = std::min(b1, b2);
    const bool empty = l > r || t > bottom;
    const zuRect common = a & b;
    ASSERT_EQ(common, empty ? zuRect() : rect(l, t, r, bottom));
    ASSERT_EQ(a | b, rect(std::min(l1, l2), std::min(t1, t2), std::max(r1, r2), std::max(b1, b2)));
    ASSERT_EQ((a & b) & c, a & (b & c));
    ASSERT_TRUE(empty || (a.Contains(common) && b.Contains(common)));
    ASSERT_TRUE(a.Overlaps(b) || (a.Disjoint(b) && common == zuRect()));
    if (!a.IsDegenerate() && !b.IsDegenerate()) {
      ASSERT_EQ(a.Overlaps(b) && a.Disjoint(b), !empty && (l == r || t == bottom));
    }
    zuRect turned = a;
    turned.Rotate(a.Centre(), zuAngle(90));
    ASSERT_TRUE(turned.Width() == a.Height() && turned.Height() == a.Width());
  }
}

TEST(zuRectTest, RotatesToTheBoundingBox) {
  // Right angles are walked above; here the box of a turn between them.
  zuRect r = zuRect(zuCoordPair(span("1cm"), span("1cm")), zuCoordPair(span("2cm"), span("2cm")));
  r.Rotate(point(0, 0), zuAngle(45));
  EXPECT_EQ(r, rect(40087, -20044, 80176, 20044));
  EXPECT_EQ(r.Left().Units(), zuUnitSpan::eInches);
}

}  // namespace
