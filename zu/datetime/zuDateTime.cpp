#include "zu/datetime/zuDateTime.h"

#include <atomic>
#include <cstring>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/datetime/internal/zuClock.h"

namespace {

std::atomic<int> gFormatAsLocal{0};

zu::internal::CalendarFields brokenDown(int64_t time, int local) {
  zu::internal::CalendarFields fields;
  if (!zu::internal::breakDown(time, local != 0, fields)) ZuExThrow(zuMessageIds::kInvalidYear);
  return fields;
}

}  // namespace

zuDateTime::zuDateTime() : zuDateTime(zu::internal::readClock(true)) {}

zuDateTime::zuDateTime(const zu::internal::CalendarFields& fields)
    : date_(fields.year, fields.month, fields.day),
      time_(fields.hour, fields.minute, fields.second, fields.millisecond) {}

zuDateTime::zuDateTime(const zuDate& date, const zuTime& time) : date_(date), time_(time) {}

zuDateTime::zuDateTime(long year, long month, long day, long hour, long minute, long second,
                       long millisecond)
    : date_(year, month, day), time_(hour, minute, second, millisecond) {}

zuDateTime::zuDateTime(int64_t time, int local) : zuDateTime(brokenDown(time, local)) {}

void zuDateTime::CurrentDateTime(int local) {
  const zu::internal::CalendarFields now = zu::internal::readClock(local != 0);
  Set(now.year, now.month, now.day, now.hour, now.minute, now.second, now.millisecond);
}

void zuDateTime::Set(long year, long month, long day, long hour, long minute, long second,
                     long millisecond) {
  zuDate date(date_);
  date.Set(year, month, day);
  zuTime time(time_);
  time.Set(hour, minute, second, millisecond);
  date_ = date;
  time_ = time;
}

void zuDateTime::Add(long years, long months, long days, long hours, long minutes, long seconds,
                     long millis) {
  zuTime time(time_);
  const long carry = time.Add(hours, minutes, seconds, millis);
  zuDate date(date_);
  date.AddCarry(years, months, days, carry);
  date_ = date;
  time_ = time;
}

void zuDateTime::Subtract(long years, long months, long days, long hours, long minutes,
                          long seconds, long millis) {
  zuTime time(time_);
  const long borrow = time.Subtract(hours, minutes, seconds, millis);
  zuDate date(date_);
  date.SubtractBorrow(years, months, days, borrow);
  date_ = date;
  time_ = time;
}

int zuDateTime::Compare(const zuDateTime& other) const {
  const int order = date_.Compare(other.date_);
  return order != 0 ? order : time_.Compare(other.time_);
}

int zuDateTime::Difference(const zuDateTime& other, long& years, long& months, long& days,
                           long& hours, long& minutes, long& seconds, long& millis) const {
  const int dateOrder = date_.Compare(other.date_);
  const int timeOrder = time_.Compare(other.time_);
  zuDate mine(date_);
  zuDate theirs(other.date_);
  // The later date with the earlier time of day has not yet reached a whole
  // day past the other: one is borrowed from it.
  const bool borrowed = (dateOrder > 0 && timeOrder < 0) || (dateOrder < 0 && timeOrder > 0);
  if (borrowed) (dateOrder > 0 ? mine : theirs).Subtract(0, 0, 1);
  mine.Difference(theirs, years, months, days);
  time_.Difference(other.time_, hours, minutes, seconds, millis);
  if (borrowed) {
    zuTime rest(0, 0, 0, 0);
    rest.Subtract(hours, minutes, seconds, millis);
    hours = rest.Hour();
    minutes = rest.Minute();
    seconds = rest.Second();
    millis = rest.Millisec();
  }
  return dateOrder != 0 ? dateOrder : timeOrder;
}

zuString zuDateTime::Format(zuDate::zuDateFmt dateFmt, zuTime::zuTimeFmt timeFmt, int timeFirst,
                            int asLocal) const {
  zuDate date(date_);
  zuTime time(time_);
  if (asLocal != 0 && date_.date_ != 0) {
    const zu::internal::CalendarFields utc{date_.Year(),
                                           static_cast<int>(date_.Month()),
                                           static_cast<int>(date_.Day()),
                                           static_cast<int>(time_.Hour()),
                                           static_cast<int>(time_.Minute()),
                                           static_cast<int>(time_.Second()),
                                           static_cast<int>(time_.Millisec())};
    zu::internal::CalendarFields local;
    if (zu::internal::universalToLocal(utc, local) && local.year >= 0 &&
        local.year <= zuDate::kMaxYear) {
      date.Set(local.year, local.month, local.day);
      time.Set(local.hour, local.minute, local.second, local.millisecond);
    }
  }
  // Numbers only: both parts go into one buffer and one string.
  char dateDigits[zuDate::kDigitsBytes];
  char timeDigits[zuTime::kDigitsBytes];
  const unsigned int dateLength = date.FormatDigits(dateFmt, dateDigits);
  const unsigned int timeLength = time.FormatDigits(timeFmt, timeDigits);
  if (dateLength != zuDate::kNotDigits && timeLength != zuTime::kNotDigits) {
    char text[zuDate::kDigitsBytes + 1 + zuTime::kDigitsBytes];
    const char* first = timeFirst != 0 ? timeDigits : dateDigits;
    const unsigned int firstLength = timeFirst != 0 ? timeLength : dateLength;
    const char* second = timeFirst != 0 ? dateDigits : timeDigits;
    const unsigned int secondLength = timeFirst != 0 ? dateLength : timeLength;
    std::memcpy(text, first, firstLength);
    text[firstLength] = ' ';
    std::memcpy(text + firstLength + 1, second, secondLength);
    return zuString::FromBytes(text, firstLength + 1 + secondLength);
  }
  const zuString dateText = date.Format(dateFmt);
  const zuString timeText = time.Format(timeFmt);
  zuString out = timeFirst != 0 ? timeText : dateText;
  out += ' ';
  out += timeFirst != 0 ? dateText : timeText;
  return out;
}

zuString zuDateTime::Format(zuDate::zuDateFmt dateFmt, zuTime::zuTimeFmt timeFmt,
                            int timeFirst) const {
  return Format(dateFmt, timeFmt, timeFirst, gFormatAsLocal.load(std::memory_order_relaxed));
}

zuString zuDateTime::FormatAsLocal(zuDate::zuDateFmt dateFmt, zuTime::zuTimeFmt timeFmt,
                                   int timeFirst) const {
  return Format(dateFmt, timeFmt, timeFirst, 1);
}

void zuDateTime::FormatAsLocal(int asLocal) {
  gFormatAsLocal.store(asLocal, std::memory_order_relaxed);
}

int operator==(const zuDateTime& left, const zuDateTime& right) {
  return left.Compare(right) == 0;
}
int operator!=(const zuDateTime& left, const zuDateTime& right) {
  return left.Compare(right) != 0;
}
int operator<(const zuDateTime& left, const zuDateTime& right) {
  return left.Compare(right) < 0;
}
int operator<=(const zuDateTime& left, const zuDateTime& right) {
  return left.Compare(right) <= 0;
}
int operator>(const zuDateTime& left, const zuDateTime& right) {
  return left.Compare(right) > 0;
}
int operator>=(const zuDateTime& left, const zuDateTime& right) {
  return left.Compare(right) >= 0;
}
