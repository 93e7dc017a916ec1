#include "zu/datetime/zuDate.h"

#include <strings.h>

#include <array>
#include <climits>
#include <cstddef>
#include <cstring>
#include <optional>
#include <type_traits>

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuException.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuMessageIds.h"
#include "zu/core/zuUnicode.h"
#include "zu/datetime/internal/zuClock.h"
#include "zu/datetime/internal/zuDateFormats.h"
#include "zu/datetime/internal/zuDateLocale.h"
#include "zu/locale/RnLocale.h"
#include "zu/locale/internal/RnRunTimeStore.h"
#include "zu/picture/RnDate.h"
#include "zu/picture/RnEraTables.h"
#include "zu/picture/internal/RnCivilDays.h"
#include "zu/picture/internal/RnDateSymbols.h"
#include "zu/picture/internal/RnDateTimeUtil.h"
#include "zu/picture/zuCalendarConverters.h"

using zu::internal::CivilDate;
using zu::internal::civilFromDays;
using zu::internal::DateFormatRule;
using zu::internal::daysFromCivil;
using zu::internal::kDateFormats;

static_assert(std::is_trivially_copyable_v<zuDate>, "a date copies as plain words");

namespace {

// Sums of `long` amounts and fields are formed in 64 bits when every amount
// is below kNarrowAmount in size, which keeps them far inside the range
// RnCivilDays works in; otherwise in 128 bits, where no sum can overflow
// and whole 400-year cycles are taken out before RnCivilDays is asked.
using Wide = __int128;
constexpr long kNarrowAmount = 1L << 40;

constexpr int64_t kDaysPer400Years = 146097;
constexpr int64_t kDay1900 = daysFromCivil(1900, 1, 1);
// DaysSince1900() of the last date held.
constexpr long kMaxDaysSince1900 = daysFromCivil(zuDate::kMaxYear, 12, 31) - kDay1900 + 1;
static_assert(zuDate::kMaxYear < zu::internal::civil_detail::kFastYears,
              "every date held converts in RnCivilDays' 32-bit forms");
// Days before each month in a common year.
constexpr int kDaysBeforeMonth[13] = {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
// RnDate holds these years only.
constexpr long kLastPictureYear = 9999;
// The bridge's "YYYY" reads a year below 100 as 19YY.
constexpr long kShortYearBase = 1900;

bool narrow(long amount) {
  return amount > -kNarrowAmount && amount < kNarrowAmount;
}

// Floor division.
template <class Int>
Int floorDiv(Int value, int64_t divisor) {
  const Int quotient = value / divisor;
  return value % divisor < 0 ? quotient - 1 : quotient;
}

long clampToLong(int64_t value) {
  return value;
}
long clampToLong(Wide value) {
  if (value > LONG_MAX) return LONG_MAX;
  if (value < LONG_MIN) return LONG_MIN;
  return static_cast<long>(value);
}

// Fields on their way to validation (Set), out of range or not.
struct Fields {
  long year;
  long month;
  long day;
};

// The date `offset` days after the first of `month` (1..12) in `year`.
Fields shiftDays(int64_t year, int month, int64_t offset) {
  if (offset >= 0 && offset < 28) return {year, month, offset + 1};  // every month has 28 days
  const CivilDate date = civilFromDays(daysFromCivil(year, month, 1) + offset);
  return {date.year, date.month, date.day};
}

Fields shiftDays(Wide year, int month, Wide offset) {
  const Wide yearCycles = floorDiv(year, 400);
  const Wide dayCycles = floorDiv(offset, kDaysPer400Years);
  const Fields inCycle = shiftDays(static_cast<int64_t>(year - yearCycles * 400), month,
                                   static_cast<int64_t>(offset - dayCycles * kDaysPer400Years));
  return {clampToLong(inCycle.year + (yearCycles + dayCycles) * 400), inCycle.month, inCycle.day};
}

// Add's normalisation of summed fields: months above 12 carry into the
// years, then days beyond the month into the following months; a month or
// day below 1 is left for validation to refuse.
template <class Int>
Fields addForward(Int year, Int month, Int day) {
  if (month > 12) {
    const Int wholeYears = (month - 1) / 12;
    year += wholeYears;
    month -= wholeYears * 12;
  }
  if (month < 1 || day < 1) return {clampToLong(year), clampToLong(month), clampToLong(day)};
  return shiftDays(year, static_cast<int>(month), day - 1);
}

// Subtract's normalisation, mktime's: the month index (0..11) takes whole
// years, then the day counts from the first of that month.
template <class Int>
Fields subtractBoth(Int year, Int monthIndex, Int day) {
  const Int wholeYears = floorDiv(monthIndex, 12);
  const int month = static_cast<int>(monthIndex - wholeYears * 12) + 1;
  return shiftDays(year + wholeYears, month, day - 1);
}

// Add and Subtract on the fields of a date, in 64 bits when the amounts
// allow it, else in 128.
Fields addAmounts(long year, long month, long day, long years, long months, long days, long carry) {
  if (narrow(years) && narrow(months) && narrow(days) && narrow(carry)) {
    return addForward<int64_t>(year + years, month + months, day + days + carry);
  }
  return addForward<Wide>(Wide{year} + years, Wide{month} + months, Wide{day} + days + carry);
}

// Add past the common case, out of line so that the common case needs no
// stack frame.
[[gnu::noinline]] void addSlowly(zuDate& date, long years, long months, long days, long carry) {
  const Fields moved =
      addAmounts(date.Year(), date.Month(), date.Day(), years, months, days, carry);
  date.Set(moved.year, moved.month, moved.day);
}

[[gnu::noinline]] Fields subtractAmounts(long year, long month, long day, long years, long months,
                                         long days, long borrow) {
  if (narrow(years) && narrow(months) && narrow(days) && narrow(borrow)) {
    return subtractBoth<int64_t>(year - years, month - 1 - months, day - days - borrow);
  }
  return subtractBoth<Wide>(Wide{year} - years, Wide{month} - 1 - months,
                            Wide{day} - days - borrow);
}

// The rows of the Japanese era table.
int japaneseEraCount() {
  static const int count = getAltEraTableCount(RnLocale("ja"));
  return count;
}

bool sameName(const char* name, const char* other) {
  return strcasecmp(name, other) == 0;
}

bool isKorean(const char* locale) {
  return sameName(locale, "ko") || sameName(locale, "kor");
}

bool isJapanese(const char* locale) {
  return sameName(locale, "ja") || sameName(locale, "jpn") || sameName(locale, "ja-ja");
}

// The picture and locale of a format in 1..31 other than 25.
struct MappedFormat {
  zuString picture;
  const char* locale;
};

// The table's pictures as literal strings, made once.
using TablePictures = std::array<zuString, zu::internal::kDateFormatCount>;

[[gnu::noinline]] const TablePictures& tablePictures() {
  static const TablePictures pictures = [] {
    TablePictures made;
    for (int row = 0; row < zu::internal::kDateFormatCount; ++row) {
      made[row] = zuString(1, kDateFormats[row].picture);
    }
    return made;
  }();
  return pictures;
}

inline const zuString& tablePicture(int fmt) {
  return tablePictures()[fmt];
}

MappedFormat mapDateFormat(int fmt, const char* locale) {
  switch (kDateFormats[fmt].rule) {
    case DateFormatRule::kFrench:
      return {tablePicture(fmt), "fr"};
    case DateFormatRule::kKoreanOrCjk:
      return {tablePicture(isKorean(locale) ? fmt : zu::internal::kCjkFormat), locale};
    case DateFormatRule::kLocaleMedium:
      return {RnDate::getDateFormat(0, zuString(1, locale)), locale};
    case DateFormatRule::kLocaleShort:
      return {RnDate::getDateFormat(1, zuString(1, locale)), locale};
    default:
      return {tablePicture(fmt), locale};
  }
}

// The date that the eight digits of a packed value name under the picture
// "YYYYMMDD": a year below 100 reads as 19YY. `days` is RnDate's day number,
// 0 when the digits name no date RnDate holds.
struct PictureDate {
  int days = 0;
  int year = 0;
  int month = 0;
  int day = 0;
};

PictureDate pictureDate(long year, long month, long day) {
  if (year > kLastPictureYear || month < 1 || month > 12 || day < 1) return {};
  if (year < 100) year += kShortYearBase;
  if (day > zuDate::DaysInMonth(year, month)) return {};
  const int y = static_cast<int>(year);
  const int m = static_cast<int>(month);
  const int d = static_cast<int>(day);
  return {static_cast<int>(daysFromCivil(y, m, d)), y, m, d};
}

// Making an RnDate loads some forty names of its locale; each thread keeps
// one per locale it formats in and moves it to the date at hand.
class BridgeDate : public RnDate {
 public:
  BridgeDate(int days, const char* locale) : RnDate(days, locale) {}
  using RnDate::setDays;
};

struct BridgeMemo {
  struct Entry {
    const char* locale = nullptr;
    uint64_t generation = 0;
    std::optional<BridgeDate> date;
    uint32_t zeroDigit = '0';  // the locale's, as the date writes its numbers
  };
  std::array<Entry, 4> entries;
  std::size_t nextToReplace = 0;
};

// The thread's entry for `locale`, its RnDate set to day `days`. It is made
// again when the run-time locale data changed since it was made.
const BridgeMemo::Entry& bridgeEntry(int days, const char* locale) {
  BridgeMemo& memo = zu::internal::zuThreadMemo<BridgeMemo>::get();
  const uint64_t generation = zu::internal::gRunTimeDataGeneration.load(std::memory_order_acquire);
  for (BridgeMemo::Entry& entry : memo.entries) {
    if (entry.locale == locale && entry.generation == generation) {
      entry.date->setDays(days);
      return entry;
    }
  }
  BridgeMemo::Entry& entry = memo.entries[memo.nextToReplace];
  memo.nextToReplace = (memo.nextToReplace + 1) % memo.entries.size();
  entry.locale = nullptr;
  entry.date.emplace(days, locale);
  entry.zeroDigit = zu::internal::dateSymbolsFor(locale).zeroDigit;
  entry.locale = locale;
  entry.generation = generation;
  return entry;
}

const RnDate& bridgeDate(int days, const char* locale) {
  return *bridgeEntry(days, locale).date;
}

// The zero digit the picture engine writes numbers from in `locale`.
uint32_t localeZeroDigit(const char* locale) {
  const BridgeMemo& memo = zu::internal::zuThreadMemo<BridgeMemo>::get();
  const uint64_t generation = zu::internal::gRunTimeDataGeneration.load(std::memory_order_acquire);
  for (const BridgeMemo::Entry& entry : memo.entries) {
    if (entry.locale == locale && entry.generation == generation) return entry.zeroDigit;
  }
  return bridgeEntry(1, locale).zeroDigit;
}

zuString formatThrough(const PictureDate& date, const zuString& picture, const char* locale) {
  if (date.days == 0) return zuString::EmptyString();
  const RnDate& engine = bridgeDate(date.days, locale);
  if (isAltCalendarEnabled()) return engine.format(picture);
  // The locale calendar is the Gregorian one: its fields are the date's own.
  return engine.format(picture, date.day, date.month, date.year);
}

// The formats whose pictures hold numbers and literals only: day and month
// with one or two digits, the year with two or four. Such a format is
// written here with the picture engine's own rules (numbers in the locale's
// digits, padded with its zero; "YY" the year mod 100), into a buffer,
// without an RnDate. The pictures are split by the engine's reader once.
constexpr std::size_t kTemplateBytes = 32;

struct NumericItem {
  char symbol;       // 'D', 'M', 'Y', or 0 for a literal
  uint8_t width;     // the symbol's count
  uint32_t literal;  // the literal's code point
};

struct NumericLayout {
  int count = 0;  // 0: the format is not numeric
  NumericItem items[zu::internal::kMaxNumericItems];
  // When every field has a fixed width (2 or 4): the text with ASCII zeros
  // in the fields, and where the fields go. Numbers in ASCII digits are
  // then the template with the fields stored over it.
  bool fixedWidth = false;
  uint8_t length = 0;
  char text[kTemplateBytes] = {};
  uint8_t dayAt = 0;
  uint8_t monthAt = 0;
  uint8_t yearAt = 0;
  bool longYear = false;  // "YYYY", else "YY"
};

using NumericLayouts = std::array<NumericLayout, zu::internal::kDateFormatCount>;

NumericLayouts makeNumericLayouts() {
  NumericLayouts layouts{};
  const zuString& symbols = RnDate::getDATE_PICTURE_SYMBOLS();
  for (int row = 1; row < zu::internal::kDateFormatCount; ++row) {
    const DateFormatRule rule = kDateFormats[row].rule;
    if (rule != DateFormatRule::kTable && rule != DateFormatRule::kKoreanOrCjk) continue;
    const zuString picture(1, kDateFormats[row].picture);
    NumericLayout layout;
    bool numeric = true;
    zu::internal::PictureReader reader(picture, symbols);
    for (zu::internal::PictureItem item; numeric && reader.next(item);) {
      if (layout.count == zu::internal::kMaxNumericItems) {
        numeric = false;
      } else if (item.kind != zu::internal::PictureItem::kSymbol) {
        layout.items[layout.count++] = {0, 0, item.character};
      } else {
        const char symbol = static_cast<char>(item.character);
        numeric = !item.fullWidth && (((symbol == 'D' || symbol == 'M') && item.count <= 2) ||
                                      (symbol == 'Y' && (item.count == 2 || item.count == 4)));
        layout.items[layout.count++] = {symbol, static_cast<uint8_t>(item.count), 0};
      }
    }
    if (numeric) layouts[row] = layout;
  }
  return layouts;
}

char* appendCodePoint(char* out, uint32_t codePoint) {
  if (codePoint < 0x80) {
    *out = static_cast<char>(codePoint);
    return out + 1;
  }
  return out + zuUCStoUTF8(out, codePoint);
}

// "00" to "99".
constexpr std::array<char, 200> makeDigitPairs() {
  std::array<char, 200> pairs{};
  for (int value = 0; value < 100; ++value) {
    pairs[2 * value] = static_cast<char>('0' + value / 10);
    pairs[2 * value + 1] = static_cast<char>('0' + value % 10);
  }
  return pairs;
}

constexpr std::array<char, 200> kDigitPairs = makeDigitPairs();

// `value` (0..99) in ASCII with at least `width` (1 or 2) digits.
char* appendAsciiPair(char* out, int value, int width) {
  if (value < 10 && width < 2) {
    *out = static_cast<char>('0' + value);
    return out + 1;
  }
  std::memcpy(out, &kDigitPairs[2 * value], 2);
  return out + 2;
}

// `value` (0..9999) with at least `width` digits counted from `zero`, for
// a zero other than ASCII's.
[[gnu::noinline]] char* appendLocaleDigits(char* out, int value, int width, uint32_t zero) {
  char digits[4];
  int count = 0;
  do {
    digits[count++] = static_cast<char>(value % 10);
    value /= 10;
  } while (value != 0);
  for (int pad = count; pad < width; ++pad) out = appendCodePoint(out, zero);
  while (count > 0) out = appendCodePoint(out, zero + static_cast<uint32_t>(digits[--count]));
  return out;
}

// The picture engine's numbers of a numeric layout: "D" and "M" with one or
// two digits, "YY" the year mod 100, "YYYY" the year (1..9999) with four.
char* writeNumeric(char* out, const NumericLayout& layout, int year, int month, int day,
                   uint32_t zero) {
  for (int index = 0; index < layout.count; ++index) {
    const NumericItem& item = layout.items[index];
    if (item.symbol == 0) {
      out = appendCodePoint(out, item.literal);
      continue;
    }
    const int value = item.symbol == 'D' ? day : item.symbol == 'M' ? month : year;
    if (zero != '0') {
      out = appendLocaleDigits(out, item.width == 2 && item.symbol == 'Y' ? value % 100 : value,
                               item.width, zero);
    } else if (item.symbol != 'Y') {
      out = appendAsciiPair(out, value, item.width);
    } else {
      if (item.width == 4) out = appendAsciiPair(out, value / 100, 2);
      out = appendAsciiPair(out, value % 100, 2);
    }
  }
  return out;
}

// Adds the template to each layout that has one day, one month and one
// year field, each of a fixed width (2, or 4 for the year).
NumericLayouts withTemplates(NumericLayouts layouts) {
  for (NumericLayout& layout : layouts) {
    if (layout.count == 0) continue;
    char text[kTemplateBytes + 16];
    char* end = text;
    int days = 0, months = 0, years = 0;
    bool fixed = true;
    for (int index = 0; index < layout.count && fixed; ++index) {
      const NumericItem& item = layout.items[index];
      const auto at = static_cast<uint8_t>(end - text);
      if (item.symbol == 'D') {
        layout.dayAt = at;
        ++days;
      } else if (item.symbol == 'M') {
        layout.monthAt = at;
        ++months;
      } else if (item.symbol == 'Y') {
        layout.yearAt = at;
        layout.longYear = item.width == 4;
        ++years;
      }
      fixed = item.symbol == 0 || item.width != 1;
      NumericLayout single;
      single.count = 1;
      single.items[0] = item;
      end = writeNumeric(end, single, 0, 0, 0, '0');
      fixed = fixed && end - text <= static_cast<std::ptrdiff_t>(kTemplateBytes);
    }
    if (!fixed || days != 1 || months != 1 || years != 1) continue;
    layout.fixedWidth = true;
    layout.length = static_cast<uint8_t>(end - text);
    std::memcpy(layout.text, text, layout.length);
  }
  return layouts;
}

// The numbers of a fixed-width layout in ASCII digits.
char* writeTemplate(char* out, const NumericLayout& layout, int year, int month, int day) {
  std::memcpy(out, layout.text, kTemplateBytes);
  appendAsciiPair(out + layout.dayAt, day, 2);
  appendAsciiPair(out + layout.monthAt, month, 2);
  char* const yearAt = out + layout.yearAt;
  if (layout.longYear) {
    appendAsciiPair(appendAsciiPair(yearAt, year / 100, 2), year % 100, 2);
  } else {
    appendAsciiPair(yearAt, year % 100, 2);
  }
  return out + layout.length;
}

// The layout of `fmt` (1..31) in `locale`; null when the format is not
// numeric there.
[[gnu::noinline]] const NumericLayouts& numericLayouts() {
  static const NumericLayouts layouts = withTemplates(makeNumericLayouts());
  return layouts;
}

inline const NumericLayout* numericLayout(int fmt, const char* locale) {
  const NumericLayouts& layouts = numericLayouts();
  if (kDateFormats[fmt].rule == DateFormatRule::kKoreanOrCjk && !isKorean(locale)) {
    fmt = zu::internal::kCjkFormat;
  }
  return layouts[fmt].count != 0 ? &layouts[fmt] : nullptr;
}

// ASCII digits only, at most nine of them (so that the value fits 32 bits);
// -1 otherwise.
long readDigits(const zuString& text) {
  const unsigned int length = text.Length();
  if (length == 0 || length > 9) return -1;
  long value = 0;
  for (unsigned int i = 0; i < length; ++i) {
    const char digit = text[i];
    if (digit < '0' || digit > '9') return -1;
    value = value * 10 + (digit - '0');
  }
  return value;
}

zuString trimmed(zuString text) {
  text.Trim();
  text.TrimStart();
  return text;
}

// Cuts `text` at the first of two markers (UTF-8 texts): the part before
// it goes to `token`, the part after it stays in `text`. False when neither
// occurs.
bool splitAt(zuString& text, const char* marker, const char* otherMarker, zuString& token) {
  unsigned int at = 0;
  unsigned int otherAt = 0;
  const bool found = text.FindCase(marker, at) != 0;
  const bool otherFound = text.FindCase(otherMarker, otherAt) != 0;
  if (!found && !otherFound) return false;
  const bool first = found && (!otherFound || at < otherAt);
  const unsigned int cut = first ? at : otherAt;
  const unsigned int skip = static_cast<unsigned int>(std::strlen(first ? marker : otherMarker));
  token = trimmed(text.Substring(0, cut));
  text = text.Substring(cut + skip, text.Length());
  return true;
}

void appendPadded(zuString& out, long value, unsigned int width, char pad) {
  char digits[24];
  unsigned int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value > 0);
  for (unsigned int i = count; i < width; ++i) out += pad;
  while (count > 0) out += digits[--count];
}

}  // namespace

