// Digest: one 64-bit number (FNV-1a) standing for everything a long run of
// random cases answered, so that a test can compare millions of answers
// with those an earlier engine gave, recorded as one constant.
//
//   zu::testing::Digest digest;
//   digest.add(number.format(picture));
//   digest.add(number.isValid());
//   EXPECT_EQ(digest.value, 0x4CFD99BA91CEFB35ull);
#pragma once

#include <cstddef>
#include <cstdint>

#include "zu/core/zuString.h"

namespace zu::testing {

struct Digest {
  uint64_t value = 0xCBF29CE484222325ull;

  void add(const void* bytes, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
      value = (value ^ static_cast<const unsigned char*>(bytes)[i]) * 0x100000001B3ull;
    }
  }
  // A text's bytes after a mark telling a null text from an empty one.
  void add(const zuString& text) {
    add(text.IsNull() ? "n" : "t", 1);
    add(static_cast<const char*>(text), text.Length());
  }
  template <class Scalar>
  void add(Scalar scalar) {
    add(&scalar, sizeof scalar);
  }
};

}  // namespace zu::testing
