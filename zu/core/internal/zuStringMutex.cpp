#include "zu/core/internal/zuStringMutex.h"

namespace zu::internal {

std::recursive_mutex& stringMutex() {
  // Never destroyed: global strings held by static objects of other modules
  // may still be released during process exit.
  static std::recursive_mutex* mutex = new std::recursive_mutex;
  return *mutex;
}

}  // namespace zu::internal
