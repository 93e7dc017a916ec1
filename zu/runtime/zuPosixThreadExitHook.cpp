#include <pthread.h>

#include "zu/runtime/internal/zuThreadExitHook.h"

namespace zu::internal {

namespace {

pthread_key_t gExitKey;
bool gExitKeyCreated = false;
ThreadExitHandler gHandler = nullptr;
// Any non-null value arms the key's destructor.
void* const kWatched = reinterpret_cast<void*>(1);

void onThreadExit(void*) {
  gHandler();
}

}  // namespace

bool createThreadExitHook(ThreadExitHandler handler) {
  gHandler = handler;
  gExitKeyCreated = pthread_key_create(&gExitKey, onThreadExit) == 0;
  return gExitKeyCreated;
}

void destroyThreadExitHook() {
  if (!gExitKeyCreated) return;
  gExitKeyCreated = false;
  pthread_key_delete(gExitKey);
}

void watchThreadExit() {
  if (gExitKeyCreated && pthread_getspecific(gExitKey) == nullptr) {
    pthread_setspecific(gExitKey, kWatched);
  }
}

void unwatchThreadExit() {
  if (gExitKeyCreated) pthread_setspecific(gExitKey, nullptr);
}

}  // namespace zu::internal
