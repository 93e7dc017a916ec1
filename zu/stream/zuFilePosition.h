// zuFilePosition: a place in a stream, as a signed offset from a base (the
// start, the current position or the end), and zuFileMode, the access a
// stream file is opened with.
//
//   stream.SetPosition(zuFilePosition(-4, zuFilePosition::eEnd));  // 4 bytes before the end
//   stream.SetPosition(zuFilePosition());                           // the start
//
// The offset is held in 32 bits: a `long` beyond -2147483648..2147483647 is
// clamped to that range. Positions are plain values; any thread may use its
// own copies.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"

class ZU_EXPORT zuFilePosition {
 public:
  enum PositionBase { eStart = 0, eCurrent = 1, eEnd = 2 };

  // Offset 0 from the start.
  zuFilePosition() : offset_(0), base_(eStart) {}
  // `offset` (clamped to 32 bits) from `base`.
  zuFilePosition(long offset, PositionBase base) : offset_(Clamp(offset)), base_(base) {}

  long GetOffset() const { return offset_; }
  PositionBase GetBase() const { return base_; }
  void SetOffset(long offset) { offset_ = Clamp(offset); }
  void SetBase(PositionBase base) { base_ = base; }

  // Equal when offset and base are.
  bool operator==(const zuFilePosition& other) const {
    return offset_ == other.offset_ && base_ == other.base_;
  }
  bool operator!=(const zuFilePosition& other) const { return !(*this == other); }

 private:
  static int32_t Clamp(long offset) {
    if (offset > INT32_MAX) return INT32_MAX;
    if (offset < INT32_MIN) return INT32_MIN;
    return static_cast<int32_t>(offset);
  }

  int32_t offset_;
  PositionBase base_;
};

// The access of a stream file: reading, writing or both.
class ZU_EXPORT zuFileMode {
 public:
  enum tAccess { eRead = 1, eWrite = 2, eReadWrite = 3 };
};
