#include "zu/runtime/internal/zuThreadId.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace zu::internal {

[[gnu::tls_model("initial-exec")]] thread_local constinit unsigned int tThreadId = 0;

unsigned int fetchCurrentThreadId() {
  tThreadId = static_cast<unsigned int>(::syscall(SYS_gettid));
  return tThreadId;
}

}  // namespace zu::internal