// --- Construction -------------------------------------------------------------

zuDate::zuDate() : locale_(zu::internal::defaultDateLocale()) {
  CurrentDate(1);
}

zuDate::zuDate(long year, long month, long day) : locale_(zu::internal::defaultDateLocale()) {
  Set(year, month, day);
}

zuDate::zuDate(int64_t time, int local) : locale_(zu::internal::defaultDateLocale()) {
  Set(time, local);
}

zuDate::zuDate(const zuString& text, zuDateFmt fmt, long centurySplit, const zuString& locale)
    : locale_(zu::internal::dateLocale(locale)) {
  CenturySplit(centurySplit);
  Parse(text, fmt);
}

zuDate::zuDate(const char* text, zuDateFmt fmt, long centurySplit, const zuString& locale)
    : zuDate(zuString(text), fmt, centurySplit, locale) {}

// --- Calendar rules -------------------------------------------------------------

int zuDate::LeapYear(long year) {
  return zu::internal::isLeapYear(year) ? 1 : 0;
}

long zuDate::DaysInMonth(long year, long month) {
  if (month < 1 || month > 12) return -1;
  return month == 2 && LeapYear(year) ? 29 : RnDate::monthDays[month - 1];
}

// --- Setting and reading ----------------------------------------------------------

void zuDate::Validate(long year, long month, long day) {
  if (year < 0 || year > kMaxYear) ZuExThrow(zuMessageIds::kInvalidYear);
  if (month < 1 || month > 12) ZuExThrow(zuMessageIds::kInvalidMonth);
  if (day < 1 || day > DaysInMonth(year, month)) ZuExThrow(zuMessageIds::kInvalidDay);
}

