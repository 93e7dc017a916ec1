// Test support for the date and time values: their text as std::string,
// the message id a call throws, and dates of std::chrono.
#pragma once

#include <chrono>
#include <string>

#include "zu/core/zuException.h"
#include "zu/core/zuString.h"

namespace zu::internal {

inline std::string str(const zuString& text) {
  return static_cast<const char*>(text);
}

// The message id of the zuExFull that `call` throws; 0 when it throws none.
template <class Call>
unsigned thrown(Call&& call) {
  try {
    call();
  } catch (const zuExFull& error) {
    return error.FirstResId();
  }
  return 0;
}

inline long yearOf(const std::chrono::year_month_day& date) {
  return static_cast<int>(date.year());
}
inline long monthOf(const std::chrono::year_month_day& date) {
  return static_cast<unsigned>(date.month());
}
inline long dayOf(const std::chrono::year_month_day& date) {
  return static_cast<unsigned>(date.day());
}

}  // namespace zu::internal
