// Test support for the measurement classes: spans made in one call, and how
// GoogleTest prints spans, points and rectangles.
#pragma once

#include <ostream>

#include "zu/measure/zuRect.h"
#include "zu/measure/zuUnitSpan.h"

namespace zu::internal {

// A span read leniently, as a user's text.
inline zuUnitSpan span(const char* text) {
  return zuUnitSpan(zuString(text));
}

inline zuUnitSpan span(unsigned code, long value) {
  return zuUnitSpan(static_cast<zuUnitSpan::UnitCode>(code), value);
}

}  // namespace zu::internal

// How GoogleTest shows the values in a failure: unit/value.
inline void PrintTo(const zuUnitSpan& value, std::ostream* out) {
  *out << static_cast<unsigned>(value.Units()) << "/" << value.Value();
}

inline void PrintTo(const zuCoordPair& point, std::ostream* out) {
  *out << "(";
  PrintTo(point.X(), out);
  *out << ", ";
  PrintTo(point.Y(), out);
  *out << ")";
}

inline void PrintTo(const zuRect& rect, std::ostream* out) {
  PrintTo(rect.TopLeft(), out);
  *out << "-";
  PrintTo(rect.BottomRight(), out);
}
