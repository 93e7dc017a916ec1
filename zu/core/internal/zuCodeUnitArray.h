// Allocation of the 0-terminated code-unit arrays behind zuUCS4 and zuUCS2.
#pragma once

#include <new>

#include "zu/core/zuException.h"

namespace zu::internal {

// A new array of `count` elements from the heap; throws zuExMemory rather
// than std::bad_alloc, as the rest of the library does. Free with delete[].
template <typename Unit>
Unit* newCodeUnitArray(unsigned long count) {
  Unit* units = new (std::nothrow) Unit[count];
  if (units == nullptr) throw zuExMemory();
  return units;
}

}  // namespace zu::internal
