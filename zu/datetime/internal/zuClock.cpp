#include "zu/datetime/internal/zuClock.h"

#include <chrono>
#include <ctime>

namespace zu::internal {

namespace {

bool breakDownInto(std::time_t seconds, bool local, CalendarFields& out) {
  // localtime_r does not look at TZ again by itself: a zone changed while
  // the process runs is seen only after tzset().
  if (local) tzset();
  std::tm broken{};
  if ((local ? localtime_r(&seconds, &broken) : gmtime_r(&seconds, &broken)) == nullptr) {
    return false;
  }
  out.year = int64_t{broken.tm_year} + 1900;
  out.month = broken.tm_mon + 1;
  out.day = broken.tm_mday;
  out.hour = broken.tm_hour;
  out.minute = broken.tm_min;
  out.second = broken.tm_sec < 60 ? broken.tm_sec : 59;
  return true;
}

}  // namespace

CalendarFields readClock(bool local) {
  using std::chrono::milliseconds;
  const auto now = std::chrono::time_point_cast<milliseconds>(std::chrono::system_clock::now());
  const int64_t millis = now.time_since_epoch().count();
  // Floor division: an instant before 1970 still has a positive millisecond.
  int64_t seconds = millis / 1000;
  int millisecond = static_cast<int>(millis % 1000);
  if (millisecond < 0) {
    millisecond += 1000;
    --seconds;
  }
  CalendarFields fields;
  breakDownInto(static_cast<std::time_t>(seconds), local, fields);
  fields.millisecond = millisecond;
  return fields;
}

bool breakDown(int64_t seconds, bool local, CalendarFields& out) {
  CalendarFields fields;
  if (!breakDownInto(static_cast<std::time_t>(seconds), local, fields)) return false;
  out = fields;
  return true;
}

bool universalToLocal(const CalendarFields& utc, CalendarFields& local) {
  std::tm broken{};
  broken.tm_year = static_cast<int>(utc.year - 1900);
  broken.tm_mon = utc.month - 1;
  broken.tm_mday = utc.day;
  broken.tm_hour = utc.hour;
  broken.tm_min = utc.minute;
  broken.tm_sec = utc.second;
  const std::time_t seconds = timegm(&broken);
  CalendarFields fields;
  if (seconds == -1 && !(utc.year == 1969 && utc.month == 12 && utc.day == 31)) return false;
  if (!breakDownInto(seconds, true, fields)) return false;
  fields.millisecond = utc.millisecond;
  local = fields;
  return true;
}

}  // namespace zu::internal
