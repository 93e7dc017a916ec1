#include "zu/core/internal/zuStartupState.h"

#include <atomic>
#include <cstring>

namespace zu::internal {

namespace {

using Buffer = char[kMismatchTextLength + 1];

// Plain buffers: they are written while start-up may be failing, so they
// must need no allocation.
Buffer versionRecord;
Buffer componentRecord;
std::atomic<int> initialised{0};

// Copies `text`, cut to the buffer's size without splitting a UTF-8
// sequence.
void keep(Buffer& buffer, const char* text) {
  const char* source = text != nullptr ? text : "";
  size_t length = strnlen(source, kMismatchTextLength + 1);
  if (length > kMismatchTextLength) {
    length = kMismatchTextLength;
    while (length > 0 && (static_cast<unsigned char>(source[length]) & 0xC0) == 0x80) --length;
  }
  std::memcpy(buffer, source, length);
  buffer[length] = '\0';
}

}  // namespace

bool libraryInitialised() {
  return initialised.load() != 0;
}

void markLibraryInitialised() {
  initialised = 1;
}

bool mismatchRecorded() {
  return versionRecord[0] != '\0';
}

void recordMismatch(const char* version, const char* component) {
  if (mismatchRecorded()) return;
  keep(versionRecord, version);
  keep(componentRecord, component);
}

const char* recordedVersion() {
  return versionRecord;
}

const char* recordedComponent() {
  return componentRecord;
}

void resetStartupForTesting() {
  initialised = 0;
  versionRecord[0] = '\0';
  componentRecord[0] = '\0';
}

}  // namespace zu::internal
