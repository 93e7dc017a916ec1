// zuDate: a calendar date as a value, with a two-digit-year pivot and a
// locale, shown and read in 31 named date formats.
//
//   zuDate due(2024, 1, 31);
//   due.Add(0, 1, 0);                               // 2024-03-02: forward only
//   due.Format(zuDate::ISO_EXTENDED);               // "2024-03-02"
//   due.Format(zuDate::MMMM_D_YYYY);                // "March 2, 2024" (en_US)
//   zuDate read("05.03.24", zuDate::DD_MM_YY_DOT, 0, "de_DE");   // 2024-03-05
//   long days = 0;
//   read.DaysDifference(due, days);                 // 1 (read is later), days 3
//
// The date is proleptic Gregorian (no Julian calendar, no switch-over), held
// as one packed number year*10000 + month*100 + day in 32 bits; 0 is the
// empty date, the state after a failed parse. Years run from 0 to 214748,
// the most that packs. Every `long` argument is checked in 64 bits before
// anything is narrowed.
//
// Validation, in this order: a year outside 0..214748 throws message
// kInvalidYear (17185), a month outside 1..12 kInvalidMonth (17186), a day
// outside 1..DaysInMonth kInvalidDay (17187), each through ZuExThrow as a
// zuExFull. A member that throws leaves the value as it was.
//
// The locale is held as a pointer to a canonical name that lives as long as
// the process, so a zuDate is trivially copyable: constructing one from
// numbers and copying it allocate nothing, and a date may be handed to
// another thread. The default locale is the thread's (RnLocale::getLocale),
// or "en_US" when that is "x". A locale the thread registered at run time
// is resolved again by name where the date is formatted; in a thread that
// does not know it, "en_US" is used.
//
// Formats 1..31 (other than 25) are shown and read by RnDate: the date is
// handed to it as the eight digits of the picture "YYYYMMDD", so years 0-99
// show as 1900-1999 (0000-02-29 becomes 1900-02-29, which does not exist,
// and shows as ""), and years above 9999 show as "". The formats of numbers
// and literals only are written here, with the text RnDate gives them. Format
// 25, the era form, is built and read here.
//
// Members that change the value are not for concurrent use on one object;
// Parse is const but sets the value, so it is not either. Const members may
// run concurrently.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class zuDateTime;

class ZU_EXPORT zuDate {
 public:
  // The named date formats. Each is named after its picture (RnDate's date
  // symbols); _SLASH, _DASH and _DOT tell the separator.
  enum zuDateFmt : int {
    PACKED = 0,  // no picture: Format gives the packed digits
    YYMMDD = 1,
    MM_DD_YY_SLASH = 2,     // "MM/DD/YY"
    MM_DD_YY_DASH = 3,      // "MM-DD-YY"
    MMM_D_YYYY = 4,         // "MMM D, YYYY"
    MMMM_D_YYYY = 5,        // "MMMM D, YYYY"
    D_MMM_YY = 6,           // "D MMM YY"
    D_MMM_YYYY = 7,         // "D MMM YYYY"
    DD_MM_YY_SLASH = 8,     // "DD/MM/YY"
    DD_MM_YY_DASH = 9,      // "DD-MM-YY"
    FR_MMM_D_YYYY = 10,     // "MMM D, YYYY", always in "fr"
    FR_MMMM_D_YYYY = 11,    // "MMMM D, YYYY", always in "fr"
    FR_D_MMM_YY = 12,       // "D MMM YY", always in "fr"
    FR_D_MMM_YYYY = 13,     // "D MMM YYYY", always in "fr"
    FR_D_MMMM_YYYY = 14,    // "D MMMM YYYY", always in "fr"
    YY_MM_DD_SLASH = 15,    // "YY/MM/DD"
    MM_DD_YY_DOT = 16,      // "MM.DD.YY"
    DD_MM_YY_DOT = 17,      // "DD.MM.YY"
    YY_MM_DD_DOT = 18,      // "YY.MM.DD"
    DD_MM_YYYY_DOT = 19,    // "DD.MM.YYYY"
    MM_DD_YYYY_SLASH = 20,  // "MM/DD/YYYY"
    ISO_EXTENDED = 21,      // "YYYY-MM-DD"
    MMDDYYYY = 22,
    MMDDYY = 23,
    YYYY_MM_DD_KANJI = 24,   // "YYYY'年'MM'月'DD'日'"
    ERA = 25,                // the era form (GetAltCalendarDateFormat)
    YYYY_MM_DD_HANGUL = 26,  // "YYYY'년'MM'월'DD'일'" in "ko"/"kor", else 24
    EEEE_MMMM_D_YYYY = 27,   // "EEEE MMMM D, YYYY"
    LOCALE_MEDIUM = 28,      // RnDate::getDateFormat(0, locale)
    DD_MM_YYYY_SLASH = 29,   // "DD/MM/YYYY"
    LOCALE_SHORT = 30,       // RnDate::getDateFormat(1, locale)
    YYYY_MM_DD_SLASH = 31,   // "YYYY/MM/DD"
  };

