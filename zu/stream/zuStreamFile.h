// zuStreamFile: the front end of a stream, which owns a chain of
// transformers and acts on its top. The first transformer pushed is the
// body that holds the bytes; each one pushed later sits on top of the
// previous one. zuMemoryStreamFile and zuFixedMemoryStreamFile set up a
// memory body; a caller may push more (zuBase64StreamTransformer).
//
//   zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
//   file.Write("Man", 3);
//   file.PushTransformer(new zuBase64StreamTransformer);
//   zuString text = file.toString();                // "TWFu"
//
// Errors are reported through ReportError, which throws zuExFull with the
// message id: 16479 (zuMessageIds::kInvalidArgument) for a read without
// read access, a write or size change without write access, or a null
// transformer; nothing changes then. A stream file is used by one thread at
// a time and takes no lock.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/stream/zuFilePosition.h"
#include "zu/stream/zuMemoryStreamBody.h"
#include "zu/stream/zuStreamFileTransformer.h"

class ZU_EXPORT zuStreamFile {
 public:
  // An empty chain with the given access.
  explicit zuStreamFile(zuFileMode::tAccess access);
  zuStreamFile(const zuStreamFile&) = delete;
  zuStreamFile& operator=(const zuStreamFile&) = delete;
  // Finalizes and deletes every transformer, top down.
  virtual ~zuStreamFile();

  // Takes ownership of `transformer` (a `new` object in no other chain)
  // and links it on top of the chain. Reports 16479 for null.
  void PushTransformer(zuStreamFileTransformer* transformer);

  // Reads up to `size` bytes from the top; returns how many were read, 0 at
  // the end. Reports 16479 without read access.
  unsigned Read(void* buffer, unsigned size) {
    if (body_ != nullptr && top_ == body_ && (access_ & zuFileMode::eRead) != 0) {
      return body_->ReadBytes(buffer, size);
    }
    return ReadThroughChain(buffer, size);
  }
  // Writes through the top; returns how many bytes were written. Reports
  // 16479 without write access; a body throws zuExMemory when it cannot
  // grow.
  unsigned Write(const void* data, unsigned size) {
    if (body_ != nullptr && top_ == body_ && (access_ & zuFileMode::eWrite) != 0) {
      return body_->WriteBytes(data, size);
    }
    return WriteThroughChain(data, size);
  }
  // The position of the top, as an offset from the start.
  zuFilePosition GetPosition() const;
  void SetPosition(const zuFilePosition& position);
  // Sets the length (see the body); reports 16479 without write access.
  void ChangeSize(const zuFilePosition& size);
  // Non-zero when the top has nothing more to read (also with no chain).
  int AtEof() const;
  void Flush();

  zuFileMode::tAccess Access() const { return access_; }

 protected:
  // Throws zuExFull with message `id`; an override must throw as well.
  [[noreturn]] virtual void ReportError(unsigned short id);
  // The top of the chain, or null.
  zuStreamFileTransformer* Top() const { return top_; }
  // Pushes `body` (owned, not null) as the first transformer. While it is
  // the top, reads and writes go to it without a virtual call.
  void PushBody(zuMemoryStreamBody* body);
  // The body pushed by PushBody, or null.
  zuMemoryStreamBody* Body() const { return body_; }
  // The stream's bytes as a string: the body's bytes when it is the top,
  // else what reading through the chain from the start in 1024-byte chunks
  // gives, the position restored. Throws zuExMemory past
  // zuString::kMaxLength.
  zuString ReadAll() const;

 private:
  // Read and Write when the body is not the top, or access is missing.
  unsigned ReadThroughChain(void* buffer, unsigned size);
  unsigned WriteThroughChain(const void* data, unsigned size);

  zuStreamFileTransformer* top_;
  zuMemoryStreamBody* body_;
  zuFileMode::tAccess access_;
};
