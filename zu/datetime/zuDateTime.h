// zuDateTime: a zuDate and a zuTime together, with arithmetic that carries
// across midnight into the date, and display in local time.
//
//   zuDateTime stamp(2024, 3, 1, 0, 0, 0, 0);
//   stamp.Subtract(0, 0, 0, 0, 0, 0, 1);                  // 2024-02-29 23:59:59.999
//   stamp.Format(zuDate::ISO_EXTENDED, zuTime::HH_MM_SS, 0, 0);
//   // "2024-02-29 23:59:59"
//   stamp.FormatAsLocal(zuDate::ISO_EXTENDED, zuTime::HH_MM, 1);
//   // under TZ=Europe/Berlin: "00:59 2024-03-01"
//
// The date and time are validated as zuDate and zuTime validate them
// (messages 17185-17187 and 17234-17237); a member that throws leaves the
// whole value as it was. The local-display flag that Format(dateFmt,
// timeFmt, timeFirst) follows is process-wide (FormatAsLocal(int)), read
// and written atomically; everything else is per object. Members that change
// a value are not for concurrent use on one object.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/datetime/zuDate.h"
#include "zu/datetime/zuTime.h"

namespace zu::internal {
struct CalendarFields;
}

class ZU_EXPORT zuDateTime {
 public:
  // The local date and time now, both from one reading of the clock.
  zuDateTime();
  // Copies of both halves.
  zuDateTime(const zuDate& date, const zuTime& time);
  // Set(...) on a date and time in the default locale. Throws 17185-17187,
  // 17234-17237.
  zuDateTime(long year, long month, long day, long hour, long minute, long second,
             long millisecond);
  // Both halves from one broken-down `time` (seconds since 1970-01-01 00:00
  // UTC), local when `local` is non-zero, else UTC. Throws 17185 when the
  // value cannot be converted.
  zuDateTime(int64_t time, int local);
  zuDateTime(const zuDateTime& other) = default;
  zuDateTime& operator=(const zuDateTime& other) = default;
  virtual ~zuDateTime() = default;

  // Now, local (non-zero) or UTC, from one reading of the clock.
  void CurrentDateTime(int local);
  // Validates both halves before storing either. Throws 17185-17187 (date
  // first), then 17234-17237.
  void Set(long year, long month, long day, long hour, long minute, long second, long millisecond);
  void Date(const zuDate& date) { date_ = date; }
  // zuDate::Set(time, local): the date half only. Throws 17185.
  void Date(int64_t time, int local) { date_.Set(time, local); }
  const zuDate& Date() const { return date_; }
  void Time(const zuTime& time) { time_ = time; }
  // zuTime::Set(time, local): the time half only. Throws 17234.
  void Time(int64_t time, int local) { time_.Set(time, local); }
  const zuTime& Time() const { return time_; }

  // zuTime::Add on the time, then zuDate::Add(years, months, days + the
  // carried days) on the date. Throws as those do (17234-17237 for an
  // amount out of zuTime's range, then 17185-17187), the value unchanged.
  void Add(long years, long months, long days, long hours, long minutes, long seconds, long millis);
  // zuTime::Subtract, then zuDate::Subtract(years, months, days + the
  // borrowed days). Throws as Add does, the value unchanged.
  void Subtract(long years, long months, long days, long hours, long minutes, long seconds,
                long millis);

  // The date comparison, or the time comparison when the dates are equal.
  int Compare(const zuDateTime& other) const;
  // The distance to `other`: years, months and days as zuDate::Difference
  // of the dates, hours to milliseconds as zuTime::Difference of the times;
  // when the value with the later date has the earlier time of day, that
  // date first moves back a day and the time part is 24 hours less the
  // times' difference. 2024-03-02 01:00 against 2024-03-01 23:00 is 0 years, 0
  // months, 0 days, 2 hours. Returns Compare(other). Throws 17185 only when
  // a day cannot be taken back: 0000-01-01 against the empty date.
  int Difference(const zuDateTime& other, long& years, long& months, long& days, long& hours,
                 long& minutes, long& seconds, long& millis) const;

  // The date in `dateFmt` (zuDate::Format), one blank and the time in
  // `timeFmt` (zuTime::Format); the time first when `timeFirst` is non-zero.
  // With `asLocal` non-zero the value is taken as UTC and shown in the
  // process's time zone as the C library has it at the call (tzset() and
  // localtime_r on every call, nothing cached), milliseconds kept. The
  // empty date, and a value whose local date would fall outside the years
  // 0..214748, are shown as stored.
  zuString Format(zuDate::zuDateFmt dateFmt, zuTime::zuTimeFmt timeFmt, int timeFirst,
                  int asLocal) const;
  // Format(..., the process-wide flag below).
  zuString Format(zuDate::zuDateFmt dateFmt, zuTime::zuTimeFmt timeFmt, int timeFirst) const;
  // Format(..., 1).
  zuString FormatAsLocal(zuDate::zuDateFmt dateFmt, zuTime::zuTimeFmt timeFmt, int timeFirst) const;
  // Sets the process-wide flag (initially 0) that the three-argument Format
  // follows. Any thread may call it at any time (a relaxed atomic).
  static void FormatAsLocal(int asLocal);

 private:
  // The date and time of broken-down fields; throws 17185 for a year out
  // of range.
  explicit zuDateTime(const zu::internal::CalendarFields& fields);

  zuDate date_;
  zuTime time_;
};

// The comparison of two date-times by Compare: 1 when it holds, else 0.
ZU_EXPORT int operator==(const zuDateTime& left, const zuDateTime& right);
ZU_EXPORT int operator!=(const zuDateTime& left, const zuDateTime& right);
ZU_EXPORT int operator<(const zuDateTime& left, const zuDateTime& right);
ZU_EXPORT int operator<=(const zuDateTime& left, const zuDateTime& right);
ZU_EXPORT int operator>(const zuDateTime& left, const zuDateTime& right);
ZU_EXPORT int operator>=(const zuDateTime& left, const zuDateTime& right);