  // The largest year a date holds.
  static constexpr long kMaxYear = 214748;

  // --- Construction (century split 0 unless given) --------------------------

  // Today's local date (CurrentDate(1)), default locale.
  zuDate();
  // Set(year, month, day), default locale. Throws 17185-17187.
  zuDate(long year, long month, long day);
  // Set(time, local), default locale. Throws 17185.
  zuDate(int64_t time, int local);
  // Sets the century split (CenturySplit(centurySplit); a negative one is
  // ignored) and the locale (Locale(locale)), then Parse(text, fmt). A
  // failed parse is not reported: the date stays empty. Never throws for
  // bad text.
  zuDate(const zuString& text, zuDateFmt fmt, long centurySplit, const zuString& locale);
  zuDate(const char* text, zuDateFmt fmt, long centurySplit, const zuString& locale);
  zuDate(const zuDate& other) = default;
  zuDate& operator=(const zuDate& other) = default;
  ~zuDate() = default;

  // --- Calendar rules --------------------------------------------------------

  // 1 when `year` is a Gregorian leap year (divisible by 4 and not by 100,
  // or by 400), for any year, else 0.
  static int LeapYear(long year);
  // The days of `month` in `year`; -1 for a month outside 1..12.
  static long DaysInMonth(long year, long month);

  // --- Setting and reading ---------------------------------------------------

  // Validates (see above), then stores. Throws 17185-17187.
  void Set(long year, long month, long day);
  // The date of `time` (seconds since 1970-01-01 00:00 UTC) in the
  // process's time zone when `local` is non-zero, else in UTC. Throws 17185
  // when the C library cannot convert the value or its year is out of range.
  void Set(int64_t time, int local);
  // Today, local (non-zero) or UTC, from the system clock.
  void CurrentDate(int local);

  // The packed fields; all 0 for the empty date.
  long Day() const { return date_ % 100; }
  long Month() const { return date_ % 10000 / 100; }
  long Year() const { return date_ / 10000; }
  long ShortYear() const { return Year() % 100; }

  // Stores `split` mod 100 and returns 1; a negative split returns 0 and
  // stores nothing.
  int CenturySplit(long split);
  long CenturySplit() const { return centurySplit_; }
  // Stores the canonical name of the locale `name` resolves to (RnLocale),
  // or the default locale when it does not resolve.
  void Locale(const zuString& name);
  // The stored name, as a literal string over the interned text.
  zuString Locale() const;

  // Widens a two-digit year: a year above 100 is returned as it is;
  // otherwise r = this century's first year + year (the century is read
  // from the clock once per process), and r is returned when year <
  // CenturySplit() or the split is 0, else r - 100. So with split 30 in
  // the 2000s, Year4(29) is 2029, Year4(30) 1930 and Year4(100) 2000;
  // with split 0, Year4(100) is 2100.
  long Year4(long year) const;

  // --- Arithmetic --------------------------------------------------------------

