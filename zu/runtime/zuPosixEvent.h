// zuPosixEvent: the Linux zuEvent, a mutex and a condition variable whose
// timed waits run on the monotonic clock (changing the wall clock does not
// stretch or cut them). Create it through zuEvent::NewEvent().
//
//   zuEvent* ready = zuEvent::NewEvent(zuEvent::eManualReset);
//   ready->Post();
//   ready->Wait(0);                       // eOk, and still posted
#pragma once

#include "zu/core/zuExport.h"
#include "zu/runtime/zuEvent.h"

class ZU_EXPORT zuPosixEvent : public zuEvent {
 public:
  explicit zuPosixEvent(ResetType resetType);
  ~zuPosixEvent() override;

  zuSynchRet WaitForever() override;
  zuSynchRet Wait(unsigned long milliseconds) override;
  zuSynchRet Post() override;
  zuSynchRet Reset() override;

 private:
  struct Native;
  // Under the mutex: takes the posted state, clearing it for automatic reset.
  void consumeLocked();

  Native* native_;
  // Guarded by the native mutex; Posted() mirrors it for unlocked readers.
  bool signalled_ = false;
};
