// zuNewHandler: installs an allocation-failure handler for its lifetime.
//
// While it lives, a failed operator new calls `handler`. A non-zero return
// asks for another attempt; 0 gives up, and the allocation then throws
// zuExMemory. The previous handler is restored on destruction, so handlers
// nest like scopes.
//
//   int freeCaches(unsigned int size) { return releaseSomeMemory() ? 1 : 0; }
//   zuNewHandler guard(freeCaches);
//
// The runtime does not tell its handler the size it failed to allocate, so
// `handler` is always given 0. The handler is process-wide, like the
// runtime's own; install and remove it from one thread at a time.
#pragma once

#include <new>

#include "zu/core/zuExport.h"

class ZU_EXPORT zuNewHandler {
 public:
  using Handler = int (*)(unsigned int size);

  explicit zuNewHandler(Handler handler);
  ~zuNewHandler();
  zuNewHandler(const zuNewHandler&) = delete;
  zuNewHandler& operator=(const zuNewHandler&) = delete;

 private:
  std::new_handler previousRuntimeHandler_;
  Handler previousHandler_;
};

// The library's own handler: throws zuExMemory. Install it with
// zuNewHandler(ZuExMemoryHandler) to turn every failed allocation into one.
[[noreturn]] ZU_EXPORT int ZuExMemoryHandler(unsigned int size);