void zuDate::Set(long year, long month, long day) {
  Validate(year, month, day);
  Store(year, month, day);
}

void zuDate::Set(int64_t time, int local) {
  zu::internal::CalendarFields fields;
  if (!zu::internal::breakDown(time, local != 0, fields)) ZuExThrow(zuMessageIds::kInvalidYear);
  Set(fields.year, fields.month, fields.day);
}

void zuDate::CurrentDate(int local) {
  const zu::internal::CalendarFields now = zu::internal::readClock(local != 0);
  Set(now.year, now.month, now.day);
}

int zuDate::CenturySplit(long split) {
  if (split < 0) return 0;
  centurySplit_ = static_cast<int32_t>(split % 100);
  return 1;
}

void zuDate::Locale(const zuString& name) {
  locale_ = zu::internal::dateLocale(name);
}

zuString zuDate::Locale() const {
  return zuString(1, locale_);
}

long zuDate::Year4(long year) const {
  // The century is read once per process.
  static const long century = zu::internal::readClock(true).year / 100;
  if (year > 100) return year;
  const long widened = century * 100 + year;
  return year < centurySplit_ || centurySplit_ == 0 ? widened : widened - 100;
}

// --- Arithmetic ---------------------------------------------------------------------

const zuDate& zuDate::Add(long years, long months, long days) {
  AddCarry(years, months, days, 0);
  return *this;
}

