// Test support for the measurement classes: spans and points made in one
// call, and how GoogleTest prints spans.
#pragma once

#include <ostream>

#include "zu/measure/zuCoordPair.h"
#include "zu/measure/zuUnitSpan.h"

namespace zu::internal {

// A span read leniently, as a user's text.
inline zuUnitSpan span(const char* text) {
  return zuUnitSpan(zuString(text));
}

inline zuUnitSpan span(unsigned code, long value) {
  return zuUnitSpan(static_cast<zuUnitSpan::UnitCode>(code), value);
}

// A point in millipoints (unit 3).
inline zuCoordPair point(long x, long y) {
  return zuCoordPair(span(3, x), span(3, y));
}

}  // namespace zu::internal

// How GoogleTest shows a span in a failure: unit/value.
inline void PrintTo(const zuUnitSpan& value, std::ostream* out) {
  *out << static_cast<unsigned>(value.Units()) << "/" << value.Value();
}
