// zuFixedMemoryStreamFile: a stream file over a caller's buffer or text (a
// zuFixedMemoryStreamImpl body, pushed as its first transformer).
//
//   zuFixedMemoryStreamFile reader("TWFu", 0);           // read-only
//   char* block = nullptr;
//   {
//     zuFixedMemoryStreamFile writer(&block, 0, 256, 0, 0, zuFileMode::eReadWrite);
//     writer.Write("abc", 3);                            // block: new char[256]
//   }
//   delete[] block;
//
// The forms over `const char*` text, a buffer and a zuString are read-only:
// a write reports 16479. The `char**` form follows the body's rules for a
// lent block: the caller's pointer always names the current block and the
// caller frees the last one. The trailing `int` arguments are accepted for
// compatibility and ignored. No disk file, name, buffering or encoding is
// involved. One thread at a time.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/stream/zuFixedMemoryStreamImpl.h"
#include "zu/stream/zuStreamFile.h"

class ZU_EXPORT zuFixedMemoryStreamFile : public zuStreamFile {
 public:
  // Reads the NUL-terminated `text` (its length without the NUL; null is
  // empty), borrowed: it must outlive the stream.
  zuFixedMemoryStreamFile(const char* text, int);
  // Reads `size` bytes at `buffer`, borrowed.
  zuFixedMemoryStreamFile(const char* buffer, unsigned size, int);
  // Over the lent block `*bufferRef` (see zuFixedMemoryStreamImpl).
  zuFixedMemoryStreamFile(char** bufferRef, unsigned capacity, unsigned growBy,
                          unsigned long length, int, zuFileMode::tAccess access);
  // Reads the string's bytes; the stream keeps its own copy of the string.
  zuFixedMemoryStreamFile(const zuString& text, int);
  // Each constructor reports 16656 (zuMessageIds::kStreamAllocation) when
  // the body cannot be created.

  // The number of bytes in the body (whatever sits above it).
  unsigned Length() const;
  // The body's bytes: never null, not terminated, valid until the next
  // write or size change.
  operator const char*() const;
  // As zuMemoryStreamFile::toString.
  zuString toString() const;

 private:
  // Pushes the body just created; reports 16656 when it is null.
  void Start(zuFixedMemoryStreamImpl* body);

  zuString text_;
};
