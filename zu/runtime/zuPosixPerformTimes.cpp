#include "zu/runtime/zuPosixPerformTimes.h"

#include <pthread.h>
#include <time.h>

namespace {

constexpr int64_t kNanosPerMilli = 1000000;

// Nanoseconds on `clock`; -1 when it cannot be read.
int64_t readClock(clockid_t clock) {
  timespec now;
  if (clock_gettime(clock, &now) != 0) return -1;
  return static_cast<int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

unsigned long millisBetween(int64_t start, int64_t now) {
  return now > start ? static_cast<unsigned long>((now - start) / kNanosPerMilli) : 0;
}

clockid_t callingThreadClock() {
  clockid_t clock;
  if (pthread_getcpuclockid(pthread_self(), &clock) != 0) return CLOCK_THREAD_CPUTIME_ID;
  return clock;
}

}  // namespace

zuPosixPerformTimes::zuPosixPerformTimes() : threadClock_(callingThreadClock()) {
  Reset();
}

int64_t zuPosixPerformTimes::threadNow() const {
  const int64_t now = readClock(threadClock_);
  if (now < 0) return lastThreadReading_.load(std::memory_order_relaxed);
  lastThreadReading_.store(now, std::memory_order_relaxed);
  return now;
}

unsigned long zuPosixPerformTimes::ElapsedTime() const {
  return millisBetween(elapsedStart_.load(std::memory_order_relaxed), readClock(CLOCK_MONOTONIC));
}

unsigned long zuPosixPerformTimes::ProcessTime() const {
  return millisBetween(processStart_.load(std::memory_order_relaxed),
                       readClock(CLOCK_PROCESS_CPUTIME_ID));
}

unsigned long zuPosixPerformTimes::ThreadTime() const {
  return millisBetween(threadStart_.load(std::memory_order_relaxed), threadNow());
}

unsigned long zuPosixPerformTimes::ThreadCpuTotal() const {
  return millisBetween(0, threadNow());
}

void zuPosixPerformTimes::Reset() {
  elapsedStart_.store(readClock(CLOCK_MONOTONIC), std::memory_order_relaxed);
  processStart_.store(readClock(CLOCK_PROCESS_CPUTIME_ID), std::memory_order_relaxed);
  threadStart_.store(threadNow(), std::memory_order_relaxed);
}
