#include "zu/core/internal/zuStringBlock.h"

#include <new>

#include "zu/core/zuException.h"

namespace zu::internal {

namespace {

constexpr uint32_t kFirstCapacity = 8;
// A string holds at most 2^30 - 1 bytes; the capacity may reach 2^30.
constexpr uint32_t kLargestRequest = (1u << 30) - 1;

zuStringData* allocateBlock(uint32_t capacity, unsigned int threadId) {
  void* memory = ::operator new(blockBytes(capacity), std::nothrow);
  if (memory == nullptr) throw zuExMemory();
  zuStringData* block = static_cast<zuStringData*>(memory);
  block->threadId = threadId;
  block->allocSize = capacity;
  block->refCount = 1;
  block->chars()[0] = '\0';
  return block;
}

}  // namespace

uint32_t ordinaryCapacity(uint32_t request) {
  uint32_t capacity = kFirstCapacity;
  while (capacity < request) capacity *= 2;
  return capacity;
}

zuStringData* allocateStringBlock(uint32_t request, unsigned int threadId) {
  if (request > kLargestRequest) throw zuExMemory();
  return allocateBlock(ordinaryCapacity(request), threadId);
}

void releaseStringBlock(zuStringData* block) {
  ::operator delete(block);
}

zuStringData* allocateHeapStringBlock(uint32_t request) {
  if (request > kLargestRequest) throw zuExMemory();
  return allocateBlock(request, 0);
}

void releaseHeapStringBlock(zuStringData* block) {
  ::operator delete(block);
}

}  // namespace zu::internal
