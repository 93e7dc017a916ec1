#include "zu/core/internal/zuStringBlock.h"

#include <bit>
#include <new>

#include "zu/runtime/internal/zuRaise.h"
#include "zu/runtime/zuCacheManager.h"

namespace zu::internal {

namespace {

constexpr uint32_t kFirstCapacity = 8;
// A string holds at most 2^30 - 1 bytes; the capacity may reach 2^30.
constexpr uint32_t kLargestRequest = (1u << 30) - 1;

zuStringData* initBlock(void* memory, uint32_t capacity, unsigned int threadId) {
  zuStringData* block = static_cast<zuStringData*>(memory);
  block->threadId = threadId;
  block->allocSize = capacity;
  block->refCount = 1;
  block->chars()[0] = '\0';
  return block;
}

}  // namespace

uint32_t ordinaryCapacity(uint32_t request) {
  return request <= kFirstCapacity ? kFirstCapacity : std::bit_ceil(request);
}

// The block comes from the thread's cache and carries the cache's thread id
// (0 while caching is off: the cache then hands out heap memory).
zuStringData* allocateStringBlock(uint32_t request, unsigned int threadId) {
  if (request > kLargestRequest) raiseOutOfMemory();
  const uint32_t capacity = ordinaryCapacity(request);
  if (threadId == 0) {
    unsigned int owner = 0;
    void* memory = zuCacheManager::AllocateForCallingThread(
        static_cast<unsigned int>(blockBytes(capacity)), owner);
    return initBlock(memory, capacity, owner);
  }
  zuCacheManager* cache = zuCacheManager::getCacheManager(threadId);
  void* memory = cache->allocMemory(static_cast<unsigned int>(blockBytes(capacity)));
  return initBlock(memory, capacity, cache->getThreadId());
}

void releaseStringBlock(zuStringData* block) {
  zuCacheManager::freeMemory(block);
}

zuStringData* allocateHeapStringBlock(uint32_t request) {
  if (request > kLargestRequest) raiseOutOfMemory();
  void* memory = ::operator new(blockBytes(request), std::nothrow);
  if (memory == nullptr) raiseOutOfMemory();
  return initBlock(memory, request, 0);
}

void releaseHeapStringBlock(zuStringData* block) {
  ::operator delete(block);
}

}  // namespace zu::internal
