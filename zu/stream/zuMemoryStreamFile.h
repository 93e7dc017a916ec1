// zuMemoryStreamFile: a stream file whose bytes live in a growable block
// (a zuMemoryStreamFileImpl body, pushed as its first transformer).
//
//   zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
//   file.Write("hello", 5);
//   file.Length();                            // 5
//   zuString text = file.toString();          // "hello"
//
// No disk file, name, buffering or encoding is involved. One thread at a
// time.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/stream/zuMemoryStreamFileImpl.h"
#include "zu/stream/zuStreamFile.h"

class ZU_EXPORT zuMemoryStreamFile : public zuStreamFile {
 public:
  // An empty stream with `access`, a first block of `initialSize` bytes and
  // growth step `growBy` (0 means 1024). The first `int` and `unbuffered`
  // are accepted for compatibility and ignored: writes always go straight
  // to the block. Reports 16656 (zuMessageIds::kStreamAllocation, a
  // zuExFull) when the body cannot be created.
  zuMemoryStreamFile(int, zuFileMode::tAccess access, unsigned initialSize, unsigned growBy,
                     int unbuffered);

  // The number of bytes in the body (whatever sits above it).
  unsigned Length() const;
  // The body's bytes: never null, not terminated, valid until the next
  // write or size change.
  operator const char*() const;
  // The stream's bytes as a string: the body's bytes when nothing sits
  // above it, else what reading the whole stream from its start gives (the
  // position is restored). Throws zuExMemory past zuString::kMaxLength.
  zuString toString() const;
};
