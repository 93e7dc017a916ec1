// zuMemoryStreamBody: what the two memory bodies share (the bytes, their
// length, the position and the growth step, and every stream operation on
// them); zuMemoryStreamFileImpl and zuFixedMemoryStreamImpl differ only in
// how they get a larger block.
//
//   zuMemoryStreamFileImpl body(0, 0);      // a zuMemoryStreamBody
//   body.Write("abc", 3);
//   body.SetPosition(zuFilePosition(-2, zuFilePosition::eEnd));
//   char last[2];
//   body.Read(last, 2);                      // "bc"
//
// A body holds at most 2147483647 bytes. Positions outside the data are
// clamped, never refused. One thread at a time.
#pragma once

#include <cstdint>
#include <cstring>

#include "zu/core/zuExport.h"
#include "zu/stream/zuStreamFileTransformer.h"

class ZU_EXPORT zuMemoryStreamBody : public zuStreamFileTransformer {
 public:
  // The most bytes a body holds.
  static constexpr uint32_t kMaxBytes = 2147483647;

  ~zuMemoryStreamBody() override;

  // Copies up to `size` bytes from the position on and advances; returns
  // the bytes copied, 0 at the end.
  unsigned Read(void* buffer, unsigned size) override;
  // Writes `size` bytes at the position, growing the block as the body's
  // rule says, advances and returns `size`. Throws zuExMemory (nothing
  // written) past kMaxBytes or when no larger block can be had.
  unsigned Write(const void* data, unsigned size) override;
  // The position, as an offset from the start.
  zuFilePosition GetPosition() const override;
  // The position becomes base + offset (base 0, the position or the length
  // by origin), clamped to 0..length.
  void SetPosition(const zuFilePosition& position) override;
  // The length becomes base + offset (a negative size is 0), growing as a
  // write would; bytes added read as zero; a position past the new end
  // moves to it. Throws zuExMemory past kMaxBytes or when no larger block
  // can be had, changing nothing.
  void ChangeSize(const zuFilePosition& size) override;
  // Non-zero when the position is at the end of the data.
  int AtEof() const override;

  // Read and Write without the virtual call, for the stream files. Small
  // copies that fit are inline, so that a caller's small fixed-size pieces
  // need no call at all; larger ones go to the C library's memcpy, and
  // empty ones (the block may still be null) out of line too.
  unsigned ReadBytes(void* buffer, unsigned size) {
    const uint32_t available = length_ - position_;  // position_ <= length_ always
    if (size - 1 >= kInlineCopy || size > available || buffer == nullptr) {
      return ReadOutOfLine(buffer, size);
    }
    std::memcpy(buffer, buffer_ + position_, size);
    position_ += size;
    return size;
  }
  unsigned WriteBytes(const void* data, unsigned size) {
    if (size - 1 >= kInlineCopy || size > capacity_ - position_ || data == nullptr) {
      return WriteOutOfLine(data, size);
    }
    std::memcpy(buffer_ + position_, data, size);
    position_ += size;
    if (position_ > length_) length_ = position_;
    return size;
  }

  // The bytes held; never null, not terminated, valid until the block
  // changes (a write or size change that grows it).
  const char* Data() const { return buffer_ != nullptr ? buffer_ : ""; }
  // The number of bytes held.
  unsigned Length() const { return length_; }
  // The size of the block.
  unsigned Capacity() const { return capacity_; }

 protected:
  // Over `length` bytes in `buffer` of `capacity` bytes, position 0, growth
  // step `growBy` (0 means 1024, cut to kMaxBytes).
  zuMemoryStreamBody(char* buffer, uint32_t capacity, uint32_t length, unsigned growBy);
  zuMemoryStreamBody(const zuMemoryStreamBody& other) = default;
  zuMemoryStreamBody& operator=(const zuMemoryStreamBody& other) = default;

  // Makes the block hold at least `needed` bytes (above the capacity, at
  // most kMaxBytes), the first `length_` bytes kept; sets buffer_ and
  // capacity_ and doubles the step. Throws zuExMemory, changing nothing.
  virtual void Grow(uint32_t needed) = 0;
  // The step after a growth: doubled, up to kMaxBytes.
  void DoubleStep() { step_ = step_ < kMaxBytes / 2 ? step_ * 2 : kMaxBytes; }

  char* buffer_;
  uint32_t capacity_;
  uint32_t length_;
  uint32_t position_;
  uint32_t step_;

 private:
  // Grows when `needed` passes the capacity; throws past kMaxBytes.
  void Reserve(uint64_t needed);
  static constexpr unsigned kInlineCopy = 64;

  // The rest of ReadBytes and WriteBytes: large copies, a read cut at the
  // end, a write that grows the block, null pointers.
  unsigned ReadOutOfLine(void* buffer, unsigned size);
  unsigned WriteOutOfLine(const void* data, unsigned size);
};
