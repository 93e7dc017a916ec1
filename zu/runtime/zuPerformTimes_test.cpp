#include "zu/runtime/zuPerformTimes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace {

// Burns CPU on the calling thread for at least `milliseconds` of wall time.
void spin(int milliseconds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  volatile unsigned long sink = 0;
  while (std::chrono::steady_clock::now() < until) sink = sink + 1;
}

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
