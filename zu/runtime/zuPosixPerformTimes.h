// zuPosixPerformTimes: the Linux zuPerformTimes, read from the monotonic, the
// process CPU-time and the thread CPU-time clocks. Create it through
// zuPerformTimes::NewPerformTimes() on the thread to be measured.
//
//   zuPosixPerformTimes times;             // measures the calling thread
//   unsigned long wall = times.ElapsedTime();
#pragma once

#include <atomic>
#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuPerformTimes.h"

class ZU_EXPORT zuPosixPerformTimes : public zuPerformTimes {
 public:
  zuPosixPerformTimes();

  unsigned long ElapsedTime() const override;
  unsigned long ProcessTime() const override;
  unsigned long ThreadTime() const override;
  void Reset() override;

  // The measured thread's CPU time in milliseconds since it started (not
  // since Reset); its last value once the thread has ended.
  unsigned long ThreadCpuTotal() const;

 private:
  // Nanoseconds on the thread's CPU clock; the last good reading when the
  // clock can no longer be read because its thread has ended.
  int64_t threadNow() const;

  int threadClock_;  // the measured thread's CPU clock id
  std::atomic<int64_t> elapsedStart_{0};
  std::atomic<int64_t> processStart_{0};
  std::atomic<int64_t> threadStart_{0};
  mutable std::atomic<int64_t> lastThreadReading_{0};
};
