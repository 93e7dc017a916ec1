// RnDateSteps: RnDate's protected day-number steps, reached the way a derived
// class reaches them, so that tests can build dates from their fields.
//
//   const RnDate date(zu::testing::RnDateSteps::epoch(5, 3, 124), "en_US");  // 2024-03-05
#pragma once

#include "zu/picture/RnDate.h"

namespace zu::testing {

struct RnDateSteps : RnDate {
  using RnDate::epoch;
  using RnDate::epochWeekMonth;
  using RnDate::epochWeekYear;
};

}  // namespace zu::testing
