#include "zu/runtime/zuThread.h"

#include <chrono>
#include <new>
#include <string>
#include <thread>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/zuEvent.h"
#include "zu/runtime/zuMutex.h"
#include "zu/runtime/zuPerformTimes.h"
#include "zu/runtime/zuPosixThread.h"
#include "zu/runtime/zuThreadLocalStorage.h"
#include "zu/runtime/zuTlsAnchor.h"

namespace {

// An exited thread posts its completion event once; a second waiter would
// never see it, so unlimited waits look at the state between short waits.
constexpr unsigned long kUnlimitedWaitStep = 100;

using Clock = std::chrono::steady_clock;

unsigned long millisSince(Clock::time_point start) {
  return static_cast<unsigned long>(
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count());
}

// Calls a client function; what it throws must not end the body early.
void callSafely(zuThread::ThreadFunction function, void* arg) {
  if (function == nullptr) return;
  try {
    function(arg);
  } catch (...) {
  }
}

}  // namespace

zuThread::zuThread(unsigned long stackSize, ePriority priority, ThreadFunction work, void* arg,
                   ThreadFunction startUp, ThreadFunction exit)
    : completion_(zuEvent::NewEvent(zuEvent::eAutomaticReset)),
      wakeUp_(nullptr),
      lock_(nullptr),
      stackSize_(stackSize),
      priority_(priority),
      work_(work),
      workArg_(arg),
      startUp_(startUp),
      exit_(exit),
      arg_(arg) {
  try {
    wakeUp_ = zuEvent::NewEvent(zuEvent::eAutomaticReset);
    lock_ = zuMutex::NewMutex();
  } catch (...) {
    delete wakeUp_;
    delete completion_;
    throw;
  }
}

zuThread::~zuThread() {
  delete performance_.load();
  delete lock_;
  delete wakeUp_;
  delete completion_;
}

zuThread* zuThread::NewThread(unsigned long stackSize, ePriority priority, ThreadFunction work,
                              void* arg, ThreadFunction startUp, ThreadFunction exit) {
  zuThread* thread =
      new (std::nothrow) zuPosixThread(stackSize, priority, work, arg, startUp, exit);
  if (thread == nullptr) throw zuExMemory();
  return thread;
}

void zuThread::RunBody() {
  ApplyPriority();
  try {
    performance_.store(zuPerformTimes::NewPerformTimes(), std::memory_order_release);
  } catch (...) {
    // The thread runs without counters.
  }

  Clock::time_point start = Clock::now();
  callSafely(startUp_, arg_);
  record(&zuThreadStats::startUpTime_, millisSince(start));

  {
    zuAcquireMutex lock(lock_);
    if (State() == eCreated) SetState(eAvailable);
  }
  ThreadFunction work = nullptr;
  void* workArg = nullptr;
  if (takeWork(work, workArg)) {
    start = Clock::now();
    callSafely(work, workArg);
    zuAcquireMutex lock(lock_);
    stats_.workTime_ = millisSince(start);
    ++stats_.functionsRun_;
    SetState(eAvailable);
  }

  start = Clock::now();
  callSafely(exit_, arg_);
  record(&zuThreadStats::exitTime_, millisSince(start));

  zuTlsAnchor::ThreadExitCleanup();
  zuThreadLocalStorage::resetThreadStorage(zuThreadLocalStorage::getThreadId());
  Finishing();
  SetState(eExited);
  completion_->Post();
}

void zuThread::record(unsigned long zuThreadStats::*field, unsigned long milliseconds) {
  zuAcquireMutex lock(lock_);
  stats_.*field = milliseconds;
}

bool zuThread::takeWork(ThreadFunction& work, void*& workArg) {
  for (;;) {
    {
      zuAcquireMutex lock(lock_);
      if (exitRequested_ && work_ == nullptr) return false;
      if (work_ != nullptr) {
        work = work_;
        workArg = workArg_;
        work_ = nullptr;
        workArg_ = nullptr;
        // A stop asked for before the function began still stands.
        if (!exitRequested_) SetState(eRunning);
        return true;
      }
    }
    wakeUp_->WaitForever();
  }
}

void zuThread::RequestExit() {
  {
    zuAcquireMutex lock(lock_);
    exitRequested_ = true;
    if (State() == eRunning) SetState(eStopRequested);
  }
  wakeUp_->Post();
}

zuThreadRet zuThread::Start(ThreadFunction work, void* arg) {
  zuAcquireMutex lock(lock_);
  const eState state = State();
  if ((state != eAvailable && state != eCreated) || work_ != nullptr || exitRequested_ ||
      work == nullptr) {
    return zuThreadRet(zuThreadRet::eNotAvailable);
  }
  work_ = work;
  workArg_ = arg;
  lock.Release();
  wakeUp_->Post();
  return zuThreadRet();
}

zuThreadRet zuThread::StopFunction() {
  zuAcquireMutex lock(lock_);
  if (State() != eRunning) return zuThreadRet(zuThreadRet::eNotRunning);
  SetState(eStopRequested);
  return zuThreadRet();
}

zuThreadRet zuThread::Suspend() {
  if (State() == eSuspended) return zuThreadRet(zuThreadRet::eSuspended);
  return zuThreadRet();
}

int zuThread::WaitForThreadToExit(long milliseconds) {
  if (State() == eExited) return 1;
  if (State() == eCreateFailed) return 0;
  if (milliseconds >= 0) {
    completion_->Wait(static_cast<unsigned long>(milliseconds));
    return State() == eExited;
  }
  while (State() != eExited) completion_->Wait(kUnlimitedWaitStep);
  return 1;
}

zuThreadStats zuThread::Stats() const {
  zuAcquireMutex lock(lock_);
  return stats_;
}

void zuThread::Id(zuString& id) {
  id = std::to_string(zu::internal::currentThreadId()).c_str();
}

void zuThread::zuSleep(unsigned long milliseconds) {
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
