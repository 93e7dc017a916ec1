// Test support for the date and time values: the message id a call throws
// or 0 (for tables that mix calls that throw with calls that do not), and
// the fields of std::chrono dates as the values take them.
#pragma once

#include <chrono>

#include "zu/core/zuException.h"

namespace zu::internal {

// The message id of the zuExFull that `call` throws; 0 when it throws none.
template <class Call>
unsigned thrownId(Call&& call) {
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