const zuDate& zuDate::Subtract(long years, long months, long days) {
  SubtractBorrow(years, months, days, 0);
  return *this;
}

void zuDate::AddCarry(long years, long months, long days, long carry) {
  if (narrow(years) && narrow(months) && narrow(days) && narrow(carry)) {
    const int64_t year = Year() + years;
    const int64_t month = Month() + months;
    const int64_t day = Day() + days + carry;
    // Most sums need no carry: every month has a 28th.
    if (year >= 0 && year <= kMaxYear && month >= 1 && month <= 12 && day >= 1 && day <= 28) {
      Store(year, month, day);
      return;
    }
  }
  addSlowly(*this, years, months, days, carry);
}

void zuDate::SubtractBorrow(long years, long months, long days, long borrow) {
  const Fields moved = subtractAmounts(Year(), Month(), Day(), years, months, days, borrow);
  Set(moved.year, moved.month, moved.day);
}

zuDate zuDate::operator+(long days) const {
  zuDate moved(*this);
  moved += days;
  return moved;
}

zuDate zuDate::operator-(long days) const {
  zuDate moved(*this);
  moved -= days;
  return moved;
}

// --- Comparison and differences -------------------------------------------------------

int zuDate::Compare(const zuDate& other) const {
  return date_ > other.date_ ? 1 : (date_ < other.date_ ? -1 : 0);
}

