// RnData: the built-in texts of one locale (names, patterns, symbols).
//
// The data of about 190 locales is compiled into the library; each record
// holds only what differs from its parent, so a lookup walks from the most
// specific name ("de_CH") to the language ("de") and ends at "root". A thread
// may lay its own run-time data (RnRunTimeData_s) over any level.
//
//   RnData data("de-ch");
//   zuString march = data.getMonthName(RnData::MAR);     // "März"
//   zuString shortDate = data.getDateFormat(RnData::SHORT_FMT);
//   zuString money = data.getNumberFormat(RnData::CURRENCY_FMT,
//                                         RnData::WITH_GROUPINGS | RnData::WITH_PREC(2));
//
// Getters never throw and never fail: an unknown locale gives the root data,
// an index out of range the empty text, a style out of range the medium
// pattern. Texts of the built-in data are returned as literals (no copy).
// An RnData belongs to the thread that made it: it points at that thread's
// run-time data, which must not be released while the object is alive.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuStorage.h"
#include "zu/core/zuString.h"

// The library's picture letter at each position of a locale's symbol
// alphabet (field 31), or a blank where the letter is a time (date) symbol.
ZU_EXPORT extern const char gpRoot[];      // "root"
ZU_EXPORT extern const char gpDateMask[];  // "GYMD     EJFwW     "
ZU_EXPORT extern const char gpTimeMask[];  // "    KHMSF     AhkZz"

// Run-time data for one locale, laid over the built-in records by
// RnData::update. An entry counts only when it holds text (not empty).
struct ZU_EXPORT RnRunTimeData_s {
  zuString monthNames[12];
  zuString abbrMonthNames[12];
  zuString weekDayNames[7];  // Sunday first
  zuString abbrWeekDayNames[7];
  zuString eraNames[2];        // BC, AD
  zuString meridiemNames[2];   // AM, PM
  zuString dateFormats[4];     // full, long, medium, short (picture syntax)
  zuString timeFormats[4];     // full, long, medium, short
  zuString numberFormats[3];   // number, currency, percent pictures
  zuString numericSymbols[5];  // decimal, grouping, percent, minus, zero digit
  zuString currency[3];        // symbol, ISO code, decimal separator
};

class ZU_EXPORT RnData {
 public:
  // Weekdays, months, meridiems and eras.
  static constexpr int SUN = 0, MON = 1, TUE = 2, WED = 3, THU = 4, FRI = 5, SAT = 6;
  static constexpr int JAN = 0, FEB = 1, MAR = 2, APR = 3, MAY = 4, JUN = 5, JUL = 6, AUG = 7,
                       SEP = 8, OCT = 9, NOV = 10, DEC = 11;
  static constexpr int AM = 0, PM = 1;
  static constexpr int BC = 0, AD = 1;
  // Styles taken by the pattern getters; any other value means medium.
  static constexpr int DEFLT_FMT = 0, SHORT_FMT = 1, MED_FMT = 2, LONG_FMT = 3, FULL_FMT = 4;
  // Positions inside a group of four patterns.
  static constexpr int FULL = 0, LONG = 1, MED = 2, SHORT = 3, DEFLT = 2;
  // Numeric pattern categories, symbol and currency selectors.
  static constexpr int NUMERIC = 0, CURRENCY = 1, PERCENT = 2;
  static constexpr int NUM_DECIMAL = 0, NUM_GROUPING = 1, NUM_PERCENT = 2, NUM_MINUS = 3,
                       NUM_ZERO = 4;
  static constexpr int CUR_SYMBOL = 0, CUR_ISONAME = 1, CUR_DECIMAL = 2;
  // getNumberFormat: the kind of number (first argument) ...
  static constexpr int INTEGRAL_FMT = 0, DECIMAL_FMT = 1, CURRENCY_FMT = 2, PERCENT_FMT = 3;
  // ... and the option bits (second argument). WITH_CATEGORIES and
  // WITH_GROUPINGS are one bit: group the digits into the locale's
  // thousands categories.
  static constexpr int WITHOUT_CATEGORIES = 0, WITH_CATEGORIES = 1;
  static constexpr int WITHOUT_GROUPINGS = 0, WITH_GROUPINGS = 1;
  static constexpr int WITHOUT_RADIX = 0, WITH_RADIX = 4;
  static constexpr int WITH_ZEDS = 0, WITH_EIGHTS = 2, KEEP_NINES = 8;
  // Fraction digits (0 to 15) and integer digits (1 to 30) packed into the
  // option word; without them the locale pattern's own counts apply.
  static constexpr int WITH_PREC(int digits) { return ((digits & 0x7F) + 1) << 4; }
  static constexpr int WITH_WIDTH(int digits) { return ((digits & 0x7F) + 1) << 12; }

