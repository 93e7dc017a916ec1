// RnTime: one time of day in a locale, formatted through or parsed from the
// body of a time picture ("h:MM:SS A", "HH:MM:SS.FFFzz").
//
//   RnTime noon(12 * RnTime::MILLISPERHOUR + 1, "en_US");  // epoch's count
//   noon.format("h:MM A");                    // "12:00 PM"
//   RnTime read("7:05 PM", "h:MM A", "en_US");
//   read.getHour();                           // 19
//
// The time is stored as universal time, a count of milliseconds plus one
// (see epoch), with a display zone: getTimeZone() milliseconds east of
// Greenwich. Formatting and the readings (getHour... getDays) show the time
// in its display zone; setLocalTime/setGMTime change the display zone only.
//
// Picture symbols (a run of one letter is one field, its length the count):
//   h, hh   hour 1-12        k, kk   hour 0-11       H, HH  hour 0-23
//   K, KK   hour 1-24        M, MM   minute          S, SS  second
//   FFF     millisecond, three digits
//   A       meridiem name    AA      its first character
//   z       "Z" at offset 0, else +HHMM     zz  "Z", else +HH:MM
//   Z       zone name of the locale, else "GMT" or "GMT+HH:MM"; the name
//           is the abbreviation of the locale's zone with this offset and
//           daylight flag (where two zones share them, the one whose
//           daylight rules agree with the process zone's); only locales
//           with a row of their own ("en_US", the Arabic locales...) have names
//   ZZ, ZZZ +HH'MM' ("+00'00'" at offset 0)
//   t       one tab per letter
// A count the table does not list formats as nothing and fails to parse.
// The full-width letters (U+FF21.. for "A".., U+FF41.. for "a"..) are the
// same symbols and write full-width digits, signs and colons; with count 3
// or 4 the digit fields write the native numerals of Japanese, Korean and
// Chinese locales. Digits are the locale's digits (Arabic-Indic in "ar").
//
// Literals: text in single quotes is copied (two quotes stand for one, also
// outside quotes); any other character that is not a symbol is a literal.
// In parsing a literal must match the input character (a full-width
// character and its ASCII form match each other), "?" matches any one
// character, "+" one or more white-space characters, "*" zero or more;
// formatting copies "?", "+" and "*" as they stand. An unterminated quoted
// literal runs to the end of the picture.
//
// Parsing reads each field once (two hour symbols fail), requires the whole
// input to be consumed, matches meridiem and zone names without regard to
// case (Unicode case folding), reads numbers in any decimal digits or in
// native numerals, and fills missing fields with 0 (no hour: midnight). A 12-hour
// hour ("h", "k") takes the afternoon from the meridiem; a 24-hour hour
// ("H", "K") ignores it. "z"/"zz" read "Z", "GMT" or the offset forms they
// write, ASCII or full-width; "Z"/"ZZ"/"ZZZ" read "GMT", "GMT" followed by
// +HH:MM or +HHMM, +HH'MM', and the locale's zone names (a daylight name
// sets the daylight flag). After a parse the display zone is the zone read,
// or the object's display zone when the text names none.
//
// Nothing throws for bad input. Objects are plain per-thread values.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/locale/RnLocale.h"

class ZU_EXPORT RnTime {
 public:
  static constexpr int MILLISPERSECOND = 1000;
  static constexpr int MILLISPERMINUTE = 60000;
  static constexpr int MILLISPERHOUR = 3600000;
  static constexpr int MILLISPERDAY = 86400000;

  // "hkHKMSFAZzt": the letters that are time symbols.
  static const zuLiteral& getTIME_PICTURE_SYMBOLS();
  // "h:MM:SS A", used by toString().
  static const zuLiteral& getDEFAULT_TIME_FMT();
  // "HHMMSS.FFFz" and "HH:MM:SS.FFFzz": the basic and extended ISO 8601 forms.
  static const zuLiteral& getKDL_TIME_FMT1();
  static const zuLiteral& getKDL_TIME_FMT2();

  // No time yet (invalid). An unknown or empty locale means "en_US".
  explicit RnTime(const zuString& locale);
  // The stored count `millis` (epoch's form: 0 is no time), display zone 0.
  RnTime(int millis, const zuString& locale);
  // Parses `text` with `picture`; invalid when that fails.
  RnTime(const zuString& text, const zuString& picture, const zuString& locale);
  RnTime(const RnTime& other) = default;
  RnTime& operator=(const RnTime& other) = default;
  ~RnTime() = default;

  // The time under `picture`; empty when the time is invalid. `flags` is handed to subFormat for
  // derived classes; this class does not use it (callers pass 0).
  zuString format(const zuString& picture, unsigned int flags = 0) const;
  // The time under getDEFAULT_TIME_FMT().
  zuString toString() const;

