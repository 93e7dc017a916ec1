#include "zu/stream/zuMemoryStreamFile.h"

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuStreamAllocation.h"

zuMemoryStreamFile::zuMemoryStreamFile(int, zuFileMode::tAccess access, unsigned initialSize,
                                       unsigned growBy, int)
    : zuStreamFile(access) {
  zuMemoryStreamFileImpl* body = nullptr;
  try {
    body = zu::internal::newStreamObject<zuMemoryStreamFileImpl>(initialSize, growBy);
  } catch (const zuExMemory&) {
    body = nullptr;
  }
  if (body == nullptr) ReportError(zuMessageIds::kStreamAllocation);
  PushBody(body);
}

unsigned zuMemoryStreamFile::Length() const {
  return Body()->Length();
}

zuMemoryStreamFile::operator const char*() const {
  return Body()->Data();
}

zuString zuMemoryStreamFile::toString() const {
  return ReadAll();
}
