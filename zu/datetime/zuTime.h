// zuTime: a time of day with millisecond resolution, as a value.
//
//   zuTime start(23, 59, 59, 999);
//   long days = start.Add(0, 0, 0, 1);          // 00:00:00.000, days 1
//   zuTime read("2:30 pm");                     // 14:30:00.000
//   read.Format(zuTime::HH_MM_SS);              // "14:30:00"
//   read.Format(zuTime::HH_MM_MARKER);          // "02:30 PM"
//
// The time is one packed number ((hour*100 + minute)*100 + second)*1000 +
// millisecond in 32 bits (235959999 is the last millisecond of the day).
// Validation, in this order: an hour outside 0..23 throws message
// kInvalidHour (17234), a minute outside 0..59 kInvalidMinute (17235), a
// second outside 0..59 kInvalidSecond (17236), a millisecond outside 0..999
// kInvalidMillisecond (17237), each through ZuExThrow as a zuExFull. A
// member that throws leaves the value as it was. Every `long` argument is
// checked in 64 bits.
//
// The day-half markers of forms 4-6 and of Parse are the texts of messages
// kMorningMarker (17244) and kAfternoonMarker (17245) as
// zuPosixResourceLoader gives them at the call: each thread keeps the texts
// it looked up only while the loader's state stays the same, so an override
// loader (asked on every call), a client or secondary catalogue set or
// removed, changes them from the next call on; a text no catalogue has is
// empty (and never matches in Parse).
//
// A zuTime is a plain value: trivially copyable, no per-thread state.
// Members that change it are not for concurrent use on one object; const
// members may run concurrently.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuTime {
 public:
  // The time forms of Format, by what they show. A form with a marker shows
  // the hour on the 12-hour dial (13..23 less 12; 0 and 12 as they are),
  // then a blank and the morning marker for hours 0..12 (noon included) or
  // the afternoon marker for 13..23.
  enum zuTimeFmt : int {
    HMMSSFFF = 0,             // "%li%.2li%.2li%.3li": 140509007, 00:05:09.007 is 00509007
    HH_MM_SS_FFF = 1,         // 14:05:09:007
    HH_MM_SS = 2,             // 14:05:09
    HH_MM = 3,                // 14:05
    HH_MM_SS_FFF_MARKER = 4,  // 02:05:09:007 PM
    HH_MM_SS_MARKER = 5,      // 02:05:09 PM
    HH_MM_MARKER = 6,         // 02:05 PM
  };

  // The largest amounts Add and Subtract take: 2147483647 less 24, 60, 60
  // and 1000, so that no sum overflows 32 bits.
  static constexpr long kMaxHours = 2147483623;
  static constexpr long kMaxMinutes = 2147483587;
  static constexpr long kMaxSeconds = 2147483587;
  static constexpr long kMaxMillis = 2147482647;

  // The current local time, milliseconds included (CurrentTime(1)).
  zuTime();
  // Set(hour, minute, second, millisecond). Throws 17234-17237.
  zuTime(long hour, long minute, long second, long millisecond);
  // Set(time, local). Throws 17234.
  zuTime(int64_t time, int local);
  // 00:00:00.000, then Parse(text). Throws 17234-17237 as Parse does.
  explicit zuTime(const zuString& text);
  zuTime(const zuTime& other) = default;
  zuTime& operator=(const zuTime& other) = default;
  ~zuTime() = default;

  // Validates (see above), then stores. Throws 17234-17237.
  void Set(long hour, long minute, long second, long millisecond);
  // The time of day of `time` (seconds since 1970-01-01 00:00 UTC) in the
  // process's time zone when `local` is non-zero, else in UTC; millisecond
  // 0. Throws 17234 when the C library cannot convert the value.
  void Set(int64_t time, int local);
  // Now, local (non-zero) or UTC, milliseconds included.
  void CurrentTime(int local);

  long Hour() const { return time_ / 10000000; }
  long Minute() const { return time_ % 10000000 / 100000; }
  long Second() const { return time_ % 100000 / 1000; }
  long Millisec() const { return time_ % 1000; }
  // (hour*60 + minute)*60 + second.
  long TotalSeconds() const { return (Hour() * 60 + Minute()) * 60 + Second(); }

  // Moves the time forward by the amounts and returns the whole days that
  // carried past midnight. Each amount must lie in 0..kMax* (17234-17237 in
  // that order otherwise, the time unchanged); computed in 64 bits.
  long Add(long hours, long minutes, long seconds, long millis);
  // Moves the time back by the amounts and returns the whole days borrowed
  // before midnight. Amounts and throws as Add.
  long Subtract(long hours, long minutes, long seconds, long millis);

  // 1, 0 or -1 by the packed values.
  int Compare(const zuTime& other) const {
    return time_ > other.time_ ? 1 : (time_ < other.time_ ? -1 : 0);
  }
  // 1 when the comparison holds, else 0.
  int operator==(const zuTime& other) const { return time_ == other.time_; }
  int operator!=(const zuTime& other) const { return time_ != other.time_; }
  int operator<(const zuTime& other) const { return time_ < other.time_; }
  int operator<=(const zuTime& other) const { return time_ <= other.time_; }
  int operator>(const zuTime& other) const { return time_ > other.time_; }
  int operator>=(const zuTime& other) const { return time_ >= other.time_; }
  // The later time less the earlier, in fields; returns Compare(other).
  int Difference(const zuTime& other, long& hours, long& minutes, long& seconds,
                 long& millis) const;

  // The time in form `fmt` (see zuTimeFmt); any other number gives the
  // decimal digits of the packed value ("509007" for 00:05:09.007).
  zuString Format(zuTimeFmt fmt) const;
  // Reads a time. The text is cut into tokens at any of " ,./\-_;:'".
  // Tokens of ASCII digits fill hour, minute, second and millisecond in
  // that order ("09.5" as seconds and milliseconds is 9 s 5 ms); further
  // ones are ignored. Reading stops at the first other token: its leading
  // digits fill the next field, and when the rest of it contains the
  // afternoon marker (ASCII case ignored) an hour below 12 gets 12 added
  // ("2:30pm" is 14:30, "12:30pm" stays 12:30). Missing fields are 0, so
  // the empty text is 00:00:00.000. Returns 1 once the fields are stored
  // with Set, which throws 17234-17237 for a field out of range; returns 0,
  // the time unchanged, for a number that does not fit 32 bits.
  int Parse(const zuString& text);

  // 1000: the minimum interval, in milliseconds.
  static long GetMinimumInterval() { return 1000; }

 private:
  friend class zuDateTime;

  // The bytes FormatDigits may write, and its answer for a form it does
  // not write.
  static constexpr unsigned int kDigitsBytes = 16;
  static constexpr unsigned int kNotDigits = ~0u;
  // Writes Format(fmt) into `out` (kDigitsBytes) and returns its length
  // for the forms without a day-half marker (0..3); else kNotDigits.
  unsigned int FormatDigits(zuTimeFmt fmt, char* out) const;
  // Throws 17234-17237 for the first amount out of 0..maximum.
  static void CheckAmounts(long hours, long minutes, long seconds, long millis);
  void Store(long hour, long minute, long second, long millisecond);

  int32_t time_ = 0;
};
