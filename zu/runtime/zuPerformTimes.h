// zuPerformTimes: stopwatches for one thread: wall-clock time, the process's
// CPU time and the thread's CPU time, each in milliseconds since the counters
// were made or last Reset().
//
//   zuPerformTimes* times = zuPerformTimes::NewPerformTimes();
//   Work();
//   unsigned long busy = times->ThreadTime();   // CPU spent by this thread
//   delete times;
//
// The thread is the one that made the counters; any thread may read them.
#pragma once

#include "zu/core/zuExport.h"

class ZU_EXPORT zuPerformTimes {
 public:
  virtual ~zuPerformTimes();

  // Wall-clock milliseconds (monotonic clock) since the start.
  virtual unsigned long ElapsedTime() const = 0;
  // CPU milliseconds of the whole process since the start.
  virtual unsigned long ProcessTime() const = 0;
  // CPU milliseconds of the counters' thread since the start; after that
  // thread has ended, its last value.
  virtual unsigned long ThreadTime() const = 0;
  // Starts all three again from now.
  virtual void Reset() = 0;

  // Counters for the calling thread; the caller owns them. Throws zuExMemory.
  static zuPerformTimes* NewPerformTimes();

 protected:
  zuPerformTimes() = default;
};