int zuDate::Difference(const zuDate& other, long& years, long& months, long& days) const {
  years = months = days = 0;
  const int order = Compare(other);
  if (order == 0) return 0;
  const zuDate& later = order > 0 ? *this : other;
  const zuDate& earlier = order > 0 ? other : *this;
  const bool bothLastDays = later.Day() == DaysInMonth(later.Year(), later.Month()) &&
                            earlier.Day() == DaysInMonth(earlier.Year(), earlier.Month());
  if (!bothLastDays) {
    days = later.Day() - earlier.Day();
    if (days < 0) {
      days += later.Month() > 1 ? DaysInMonth(later.Year(), later.Month() - 1) : 31;
      --months;
    }
  }
  months += later.Month() - earlier.Month();
  if (months < 0) {
    months += 12;
    --years;
  }
  years += later.Year() - earlier.Year();
  return order;
}

int zuDate::DaysDifference(const zuDate& other, long& days) const {
  const long difference = DaysSince1900() - other.DaysSince1900();
  days = difference < 0 ? -difference : difference;
  return Compare(other);
}

long zuDate::DaysSince1900() const {
  // Unsigned: the packed value is never negative, and the compiler then
  // needs no sign corrections for the divisions.
  const uint32_t packed = static_cast<uint32_t>(date_);
  const uint32_t year = packed / 10000;
  const uint32_t monthDay = packed - year * 10000;
  const uint32_t month = monthDay / 100;
  const uint32_t day = monthDay - month * 100;
  if (year < 1900) {
    // Only the day of the year: the count from 1900 does not reach back.
    const long leapDay = month > 2 && LeapYear(year) ? 1 : 0;
    return kDaysBeforeMonth[month] + leapDay + day;
  }
  // A stored date has its fields in range, and its year below 2^20.
  return static_cast<long>(zu::internal::daysFromCivilInRange(year, month, day) - kDay1900 + 1);
}