  // Resolves `locale` (null or empty: "root"): the name is normalised (cut at ".",
  // "-" becomes "_", a four-letter script re-cased, the country and variant
  // upper-cased, cut to 63 bytes) and the candidates are found once, here: for the name and
  // each shorter name cut at its last "_", then "root", the thread's
  // run-time data and the built-in record of exactly that name.
  explicit RnData(const char* locale);
  RnData(const RnData& other) = default;
  RnData& operator=(const RnData& other) = default;
  ~RnData() = default;

  // The normalised name.
  zuString getLocale() const;

  // Names; an index out of range gives the empty text.
  zuString getMonthName(int month) const;          // JAN..DEC
  zuString getAbbrMonthName(int month) const;      // JAN..DEC
  zuString getWeekDayName(int weekDay) const;      // SUN..SAT
  zuString getAbbrWeekDayName(int weekDay) const;  // SUN..SAT
  zuString getMeridiemName(int meridiem) const;    // AM, PM
  zuString getEraName(int era) const;              // BC, AD

  // Date and time pictures of a style (*_FMT; any other value: medium).
  zuString getDateFormat(int style) const;
  zuString getTimeFormat(int style) const;
  // The combining pattern, "date{} time{}" in the root data.
  zuString getDateTimePattern() const;
  // The same pictures with every picture symbol written as the letter at
  // the same position of the locale's symbol alphabet (through gpDateMask
  // and gpTimeMask); quoted literals are kept.
  zuString getLocalDateFormat(int style) const;
  zuString getLocalTimeFormat(int style) const;
  zuString getLocalDateTimeFormat() const;
  // The combining pattern with the date picture of `dateStyle` written into
  // its "date{}" and the time picture of `timeStyle` into its "time{}".
  zuString getDateTimeFormat(int dateStyle, int timeStyle) const;

  // The locale's numeric picture of a category (NUMERIC, CURRENCY, PERCENT);
  // empty for another value.
  zuString getNumericFormat(int category) const;
  // A numeric picture built from the locale's pattern for `kind`
  // (INTEGRAL_FMT and DECIMAL_FMT use the number pattern, CURRENCY_FMT the
  // currency pattern, PERCENT_FMT the percent pattern; another value gives
  // the empty text). In every alternative of the pattern the digit body
  // (the run of digit symbols, "," and ".") is rebuilt, and the currency
  // sign, minus sign, percent sign and literals around it are kept:
  // - integer digits: WITH_WIDTH(n), else the pattern's count; all "z" but
  //   the last, which is "9";
  // - WITH_GROUPINGS: "," between the locale's digit groups (its primary and
  //   secondary group sizes), otherwise no grouping;
  // - fraction digits: WITH_PREC(n), else 0 for INTEGRAL_FMT and the
  //   pattern's count for the others; they are "z" (WITH_ZEDS) or "8"
  //   (WITH_EIGHTS), except that KEEP_NINES keeps "9" where the pattern
  //   has a "9" fraction digit (the fixed cents of a currency);
  // - the radix "." is written when there are fraction digits, or always
  //   with WITH_RADIX.
  // For en_US, (CURRENCY_FMT, WITH_GROUPINGS | KEEP_NINES) gives the
  // pattern itself, "$z,zz9.99|($z,zz9.99)".
  zuString getNumberFormat(int kind, int options) const;
  // The number of fraction digit symbols (9, 8, z, Z) after the radix ("."
  // or "V"/"v") of the picture's first alternative; quoted literals and a
  // "num{...}" wrapper are skipped. 0 when there is no radix.
  int getNumberPrecision(const zuString& picture) const;

