#include "zu/runtime/zuPerformTimes.h"

#include <gtest/gtest.h>

#include <memory>

#include "zu/testing/zuCounted.h"

namespace {

using zu::testing::spin;

TEST(zuPerformTimesTest, CountersGrowAndReset) {
  std::unique_ptr<zuPerformTimes> times(zuPerformTimes::NewPerformTimes());
  spin(30);
  const unsigned long elapsed = times->ElapsedTime();
  const unsigned long process = times->ProcessTime();
  const unsigned long thread = times->ThreadTime();
  EXPECT_GE(elapsed, 30u);
  EXPECT_GE(process, thread);
  EXPECT_GT(thread, 0u);

  times->Reset();
  EXPECT_LT(times->ElapsedTime(), elapsed);
  EXPECT_LE(times->ThreadTime(), thread);
}

}  // namespace
