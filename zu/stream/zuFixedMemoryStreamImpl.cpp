#include "zu/stream/zuFixedMemoryStreamImpl.h"

#include <cstring>

#include "zu/core/zuException.h"
#include "zu/stream/internal/zuMemoryBody.h"
#include "zu/stream/internal/zuStreamAllocation.h"

using zu::internal::kMaxStreamBytes;

namespace {

uint32_t limited(uint64_t size) {
  return size < kMaxStreamBytes ? static_cast<uint32_t>(size) : kMaxStreamBytes;
}

}  // namespace

zuFixedMemoryStreamImpl::zuFixedMemoryStreamImpl(char* buffer, unsigned size)
    : buffer_(buffer),
      bufferRef_(&buffer_),
      ownsBlock_(false),
      capacity_(buffer != nullptr ? limited(size) : 0),
      length_(capacity_),
      position_(0),
      step_(zu::internal::kDefaultGrowStep) {}

zuFixedMemoryStreamImpl::zuFixedMemoryStreamImpl(char** bufferRef, unsigned capacity,
                                                 unsigned growBy, unsigned long length)
    : buffer_(*bufferRef),
      bufferRef_(bufferRef),
      ownsBlock_(false),
      capacity_(buffer_ != nullptr ? limited(capacity) : 0),
      length_(0),
      position_(0),
      step_(zu::internal::firstGrowStep(growBy)) {
  const bool allOnes = static_cast<uint32_t>(length) == 0xFFFFFFFFu;
  length_ = allOnes || length > capacity_ ? capacity_ : static_cast<uint32_t>(length);
}

zuFixedMemoryStreamImpl::~zuFixedMemoryStreamImpl() {
  if (ownsBlock_) delete[] buffer_;
}

unsigned zuFixedMemoryStreamImpl::Read(void* buffer, unsigned size) {
  return zu::internal::readAt(buffer_, length_, position_, buffer, size);
}

unsigned zuFixedMemoryStreamImpl::Write(const void* data, unsigned size) {
  if (data == nullptr || size == 0) return 0;
  const uint64_t end = uint64_t{position_} + size;
  MoveIfNecessary(end);
  std::memcpy(buffer_ + position_, data, size);
  position_ = static_cast<uint32_t>(end);
  if (position_ > length_) length_ = position_;
  return size;
}

zuFilePosition zuFixedMemoryStreamImpl::GetPosition() const {
  return zuFilePosition(static_cast<long>(position_), zuFilePosition::eStart);
}

void zuFixedMemoryStreamImpl::SetPosition(const zuFilePosition& position) {
  position_ = zu::internal::clampedTarget(position, position_, length_);
}

void zuFixedMemoryStreamImpl::ChangeSize(const zuFilePosition& size) {
  const int64_t requested = zu::internal::requestedSize(size, position_, length_);
  if (requested < 0) throw zuExMemory();
  const uint32_t newLength = static_cast<uint32_t>(requested);
  MoveIfNecessary(newLength);
  if (newLength > length_) std::memset(buffer_ + length_, 0, newLength - length_);
  length_ = newLength;
  if (position_ > length_) position_ = length_;
}

int zuFixedMemoryStreamImpl::AtEof() const { return position_ >= length_ ? 1 : 0; }

zuStreamFileTransformer* zuFixedMemoryStreamImpl::Clone() const { return nullptr; }

int zuFixedMemoryStreamImpl::StreamType() const { return 1; }

const char* zuFixedMemoryStreamImpl::Data() const { return buffer_ != nullptr ? buffer_ : ""; }

void zuFixedMemoryStreamImpl::MoveIfNecessary(uint64_t needed) {
  if (needed <= capacity_) return;
  if (needed > kMaxStreamBytes) throw zuExMemory();
  const uint64_t size = limited((needed + step_ - 1) / step_ * step_);
  char* block = zu::internal::streamNewChars(size);
  if (block == nullptr) throw zuExMemory();
  if (length_ > 0) std::memcpy(block, buffer_, length_);
  char* const old = buffer_;
  // A lent block is replaced in the caller's pointer; a plain buffer is the
  // caller's to keep unless it is already the body's own copy.
  const bool freeOld = bufferRef_ != &buffer_ || ownsBlock_;
  buffer_ = block;
  *bufferRef_ = block;
  ownsBlock_ = bufferRef_ == &buffer_;
  capacity_ = static_cast<uint32_t>(size);
  step_ = zu::internal::nextGrowStep(step_);
  if (freeOld) delete[] old;
}
