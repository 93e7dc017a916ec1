// zuMutex: a recursive mutex, and zuAcquireMutex, which holds one for a scope.
//
//   static zuMutex* gRegistryMutex = nullptr;
//   zuMutex::StaticMutex(gRegistryMutex);     // created safely on first use
//   {
//     zuAcquireMutex lock(gRegistryMutex);
//     ...                                      // released at the end of scope
//   }
//
// The thread that holds a mutex may acquire it again; every Acquire needs its
// Release. Create mutexes with NewMutex (the Linux form is zuPosixMutex).
#pragma once

#include <atomic>

#include "zu/core/zuExport.h"
#include "zu/runtime/zuSynch.h"

class ZU_EXPORT zuMutex : public zuSynch {
 public:
  ~zuMutex() override;

  // Blocks until the calling thread holds the mutex; eFailed with the system
  // error when the mutex is not usable.
  virtual zuSynchRet Acquire() = 0;
  // Gives up one acquisition; eFailed when the calling thread does not hold it.
  virtual zuSynchRet Release() = 0;

  // Non-zero while some thread holds the mutex. Any thread may ask; the answer
  // may be stale by the time it is used.
  int Acquired() const { return acquired_.load(std::memory_order_relaxed); }

  // A new mutex; the caller owns it. Throws zuExMemory.
  static zuMutex* NewMutex();
  // The library-wide mutex, created on first use and released at unload.
  static zuMutex* Default();
  // Under the default mutex: creates a new mutex into `mutex` when it is null.
  // Lets a static mutex be created safely by whichever thread needs it first.
  static void StaticMutex(zuMutex*& mutex);

 protected:
  zuMutex() = default;
  void Acquired(int acquired) { acquired_.store(acquired, std::memory_order_relaxed); }

 private:
  std::atomic<int> acquired_{0};
};

// Holds a mutex from construction (nothing when null) until destruction or
// Release(). Belongs to the thread that created it.
class ZU_EXPORT zuAcquireMutex {
 public:
  explicit zuAcquireMutex(zuMutex* mutex);
  ~zuAcquireMutex();
  zuAcquireMutex(const zuAcquireMutex&) = delete;
  zuAcquireMutex& operator=(const zuAcquireMutex&) = delete;

  // Releases early; the destructor then does nothing.
  void Release();
  // The mutex still held; null after Release().
  zuMutex* Mutex() const { return mutex_; }

 private:
  zuMutex* mutex_;
};

// zuAcquireMutex on zuMutex::Default().
class ZU_EXPORT zuAcquireDefaultMutex : public zuAcquireMutex {
 public:
  zuAcquireDefaultMutex();
};
