// The character block behind zuString, and where its memory comes from.
//
// A block is a header of three 32-bit words, then the characters, then a NUL:
// allocation = 12 (header) + capacity + 1 (NUL) + 4 spare bytes. zuString
// keeps a pointer to the characters; the header sits right before them.
//
// Ordinary blocks (scope 0) belong to one thread, come from its block cache
// (zuCacheManager) and are taken and returned ONLY through
// allocateStringBlock / releaseStringBlock. Global blocks
// (scope 2) come from the process heap through the heap pair.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zu::internal {

struct zuStringData {
  uint32_t threadId;   // owner thread; 0 for heap blocks
  uint32_t allocSize;  // capacity in bytes, the NUL not counted
  uint32_t refCount;   // strings sharing the block

  char* chars() { return reinterpret_cast<char*>(this + 1); }
  static zuStringData* fromChars(char* chars) { return reinterpret_cast<zuStringData*>(chars) - 1; }
};
static_assert(sizeof(zuStringData) == 12, "the header is three 32-bit words");
// zuString's inline append reads the count and the capacity as the last two
// words before the characters.
static_assert(offsetof(zuStringData, refCount) == 8 && offsetof(zuStringData, allocSize) == 4,
              "header order is fixed");

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
