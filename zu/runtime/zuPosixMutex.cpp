#include "zu/runtime/zuPosixMutex.h"

#include <pthread.h>

#include <cerrno>
#include <new>

#include "zu/core/zuException.h"
#include "zu/runtime/internal/zuThreadId.h"

struct zuPosixMutex::Native {
  pthread_mutex_t mutex;
};

zuPosixMutex::zuPosixMutex() : native_(new (std::nothrow) Native) {
  if (native_ == nullptr) throw zuExMemory();
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  Valid(pthread_mutex_init(&native_->mutex, &attributes) == 0);
  pthread_mutexattr_destroy(&attributes);
}

zuPosixMutex::~zuPosixMutex() {
  if (Valid()) pthread_mutex_destroy(&native_->mutex);
  delete native_;
}

zuSynchRet zuPosixMutex::Acquire() {
  if (!Valid()) return zuSynchRet(zuSynchRet::eFailed);
  const int error = pthread_mutex_lock(&native_->mutex);
  if (error != 0) return zuSynchRet(zuSynchRet::eFailed, static_cast<unsigned long>(error));
  if (count_++ == 0) {
    owner_.store(zu::internal::currentThreadId(), std::memory_order_relaxed);
    Acquired(1);
  }
  return zuSynchRet();
}

zuSynchRet zuPosixMutex::Release() {
  if (!Valid()) return zuSynchRet(zuSynchRet::eFailed);
  // The count belongs to the holder; any other thread is refused before it
  // can touch it.
  if (owner_.load(std::memory_order_relaxed) != zu::internal::currentThreadId()) {
    return zuSynchRet(zuSynchRet::eFailed, EPERM);
  }
  if (--count_ == 0) {
    owner_.store(0, std::memory_order_relaxed);
    Acquired(0);
  }
  pthread_mutex_unlock(&native_->mutex);
  return zuSynchRet();
}
