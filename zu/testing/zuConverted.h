// converted: the bytes a converter writes for a text read by another, as a
// std::string, so that converter tests compare results in one line.
//
//   converted(*zuCharConverter::UTF16LE(), *zuCharConverter::UTF8(), "A");   // "A\0" (2 bytes)
//
// The terminating NUL the converter may add is not part of the result.
#pragma once

#include <string>

#include "zu/core/zuCharConverter.h"

namespace zu::testing {

// Converts `in` from `from` to `to` into a buffer of `outBytes` (by default
// ample for any text) and returns what was written; "" when nothing was.
inline std::string converted(const zuCharConverter& to, const zuCharConverter& from,
                             const std::string& in, unsigned int outBytes = 0) {
  std::string out(outBytes != 0 ? outBytes : in.size() * 6 + 16, '\x7F');
  const unsigned int written = to.Convert(out.data(), static_cast<unsigned int>(out.size()), &from,
                                          in.data(), static_cast<unsigned int>(in.size()));
  out.resize(written);
  return out;
}

}  // namespace zu::testing
