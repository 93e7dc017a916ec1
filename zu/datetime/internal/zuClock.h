// The one place where zuDate, zuTime and zuDateTime read the system clock
// and break a time value down into calendar fields.
//
//   zu::internal::CalendarFields now = zu::internal::readClock(true);
//   now.year;                          // 2024, local time
//   zu::internal::CalendarFields epoch;
//   zu::internal::breakDown(0, false, epoch);   // 1970-01-01 00:00:00.000
#pragma once

#include <cstdint>

namespace zu::internal {

// A broken-down instant: proleptic Gregorian date and time of day.
struct CalendarFields {
  int64_t year = 0;
  int month = 0;        // 1..12
  int day = 0;          // 1..31
  int hour = 0;         // 0..23
  int minute = 0;       // 0..59
  int second = 0;       // 0..59 (a leap second reads as 59)
  int millisecond = 0;  // 0..999
};

// Now, from std::chrono::system_clock, in the process's time zone when
// `local` is true (tzset(), then localtime_r, so that a TZ changed while
// the process runs is honoured) or in universal time (gmtime_r); the
// milliseconds are kept. Safe from any thread.
CalendarFields readClock(bool local);

// `seconds` since 1970-01-01 00:00 UTC broken down the same way, with
// millisecond 0. False, `out` unchanged, when the C library cannot convert
// the value (a year beyond its range).
bool breakDown(int64_t seconds, bool local, CalendarFields& out);

// The universal time `utc` shown in the process's time zone as the C
// library has it now: tzset(), timegm, localtime_r, nothing cached; the
// milliseconds are kept. False, `local` unchanged, when the C library
// cannot convert the value.
bool universalToLocal(const CalendarFields& utc, CalendarFields& local);

}  // namespace zu::internal
