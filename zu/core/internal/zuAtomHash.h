// The atom hash: h = h * 127 + b over the bytes, each taken as a SIGNED
// 8-bit value, wrapping at 32 bits. 0 marks "not hashed yet", so a result of
// 0 becomes 1. The length comes out of the same pass.
#pragma once

#include <cstdint>

namespace zu::internal {

inline uint32_t atomHash(const char* text, uint32_t& length) {
  uint32_t hash = 0;
  const char* cursor = text;
  for (; *cursor != '\0'; ++cursor) {
    hash = hash * 127u + static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(*cursor)));
  }
  length = static_cast<uint32_t>(cursor - text);
  return hash != 0 ? hash : 1u;
}

}  // namespace zu::internal
