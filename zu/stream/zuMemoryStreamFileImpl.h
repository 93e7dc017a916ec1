// zuMemoryStreamFileImpl: a stream body whose bytes live in a growable heap
// block that it owns; the body of zuMemoryStreamFile.
//
//   zuMemoryStreamFileImpl body(0, 16);
//   body.Write("0123456789abcdef", 16);    // capacity 32, step now 32
//   body.SetPosition(zuFilePosition(-4, zuFilePosition::eEnd));
//   char tail[4];
//   body.Read(tail, 4);                    // "cdef"
//
// The block grows when a write or a size change needs more room: to
// (needed / step + 1) * step bytes (always above `needed`), after which the
// step doubles. A body holds at most 2147483647 bytes; the step stops
// doubling there. Growing past that limit, or a failed resize, throws
// zuExMemory and changes nothing. Positions outside the data are clamped,
// never refused. Copies are deep and unlinked. One thread at a time.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/stream/zuStreamFileTransformer.h"

class ZU_EXPORT zuMemoryStreamFileImpl : public zuStreamFileTransformer {
 public:
  // An empty body with a block of `initialSize` bytes and growth step
  // `growBy` (0 means 1024). Throws zuExMemory when the block cannot be had
  // or `initialSize` is above the limit.
  zuMemoryStreamFileImpl(unsigned initialSize, unsigned growBy);
  // A copy of `other`'s bytes, length, capacity, position and step, not
  // linked. Throws zuExMemory.
  zuMemoryStreamFileImpl(const zuMemoryStreamFileImpl& other);
  // Takes a copy of `other`'s bytes, length, capacity, position and step;
  // keeps its own link. Throws zuExMemory, leaving this body unchanged.
  zuMemoryStreamFileImpl& operator=(const zuMemoryStreamFileImpl& other);
  // Frees the block.
  ~zuMemoryStreamFileImpl() override;

  // Copies up to `size` bytes from the position on; 0 at the end.
  unsigned Read(void* buffer, unsigned size) override;
  // Writes `size` bytes at the position, growing the block as needed, and
  // returns `size`. Throws zuExMemory (nothing written) past the limit or
  // when the block cannot grow.
  unsigned Write(const void* data, unsigned size) override;
  zuFilePosition GetPosition() const override;
  // The position becomes base + offset, clamped to 0..length.
  void SetPosition(const zuFilePosition& position) override;
  // The length becomes base + offset (a negative size is 0); bytes added
  // read as zero; a position past the new end moves to it. Throws
  // zuExMemory past the limit or when the block cannot grow.
  void ChangeSize(const zuFilePosition& size) override;
  // Non-zero when the position is at the end of the data.
  int AtEof() const override;
  // A new deep copy that the caller deletes. Throws zuExMemory.
  zuStreamFileTransformer* Clone() const override;

  // The bytes held; never null, not terminated, valid until the next
  // write or size change.
  const char* Data() const;
  // The number of bytes held.
  unsigned Length() const { return length_; }
  // The size of the block.
  unsigned Capacity() const { return capacity_; }

 private:
  // Grows the block so that it holds `needed` bytes (see above).
  void ReAllocIfNecessary(uint64_t needed);

  char* buffer_;
  uint32_t length_;
  uint32_t capacity_;
  uint32_t position_;
  uint32_t step_;
};
