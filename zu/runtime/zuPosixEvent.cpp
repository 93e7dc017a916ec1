#include "zu/runtime/zuPosixEvent.h"

#include <pthread.h>
#include <time.h>

#include <cerrno>
#include <new>

#include "zu/core/zuException.h"

namespace {

constexpr long kNanosPerSecond = 1000000000L;

timespec deadlineAfter(unsigned long milliseconds) {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  timespec deadline;
  deadline.tv_sec = now.tv_sec + static_cast<time_t>(milliseconds / 1000);
  deadline.tv_nsec = now.tv_nsec + static_cast<long>(milliseconds % 1000) * 1000000L;
  if (deadline.tv_nsec >= kNanosPerSecond) {
    deadline.tv_sec += 1;
    deadline.tv_nsec -= kNanosPerSecond;
  }
  return deadline;
}

}  // namespace

struct zuPosixEvent::Native {
  pthread_mutex_t mutex;
  pthread_cond_t condition;
};

zuPosixEvent::zuPosixEvent(ResetType resetType)
    : zuEvent(resetType), native_(new (std::nothrow) Native) {
  if (native_ == nullptr) throw zuExMemory();
  pthread_condattr_t attributes;
  pthread_condattr_init(&attributes);
  pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
  const bool mutexMade = pthread_mutex_init(&native_->mutex, nullptr) == 0;
  const bool conditionMade = pthread_cond_init(&native_->condition, &attributes) == 0;
  pthread_condattr_destroy(&attributes);
  if (mutexMade && !conditionMade) pthread_mutex_destroy(&native_->mutex);
  if (conditionMade && !mutexMade) pthread_cond_destroy(&native_->condition);
  Valid(mutexMade && conditionMade);
}

zuPosixEvent::~zuPosixEvent() {
  if (Valid()) {
    pthread_cond_destroy(&native_->condition);
    pthread_mutex_destroy(&native_->mutex);
  }
  delete native_;
}

void zuPosixEvent::consumeLocked() {
  if (GetResetType() == eAutomaticReset) {
    signalled_ = false;
    Posted(0);
  }
}

zuSynchRet zuPosixEvent::WaitForever() {
  if (!Valid()) return zuSynchRet(zuSynchRet::eFailed);
  pthread_mutex_lock(&native_->mutex);
  int error = 0;
  while (!signalled_ && error == 0) error = pthread_cond_wait(&native_->condition, &native_->mutex);
  if (signalled_) consumeLocked();
  pthread_mutex_unlock(&native_->mutex);
  if (error != 0) return zuSynchRet(zuSynchRet::eFailed, static_cast<unsigned long>(error));
  return zuSynchRet();
}

zuSynchRet zuPosixEvent::Wait(unsigned long milliseconds) {
  if (!Valid()) return zuSynchRet(zuSynchRet::eFailed);
  const timespec deadline = deadlineAfter(milliseconds);
  pthread_mutex_lock(&native_->mutex);
  int error = 0;
  while (!signalled_ && error == 0) {
    error = pthread_cond_timedwait(&native_->condition, &native_->mutex, &deadline);
  }
  const bool signalled = signalled_;
  if (signalled) consumeLocked();
  pthread_mutex_unlock(&native_->mutex);
  if (signalled) return zuSynchRet();
  if (error == ETIMEDOUT) return zuSynchRet(zuSynchRet::eTimedOut);
  return zuSynchRet(zuSynchRet::eFailed, static_cast<unsigned long>(error));
}

zuSynchRet zuPosixEvent::Post() {
  if (!Valid()) return zuSynchRet(zuSynchRet::eFailed);
  pthread_mutex_lock(&native_->mutex);
  signalled_ = true;
  Posted(1);
  // An automatic event releases one waiter; a manual one every waiter.
  if (GetResetType() == eAutomaticReset) {
    pthread_cond_signal(&native_->condition);
  } else {
    pthread_cond_broadcast(&native_->condition);
  }
  pthread_mutex_unlock(&native_->mutex);
  return zuSynchRet();
}

zuSynchRet zuPosixEvent::Reset() {
  if (!Valid()) return zuSynchRet(zuSynchRet::eFailed);
  pthread_mutex_lock(&native_->mutex);
  signalled_ = false;
  Posted(0);
  pthread_mutex_unlock(&native_->mutex);
  return zuSynchRet();
}
