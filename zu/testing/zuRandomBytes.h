// randomBytes: bytes without structure for codec and stream tests, the same
// on every run for the same seed.
//
//   const std::string bytes = zu::testing::randomBytes(700, 7);
#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace zu::testing {

// `count` bytes drawn from std::mt19937 seeded with `seed`.
inline std::string randomBytes(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::string bytes(count, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

}  // namespace zu::testing
