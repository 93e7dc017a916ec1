#include "zu/stream/zuFixedMemoryStreamImpl.h"

#include <cstring>

#include "zu/core/zuException.h"
#include "zu/stream/internal/zuStreamAllocation.h"

namespace {

uint32_t limited(uint64_t size) {
  return size < zuMemoryStreamBody::kMaxBytes ? static_cast<uint32_t>(size)
                                              : zuMemoryStreamBody::kMaxBytes;
}

// The length the lent-block form starts with (see the header).
uint32_t startLength(unsigned long length, uint32_t capacity) {
  const bool allOnes = static_cast<uint32_t>(length) == 0xFFFFFFFFu;
  return allOnes || length > capacity ? capacity : static_cast<uint32_t>(length);
}

}  // namespace

zuFixedMemoryStreamImpl::zuFixedMemoryStreamImpl(char* buffer, unsigned size)
    : zuMemoryStreamBody(buffer, buffer != nullptr ? limited(size) : 0,
                         buffer != nullptr ? limited(size) : 0, 0),
      bufferRef_(&buffer_),
      ownsBlock_(false) {}

zuFixedMemoryStreamImpl::zuFixedMemoryStreamImpl(char** bufferRef, unsigned capacity,
                                                 unsigned growBy, unsigned long length)
    : zuMemoryStreamBody(*bufferRef, *bufferRef != nullptr ? limited(capacity) : 0,
                         startLength(length, *bufferRef != nullptr ? limited(capacity) : 0),
                         growBy),
      bufferRef_(bufferRef),
      ownsBlock_(false) {}

zuFixedMemoryStreamImpl::~zuFixedMemoryStreamImpl() {
  if (ownsBlock_) delete[] buffer_;
}

zuStreamFileTransformer* zuFixedMemoryStreamImpl::Clone() const {
  return nullptr;
}

int zuFixedMemoryStreamImpl::StreamType() const {
  return 1;
}

void zuFixedMemoryStreamImpl::Grow(uint32_t needed) {
  const uint64_t size = limited((uint64_t{needed} + step_ - 1) / step_ * step_);
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
  DoubleStep();
  if (freeOld) delete[] old;
}
