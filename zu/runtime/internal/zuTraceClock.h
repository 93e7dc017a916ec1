// The clock of the stage timers: CLOCK_MONOTONIC in whole milliseconds, as a
// 64-bit count (a 32-bit one would wrap after 24.8 days of uptime). Read in
// zuPosixTraceClock.cpp only.
#pragma once

#include <cstdint>

namespace zu::internal {

// Milliseconds on the monotonic clock, or what the test clock says.
int64_t timingClockMillis();

// For tests: replaces the clock (null: the real clock again). Not to be
// switched while timers run on other threads.
void setTimingClockForTesting(int64_t (*clock)());

}  // namespace zu::internal
