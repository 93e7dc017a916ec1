// The atom hash: h = h * 127 + b over the bytes, each taken as a SIGNED
// 8-bit value, wrapping at 32 bits. 0 marks "not hashed yet", so a result of
// 0 becomes 1. The length comes out too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zu::internal {

inline uint32_t atomHash(const char* text, uint32_t& length) {
  const std::size_t size = std::strlen(text);
  const auto byte = [text](std::size_t i) {
    return static_cast<uint32_t>(static_cast<int32_t>(static_cast<signed char>(text[i])));
  };
  // Four bytes a step: h * 127^4 + b0 * 127^3 + b1 * 127^2 + b2 * 127 + b3 is
  // four single steps at once, with one multiply of h in the chain instead of four.
  uint32_t hash = 0;
  std::size_t i = 0;
  for (; i + 4 <= size; i += 4) {
    hash = hash * 260144641u +
           (byte(i) * 2048383u + byte(i + 1) * 16129u + byte(i + 2) * 127u + byte(i + 3));
  }
  for (; i < size; ++i) hash = hash * 127u + byte(i);
  length = static_cast<uint32_t>(size);
  return hash != 0 ? hash : 1u;
}

}  // namespace zu::internal
