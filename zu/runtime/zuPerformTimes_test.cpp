#include "zu/runtime/zuPerformTimes.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "zu/testing/zuCounted.h"

namespace {

using zu::testing::spin;

// The counters grow and restart at Reset; the thread time is the owner's,
// whichever thread reads it.
TEST(zuPerformTimesTest, CountersGrowResetAndAreTheOwnersFromAnyThread) {
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
  unsigned long seenByOther = 0;
  // The other thread spins, which must not count as this thread's time.
  std::thread([&] {
    spin(40);
    seenByOther = times->ThreadTime();
  }).join();
  EXPECT_LT(seenByOther, 30u);
}

}  // namespace