void zuDate::DaysSince1900(long n) {
  if (n <= 0) ZuExThrow(zuMessageIds::kInvalidDay);
  if (n > kMaxDaysSince1900) ZuExThrow(zuMessageIds::kInvalidYear);
  const CivilDate date = zu::internal::civilFromDaysInRange(kDay1900 + n - 1);
  Store(static_cast<long>(date.year), date.month, date.day);
}

int zuDate::DayOfWeekIndex() const {
  return static_cast<int>(DaysSince1900() % 7);
}

long zuDate::JulianDate() const {
  const long month = Month();
  const long leapDay = month > 2 && LeapYear(Year()) ? 1 : 0;
  return kDaysBeforeMonth[month] + leapDay + Day() - 1;
}

// --- Text -------------------------------------------------------------------------------

zuString zuDate::Format(zuDateFmt fmt) const {
  if (fmt == ERA) return GetAltCalendarDateFormat();
  if (fmt < 1 || fmt >= zu::internal::kDateFormatCount) {
    zuString digits;
    digits.Number(static_cast<long>(date_));
    return digits;
  }
  char text[kDigitsBytes];
  const unsigned int length = FormatDigits(fmt, text);
  if (length != kNotDigits) return zuString::FromBytes(text, length);
  if (date_ == 0) return zuString::EmptyString();
  const PictureDate date = pictureDate(Year(), Month(), Day());
  if (date.days == 0) return zuString::EmptyString();
  const MappedFormat mapped = mapDateFormat(fmt, locale_);
  return formatThrough(date, mapped.picture, mapped.locale);
}

