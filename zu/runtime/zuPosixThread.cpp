#include "zu/runtime/zuPosixThread.h"

#include <limits.h>
#include <pthread.h>
#include <sys/resource.h>

#include <new>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/zuPosixPerformTimes.h"

namespace {

// The nice value for a priority; 0 keeps the inherited one (raising a
// thread's priority needs privileges that a library must not assume).
int niceValueFor(zuThread::ePriority priority) {
  switch (priority) {
    case zuThread::eIdle:
      return 19;
    case zuThread::eLowest:
      return 10;
    case zuThread::eBelowNormal:
      return 5;
    default:
      return 0;
  }
}

}  // namespace

struct zuPosixThread::Native {
  pthread_t thread;
  bool joinable = false;

  static void* entry(void* self) {
    static_cast<zuPosixThread*>(self)->RunBody();
    return nullptr;
  }
};

zuPosixThread::zuPosixThread(unsigned long stackSize, ePriority priority, ThreadFunction work,
                             void* arg, ThreadFunction startUp, ThreadFunction exit)
    : zuThread(stackSize, priority, work, arg, startUp, exit), native_(new (std::nothrow) Native) {
  if (native_ == nullptr) throw zuExMemory();
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  if (stackSize != 0) {
    const unsigned long minimum = static_cast<unsigned long>(PTHREAD_STACK_MIN);
    const unsigned long size = stackSize < minimum ? minimum : stackSize;
    pthread_attr_setstacksize(&attributes, size);
  }
  const int error = pthread_create(&native_->thread, &attributes, Native::entry, this);
  pthread_attr_destroy(&attributes);
  if (error != 0) {
    createError_ = static_cast<unsigned long>(error);
    SetState(eCreateFailed);
    return;
  }
  native_->joinable = true;
}

zuPosixThread::~zuPosixThread() {
  if (native_->joinable) {
    RequestExit();
    pthread_join(native_->thread, nullptr);
  }
  delete native_;
}

void zuPosixThread::ApplyPriority() {
  threadId_.store(zu::internal::currentThreadId(), std::memory_order_release);
  const int nice = niceValueFor(Priority());
  if (nice != 0) setpriority(PRIO_PROCESS, static_cast<id_t>(ThreadId()), nice);
}

void zuPosixThread::Finishing() {
  if (auto* times = static_cast<zuPosixPerformTimes*>(Performance())) {
    finalCpuTime_.store(times->ThreadCpuTotal(), std::memory_order_release);
  }
}

unsigned long zuPosixThread::CpuTime() const {
  if (State() == eExited) return finalCpuTime_.load(std::memory_order_acquire);
  const auto* times = static_cast<const zuPosixPerformTimes*>(Performance());
  return times != nullptr ? times->ThreadCpuTotal() : 0;
}
