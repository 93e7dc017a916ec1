// What the two memory bodies share: the size limit, the growth step, and
// the arithmetic of positions, reads and size changes over a block of bytes.
#pragma once

#include <cstdint>
#include <cstring>

#include "zu/stream/zuFilePosition.h"

namespace zu::internal {

// The most bytes a memory body holds.
inline constexpr uint32_t kMaxStreamBytes = 2147483647;
// The growth step used when none is given.
inline constexpr uint32_t kDefaultGrowStep = 1024;

inline uint32_t firstGrowStep(unsigned growBy) {
  if (growBy == 0) return kDefaultGrowStep;
  return growBy < kMaxStreamBytes ? growBy : kMaxStreamBytes;
}

// The step doubles after each growth until it reaches the size limit.
inline uint32_t nextGrowStep(uint32_t step) {
  return step < kMaxStreamBytes / 2 ? step * 2 : kMaxStreamBytes;
}

// base + offset, where the base is 0, `current` or `length` by the
// position's origin; not clamped.
inline int64_t targetOf(const zuFilePosition& position, uint32_t current, uint32_t length) {
  int64_t base = 0;
  if (position.GetBase() == zuFilePosition::eCurrent) base = current;
  if (position.GetBase() == zuFilePosition::eEnd) base = length;
  return base + position.GetOffset();
}

// The target clamped to 0..length.
inline uint32_t clampedTarget(const zuFilePosition& position, uint32_t current, uint32_t length) {
  const int64_t target = targetOf(position, current, length);
  if (target < 0) return 0;
  return target > length ? length : static_cast<uint32_t>(target);
}

// Copies up to `size` bytes from `bytes` at `position` (cut at `length`)
// into `buffer` and advances the position; returns the bytes copied.
inline unsigned readAt(const char* bytes, uint32_t length, uint32_t& position, void* buffer,
                       unsigned size) {
  if (buffer == nullptr || position >= length) return 0;
  const uint32_t available = length - position;
  const unsigned count = size < available ? size : available;
  std::memcpy(buffer, bytes + position, count);
  position += count;
  return count;
}

// The length a size change asks for: negative gives 0; -1 when it passes
// the size limit.
inline int64_t requestedSize(const zuFilePosition& size, uint32_t current, uint32_t length) {
  const int64_t target = targetOf(size, current, length);
  if (target < 0) return 0;
  return target > kMaxStreamBytes ? -1 : target;
}

}  // namespace zu::internal
