// zuFixedMemoryStreamImpl: a stream body over a caller's buffer; when a
// write passes the buffer's end the bytes move to a larger heap block. The
// body of zuFixedMemoryStreamFile.
//
//   char* block = new char[10];
//   {
//     zuFixedMemoryStreamImpl body(&block, 10, 1024, 0);
//     body.Write("0123456789a", 11);       // moves: block is a new char[1024]
//   }
//   delete[] block;                        // the caller frees the last block
//
// Two ways to hand over the buffer:
// - a plain buffer (`char*`, `size`): the body borrows it (capacity and
//   length `size`, growth step 1024) and never frees it; on moving it copies
//   the bytes into a `new char[]` block of its own, which it delete[]s on
//   the next move and in its destructor.
// - a lent block (`char**`): `*bufferRef` is a `new char[]` block or null.
//   On moving the body delete[]s the old block and stores the new one in
//   `*bufferRef`; the caller keeps the pointer alive as long as the body
//   and frees the last block.
// A move allocates ceil(needed / step) * step bytes, then the step doubles
// (it stops doubling at 2147483647, the most a body holds); `Data()` and the
// caller's pointer always name the current block. Past that limit, or when
// no block can be had, writes and size changes throw zuExMemory and change
// nothing. The stream operations are zuMemoryStreamBody's. Not copyable;
// Clone() gives null. One thread at a time.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/stream/zuMemoryStreamBody.h"

class ZU_EXPORT zuFixedMemoryStreamImpl : public zuMemoryStreamBody {
 public:
  // Over `size` bytes at `buffer` (borrowed): capacity = length = `size`,
  // position 0, growth step 1024.
  zuFixedMemoryStreamImpl(char* buffer, unsigned size);
  // Over the block `*bufferRef` of `capacity` bytes (a null block has
  // none), growth step `growBy` (0 means 1024). The length is `length`,
  // cut to the capacity; a `length` whose low 32 bits are all ones (~0UL)
  // means the capacity.
  zuFixedMemoryStreamImpl(char** bufferRef, unsigned capacity, unsigned growBy,
                          unsigned long length);
  zuFixedMemoryStreamImpl(const zuFixedMemoryStreamImpl&) = delete;
  zuFixedMemoryStreamImpl& operator=(const zuFixedMemoryStreamImpl&) = delete;
  // Frees the block only when it is the body's own copy of a plain buffer.
  ~zuFixedMemoryStreamImpl() override;

  // Null: the body cannot be copied.
  zuStreamFileTransformer* Clone() const override;
  // 1.
  int StreamType() const override;

 private:
  // Moves the bytes to a block of ceil(needed / step) * step bytes.
  void Grow(uint32_t needed) override;

  // Where the current block is reported: the caller's pointer, or buffer_.
  char** bufferRef_;
  // The plain-buffer form's own copy, freed by the body.
  bool ownsBlock_;
};
