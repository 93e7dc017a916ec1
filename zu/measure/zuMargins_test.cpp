#include "zu/measure/zuMargins.h"

#include <gtest/gtest.h>

#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::internal::span;
using zu::testing::thrown;

TEST(zuMarginsTest, SidesCompareAcrossUnitsAndScale) {
  zuMargins margins;
  for (const zuUnitSpan& side :
       {margins.MarginLeft(), margins.MarginTop(), margins.MarginRight(), margins.MarginBottom()}) {
    EXPECT_EQ(side.Units(), zuUnitSpan::eInches);
    EXPECT_EQ(side.Value(), 0);
  }
  margins.MarginLeft(span("1in"));
  margins.MarginTop(span("2cm"));
  margins.MarginRight(span("3pt"));
  margins.MarginBottom(span("5mp"));
  const zuMargins same(span("72pt"), span("20mm"), span("3000mp"), span(35, 5));
  EXPECT_TRUE(margins == same && !(margins != same));
  for (int side = 0; side < 4; ++side) {
    zuMargins other = same;
    const zuUnitSpan wider = span(35, 7);
    if (side == 0) other.MarginLeft(wider);
    if (side == 1) other.MarginTop(wider);
    if (side == 2) other.MarginRight(wider);
    if (side == 3) other.MarginBottom(wider);
    EXPECT_TRUE(margins != other && !(margins == other)) << side;
  }
  margins.Scale(1.5, 99);
  EXPECT_EQ(margins, zuMargins(span("1.5in"), span("3cm"), span("4.5pt"), span(35, 8)));
  EXPECT_EQ(margins.MarginBottom().Units(), zuUnitSpan::eMillipoints);
  zuMargins unknown;
  unknown.MarginLeft(span(2, 0));
  EXPECT_EQ(thrown([&] { (void)(unknown == margins); }).FirstResId(), 17107);
}

}  // namespace
