#include "zu/runtime/zuPerformTimes.h"

#include <new>

#include "zu/core/zuException.h"
#include "zu/runtime/zuPosixPerformTimes.h"

zuPerformTimes::~zuPerformTimes() = default;

zuPerformTimes* zuPerformTimes::NewPerformTimes() {
  zuPerformTimes* times = new (std::nothrow) zuPosixPerformTimes();
  if (times == nullptr) throw zuExMemory();
  return times;
}
