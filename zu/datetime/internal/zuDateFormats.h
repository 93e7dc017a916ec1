// The named date formats of zuDate and the time forms of zuTime, as
// constant tables indexed by their numbers.
//
//   const DateFormatRow& row = kDateFormats[21];
//   row.picture;                          // "YYYY-MM-DD"
//   kTimeForms[5].fields;                 // 3: hour, minute, second
#pragma once

#include <cstdint>

namespace zu::internal {

// Where a date format takes its picture and locale from.
enum class DateFormatRule : uint8_t {
  kNone,          // no picture (number 0)
  kTable,         // the row's picture, the date's locale
  kFrench,        // the row's picture, always in "fr"
  kKoreanOrCjk,   // the row's picture in "ko"/"kor", else number 24's
  kLocaleMedium,  // the locale's own date format 0 (medium)
  kLocaleShort,   // the locale's own date format 1 (short)
  kEra,           // the era form, built by zuDate itself
};

struct DateFormatRow {
  const char* picture;
  DateFormatRule rule;
};

inline constexpr int kDateFormatCount = 32;
// The most items (symbols and literal characters) of a numeric format's
// picture; the longest, "YYYY'年'MM'月'DD'日'", has six.
inline constexpr int kMaxNumericItems = 8;
inline constexpr int kCjkFormat = 24;

inline constexpr DateFormatRow kDateFormats[kDateFormatCount] = {
    {"", DateFormatRule::kNone},
    {"YYMMDD", DateFormatRule::kTable},
    {"MM/DD/YY", DateFormatRule::kTable},
    {"MM-DD-YY", DateFormatRule::kTable},
    {"MMM D, YYYY", DateFormatRule::kTable},
    {"MMMM D, YYYY", DateFormatRule::kTable},
    {"D MMM YY", DateFormatRule::kTable},
    {"D MMM YYYY", DateFormatRule::kTable},
    {"DD/MM/YY", DateFormatRule::kTable},
    {"DD-MM-YY", DateFormatRule::kTable},
    {"MMM D, YYYY", DateFormatRule::kFrench},
    {"MMMM D, YYYY", DateFormatRule::kFrench},
    {"D MMM YY", DateFormatRule::kFrench},
    {"D MMM YYYY", DateFormatRule::kFrench},
    {"D MMMM YYYY", DateFormatRule::kFrench},
    {"YY/MM/DD", DateFormatRule::kTable},
    {"MM.DD.YY", DateFormatRule::kTable},
    {"DD.MM.YY", DateFormatRule::kTable},
    {"YY.MM.DD", DateFormatRule::kTable},
    {"DD.MM.YYYY", DateFormatRule::kTable},
    {"MM/DD/YYYY", DateFormatRule::kTable},
    {"YYYY-MM-DD", DateFormatRule::kTable},
    {"MMDDYYYY", DateFormatRule::kTable},
    {"MMDDYY", DateFormatRule::kTable},
    {"YYYY'年'MM'月'DD'日'", DateFormatRule::kTable},
    {"", DateFormatRule::kEra},
    {"YYYY'년'MM'월'DD'일'", DateFormatRule::kKoreanOrCjk},
    {"EEEE MMMM D, YYYY", DateFormatRule::kTable},
    {"", DateFormatRule::kLocaleMedium},
    {"DD/MM/YYYY", DateFormatRule::kTable},
    {"", DateFormatRule::kLocaleShort},
    {"YYYY/MM/DD", DateFormatRule::kTable},
};

// A time form: how many fields it shows (hour, minute, second,
// millisecond, in that order), the character between them (0: none), and
// whether the hour is on the 12-hour dial and a day-half marker follows
// after a blank. The first field is written without padding when
// `padHour` is false; the others always with 2 (3 for milliseconds) digits.
struct TimeFormRow {
  uint8_t fields;
  char separator;
  bool padHour;
  bool twelveHour;
};

inline constexpr int kTimeFormCount = 7;

inline constexpr TimeFormRow kTimeForms[kTimeFormCount] = {
    {4, '\0', false, false},  // 140509007
    {4, ':', true, false},    // 14:05:09:007
    {3, ':', true, false},    // 14:05:09
    {2, ':', true, false},    // 14:05
    {4, ':', true, true},     // 02:05:09:007 PM
    {3, ':', true, true},     // 02:05:09 PM
    {2, ':', true, true},     // 02:05 PM
};

}  // namespace zu::internal
