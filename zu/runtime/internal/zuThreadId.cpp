#include "zu/runtime/internal/zuThreadId.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace zu::internal {

namespace {
// Initial-exec: the id is read at a fixed offset from the thread pointer
// instead of through the dynamic loader's lookup on every call.
[[gnu::tls_model("initial-exec")]] thread_local unsigned int tThreadId = 0;
}  // namespace

unsigned int currentThreadId() {
  if (tThreadId == 0) tThreadId = static_cast<unsigned int>(::syscall(SYS_gettid));
  return tThreadId;
}

}  // namespace zu::internal