  // Adds the amounts to the year, month and day, then carries forward only:
  // a month above 12 moves into the following years, then a day beyond its
  // month into the following months. Nothing carries backwards: a month or
  // day that ends below 1 throws 17186 or 17187 (17185 first when the year
  // is out of range). So 2024-01-31 + 1 month is 2024-03-02 (2023: 03-03),
  // and += -1 on the 1st of a month throws 17187. Computed in closed form
  // for any amounts. Throws 17185-17187, the date unchanged.
  const zuDate& Add(long years, long months, long days);
  // Subtracts the amounts from the day, the month and the year, then
  // normalises both ways as the C library's mktime does in UTC: months
  // below 1 or above 12 borrow or carry years, and the day counts from the
  // first of the resulting month (day 0 is the last day of the month
  // before). So 2024-03-01 - 1 day is 2024-02-29. Computed in closed form,
  // independent of the time zone. Throws 17185-17187, the date unchanged.
  const zuDate& Subtract(long years, long months, long days);

  // Add(0, 0, days), Add(0, 0, 1), Subtract(0, 0, days), Subtract(0, 0, 1).
  // Stepping within the 1st to the 28th, which every month has, moves the
  // packed value by one without a call.
  const zuDate& operator+=(long days) { return Add(0, 0, days); }
  const zuDate& operator++() {
    if (date_ > 0 && date_ % 100 < 28) {
      ++date_;
      return *this;
    }
    return Add(0, 0, 1);
  }
  const zuDate& operator-=(long days) { return Subtract(0, 0, days); }
  const zuDate& operator--() {
    if (date_ > 0 && date_ % 100 > 1) {
      --date_;
      return *this;
    }
    return Subtract(0, 0, 1);
  }
  // A copy moved by `days` as += and -= move it. Throws as they do.
  zuDate operator+(long days) const;
  zuDate operator-(long days) const;

  // --- Comparison and differences ---------------------------------------------

  // 1, 0 or -1 as this packed value is above, equal to or below other's
  // (the empty date sorts first).
  int Compare(const zuDate& other) const;
  // The distance to `other` in calendar fields, and the comparison's
  // result. From the earlier date E to the later L: days = L.day - E.day,
  // or 0 when both are the last days of their months; a negative day count
  // borrows the length of the month before L's month (31 for January) from
  // the months; months = L.month - E.month (borrowing 12 from the years
  // when negative); years = L.year - E.year. So 2024-02-29 against
  // 2023-01-31 is 1 year, 1 month, 0 days. Years and months are never
  // negative; the days are when the month lent is shorter than the gap
  // (2024-03-01 against 2024-01-31 is 1 month, -1 day).
  int Difference(const zuDate& other, long& years, long& months, long& days) const;
  // days = |DaysSince1900() - other.DaysSince1900()|; returns Compare(other).
  int DaysDifference(const zuDate& other, long& days) const;

  // The day count from 1900: 1900-01-01 is 1. For a year before 1900 it is
  // only the day of the year (the count from 1900 does not reach back), so
  // DayOfWeekIndex is a weekday only from 1900 on. 0 for the empty date.
  long DaysSince1900() const;
  // Sets the date whose DaysSince1900() is `n` (1 is 1900-01-01). Throws
  // 17187 for n <= 0 and 17185 past 214748-12-31.
  void DaysSince1900(long n);
  // DaysSince1900() mod 7: 0 Sunday .. 6 Saturday from 1900 on (1900-01-01
  // is 1, a Monday).
  int DayOfWeekIndex() const;
  // The zero-based day of the year (1 January is 0), not a Julian Day
  // Number; -1 for the empty date.
  long JulianDate() const;

  // --- Text ---------------------------------------------------------------------

  // The date in format `fmt`: for 25 the era form; for 1..31 otherwise the
  // format's picture through RnDate (see above; "" for the empty date, for
  // years above 9999 and for 0000-02-29); for any other number (0, 40, -1)
  // the decimal digits of the packed value ("20240131", "0" when empty).
  // Formats 10 to 14 are always French; 26 is Korean only when the locale
  // is "ko" or "kor" (otherwise 24); 28 and 30 are the locale's medium and
  // short date formats.
  zuString Format(zuDateFmt fmt) const;
  // Reads `text` in format `fmt`. For 1..31 but 25: through RnDate with the
  // format's picture, locale and this date's century split ("YY" below the
  // split, or any "YY" when it is 0, is 20YY). For 25, the era form: the
  // text up to the first 年 or 년 is the year (ASCII digits widened by
  // Year4, or an era name and year when the locale is Japanese, see
  // GetYearFromAltCalendar), the text up to the next 月 or 월 the month
  // (1..12), up to the next 日 or 일 the day (1..31), each trimmed of blanks
  // and in ASCII digits; what follows the day is ignored, and an era year is
  // not checked against the era's end. Returns 1 and sets the date, or 0
  // leaving it unchanged: for a text that does not match, a date that does
  // not exist, and a format outside 1..31. Never throws. Sets the value in
  // spite of the const: not for concurrent use on one object.
  int Parse(const zuString& text, zuDateFmt fmt) const;

