// zuTime and zuDateTime with arbitrary texts and amounts.
//
// Input: seven 64-bit amounts, a form number, then the text up to the
// first NUL. zuTime::Parse returns 0 or 1, or throws 17234-17237 for a
// field out of range, and leaves the time unchanged unless it returns 1.
// Time arithmetic throws only 17234-17237, date-time arithmetic only those
// and 17185-17187, each leaving the whole value unchanged. Differences and
// every form format without throwing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zu/core/zuException.h"
#include "zu/datetime/zuDateTime.h"

namespace {

bool inRange(const zuTime& time) {
  return time.Hour() >= 0 && time.Hour() <= 23 && time.Minute() >= 0 && time.Minute() <= 59 &&
         time.Second() >= 0 && time.Second() <= 59 && time.Millisec() >= 0 &&
         time.Millisec() <= 999;
}

bool isTimeId(unsigned id) {
  return id >= 17234 && id <= 17237;
}
bool isDateId(unsigned id) {
  return id >= 17185 && id <= 17187;
}

template <class Value, class Step, class Allowed>
void step(Value& value, Step&& call, Allowed&& allowed) {
  const Value before = value;
  try {
    call();
  } catch (const zuExFull& error) {
    if (!allowed(error.FirstResId()) || value != before) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t kHeader = 7 * sizeof(int64_t) + 1;
  if (size < kHeader) return 0;
  int64_t amounts[7];
  std::memcpy(amounts, data, sizeof amounts);
  const auto form = static_cast<zuTime::zuTimeFmt>(static_cast<int8_t>(data[kHeader - 1]));
  const char* rest = reinterpret_cast<const char*>(data + kHeader);
  const std::string text(rest, strnlen(rest, size - kHeader));

  zuTime time(1, 2, 3, 4);
  int parsed = -1;
  step(
      time, [&] { parsed = time.Parse(text.c_str()); }, isTimeId);
  if (parsed == 0 && time != zuTime(1, 2, 3, 4)) std::abort();
  if (!inRange(time)) std::abort();

  zuTime moved = time;
  long days = -1;
  step(
      moved, [&] { days = moved.Add(amounts[0], amounts[1], amounts[2], amounts[3]); }, isTimeId);
  step(
      moved, [&] { days = moved.Subtract(amounts[3], amounts[2], amounts[1], amounts[0]); },
      isTimeId);
  if (!inRange(moved) || days < -1) std::abort();
  long fields[7];
  if (moved.Difference(time, fields[0], fields[1], fields[2], fields[3]) != moved.Compare(time)) {
    std::abort();
  }

  zuDateTime stamp(zuDate(2024, 2, 29), moved);
  step(
      stamp,
      [&] {
        stamp.Add(amounts[4] % 1000, amounts[5] % 1000, amounts[6], amounts[0], amounts[1],
                  amounts[2], amounts[3]);
      },
      [](unsigned id) { return isTimeId(id) || isDateId(id); });
  step(
      stamp,
      [&] {
        stamp.Subtract(amounts[6], amounts[4], amounts[5], amounts[3], amounts[2], amounts[1],
                       amounts[0]);
      },
      [](unsigned id) { return isTimeId(id) || isDateId(id); });
  try {
    const zuDateTime other(zuDate(2024, 2, 29), time);
    const int order = stamp.Difference(other, fields[0], fields[1], fields[2], fields[3], fields[4],
                                       fields[5], fields[6]);
    if (order != stamp.Compare(other)) std::abort();
    for (int each = -1; each <= 7; ++each) {
      const zuString shown = moved.Format(static_cast<zuTime::zuTimeFmt>(each)) +
                             stamp.Format(zuDate::ISO_EXTENDED, form, each & 1, each & 2);
      (void)shown;
    }
  } catch (const zuExFull& error) {
    // A day cannot be borrowed from 0000-01-01 against the empty date: no
    // other failure is possible here.
    if (error.FirstResId() != 17185 || stamp.Date().Year() != 0) std::abort();
  }
  return 0;
}
