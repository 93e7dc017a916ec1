// zuStreamFileTransformer: one link of a stream file's chain. The bottom
// link is a body that holds the bytes (zuMemoryStreamFileImpl,
// zuFixedMemoryStreamImpl); links above it change what passes through
// (zuBase64StreamTransformer encodes what it reads from beneath).
//
//   zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
//   file.Write("Man", 3);
//   file.PushTransformer(new zuBase64StreamTransformer);  // file owns it
//   file.SetPosition(zuFilePosition());
//   char text[4];
//   file.Read(text, 4);                                   // "TWFu"
//
// This base class forwards every operation to the link beneath it (the
// "next" stream). With nothing beneath, reads and writes move 0 bytes,
// AtEof is non-zero, the position is 0 and the other operations do
// nothing. A transformer is used by one thread at a time; it takes no lock.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/stream/zuFilePosition.h"

class ZU_EXPORT zuStreamFileTransformer {
 public:
  zuStreamFileTransformer() : next_(nullptr) {}
  // A copy is not linked: the copy has nothing beneath it.
  zuStreamFileTransformer(const zuStreamFileTransformer&) : next_(nullptr) {}
  // Keeps this transformer's own link.
  zuStreamFileTransformer& operator=(const zuStreamFileTransformer&) { return *this; }
  // Does not delete the link beneath (the stream file owns the chain).
  virtual ~zuStreamFileTransformer();

  // Non-zero when no more bytes can be read.
  virtual int AtEof() const;
  // Sets the length of the stream (base + offset, see zuFilePosition).
  virtual void ChangeSize(const zuFilePosition& size);
  // Hands buffered bytes on; the memory bodies have none.
  virtual void Flush();
  // The current position, as an offset from the start.
  virtual zuFilePosition GetPosition() const;
  // Moves the current position; positions outside the data are clamped.
  virtual void SetPosition(const zuFilePosition& position);
  // Reads up to `size` bytes into `buffer`; returns how many were read, 0
  // at the end.
  virtual unsigned Read(void* buffer, unsigned size);
  // Writes `size` bytes; returns how many were written.
  virtual unsigned Write(const void* data, unsigned size);
  // Links this transformer on top of `next` (null: nothing beneath).
  virtual void Initialize(zuStreamFileTransformer* next);
  // Unlinks it; the link beneath is not deleted.
  virtual void Finalize();
  // A new unlinked copy that the caller deletes; null when the transformer
  // cannot be copied.
  virtual zuStreamFileTransformer* Clone() const;
  // The kind of stream: 0, or 1 for the fixed memory body.
  virtual int StreamType() const;

  // The link beneath, or null.
  zuStreamFileTransformer* Next() const { return next_; }

 private:
  zuStreamFileTransformer* next_;
};
