// RnDate: a calendar date in a locale, formatted through and parsed from the
// body of a date picture ("EEEE, D MMMM YYYY").
//
// The date is a day number: day 1 is 0001-01-01 of the proleptic Gregorian
// calendar, and the number counts on without gaps to 9999-12-31
// (day 3652059). 0 means no date; dates outside those years are not held.
//
//   RnDate date(zuString("Jan 5, 2009"), zuString("MMM D, YYYY"), zuString("en_US"));
//   date.isValid();                                  // true
//   date.format(zuString("EEEE D MMMM YYYY"));       // "Monday 5 January 2009"
//   RnDate french(date.getDays(), "fr_FR");
//   french.format(zuString("EEEE D MMMM YYYY"));     // "lundi 5 janvier 2009"
//
// Picture symbols (a run of one letter is one symbol, its length the count):
//   D DD day of month   J JJJ day of year   M MM month   MMM MMMM month name
//   E day of week (Sunday 1)   EEE EEEE weekday name   e day of week (Monday 1)
//   YY YYYY year   w week of month   WW week of year   G era name
//   g gg ggg alternate era (short, medium, long name)   t tab
// Weeks follow ISO 8601: they start on Monday; week 1 of a year (WW) is the
// week that holds its first Thursday, so the week's year is the ISO year;
// week 1 of a month (w) is the first week with four or more days in the
// month, and the days before it are in week 0. A full-width symbol letter
// asks for full-width digits; in Korean and Chinese locales for native
// numerals, and in Japanese ones for native numerals with "ＭＭＭＭ" (the
// month number) and "ＹＹＹＹＹ" (the year; era year 1 is written 元).
// Everything else in a picture is a literal; a quoted literal is copied or
// matched as it stands ("''" is a quote). When parsing, an unquoted "?"
// matches any character, "+" one or more white-space characters and "*" any
// number of them.
//
// Parsing settles these points:
// - Names (months, weekdays, eras) match without regard to case (Unicode
//   case folding), the longest of the locale's names winning; numbers are
//   read in any decimal digits (ASCII, the locale's, full-width) or native
//   numerals.
// - Every field is read once; the whole text must be used up.
// - Missing fields take defaults: the year is the current (local) one, the
//   month January, the day the 1st, and the weekday of a week Monday. A
//   text must give at least one of year, month, day, day of year or week;
//   a week of the month needs the month; an alternate era needs a year. A
//   weekday read beside a day of the month must be that date's.
// - Years: see parse constructor. "G" reading the BC name gives a date
//   before year 1, which fails.
// - With an alternate era ("g"), the years count in the era, and the date
//   must fall inside it (from its first day to the next era's). In Thai
//   locales the year is one less except from January to March up to 1940
//   (the old new year of 1 April). Chinese eras from 1949-10-01 on are the
//   common era and are not applied in simplified-Chinese locales.
//
// An RnDate is a value; it belongs to the thread that made it (its strings).
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/locale/RnLocale.h"

struct cjkTable_s;
namespace zu::internal {
class TextOut;
}

class ZU_EXPORT RnDate {
 public:
  // Two-digit years below this become 20xx, the others 19xx.
  static constexpr int DEFAULT_CENTURY_SPLIT = 30;
  // Days per month of a common year, January first.
  static const int monthDays[12];

  // "DJMEeYWwGgt": the letters that are date symbols.
  static const zuLiteral& getDATE_PICTURE_SYMBOLS();
  // "MMM D, YYYY", used by toString.
  static const zuLiteral& getDEFAULT_DATE_FMT();
  // "YYYYMMDD" and "YYYY-MM-DD", the basic and extended canonical forms.
  static const zuLiteral& getKDL_DATE_FMT1();
  static const zuLiteral& getKDL_DATE_FMT2();
  // "en_US": the locale used when the given one is empty or unknown.
  static const zuLiteral& getDEFAULT_LOCALE();

  RnDate(const RnDate& other) = default;
  RnDate& operator=(const RnDate& other) = default;
  // The date of day number `days` (invalid unless 1 to 3652059).
  RnDate(int days, const char* locale, int centurySplit = DEFAULT_CENTURY_SPLIT);
  // Today's date in local time.
  explicit RnDate(const zuString& locale, int centurySplit = DEFAULT_CENTURY_SPLIT);
  // Parses `value` under `picture` (the body of a date picture); invalid
  // when the parse fails. A year below 100 read through "YY" becomes
  // 2000 + year when it is below `centurySplit` or the split is 0, else
  // 1900 + year; a year below 100 read otherwise ("0029" under "YYYY") is
  // 1900 + year; larger years stand as read.
  RnDate(const zuString& value, const zuString& picture, const zuString& locale,
         int centurySplit = DEFAULT_CENTURY_SPLIT);
  ~RnDate() = default;

  bool isValid() const { return days_ > 0; }
  // The day number; 0 when invalid.
  int getDays() const { return days_; }
  // The locale's canonical name ("en_US" for an unknown one).
  const char* getLocale() const { return locale_.getName(); }

  // The date under `picture`; empty when the date is invalid. A symbol with
  // a count its table does not list writes nothing.
  zuString format(const zuString& picture) const;
  // The same with the calendar fields `day`, `month` (1-12) and `year`
  // written in place of the date's own (the weekday, day of year, weeks and
  // era still come from the date); format(picture) passes the locale
  // calendar's fields here.
  zuString format(const zuString& picture, int day, int month, int year) const;
  // The date under getDEFAULT_DATE_FMT().
  zuString toString() const;

