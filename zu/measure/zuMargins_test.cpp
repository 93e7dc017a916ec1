#include "zu/measure/zuMargins.h"

#include <gtest/gtest.h>

#include "zu/measure/internal/zuMeasureTestSupport.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

namespace {

using zu::internal::span;
using zu::testing::str;
using zu::testing::thrown;

TEST(zuMarginsTest, SidesCompareAcrossUnitsAndScale) {
  // Each side's getter and setter; every side starts at 0 inches.
  const struct {
    const zuUnitSpan& (zuMargins::*get)() const;
    void (zuMargins::*set)(const zuUnitSpan&);
    const char* text;
  } sides[] = {{&zuMargins::MarginLeft, &zuMargins::MarginLeft, "1in"},
               {&zuMargins::MarginTop, &zuMargins::MarginTop, "2cm"},
               {&zuMargins::MarginRight, &zuMargins::MarginRight, "3pt"},
               {&zuMargins::MarginBottom, &zuMargins::MarginBottom, "5mp"}};
  const zuMargins same(span("72pt"), span("20mm"), span("3000mp"), span(35, 5));
  zuMargins margins;
  for (const auto& side : sides) {
    EXPECT_EQ(str(static_cast<zuString>((margins.*side.get)())), "0in") << side.text;
    (margins.*side.set)(span(side.text));
    EXPECT_EQ((margins.*side.get)().Units(), span(side.text).Units()) << side.text;
    zuMargins other = same;
    (other.*side.set)(span(35, 7));
    EXPECT_TRUE(same != other && !(same == other)) << side.text;
  }
  EXPECT_TRUE(margins == same && !(margins != same));
  margins.Scale(1.5, 99);
  EXPECT_EQ(margins, zuMargins(span("1.5in"), span("3cm"), span("4.5pt"), span(35, 8)));
  EXPECT_EQ(margins.MarginBottom().Units(), zuUnitSpan::eMillipoints);
  zuMargins unknown;
  unknown.MarginLeft(span(2, 0));
  EXPECT_EQ(thrown([&] { (void)(unknown == margins); }).FirstResId(), 17107);
}

}  // namespace
