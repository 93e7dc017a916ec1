#include "zu/stream/zuMemoryStreamFileImpl.h"

#include <cstring>
#include <utility>

#include "zu/core/zuException.h"
#include "zu/stream/internal/zuMemoryBody.h"
#include "zu/stream/internal/zuStreamAllocation.h"

using zu::internal::kMaxStreamBytes;

zuMemoryStreamFileImpl::zuMemoryStreamFileImpl(unsigned initialSize, unsigned growBy)
    : buffer_(nullptr),
      length_(0),
      capacity_(0),
      position_(0),
      step_(zu::internal::firstGrowStep(growBy)) {
  if (initialSize > kMaxStreamBytes) throw zuExMemory();
  if (initialSize > 0) {
    buffer_ = static_cast<char*>(zu::internal::streamMalloc(initialSize));
    if (buffer_ == nullptr) throw zuExMemory();
    capacity_ = initialSize;
  }
}

zuMemoryStreamFileImpl::zuMemoryStreamFileImpl(const zuMemoryStreamFileImpl& other)
    : zuStreamFileTransformer(other),
      buffer_(nullptr),
      length_(other.length_),
      capacity_(other.capacity_),
      position_(other.position_),
      step_(other.step_) {
  if (capacity_ > 0) {
    buffer_ = static_cast<char*>(zu::internal::streamMalloc(capacity_));
    if (buffer_ == nullptr) throw zuExMemory();
    if (length_ > 0) std::memcpy(buffer_, other.buffer_, length_);
  }
}

zuMemoryStreamFileImpl& zuMemoryStreamFileImpl::operator=(const zuMemoryStreamFileImpl& other) {
  if (this == &other) return *this;
  zuMemoryStreamFileImpl copy(other);
  std::swap(buffer_, copy.buffer_);
  length_ = copy.length_;
  capacity_ = copy.capacity_;
  position_ = copy.position_;
  step_ = copy.step_;
  return *this;
}

zuMemoryStreamFileImpl::~zuMemoryStreamFileImpl() { zu::internal::streamFree(buffer_); }

unsigned zuMemoryStreamFileImpl::Read(void* buffer, unsigned size) {
  return zu::internal::readAt(buffer_, length_, position_, buffer, size);
}

unsigned zuMemoryStreamFileImpl::Write(const void* data, unsigned size) {
  if (data == nullptr || size == 0) return 0;
  const uint64_t end = uint64_t{position_} + size;
  ReAllocIfNecessary(end);
  std::memcpy(buffer_ + position_, data, size);
  position_ = static_cast<uint32_t>(end);
  if (position_ > length_) length_ = position_;
  return size;
}

zuFilePosition zuMemoryStreamFileImpl::GetPosition() const {
  return zuFilePosition(static_cast<long>(position_), zuFilePosition::eStart);
}

void zuMemoryStreamFileImpl::SetPosition(const zuFilePosition& position) {
  position_ = zu::internal::clampedTarget(position, position_, length_);
}

void zuMemoryStreamFileImpl::ChangeSize(const zuFilePosition& size) {
  const int64_t requested = zu::internal::requestedSize(size, position_, length_);
  if (requested < 0) throw zuExMemory();
  const uint32_t newLength = static_cast<uint32_t>(requested);
  ReAllocIfNecessary(newLength);
  if (newLength > length_) std::memset(buffer_ + length_, 0, newLength - length_);
  length_ = newLength;
  if (position_ > length_) position_ = length_;
}

int zuMemoryStreamFileImpl::AtEof() const { return position_ >= length_ ? 1 : 0; }

zuStreamFileTransformer* zuMemoryStreamFileImpl::Clone() const {
  return new zuMemoryStreamFileImpl(*this);
}

const char* zuMemoryStreamFileImpl::Data() const { return buffer_ != nullptr ? buffer_ : ""; }

void zuMemoryStreamFileImpl::ReAllocIfNecessary(uint64_t needed) {
  if (needed <= capacity_) return;
  if (needed > kMaxStreamBytes) throw zuExMemory();
  uint64_t grown = (needed / step_ + 1) * step_;
  if (grown > kMaxStreamBytes) grown = kMaxStreamBytes;
  char* block = static_cast<char*>(zu::internal::streamRealloc(buffer_, grown));
  if (block == nullptr) throw zuExMemory();
  buffer_ = block;
  capacity_ = static_cast<uint32_t>(grown);
  step_ = zu::internal::nextGrowStep(step_);
}
