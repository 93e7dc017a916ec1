#include "zu/runtime/zuMutex.h"

#include <new>

#include "zu/core/zuException.h"
#include "zu/runtime/zuPosixMutex.h"

namespace {

// Set once the default mutex exists, so that unloading releases only what
// was created.
std::atomic<zuMutex*> gDefaultMutex{nullptr};

__attribute__((destructor)) void releaseDefaultMutex() {
  delete gDefaultMutex.exchange(nullptr);
}

}  // namespace

zuMutex::~zuMutex() = default;

zuMutex* zuMutex::NewMutex() {
  zuMutex* mutex = new (std::nothrow) zuPosixMutex();
  if (mutex == nullptr) throw zuExMemory();
  return mutex;
}

zuMutex* zuMutex::Default() {
  static zuMutex* const mutex = [] {
    zuMutex* created = NewMutex();
    gDefaultMutex.store(created);
    return created;
  }();
  return mutex;
}

void zuMutex::StaticMutex(zuMutex*& mutex) {
  zuAcquireDefaultMutex lock;
  if (mutex == nullptr) mutex = NewMutex();
}

zuAcquireMutex::zuAcquireMutex(zuMutex* mutex) : mutex_(mutex) {
  if (mutex_ != nullptr) mutex_->Acquire();
}

zuAcquireMutex::~zuAcquireMutex() {
  Release();
}

void zuAcquireMutex::Release() {
  if (mutex_ == nullptr) return;
  mutex_->Release();
  mutex_ = nullptr;
}

zuAcquireDefaultMutex::zuAcquireDefaultMutex() : zuAcquireMutex(zuMutex::Default()) {}
