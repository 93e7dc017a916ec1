#include "zu/stream/zuMemoryStreamBody.h"

#include <cstring>

#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/zuException.h"

namespace {

// base + offset, where the base is 0, `current` or `length` by the
// position's origin.
int64_t targetOf(const zuFilePosition& position, uint32_t current, uint32_t length) {
  int64_t base = 0;
  if (position.GetBase() == zuFilePosition::eCurrent) base = current;
  if (position.GetBase() == zuFilePosition::eEnd) base = length;
  return base + position.GetOffset();
}

}  // namespace

zuMemoryStreamBody::zuMemoryStreamBody(char* buffer, uint32_t capacity, uint32_t length,
                                       unsigned growBy)
    : buffer_(buffer),
      capacity_(capacity),
      length_(length),
      position_(0),
      step_(growBy == 0          ? 1024
            : growBy < kMaxBytes ? growBy
                                 : kMaxBytes) {}

zuMemoryStreamBody::~zuMemoryStreamBody() = default;

unsigned zuMemoryStreamBody::Read(void* buffer, unsigned size) {
  return ReadBytes(buffer, size);
}

unsigned zuMemoryStreamBody::Write(const void* data, unsigned size) {
  return WriteBytes(data, size);
}

unsigned zuMemoryStreamBody::ReadOutOfLine(void* buffer, unsigned size) {
  if (buffer == nullptr || position_ >= length_) return 0;
  const uint32_t available = length_ - position_;
  const unsigned count = size < available ? size : available;
  zu::internal::copyShort(static_cast<char*>(buffer), buffer_ + position_, count);
  position_ += count;
  return count;
}

unsigned zuMemoryStreamBody::WriteOutOfLine(const void* data, unsigned size) {
  if (data == nullptr || size == 0) return 0;
  const uint64_t end = uint64_t{position_} + size;
  Reserve(end);
  zu::internal::copyShort(buffer_ + position_, static_cast<const char*>(data), size);
  position_ = static_cast<uint32_t>(end);
  if (position_ > length_) length_ = position_;
  return size;
}

zuFilePosition zuMemoryStreamBody::GetPosition() const {
  return zuFilePosition(static_cast<long>(position_), zuFilePosition::eStart);
}

void zuMemoryStreamBody::SetPosition(const zuFilePosition& position) {
  const int64_t target = targetOf(position, position_, length_);
  position_ = target < 0 ? 0 : target > length_ ? length_ : static_cast<uint32_t>(target);
}

void zuMemoryStreamBody::ChangeSize(const zuFilePosition& size) {
  const int64_t target = targetOf(size, position_, length_);
  if (target > kMaxBytes) throw zuExMemory();
  const uint32_t newLength = target < 0 ? 0 : static_cast<uint32_t>(target);
  Reserve(newLength);
  if (newLength > length_) std::memset(buffer_ + length_, 0, newLength - length_);
  length_ = newLength;
  if (position_ > length_) position_ = length_;
}

int zuMemoryStreamBody::AtEof() const {
  return position_ >= length_ ? 1 : 0;
}

void zuMemoryStreamBody::Reserve(uint64_t needed) {
  if (needed <= capacity_) return;
  if (needed > kMaxBytes) throw zuExMemory();
  Grow(static_cast<uint32_t>(needed));
}
