#include "zu/picture/HijriCalendarConvertor.h"

#include <unicode/calendar.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <memory>

namespace {

namespace chrono = std::chrono;

constexpr int kGuesses = 10;
constexpr double kMillisecondsPerDay = 86400000.0;

struct Date {
  int day;
  int month;
  int year;
};

bool inGregorianRange(const chrono::year_month_day& date) {
  return date.ok() && date.year() >= chrono::year(1) && date.year() <= chrono::year(9999);
}

// The calling thread's Umm al-Qura calendar in UTC, made on first use.
icu::Calendar* ummAlQura() {
  thread_local std::unique_ptr<icu::Calendar> calendar = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Calendar> made(icu::Calendar::createInstance(
        *icu::TimeZone::getGMT(), icu::Locale("ar_SA@calendar=islamic-umalqura"), status));
    if (U_FAILURE(status)) made.reset();
    return made;
  }();
  return calendar.get();
}

Date today() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return {local.tm_mday, local.tm_mon + 1, local.tm_year + 1900};
}

}  // namespace

bool HijriCalendarConvertor::fromGregorian(int& day, int& month, int& year) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return false;
  const chrono::year_month_day gregorian{chrono::year(year), chrono::month(month),
                                         chrono::day(day)};
  if (!gregorian.ok()) return false;
  icu::Calendar* calendar = ummAlQura();
  if (calendar == nullptr) return false;

  // Noon of the day, so that no zone arithmetic can move it across midnight.
  const double days = chrono::sys_days(gregorian).time_since_epoch().count();
  UErrorCode status = U_ZERO_ERROR;
  calendar->setTime(days * kMillisecondsPerDay + kMillisecondsPerDay / 2, status);
  const int hijriDay = calendar->get(UCAL_DATE, status);
  const int hijriMonth = calendar->get(UCAL_MONTH, status) + 1;
  const int hijriYear = calendar->get(UCAL_EXTENDED_YEAR, status);
  if (U_FAILURE(status)) return false;
  day = hijriDay;
  month = hijriMonth;
  year = hijriYear;
  return true;
}

bool HijriCalendarConvertor::toGregorian(int& day, int& month, int& year) {
  Date guess = today();
  for (int attempt = 0; attempt < kGuesses; ++attempt) {
    Date hijri = guess;
    if (!fromGregorian(hijri.day, hijri.month, hijri.year)) return false;
    if (hijri.day == day && hijri.month == month && hijri.year == year) {
      day = guess.day;
      month = guess.month;
      year = guess.year;
      return true;
    }
    const int64_t distance = (static_cast<int64_t>(year) - hijri.year) * 354 +
                             (static_cast<int64_t>(month) - hijri.month) * 29 +
                             (static_cast<int64_t>(day) - hijri.day);
    const chrono::sys_days from{chrono::year_month_day{
        chrono::year(guess.year), chrono::month(guess.month), chrono::day(guess.day)}};
    // Beyond the years fromGregorian accepts the next guess would fail anyway.
    constexpr int64_t kMaxStep = 4000000;
    if (distance > kMaxStep || distance < -kMaxStep) return false;
    const chrono::year_month_day next{from + chrono::days(distance)};
    if (!inGregorianRange(next)) return false;
    guess = {static_cast<int>(static_cast<unsigned>(next.day())),
             static_cast<int>(static_cast<unsigned>(next.month())), static_cast<int>(next.year())};
  }
  return false;
}
