#include "zu/measure/zuMargins.h"

#include <gtest/gtest.h>

#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::internal::span;
using zu::testing::thrown;

TEST(zuMarginsTest, SidesCompareAcrossUnitsAndScale) {
  void (zuMargins::*const setters[])(const zuUnitSpan&) = {
      &zuMargins::MarginLeft, &zuMargins::MarginTop, &zuMargins::MarginRight,
      &zuMargins::MarginBottom};
  zuMargins margins;
  margins.MarginLeft(span("1in"));
  margins.MarginTop(span("2cm"));
  margins.MarginRight(span("3pt"));
  margins.MarginBottom(span("5mp"));
  const zuMargins same(span("72pt"), span("20mm"), span("3000mp"), span(35, 5));
  EXPECT_TRUE(margins == same && !(margins != same));
  for (const auto& set : setters) {  // each side takes part in the comparison
    zuMargins other = same;
    (other.*set)(span(35, 7));
    EXPECT_TRUE(same != other && !(same == other)) << &set - setters;
  }
  margins.Scale(1.5, 99);
  EXPECT_EQ(margins, zuMargins(span("1.5in"), span("3cm"), span("4.5pt"), span(35, 8)));
  EXPECT_EQ(margins.MarginBottom().Units(), zuUnitSpan::eMillipoints);
  zuMargins unknown;
  unknown.MarginLeft(span(2, 0));
  EXPECT_EQ(thrown([&] { (void)(unknown == margins); }).FirstResId(), 17107);
}

}  // namespace
