#include "zu/picture/internal/RnNumText.h"

#include <cstring>

namespace zu::internal {

zuString stringOfBytes(const char* bytes, size_t length) {
  zuString text("");
  if (length == 0) return text;
  char* chars = text.ReAlloc(static_cast<unsigned int>(length), 0);
  std::memcpy(chars, bytes, length);
  text.SetLength(static_cast<unsigned int>(length));
  return text;
}

}  // namespace zu::internal
