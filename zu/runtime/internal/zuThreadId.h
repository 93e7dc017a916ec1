// The calling thread's kernel id, the key of every per-thread structure.
//
// Never 0, so that 0 can mean "the calling thread" in the library's
// interfaces. Cheap: the id is read from the kernel once per thread and kept
// in an initial-exec thread-local, read inline at a fixed offset from the
// thread pointer.
#pragma once

namespace zu::internal {

// The kept id; 0 until the thread first asks.
[[gnu::tls_model("initial-exec")]] extern thread_local constinit unsigned int tThreadId;

// Reads the id from the kernel and keeps it.
unsigned int fetchCurrentThreadId();

inline unsigned int currentThreadId() {
  const unsigned int id = tThreadId;
  return id != 0 ? id : fetchCurrentThreadId();
}

}  // namespace zu::internal
