#include "zu/stream/zuFixedMemoryStreamFile.h"

#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuStreamAllocation.h"

// The read-only forms hand the body a non-const pointer: it writes only
// through Write and ChangeSize, which a read-only stream file refuses.

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(const char* text, int)
    : zuStreamFile(zuFileMode::eRead) {
  Start(zu::internal::newStreamObject<zuFixedMemoryStreamImpl>(const_cast<char*>(text),
                                                               zuString::StringLength(text)));
}

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(const char* buffer, unsigned size, int)
    : zuStreamFile(zuFileMode::eRead) {
  Start(zu::internal::newStreamObject<zuFixedMemoryStreamImpl>(const_cast<char*>(buffer), size));
}

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(char** bufferRef, unsigned capacity,
                                                 unsigned growBy, unsigned long length, int,
                                                 zuFileMode::tAccess access)
    : zuStreamFile(access) {
  if (bufferRef == nullptr) ReportError(zuMessageIds::kInvalidArgument);
  Start(
      zu::internal::newStreamObject<zuFixedMemoryStreamImpl>(bufferRef, capacity, growBy, length));
}

zuFixedMemoryStreamFile::zuFixedMemoryStreamFile(const zuString& text, int)
    : zuStreamFile(zuFileMode::eRead), text_(text) {
  Start(zu::internal::newStreamObject<zuFixedMemoryStreamImpl>(
      const_cast<char*>(static_cast<const char*>(text_)), text_.Length()));
}

void zuFixedMemoryStreamFile::Start(zuFixedMemoryStreamImpl* body) {
  if (body == nullptr) ReportError(zuMessageIds::kStreamAllocation);
  PushBody(body);
}

unsigned zuFixedMemoryStreamFile::Length() const {
  return Body()->Length();
}

zuFixedMemoryStreamFile::operator const char*() const {
  return Body()->Data();
}

zuString zuFixedMemoryStreamFile::toString() const {
  return ReadAll();
}