  // Numeric symbols (decimal, grouping, percent, minus, zero digit).
  zuString getRadixSymbol() const;
  zuString getGroupingSymbol() const;
  zuString getPercentSymbol() const;
  zuString getNegativeSymbol() const;
  zuString getZeroSymbol() const;
  // "+": no locale of the table has another plus sign.
  zuString getPositiveSymbol() const;
  // Currency symbol, ISO 4217 code and currency decimal separator.
  zuString getCurrencySymbol() const;
  zuString getCurrencyName() const;
  zuString getCurrencyRadix() const;

  // The preferred font families of the locale, most preferred first.
  zuStorage<zuString> getTypefaces() const;

  // Replaces the contents of `names` by the names of every built-in record,
  // in byte order ("root" included).
  static void getLocaleNames(zuStorage<zuString>& names);
  // The most specific locale that has data for the language, country and
  // variant (empty parts are left out): the parts are joined with "_" and
  // normalised, and the name is cut at its last "_" until it names a
  // built-in record or run-time data of the calling thread; "root" when
  // none does.
  static zuString findMatchingLocale(const zuString& language, const zuString& country,
                                     const zuString& variant);

  // Run-time data of the calling thread. Names are normalised as above.
  // The thread's record for `locale`, null when it has none. The record is
  // owned by the thread's storage; it lives until release, reset or the
  // end of the thread.
  static RnRunTimeData_s* get(const char* locale);
  // Copies the thread's record for `locale` into `*data` and returns
  // `data`; returns null (and leaves `*data` alone) when there is none.
  static RnRunTimeData_s* get(const char* locale, RnRunTimeData_s* data);
  // Lays `*data` over the thread's record for `locale` (made when missing):
  // each entry that holds text replaces the stored one, an empty entry keeps
  // it. The caller keeps `data`. Returns 0, changing nothing, when `data`
  // fails validate() or the name is empty; 1 otherwise. RnData objects made
  // earlier do not see a record created later.
  static int update(const zuString& locale, RnRunTimeData_s* data);
  // Destroys the thread's record for `locale`; 0 when there was none.
  static int release(const char* locale);
  // Destroys every run-time record of the calling thread.
  static void reset();
  // 1 when `data` is non-null, every entry holding text is valid UTF-8
  // without control characters, and the decimal and grouping symbols (when
  // both are set) differ; 0 otherwise.
  static int validate(const RnRunTimeData_s* data);

 private:
  enum CandidateKind : unsigned char { kRunTime, kStatic };
  struct Candidate {
    CandidateKind kind;
    const void* record;  // RnRunTimeData_s or a built-in record
  };
  // Enough for every level of a name with seven parts, run-time and built-in.
  static constexpr int kMaxCandidates = 16;
  // Longer names cannot name any record; they are cut.
  static constexpr unsigned int kMaxNameLength = 64;

  // The first text of field `field` along the candidates, or null.
  // `builtIn` tells whether it belongs to a built-in record (which lives
  // as long as the library) or to run-time data.
  const char* field(int index, bool& builtIn) const;
  zuString text(int index) const;
  zuString indexed(int firstField, int count, int index) const;
  zuString localPattern(int firstField, int style, const char* mask) const;

  // The normalised name, kept inline so that making an RnData allocates nothing.
  char locale_[kMaxNameLength];
  unsigned char localeLength_ = 0;
  int candidateCount_ = 0;
  Candidate candidates_[kMaxCandidates];
};