  // Names through RnDate ("EEEE", "MMMM", "MMM") in the locale that
  // MapAsianLocale gives: "en" for format 26, "ja" for format 24 when the
  // date's locale is "ko" or "kor", else the date's locale. DayOfWeek is
  // "" for the empty date. The month names are those of `month` (1..12), or
  // of the date's own month when `month` is 0; "" for any other month, or
  // for 0 in the empty date. The Fr forms are always French.
  zuString DayOfWeek(zuDateFmt fmt) const;
  zuString MonthName(long month, zuDateFmt fmt) const;
  zuString ShortMonthName(long month, zuDateFmt fmt) const;
  zuString MonthNameFr(long month) const;
  zuString ShortMonthNameFr(long month) const;

  // The era form (format 25). When the locale is "ja", "jpn" or "ja-ja"
  // (ignoring case) and the date is on or after 1868-09-08: the era's name
  // (明治, 大正, 昭和, 平成, 令和), a blank and the year in the era unpadded;
  // otherwise the year padded with blanks to four characters. Then month and
  // day with two digits each, and 年月日 (년월일 when the locale is "ko" or
  // "kor"). 2024-03-05 in "ja" is "令和 6年03月05日"; in "en" it is
  // "2024年03月05日". "" for the empty date.
  zuString GetAltCalendarDateFormat() const;
  // The Gregorian year of an era year written as the era's name and a
  // number ("平成 31" is 2019), trimmed, the name ending at the first digit
  // or blank and matched without regard to ASCII case; the number in ASCII
  // digits. -1 when the locale is not Japanese (as above), or the name or
  // number does not read.
  long GetYearFromAltCalendar(zuString text) const;

 private:
  friend class zuDateTime;

  // Throws 17185-17187 in that order for fields out of range.
  static void Validate(long year, long month, long day);
  // Packs fields known to be valid.
  void Store(long year, long month, long day) const {
    date_ = static_cast<int32_t>(year * 10000 + month * 100 + day);
  }
  // Add and Subtract with `carry` more days, summed without overflow (a
  // date-time's day carry).
  void AddCarry(long years, long months, long days, long carry);
  void SubtractBorrow(long years, long months, long days, long borrow);
  // The bytes FormatDigits may write, and its answer for a format it does
  // not write.
  static constexpr unsigned int kDigitsBytes = 128;
  static constexpr unsigned int kNotDigits = ~0u;
  // Writes Format(fmt) into `out` (kDigitsBytes) and returns its length
  // when fmt is a format of numbers and literals only in this locale, while
  // the locale calendar is the Gregorian one (length 0 for the empty date
  // and for one the picture engine does not hold); else kNotDigits.
  unsigned int FormatDigits(zuDateFmt fmt, char* out) const;
  // The locale format 24 and the name functions use for `fmt`.
  const char* MapAsianLocale(zuDateFmt fmt) const;
  // The era form read by Parse; 1 on success.
  int ParseEra(const zuString& text) const;
  // A name of the month (0: the date's own) through `picture` in `locale`.
  zuString MonthNameIn(long month, const char* picture, const char* locale) const;

  mutable int32_t date_ = 0;
  int32_t centurySplit_ = 0;
  const char* locale_;
};

// The comparison of two dates by Compare: 1 when it holds, else 0.
ZU_EXPORT int operator==(const zuDate& left, const zuDate& right);
ZU_EXPORT int operator!=(const zuDate& left, const zuDate& right);
ZU_EXPORT int operator<(const zuDate& left, const zuDate& right);
ZU_EXPORT int operator<=(const zuDate& left, const zuDate& right);
ZU_EXPORT int operator>(const zuDate& left, const zuDate& right);
ZU_EXPORT int operator>=(const zuDate& left, const zuDate& right);
