#include "zu/stream/internal/zuStreamAllocation.h"

#include <cstdlib>
#include <new>

namespace zu::internal {

namespace {

thread_local int allocationsBeforeFailure = -1;

}  // namespace

bool streamAllocationFails() {
  if (allocationsBeforeFailure < 0) return false;
  return allocationsBeforeFailure-- == 0;
}

void* streamMalloc(std::size_t size) {
  if (streamAllocationFails()) return nullptr;
  return std::malloc(size != 0 ? size : 1);
}

void* streamRealloc(void* block, std::size_t size) {
  if (streamAllocationFails()) return nullptr;
  return std::realloc(block, size != 0 ? size : 1);
}

void streamFree(void* block) {
  std::free(block);
}

char* streamNewChars(std::size_t size) {
  if (streamAllocationFails()) return nullptr;
  return new (std::nothrow) char[size != 0 ? size : 1];
}

void failStreamAllocationAfter(int calls) {
  allocationsBeforeFailure = calls;
}

}  // namespace zu::internal
