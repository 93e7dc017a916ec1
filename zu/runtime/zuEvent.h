// zuEvent: a signal that threads wait for, reset automatically or by hand.
//
//   zuEvent* done = zuEvent::NewEvent(zuEvent::eAutomaticReset);
//   // worker thread:  done->Post();
//   if (done->Wait(1000).ReturnCode() == zuSynchRet::eTimedOut) { ... }
//   delete done;
//
// An automatic-reset event releases one waiter per Post and clears itself; a
// manual-reset event stays posted, releasing every waiter, until Reset().
// Every member may be called from any thread.
#pragma once

#include <atomic>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuSynch.h"

class ZU_EXPORT zuEvent : public zuSynch {
 public:
  enum ResetType { eAutomaticReset = 0, eManualReset = 1 };

  ~zuEvent() override;

  // Waits until posted: eOk, or eFailed with the system error.
  virtual zuSynchRet WaitForever() = 0;
  // Waits at most `milliseconds` (0 only tests): eOk when posted, eTimedOut,
  // or eFailed with the system error.
  virtual zuSynchRet Wait(unsigned long milliseconds) = 0;
  // Sets the posted flag and wakes the waiters.
  virtual zuSynchRet Post() = 0;
  // Clears the posted flag.
  virtual zuSynchRet Reset() = 0;

  // Non-zero while posted (may be stale by the time it is used).
  int Posted() const { return posted_.load(std::memory_order_relaxed); }
  // 0 automatic, non-zero manual.
  int GetResetType() const { return resetType_; }

  // A new, unposted event; the caller owns it. Throws zuExMemory. Valid()
  // reports whether the system objects could be created.
  static zuEvent* NewEvent(ResetType resetType);

 protected:
  explicit zuEvent(ResetType resetType) : resetType_(resetType) {}
  void Posted(int posted) { posted_.store(posted, std::memory_order_relaxed); }

 private:
  std::atomic<int> posted_{0};
  int resetType_;
};