unsigned int zuDate::FormatDigits(zuDateFmt fmt, char* out) const {
  if (fmt < 1 || fmt >= zu::internal::kDateFormatCount || fmt == ERA) return kNotDigits;
  const NumericLayout* layout = numericLayout(fmt, locale_);
  // A calendar other than the Gregorian one is left to the picture engine.
  if (layout == nullptr || isAltCalendarEnabled()) return kNotDigits;
  if (date_ == 0) return 0;
  // The bridge's view of the fields (see pictureDate), without its day
  // number; unsigned, as a stored date is never negative.
  const uint32_t packed = static_cast<uint32_t>(date_);
  int year = static_cast<int>(packed / 10000);
  const uint32_t monthDay = packed % 10000;
  const int month = static_cast<int>(monthDay / 100);
  const int day = static_cast<int>(monthDay % 100);
  if (year > kLastPictureYear) return 0;
  if (year < 100) year += kShortYearBase;
  if (day > zu::internal::daysInMonth(year, month)) return 0;
  const uint32_t zero = localeZeroDigit(locale_);
  char* const end = zero == '0' && layout->fixedWidth
                        ? writeTemplate(out, *layout, year, month, day)
                        : writeNumeric(out, *layout, year, month, day, zero);
  return static_cast<unsigned int>(end - out);
}

int zuDate::Parse(const zuString& text, zuDateFmt fmt) const {
  if (fmt < 1 || fmt >= zu::internal::kDateFormatCount) return 0;
  if (fmt == ERA) return ParseEra(text);
  const MappedFormat mapped = mapDateFormat(fmt, locale_);
  const RnDate read(text, mapped.picture, zuString(1, mapped.locale), centurySplit_);
  if (!read.isValid()) return 0;
  date_ = read.getYear() * 10000 + read.getMonth() * 100 + read.getMonthDay();
  return 1;
}

