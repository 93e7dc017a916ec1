// zuPosixMutex: the Linux zuMutex, a recursive pthread mutex with an
// acquisition count. Create it through zuMutex::NewMutex().
//
//   zuMutex* mutex = zuMutex::NewMutex();
//   mutex->Acquire();
//   mutex->Acquire();                     // same thread: count 2
//   mutex->Release();                     // still held
//   mutex->Release();
#pragma once

#include <atomic>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuMutex.h"

class ZU_EXPORT zuPosixMutex : public zuMutex {
 public:
  // Valid() reports whether the system mutex could be initialised.
  zuPosixMutex();
  ~zuPosixMutex() override;

  zuSynchRet Acquire() override;
  zuSynchRet Release() override;

 private:
  struct Native;
  Native* native_;
  // Changed only by the holder, while it holds the mutex.
  unsigned int count_ = 0;
  // The holder's thread id, 0 when free; lets Release refuse other threads.
  std::atomic<unsigned int> owner_{0};
};
