#include "zu/stream/zuFixedMemoryStreamFile.h"

#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuStreamAllocation.h"

// The read-only forms hand the body a non-const pointer: it writes only
// through Write and ChangeSize, which a read-only stream file refuses.

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(const char* text, int)
    : zuStreamFile(zuFileMode::eRead), body_(nullptr) {
  Start(text, zuString::StringLength(text));
}

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(const char* buffer, unsigned size, int)
    : zuStreamFile(zuFileMode::eRead), body_(nullptr) {
  Start(buffer, buffer != nullptr ? size : 0);
}

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(char** bufferRef, unsigned capacity,
                                                 unsigned growBy, unsigned long length, int,
                                                 zuFileMode::tAccess access)
    : zuStreamFile(access), body_(nullptr) {
  if (bufferRef == nullptr) ReportError(zuMessageIds::kInvalidArgument);
  body_ = zu::internal::newStreamObject<zuFixedMemoryStreamImpl>(bufferRef, capacity, growBy,
                                                                 length);
  if (body_ == nullptr) ReportError(zuMessageIds::kStreamAllocation);
  PushTransformer(body_);
}

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(const zuString& text, int)
    : zuStreamFile(zuFileMode::eRead), text_(text), body_(nullptr) {
  Start(text_, text_.Length());
}

void zuFixedMemoryStreamFile::Start(const char* buffer, unsigned size) {
  body_ = zu::internal::newStreamObject<zuFixedMemoryStreamImpl>(const_cast<char*>(buffer), size);
  if (body_ == nullptr) ReportError(zuMessageIds::kStreamAllocation);
  PushTransformer(body_);
}

unsigned zuFixedMemoryStreamFile::Length() const { return body_->Length(); }

zuFixedMemoryStreamFile::operator const char*() const { return body_->Data(); }

zuString zuFixedMemoryStreamFile::toString() const {
  return ReadAll(body_, body_->Data(), body_->Length());
}