  // The time of day shown, in milliseconds: 0 .. MILLISPERDAY - 1, the
  // stored count less its one, in the display zone (so 13:05:09.007 reads
  // 47109007); -1 when invalid. Whole days past the origin: getDays().
  int getMillis() const;
  // The fields of the time in its display zone; -1 when invalid.
  int getHour() const;
  int getMinute() const;
  int getSecond() const;
  int getMilliSecond() const;
  // Whole days by which the displayed time lies after (positive) or before
  // (negative) the day of the stored count's origin: floor((count - 1 +
  // display offset) / MILLISPERDAY); -366 when invalid.
  int getDays() const;
  // The display zone, milliseconds east of Greenwich.
  int getTimeZone() const { return zone_; }
  // Set by setLocalTime when daylight time is in force, or by parsing a
  // daylight zone name.
  bool isDaylight() const { return daylight_; }
  bool isValid() const { return valid_; }

  // Adds milliseconds to the stored count (saturating at the int32 range);
  // no effect on an invalid time.
  RnTime& operator+=(int millis);

  // Display zone = the process's zone now: tzset(), then the offset of the
  // current instant from localtime_r (tm_gmtoff: the standard offset, the
  // C runtime's `timezone` negated, plus the daylight shift when tm_isdst is
  // set, which then also sets the daylight flag).
  void setLocalTime();
  // Display zone 0, daylight flag cleared.
  void setGMTime();

  // The locale's time picture of a style: 1 short, 2 medium, 3 long,
  // 4 full, any other value medium. The second form writes it in the
  // locale's own symbol letters. Unknown locales use "en_US".
  static zuString getTimeFormat(int style, const zuString& locale);
  static zuString getLocalTimeFormat(int style, const zuString& locale);

 protected:
  // Parse slots; negative while unset.
  struct Fields {
    int hour12 = -1;  // 0-11 (an "h" of 12 is stored as 0)
    int hour24 = -1;  // 0-23
    int minute = -1;
    int second = -1;
    int milli = -1;
    int meridiem = -1;          // 0 morning, 1 afternoon
    int zoneMinutes = kNoZone;  // east of Greenwich
    bool zoneDaylight = false;
  };
  static constexpr int kNoZone = INT32_MIN;

  // Parses the whole text; on success the object holds the time, on
  // failure it is invalid. Returns success.
  bool parse(const zuString& text, const zuString& picture);
  // The text of one field. `symbol` is the letter as the picture wrote it
  // (the ASCII symbol or its full-width form); `flags` is format's second
  // argument, passed through and not used here.
  zuString subFormat(unsigned int symbol, int count, unsigned int flags) const;
  // Reads one field at byte `position`; the position after it, or -1.
  // `symbol` as for subFormat.
  int subParse(const zuString& text, unsigned int position, unsigned int symbol, int count);
  // Installs the locale whose digits, meridiem names and zone names the
  // object uses (an unknown or empty name: "en_US").
  void setTimeSymbols(const char* locale);
  // ((hour×60 + minute)×60 + second)×1000 + millisecond + offset + 1, or 0
  // when a field is out of range (hour > 23, minute > 59, second > 59,
  // millisecond > 999, or any negative). `offset` is added as it stands:
  // pass minus the east offset of a local time to get universal time. The
  // result saturates at the int32 range.
  static int epoch(int hour, int minute, int second, int millisecond, int offset);
  // Clears the parse slots.
  void resetFields() { fields_ = Fields(); }
  // Sets the stored count from the parse slots (each unset field 0), with
  // `offset` as epoch takes it; validity from the fields' ranges.
  void setFromFields(int offset);

  Fields fields_;
  int32_t value_ = 0;  // epoch's count
  int32_t zone_ = 0;   // display zone, ms east of Greenwich
  bool valid_ = false;
  bool daylight_ = false;

 private:
  // The displayed time minus one, in milliseconds (may be negative).
  int64_t displayed() const;
  // The displayed milliseconds within the day, 0 .. MILLISPERDAY - 1.
  int dayMillis() const;
  enum class ZoneForm { kBasic, kColon, kQuoted };  // +HHMM, +HH:MM, +HH'MM'

  void formatField(zuString& out, unsigned int symbol, int count) const;
  void appendField(zuString& out, int value, int width, unsigned int letter, int count) const;
  void appendDigits(zuString& out, int value, int width, bool fullWidth) const;
  void appendNativeDigits(zuString& out, int value, int count) const;
  void appendZone(zuString& out, unsigned int symbol, int count, bool fullWidth) const;
  int readDigits(const zuString& text, unsigned int position, int minDigits, int maxDigits,
                 int& value) const;
  int readNativeDigits(const zuString& text, unsigned int position, int& value) const;
  int parseNumber(const zuString& text, unsigned int position, int count, int low, int high,
                  int& slot) const;
  int matchMeridiem(const zuString& text, unsigned int position, int& which) const;
  int matchMeridiemInitial(const zuString& text, unsigned int position, int& which) const;
  int matchZoneName(const zuString& text, unsigned int position, int& minutes,
                    bool& daylight) const;
  int parseOffset(const zuString& text, unsigned int position, ZoneForm form, int& minutes) const;
  int parseZone(const zuString& text, unsigned int position, unsigned int symbol, int count);

  RnLocale locale_;
  zuString meridiem_[2];
  unsigned int zeroDigit_ = '0';  // the locale's digit zero
};
