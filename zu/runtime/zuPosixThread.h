// zuPosixThread: the Linux zuThread, a pthread made with the requested stack
// size (0: the system default; sizes below the system minimum are raised to
// it). Create it through zuThread::NewThread().
//
//   zuThread* worker = zuThread::NewThread(256 * 1024, zuThread::eBelowNormal, Work, &job);
//   auto* posix = static_cast<zuPosixThread*>(worker);
//   unsigned long cpu = posix->CpuTime();
#pragma once

#include <atomic>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuThread.h"

class ZU_EXPORT zuPosixThread : public zuThread {
 public:
  // Starts the system thread; on failure the state is eCreateFailed and
  // CreateError() holds the system's error number.
  zuPosixThread(unsigned long stackSize, ePriority priority, ThreadFunction work, void* arg,
                ThreadFunction startUp, ThreadFunction exit);
  // Asks the body to end and waits for the system thread.
  ~zuPosixThread() override;

  // The thread's CPU time in milliseconds; its final value once it has ended,
  // 0 before its body starts.
  unsigned long CpuTime() const;
  // The kernel id of the thread, 0 before its body starts.
  unsigned int ThreadId() const { return threadId_.load(std::memory_order_acquire); }
  unsigned long CreateError() const { return createError_; }

 protected:
  void ApplyPriority() override;
  void Finishing() override;

 private:
  struct Native;
  Native* native_;
  unsigned long createError_ = 0;
  std::atomic<unsigned int> threadId_{0};
  std::atomic<unsigned long> finalCpuTime_{0};
};
