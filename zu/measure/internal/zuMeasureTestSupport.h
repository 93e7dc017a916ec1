// Test support for the measurement classes: strings as std::string, the
// message id a call throws, and spans read from text.
#pragma once

#include <ostream>
#include <string>

#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/measure/zuRect.h"
#include "zu/measure/zuUnitSpan.h"

namespace zu::internal {

inline std::string str(const zuString& text) {
  return std::string(text, text.Length());
}

// A span read leniently, as a user's text.
inline zuUnitSpan span(const char* text) {
  return zuUnitSpan(zuString(text));
}

inline zuUnitSpan span(unsigned code, long value) {
  return zuUnitSpan(static_cast<zuUnitSpan::UnitCode>(code), value);
}

// What `call` throws: the message id and its first argument ("" when none);
// id 0 when nothing is thrown.
struct Thrown {
  unsigned short id = 0;
  std::string argument;
};

template <typename Call>
Thrown thrown(Call call) {
  try {
    call();
  } catch (const zuExFull& error) {
    return {error.FirstResId(), str(error[0].getParm(0))};
  }
  return {};
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
