#include "zu/runtime/internal/zuThreadId.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace zu::internal {

unsigned int currentThreadId() {
  thread_local const unsigned int id = static_cast<unsigned int>(::syscall(SYS_gettid));
  return id;
}

}  // namespace zu::internal
