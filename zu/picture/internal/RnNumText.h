// Making a zuString from bytes that a numeric picture produced.
#pragma once

#include <cstddef>

#include "zu/core/zuString.h"

namespace zu::internal {

// The bytes as they stand: unlike the zuString constructors, a leading
// byte-order mark is kept and never read as a UTF-16 marker.
zuString stringOfBytes(const char* bytes, size_t length);

}  // namespace zu::internal
