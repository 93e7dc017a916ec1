// zuDate with arbitrary texts, formats, locales, splits and amounts.
//
// Input: a format number (any int8, so numbers outside 1..31 too), a
// locale choice, a century split, then four 64-bit amounts (years, months,
// days, a DaysSince1900 count) and the text, up to the first NUL. A parse
// that succeeds must hold fields in range and format in every format
// without throwing; the arithmetic may throw only messages 17185-17187,
// and a throw must leave the date as it was.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "zu/core/zuException.h"
#include "zu/datetime/zuDate.h"

namespace {

const char* const kLocales[] = {"en_US", "fr_FR", "de_DE", "ja", "ko", "ja_JP", "ar_SA", "th_TH"};

bool inRange(const zuDate& date) {
  return date.Year() >= 0 && date.Year() <= zuDate::kMaxYear && date.Month() >= 1 &&
         date.Month() <= 12 && date.Day() >= 1 &&
         date.Day() <= zuDate::DaysInMonth(date.Year(), date.Month());
}

// Runs one arithmetic step: on success the date is in range, on a throw
// the id is a date's and the date unchanged.
template <class Step>
void step(zuDate& date, Step&& call) {
  const zuDate before = date;
  try {
    call();
    if (!inRange(date)) std::abort();
  } catch (const zuExFull& error) {
    const unsigned id = error.FirstResId();
    if (id < 17185 || id > 17187 || date != before) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t kHeader = 3 + 4 * sizeof(int64_t);
  if (size < kHeader) return 0;
  const auto fmt = static_cast<zuDate::zuDateFmt>(static_cast<int8_t>(data[0]));
  const char* locale = kLocales[data[1] % std::size(kLocales)];
  const long split = static_cast<int8_t>(data[2]);
  int64_t amounts[4];
  std::memcpy(amounts, data + 3, sizeof amounts);
  const char* rest = reinterpret_cast<const char*>(data + kHeader);
  const std::string text(rest, strnlen(rest, size - kHeader));

  try {
    zuDate date(2000, 2, 29);
    date.Locale(locale);
    date.CenturySplit(split);
    const int parsed = date.Parse(text.c_str(), fmt);
    if (parsed != 0 && parsed != 1) std::abort();
    if (parsed == 1 && !inRange(date)) std::abort();
    if (parsed == 0 && date != zuDate(2000, 2, 29)) std::abort();
    for (int each = -1; each <= 32; ++each) {
      const zuString shown = date.Format(static_cast<zuDate::zuDateFmt>(each));
      (void)shown;
    }
    const zuString names = date.DayOfWeek(fmt) + date.MonthName(amounts[0] % 14, fmt) +
                           date.ShortMonthNameFr(amounts[1] % 14) + date.GetAltCalendarDateFormat();
    (void)names;
    (void)date.GetYearFromAltCalendar(text.c_str());
    (void)date.Year4(amounts[2]);

    zuDate moved = date;
    step(moved, [&] { moved.Add(amounts[0], amounts[1], amounts[2]); });
    step(moved, [&] { moved.Subtract(amounts[1], amounts[2], amounts[0]); });
    step(moved, [&] { moved.DaysSince1900(amounts[3]); });
    step(moved, [&] { moved += amounts[3]; });
    long years = 0, months = 0, days = 0;
    const int order = moved.Difference(date, years, months, days);
    if (order != moved.Compare(date) || years < 0 || months < 0 || months > 11) std::abort();
    if (moved.DaysDifference(date, days) != order || days < 0) std::abort();
  } catch (...) {
    std::abort();  // parsing, formatting and comparing never throw
  }
  return 0;
}
