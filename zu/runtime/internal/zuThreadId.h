// The calling thread's kernel id, the key of every per-thread structure.
//
// Never 0, so that 0 can mean "the calling thread" in the library's
// interfaces. Cheap: the id is read from the kernel once per thread.
#pragma once

namespace zu::internal {

unsigned int currentThreadId();

}  // namespace zu::internal
