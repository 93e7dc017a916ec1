// zuMemoryStreamFileImpl: a stream body whose bytes live in a growable heap
// block that it owns; the body of zuMemoryStreamFile. The stream operations
// are zuMemoryStreamBody's.
//
//   zuMemoryStreamFileImpl body(0, 16);
//   body.Write("0123456789abcdef", 16);    // capacity 32, step now 32
//   body.SetPosition(zuFilePosition(-4, zuFilePosition::eEnd));
//   char tail[4];
//   body.Read(tail, 4);                    // "cdef"
//
// The block (malloc/realloc) grows when a write or a size change needs
// more room: to (needed / step + 1) * step bytes, always above `needed`,
// then the step doubles; both stop at 2147483647 bytes. A failed resize
// throws zuExMemory and keeps the old block. Copies are deep and unlinked.
// One thread at a time.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/stream/zuMemoryStreamBody.h"

class ZU_EXPORT zuMemoryStreamFileImpl : public zuMemoryStreamBody {
 public:
  // An empty body with a block of `initialSize` bytes and growth step
  // `growBy` (0 means 1024). Throws zuExMemory when the block cannot be had
  // or `initialSize` is above 2147483647.
  zuMemoryStreamFileImpl(unsigned initialSize, unsigned growBy);
  // A copy of `other`'s bytes, length, capacity, position and step, not
  // linked. Throws zuExMemory.
  zuMemoryStreamFileImpl(const zuMemoryStreamFileImpl& other);
  // Takes a copy of `other`'s bytes, length, capacity, position and step;
  // keeps its own link. Throws zuExMemory, leaving this body unchanged.
  zuMemoryStreamFileImpl& operator=(const zuMemoryStreamFileImpl& other);
  // Frees the block.
  ~zuMemoryStreamFileImpl() override;

  // A new deep copy that the caller deletes. Throws zuExMemory.
  zuStreamFileTransformer* Clone() const override;

 private:
  void Grow(uint32_t needed) override { ReAllocIfNecessary(needed); }
  // Resizes the block for `needed` bytes by the rule above.
  void ReAllocIfNecessary(uint32_t needed);
};
