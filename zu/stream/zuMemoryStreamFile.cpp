#include "zu/stream/zuMemoryStreamFile.h"

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuStreamAllocation.h"

zuMemoryStreamFile::zuMemoryStreamFile(int, zuFileMode::tAccess access, unsigned initialSize,
                                       unsigned growBy, int)
    : zuStreamFile(access), body_(nullptr) {
  try {
    body_ = zu::internal::newStreamObject<zuMemoryStreamFileImpl>(initialSize, growBy);
  } catch (const zuExMemory&) {
    body_ = nullptr;
  }
  if (body_ == nullptr) ReportError(zuMessageIds::kStreamAllocation);
  PushTransformer(body_);
}

unsigned zuMemoryStreamFile::Length() const { return body_->Length(); }

zuMemoryStreamFile::operator const char*() const { return body_->Data(); }

zuString zuMemoryStreamFile::toString() const {
  return ReadAll(body_, body_->Data(), body_->Length());
}