int zuDate::ParseEra(const zuString& text) const {
  zuString rest = text;
  zuString yearToken, monthToken, dayToken;
  if (!splitAt(rest, "年", "년", yearToken) || !splitAt(rest, "月", "월", monthToken) ||
      !splitAt(rest, "日", "일", dayToken)) {
    return 0;
  }
  long year = readDigits(yearToken);
  if (year < 0) year = GetYearFromAltCalendar(yearToken);
  const long month = readDigits(monthToken);
  const long day = readDigits(dayToken);
  if (year < 0 || month < 1 || month > 12 || day < 1 || day > 31) return 0;
  year = Year4(year);
  if (year > kMaxYear || day > DaysInMonth(year, month)) return 0;
  Store(year, month, day);
  return 1;
}

const char* zuDate::MapAsianLocale(zuDateFmt fmt) const {
  if (fmt == YYYY_MM_DD_HANGUL) return "en";
  if (fmt == YYYY_MM_DD_KANJI && isKorean(locale_)) return "ja";
  return locale_;
}

zuString zuDate::DayOfWeek(zuDateFmt fmt) const {
  static const zuLiteral kPicture("EEEE");
  return formatThrough(pictureDate(Year(), Month(), Day()), kPicture, MapAsianLocale(fmt));
}

zuString zuDate::MonthNameIn(long month, const char* picture, const char* locale) const {
  if (month < 0 || month > 12) return zuString::EmptyString();
  if (month == 0) month = Month();
  return formatThrough(pictureDate(kShortYearBase, month, 1), zuString(1, picture), locale);
}

zuString zuDate::MonthName(long month, zuDateFmt fmt) const {
  return MonthNameIn(month, "MMMM", MapAsianLocale(fmt));
}

zuString zuDate::ShortMonthName(long month, zuDateFmt fmt) const {
  return MonthNameIn(month, "MMM", MapAsianLocale(fmt));
}

zuString zuDate::MonthNameFr(long month) const {
  return MonthNameIn(month, "MMMM", "fr");
}

zuString zuDate::ShortMonthNameFr(long month) const {
  return MonthNameIn(month, "MMM", "fr");
}

zuString zuDate::GetAltCalendarDateFormat() const {
  if (date_ == 0) return zuString::EmptyString();
  const long year = Year();
  zuString out;
  int era = -1;
  if (isJapanese(locale_)) {
    const int32_t days = static_cast<int32_t>(
        daysFromCivil(year, static_cast<int>(Month()), static_cast<int>(Day())));
    era = getEpochEra(gJpEra, japaneseEraCount(), days);
  }
  if (era >= 0) {
    out = gJpEra[era].names[2];
    out += ' ';
    appendPadded(out, year - gJpEra[era].firstYear + 1, 1, ' ');
  } else {
    appendPadded(out, year, 4, ' ');
  }
  const bool korean = isKorean(locale_);
  out += korean ? "년" : "年";
  appendPadded(out, Month(), 2, '0');
  out += korean ? "월" : "月";
  appendPadded(out, Day(), 2, '0');
  out += korean ? "일" : "日";
  return out;
}

long zuDate::GetYearFromAltCalendar(zuString text) const {
  if (!isJapanese(locale_)) return -1;
  text = trimmed(text);
  unsigned int nameEnd = 0;
  while (nameEnd < text.Length() && text[nameEnd] != ' ' && text[nameEnd] != '\t' &&
         (text[nameEnd] < '0' || text[nameEnd] > '9')) {
    ++nameEnd;
  }
  const zuString name = trimmed(text.Substring(0, nameEnd));
  if (name.IsEmpty()) return -1;
  const long number = readDigits(trimmed(text.Substring(nameEnd, text.Length())));
  if (number < 0) return -1;
  const int count = japaneseEraCount();
  for (int era = 0; era < count; ++era) {
    if (name.CompareNoCase(gJpEra[era].names[2]) == 0) return gJpEra[era].firstYear + number - 1;
  }
  return -1;
}

// --- Free comparisons ---------------------------------------------------------------------

int operator==(const zuDate& left, const zuDate& right) {
  return left.Compare(right) == 0;
}
int operator!=(const zuDate& left, const zuDate& right) {
  return left.Compare(right) != 0;
}
int operator<(const zuDate& left, const zuDate& right) {
  return left.Compare(right) < 0;
}
int operator<=(const zuDate& left, const zuDate& right) {
  return left.Compare(right) <= 0;
}
int operator>(const zuDate& left, const zuDate& right) {
  return left.Compare(right) > 0;
}
int operator>=(const zuDate& left, const zuDate& right) {
  return left.Compare(right) >= 0;
}
