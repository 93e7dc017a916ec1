#include "zu/runtime/zuPosixTlsAnchor.h"

#include <pthread.h>

#include <mutex>
#include <new>

#include "zu/core/zuException.h"

namespace {

std::mutex gKeyMutex;
pthread_key_t gKey;
bool gKeyCreated = false;  // guarded by gKeyMutex

void destroyAnchor(void* anchor) {
  try {
    delete static_cast<zuTlsAnchor*>(anchor);
  } catch (...) {
  }
}

// The key, created on first use; false when the system has none left.
bool anchorKey(pthread_key_t& key) {
  std::lock_guard<std::mutex> lock(gKeyMutex);
  if (!gKeyCreated) gKeyCreated = pthread_key_create(&gKey, destroyAnchor) == 0;
  key = gKey;
  return gKeyCreated;
}

// At unload the key goes, so no exiting thread calls into unloaded code.
__attribute__((destructor)) void releaseKeyAtUnload() {
  std::lock_guard<std::mutex> lock(gKeyMutex);
  if (gKeyCreated) pthread_key_delete(gKey);
  gKeyCreated = false;
}

}  // namespace

zuPosixTlsAnchor* zuPosixTlsAnchor::GetTlsAnchor() {
  pthread_key_t key;
  if (!anchorKey(key)) throw zuExMemory();
  if (void* existing = pthread_getspecific(key)) return static_cast<zuPosixTlsAnchor*>(existing);
  auto* anchor = new (std::nothrow) zuPosixTlsAnchor;
  if (anchor == nullptr || pthread_setspecific(key, anchor) != 0) {
    delete anchor;
    throw zuExMemory();
  }
  return anchor;
}

void zuPosixTlsAnchor::ThreadExitCleanup() {
  pthread_key_t key;
  {
    std::lock_guard<std::mutex> lock(gKeyMutex);
    if (!gKeyCreated) return;
    key = gKey;
  }
  void* anchor = pthread_getspecific(key);
  if (anchor == nullptr) return;
  pthread_setspecific(key, nullptr);
  destroyAnchor(anchor);
}

void zuPosixTlsAnchor::ReleaseTlsAnchorSingletons() {
  ThreadExitCleanup();
  std::lock_guard<std::mutex> lock(gKeyMutex);
  if (gKeyCreated) pthread_key_delete(gKey);
  gKeyCreated = false;
}
