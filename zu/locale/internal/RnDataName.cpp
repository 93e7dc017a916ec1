#include "zu/locale/internal/RnDataName.h"

#include <cstring>

namespace zu::internal {
namespace {

char upper(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}
char lower(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

size_t normaliseDataName(const char* name, char* out, size_t capacity) {
  size_t length = 0;
  for (; name[length] != '\0' && name[length] != '.' && length + 1 < capacity; ++length) {
    out[length] = name[length] == '-' ? '_' : name[length];
  }
  out[length] = '\0';
  const char* firstSep = static_cast<const char*>(std::memchr(out, '_', length));
  if (firstSep == nullptr) return length;
  size_t partStart = static_cast<size_t>(firstSep - out) + 1;
  size_t partEnd = partStart;
  while (partEnd < length && out[partEnd] != '_') ++partEnd;
  if (partEnd - partStart == 4) {
    out[partStart] = upper(out[partStart]);
    for (size_t i = partStart + 1; i < partEnd; ++i) out[i] = lower(out[i]);
    partStart = partEnd;
  }
  for (size_t i = partStart; i < length; ++i) out[i] = upper(out[i]);
  return length;
}

}  // namespace zu::internal
