#include "zu/core/zuExVersionMismatch.h"

#include <cstring>

namespace {

using Buffer = char[zuExVersionMismatchImpl::kMaxTextLength + 1];

Buffer versionBuffer;
Buffer componentBuffer;

// Copies `text` into `buffer`, cut to the buffer's capacity without splitting
// a UTF-8 sequence, and returns the buffer.
const char* keep(Buffer& buffer, const char* text) {
  const char* source = text ? text : "";
  size_t length = strnlen(source, zuExVersionMismatchImpl::kMaxTextLength + 1);
  if (length > zuExVersionMismatchImpl::kMaxTextLength) {
    length = zuExVersionMismatchImpl::kMaxTextLength;
    while (length > 0 && (static_cast<unsigned char>(source[length]) & 0xC0) == 0x80) --length;
  }
  std::memmove(buffer, source, length);  // `text` may be this buffer
  buffer[length] = '\0';
  return buffer;
}

}  // namespace

zuExVersionMismatch::~zuExVersionMismatch() = default;

zuExVersionMismatchImpl::zuExVersionMismatchImpl(const char* requiredVersion, const char* component)
    : version_(keep(versionBuffer, requiredVersion)),
      component_(keep(componentBuffer, component)) {}

zuExVersionMismatchImpl::~zuExVersionMismatchImpl() = default;
