// The stage timers' clock on Linux.
#include <time.h>

#include <atomic>

#include "zu/runtime/internal/zuTraceClock.h"

namespace zu::internal {

namespace {

std::atomic<int64_t (*)()> gTestClock{nullptr};

}  // namespace

int64_t timingClockMillis() {
  if (int64_t(*clock)() = gTestClock.load(std::memory_order_relaxed)) return clock();
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

void setTimingClockForTesting(int64_t (*clock)()) {
  gTestClock.store(clock, std::memory_order_relaxed);
}

}  // namespace zu::internal
