#include "zu/stream/zuMemoryStreamFileImpl.h"

#include <cstring>
#include <utility>

#include "zu/core/zuException.h"
#include "zu/stream/internal/zuStreamAllocation.h"

zuMemoryStreamFileImpl::zuMemoryStreamFileImpl(unsigned initialSize, unsigned growBy)
    : zuMemoryStreamBody(nullptr, 0, 0, growBy) {
  if (initialSize > kMaxBytes) throw zuExMemory();
  if (initialSize > 0) {
    buffer_ = static_cast<char*>(zu::internal::streamMalloc(initialSize));
    if (buffer_ == nullptr) throw zuExMemory();
    capacity_ = initialSize;
  }
}

zuMemoryStreamFileImpl::zuMemoryStreamFileImpl(const zuMemoryStreamFileImpl& other)
    : zuMemoryStreamBody(other) {
  buffer_ = nullptr;
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
  capacity_ = copy.capacity_;
  length_ = copy.length_;
  position_ = copy.position_;
  step_ = copy.step_;
  return *this;
}

zuMemoryStreamFileImpl::~zuMemoryStreamFileImpl() {
  zu::internal::streamFree(buffer_);
}

zuStreamFileTransformer* zuMemoryStreamFileImpl::Clone() const {
  return new zuMemoryStreamFileImpl(*this);
}

void zuMemoryStreamFileImpl::ReAllocIfNecessary(uint32_t needed) {
  if (needed <= capacity_) return;
  uint64_t grown = (uint64_t{needed} / step_ + 1) * step_;
  if (grown > kMaxBytes) grown = kMaxBytes;
  char* block = static_cast<char*>(zu::internal::streamRealloc(buffer_, grown));
  if (block == nullptr) throw zuExMemory();
  buffer_ = block;
  capacity_ = static_cast<uint32_t>(grown);
  DoubleStep();
}
