// The allocations of the memory bodies and of Base64's allocating decoder go
// through these functions, so that a test can make one of them fail and
// check what the caller reports. Each returns null on failure and never
// throws; a zero size still gives a distinct non-null block.
#pragma once

#include <cstddef>
#include <new>

namespace zu::internal {

void* streamMalloc(std::size_t size);
void* streamRealloc(void* block, std::size_t size);
void streamFree(void* block);
// A `new char[]` block (freed with delete[]), or null.
char* streamNewChars(std::size_t size);

// A new object of a stream's own class, or null when the test hook says
// this allocation fails or memory is short.
bool streamAllocationFails();
template <class Object, class... Arguments>
Object* newStreamObject(Arguments&&... arguments) {
  if (streamAllocationFails()) return nullptr;
  return new (std::nothrow) Object(static_cast<Arguments&&>(arguments)...);
}

// Test hook: on the calling thread, the allocation after the next `calls`
// succeeds fails (0: the next one); a negative count lets all succeed.
void failStreamAllocationAfter(int calls);

}  // namespace zu::internal