  // The locale's date picture of a style (1 short, 2 medium, 3 long, 4 full,
  // any other value medium), in the library's symbols or (Local) in the
  // locale's own symbol letters.
  static zuString getDateFormat(int style, const zuString& locale);
  static zuString getLocalDateFormat(int style, const zuString& locale);

  // Fields of the date; 0 when it is invalid.
  int getYear() const;
  int getMonth() const;      // 1..12
  int getMonthDay() const;   // 1..31
  int getYearDay() const;    // 1..366
  int getWeekDay() const;    // 1 Sunday .. 7 Saturday
  int getWeekMonth() const;  // 0..5, see "w" above
  int getISOWeek() const;    // 1..53
  int getISOYear() const;    // the year the ISO week belongs to

  // Moves the date by `days`; a result outside the held years is invalid.
  // An invalid date stays invalid.
  RnDate& operator+=(int days);
  // Choose whether "today" (setToday) is the local or the universal
  // calendar day. Neither changes the date held.
  void setLocalDate() { local_ = true; }
  void setGMDate() { local_ = false; }
  bool isLocalDate() const { return local_; }
  // Sets the date to today, local or universal as chosen above.
  void setToday();

 protected:
  // The field slots of a parse; -1 while unset.
  struct Fields {
    int weekDay = -1;       // 1 Sunday .. 7 Saturday
    int yearDay = -1;       // 1..366
    int month = -1;         // 1..12
    int monthDay = -1;      // 1..31
    int weekOfMonth = -1;   // 0..5
    int weekOfYear = -1;    // 1..53
    int year = -1;          // as read: four digits, two digits or an era year
    int twoDigitYear = -1;  // 1 when the year was read through "YY"
    int yearDigits = -1;    // how many digits the year had (native: 4)
    int era = -1;           // 0 BC, 1 AD
    int altEra = -1;        // row of the locale's era table
  };

  // Loads the names of `locale` (empty or unknown: "en_US") and makes it
  // the locale of the date.
  void setDateSymbols(const char* locale);
  void resetFields() { fields_ = Fields(); }

  // Parses `value` under `picture` into the date; false (and the date
  // invalid) when it does not match.
  bool parse(const zuString& value, const zuString& picture);
  // Reads one symbol (an ASCII letter, `count` long) at byte `position` of
  // `value` into the field slots; returns the position after it, or -1.
  // A symbol that would set a field already set fails. `fullWidth` marks
  // a symbol written in full-width letters.
  int subParse(const zuString& value, unsigned int position, unsigned int symbol, int count,
               bool fullWidth = false);
  // What a symbol is formatted from: the calendar fields of the locale's
  // calendar, and the row of the era table that "Y" and "g" count in (-1:
  // none; "Y" writes the calendar year).
  struct CalendarFields {
    int day;
    int month;
    int year;
    int altEra;
  };
  // Appends one symbol (an ASCII letter, `count` long) of the date.
  void subFormat(zu::internal::TextOut& out, unsigned int symbol, int count, bool fullWidth,
                 const CalendarFields& fields) const;

  // Day numbers from fields; 0 when the fields name no date in the held
  // years. `year` counts from 1900 (124 is 2024), `month` is 1..12.
  static int epoch(int day, int month, int year);
  // The `weekDay` (1 Sunday .. 7 Saturday) of ISO week `week` of `year`.
  static int epochWeekYear(int year, int week, int weekDay);
  // The `weekDay` of week `week` (0..5) of `month` in `year`; 0 when that
  // day is not in the month.
  static int epochWeekMonth(int year, int month, int week, int weekDay);

  // Sets the day number; out of the held range the date becomes invalid.
  void setDays(int64_t days);

  // Turns the parsed fields into the date, with the year rules of parse: a
  // year under "YYYY" needs four digits unless an era names it, and one
  // below 100 read that way is 1900 + year. False (the date unchanged) when
  // the fields name no date.
  bool resolveFields();

  Fields fields_;

 private:
  // The Gregorian year of the parsed year fields; false when out of range.
  bool resolveYear(int64_t& year) const;
  int64_t resolveDay(int64_t year) const;
  static int matchLiteral(const zuString& value, unsigned int position, uint32_t literal,
                          bool quoted);
  int readField(const zuString& value, unsigned int position, int& slot, int minDigits,
                int maxDigits, int low, int high) const;
  int readName(const zuString& value, unsigned int position, int& slot, const zuString* names,
               int count, int offset) const;
  int readAltEra(const zuString& value, unsigned int position, int form);
  int readYear(const zuString& value, unsigned int position, int count, bool fullWidth);
  // The year that "Y" writes inside era `era` for a Gregorian year and month.
  int64_t eraYear(int era, int64_t year, int month) const;
  bool usesNativeNumerals(unsigned int symbol, int count) const;

  int32_t days_ = 0;
  int centurySplit_ = DEFAULT_CENTURY_SPLIT;
  bool local_ = true;
  uint32_t zeroDigit_ = '0';
  RnLocale locale_;
  zuString monthNames_[12];
  zuString abbrMonthNames_[12];
  zuString weekDayNames_[7];
  zuString abbrWeekDayNames_[7];
  zuString eraNames_[2];
  const cjkTable_s* altEras_ = nullptr;
  int altEraCount_ = 0;
};
