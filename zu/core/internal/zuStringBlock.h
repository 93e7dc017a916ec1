// Where the memory of zuString's character blocks (zu/core/zuStringData.h)
// comes from.
//
// Ordinary blocks (scope 0) belong to one thread, come from its block cache
// (zuCacheManager) and are taken and returned ONLY through
// allocateStringBlock / releaseStringBlock. Global blocks
// (scope 2) come from the process heap through the heap pair.
#pragma once

#include <cstdint>

#include "zu/core/zuStringData.h"

namespace zu::internal {

// Bytes allocated for a block of `capacity` characters.
inline uint64_t blockBytes(uint32_t capacity) {
  return sizeof(zuStringData) + uint64_t{capacity} + 5;
}

// The capacity of an ordinary block for `request` bytes: 8, doubled until it
// covers the request.
uint32_t ordinaryCapacity(uint32_t request);

// An ordinary block with room for `request` bytes for thread `threadId` (0:
// the calling thread), reference count 1, empty text. Throws zuExMemory.
zuStringData* allocateStringBlock(uint32_t request, unsigned int threadId);
// Returns an ordinary block whose count reached 0.
void releaseStringBlock(zuStringData* block);

// A heap block of exactly `request` bytes, owner 0, count 1, empty text.
// Throws zuExMemory.
zuStringData* allocateHeapStringBlock(uint32_t request);
void releaseHeapStringBlock(zuStringData* block);

}  // namespace zu::internal
