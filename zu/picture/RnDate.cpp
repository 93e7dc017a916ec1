#include "zu/picture/RnDate.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <ctime>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuException.h"
#include "zu/locale/RnData.h"
#include "zu/picture/RnEraTables.h"
#include "zu/picture/internal/RnCivilDays.h"
#include "zu/picture/internal/RnDateSymbols.h"
#include "zu/picture/internal/RnDateTimeUtil.h"
#include "zu/picture/zuCalendarConverters.h"

using zu::internal::CivilDate;
using zu::internal::civilFromDays;
using zu::internal::daysFromCivil;
using zu::internal::daysInMonth;
using zu::internal::isLeapYear;
using zu::internal::NumeralForm;
using zu::internal::NumeralStyle;
using zu::internal::PictureItem;
using zu::internal::PictureReader;
using zu::internal::weekDayIndex;

namespace {

constexpr const char kSymbolLetters[] = "DJMEeYWwGgt";
constexpr int kMinYear = 1;
constexpr int kMaxYear = 9999;
constexpr int64_t kLastDay = daysFromCivil(kMaxYear, 12, 31);
// Chinese eras from this day on are the common era, kept only for display.
constexpr int64_t kCommonEraStart = daysFromCivil(1949, 10, 1);
constexpr uint32_t kEraYearOne = 0x5143;  // 元
constexpr int kMaxAltEras = 8;

// 1 Monday .. 7 Sunday.
int isoWeekDay(int64_t days) {
  return (weekDayIndex(days) + 6) % 7 + 1;
}

// The Monday that starts ISO week 1 of `year`.
int64_t isoWeekOneStart(int64_t year) {
  const int64_t january4 = daysFromCivil(year, 1, 4);
  return january4 - (isoWeekDay(january4) - 1);
}

// The Monday that starts week 1 of a month: the first week with four or
// more days in the month.
int64_t monthWeekOneStart(int64_t year, int month) {
  const int64_t first = daysFromCivil(year, month, 1);
  const int weekDay = isoWeekDay(first);
  const int64_t monday = first - (weekDay - 1);
  return weekDay <= 4 ? monday : monday + 7;
}

// Days from Monday of a weekday numbered Sunday 1 .. Saturday 7.
int offsetFromMonday(int weekDay) {
  return (weekDay + 5) % 7;
}

bool yearInRange(int64_t year) {
  return year >= kMinYear && year <= kMaxYear;
}

// A picture as its items, split once per thread: formatting with the same
// picture again skips the reader.
struct SplitPicture {
  std::string text;  // the picture's bytes
  std::vector<PictureItem> items;
  bool namesAltEra = false;  // holds a "g" symbol
};

struct SplitPictures {
  std::array<SplitPicture, 8> entries;
  std::size_t nextToReplace = 0;
};

const SplitPicture& splitPicture(const zuString& picture) {
  SplitPictures& memo = zu::internal::zuThreadMemo<SplitPictures>::get();
  const char* const bytes = picture;
  const std::size_t length = picture.Length();
  for (const SplitPicture& entry : memo.entries) {
    if (entry.text.size() == length && std::memcmp(entry.text.data(), bytes, length) == 0) {
      return entry;
    }
  }
  SplitPicture& entry = memo.entries[memo.nextToReplace];
  memo.nextToReplace = (memo.nextToReplace + 1) % memo.entries.size();
  try {
    entry.text.clear();
    entry.items.clear();
    entry.namesAltEra = false;
    PictureReader reader(picture, kSymbolLetters);
    for (PictureItem item; reader.next(item);) {
      entry.items.push_back(item);
      if (item.kind == PictureItem::kSymbol && item.character == 'g') entry.namesAltEra = true;
    }
    entry.text.assign(bytes, length);
  } catch (const std::bad_alloc&) {
    entry.text.clear();
    entry.items.clear();
    throw zuExMemory();
  }
  return entry;
}

int64_t currentYear() {
  const std::time_t now = std::time(nullptr);
  std::tm broken{};
  localtime_r(&now, &broken);
  return int64_t{broken.tm_year} + 1900;
}

}  // namespace

const int RnDate::monthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

const zuLiteral& RnDate::getDATE_PICTURE_SYMBOLS() {
  static const zuLiteral kText(kSymbolLetters);
  return kText;
}
const zuLiteral& RnDate::getDEFAULT_DATE_FMT() {
  static const zuLiteral kText("MMM D, YYYY");
  return kText;
}
const zuLiteral& RnDate::getKDL_DATE_FMT1() {
  static const zuLiteral kText("YYYYMMDD");
  return kText;
}
const zuLiteral& RnDate::getKDL_DATE_FMT2() {
  static const zuLiteral kText("YYYY-MM-DD");
  return kText;
}
const zuLiteral& RnDate::getDEFAULT_LOCALE() {
  static const zuLiteral kText("en_US");
  return kText;
}

// --- Construction ---------------------------------------------------------

RnDate::RnDate(int days, const char* locale, int centurySplit) : centurySplit_(centurySplit) {
  setDateSymbols(locale);
  setDays(days);
}

RnDate::RnDate(const zuString& locale, int centurySplit) : centurySplit_(centurySplit) {
  setDateSymbols(locale);
  setToday();
}

RnDate::RnDate(const zuString& value, const zuString& picture, const zuString& locale,
               int centurySplit)
    : centurySplit_(centurySplit) {
  setDateSymbols(locale);
  parse(value, picture);
}

void RnDate::setDateSymbols(const char* locale) {
  const zu::internal::RnDateSymbols& symbols = zu::internal::dateSymbolsFor(locale);
  locale_ = symbols.locale;
  std::copy(std::begin(symbols.monthNames), std::end(symbols.monthNames), monthNames_);
  std::copy(std::begin(symbols.abbrMonthNames), std::end(symbols.abbrMonthNames), abbrMonthNames_);
  std::copy(std::begin(symbols.weekDayNames), std::end(symbols.weekDayNames), weekDayNames_);
  std::copy(std::begin(symbols.abbrWeekDayNames), std::end(symbols.abbrWeekDayNames),
            abbrWeekDayNames_);
  std::copy(std::begin(symbols.eraNames), std::end(symbols.eraNames), eraNames_);
  zeroDigit_ = symbols.zeroDigit;
  altEras_ = symbols.altEras;
  altEraCount_ = symbols.altEraCount;
}

void RnDate::setDays(int64_t days) {
  days_ = days >= 1 && days <= kLastDay ? static_cast<int32_t>(days) : 0;
}

void RnDate::setToday() {
  const std::time_t now = std::time(nullptr);
  std::tm broken{};
  if (local_) {
    localtime_r(&now, &broken);
  } else {
    gmtime_r(&now, &broken);
  }
  setDays(daysFromCivil(int64_t{broken.tm_year} + 1900, broken.tm_mon + 1, broken.tm_mday));
}

RnDate& RnDate::operator+=(int days) {
  if (isValid()) setDays(int64_t{days_} + days);
  return *this;
}

// --- Styles ---------------------------------------------------------------

zuString RnDate::getDateFormat(int style, const zuString& locale) {
  const RnLocale resolved(locale);
  return RnData(resolved.isValid() ? resolved.getName() : "en_US").getDateFormat(style);
}

zuString RnDate::getLocalDateFormat(int style, const zuString& locale) {
  const RnLocale resolved(locale);
  return RnData(resolved.isValid() ? resolved.getName() : "en_US").getLocalDateFormat(style);
}

// --- Fields of the date ---------------------------------------------------

int RnDate::getYear() const {
  return isValid() ? static_cast<int>(civilFromDays(days_).year) : 0;
}
int RnDate::getMonth() const {
  return isValid() ? civilFromDays(days_).month : 0;
}
int RnDate::getMonthDay() const {
  return isValid() ? civilFromDays(days_).day : 0;
}

int RnDate::getYearDay() const {
  if (!isValid()) return 0;
  return static_cast<int>(days_ - daysFromCivil(civilFromDays(days_).year, 1, 1) + 1);
}

int RnDate::getWeekDay() const {
  return isValid() ? weekDayIndex(days_) + 1 : 0;
}

int RnDate::getWeekMonth() const {
  if (!isValid()) return 0;
  const CivilDate date = civilFromDays(days_);
  const int64_t weekOne = monthWeekOneStart(date.year, date.month);
  return days_ < weekOne ? 0 : static_cast<int>((days_ - weekOne) / 7 + 1);
}

int RnDate::getISOYear() const {
  if (!isValid()) return 0;
  // The week belongs to the year of its Thursday.
  const int64_t thursday = days_ - isoWeekDay(days_) + 4;
  return static_cast<int>(civilFromDays(thursday).year);
}

int RnDate::getISOWeek() const {
  if (!isValid()) return 0;
  return static_cast<int>((days_ - isoWeekOneStart(getISOYear())) / 7 + 1);
}

// --- Day numbers from fields ----------------------------------------------

int RnDate::epoch(int day, int month, int year) {
  const int64_t fullYear = int64_t{year} + 1900;
  if (!yearInRange(fullYear) || month < 1 || month > 12) return 0;
  if (day < 1 || day > daysInMonth(fullYear, month)) return 0;
  return static_cast<int>(daysFromCivil(fullYear, month, day));
}

int RnDate::epochWeekYear(int year, int week, int weekDay) {
  const int64_t fullYear = int64_t{year} + 1900;
  if (!yearInRange(fullYear) || week < 1 || week > 53 || weekDay < 1 || weekDay > 7) return 0;
  const int64_t days =
      isoWeekOneStart(fullYear) + int64_t{week - 1} * 7 + offsetFromMonday(weekDay);
  // Week 53 exists only in long years: the day must still be in this ISO year.
  if (days >= isoWeekOneStart(fullYear + 1) || days < 1 || days > kLastDay) return 0;
  return static_cast<int>(days);
}

int RnDate::epochWeekMonth(int year, int month, int week, int weekDay) {
  const int64_t fullYear = int64_t{year} + 1900;
  if (!yearInRange(fullYear) || month < 1 || month > 12 || week < 0 || week > 5 || weekDay < 1 ||
      weekDay > 7) {
    return 0;
  }
  const int64_t days =
      monthWeekOneStart(fullYear, month) + int64_t{week - 1} * 7 + offsetFromMonday(weekDay);
  const int64_t first = daysFromCivil(fullYear, month, 1);
  if (days < first || days >= first + daysInMonth(fullYear, month) || days > kLastDay) return 0;
  return static_cast<int>(days);
}

// --- Formatting -----------------------------------------------------------

zuString RnDate::toString() const {
  return format(getDEFAULT_DATE_FMT());
}

zuString RnDate::format(const zuString& picture) const {
  if (!isValid()) return zuString();
  const CivilDate date = civilFromDays(days_);
  int day = date.day;
  int month = date.month;
  int year = static_cast<int>(date.year);
  if (!getCalendarConverter(zuLiteral(locale_.getName()))->fromGregorian(day, month, year)) {
    return zuString();
  }
  return format(picture, day, month, year);
}

zuString RnDate::format(const zuString& picture, int day, int month, int year) const {
  if (!isValid()) return zuString();
  CalendarFields fields{day, month, year, -1};
  const SplitPicture& split = splitPicture(picture);
  // "Y" counts in the era only when the picture names the era.
  if (altEras_ != nullptr && split.namesAltEra) {
    fields.altEra = getEpochEra(altEras_, altEraCount_, days_);
  }
  zu::internal::TextOut out;
  for (const PictureItem& item : split.items) {
    if (item.kind == PictureItem::kSymbol) {
      subFormat(out, item.character, item.count, item.fullWidth, fields);
    } else {
      out += item.character;
    }
  }
  // A picture that writes nothing gives a null string.
  return out.text();
}

bool RnDate::usesNativeNumerals(unsigned int symbol, int count) const {
  if (locale_.isKorean() || locale_.isChinese()) return true;
  return locale_.isJapanese() && ((symbol == 'M' && count == 4) || (symbol == 'Y' && count == 5));
}

int64_t RnDate::eraYear(int era, int64_t year, int month) const {
  const int64_t inEra = year - altEras_[era].firstYear + 1;
  // Thai years began on 1 April until 1940: January to March belonged to
  // the year before.
  if (altEras_ == gThEra && !(year <= 1940 && month <= 3)) return inEra + 1;
  return inEra;
}

void RnDate::subFormat(zu::internal::TextOut& out, unsigned int symbol, int count, bool fullWidth,
                       const CalendarFields& fields) const {
  NumeralStyle numerals{NumeralForm::kLocale, zeroDigit_};
  if (fullWidth) {
    numerals.form =
        usesNativeNumerals(symbol, count) ? NumeralForm::kNative : NumeralForm::kFullWidth;
    if (symbol == 'Y' && count == 5) count = 4;
  }
  const bool native = numerals.form == NumeralForm::kNative;
  const auto number = [&](int64_t value, int width) {
    zu::internal::appendNumber(out, value, width, numerals);
  };
  const bool monthKnown = fields.month >= 1 && fields.month <= 12;
  switch (symbol) {
    case 'D':
      if (count <= 2) number(fields.day, count);
      break;
    case 'J':
      if (count == 1 || count == 3) number(getYearDay(), count);
      break;
    case 'M':
      if (count <= 2 || (count == 4 && native)) {
        number(fields.month, count == 4 ? 1 : count);
      } else if (count == 3 && monthKnown) {
        out += abbrMonthNames_[fields.month - 1];
      } else if (count == 4 && monthKnown) {
        out += monthNames_[fields.month - 1];
      }
      break;
    case 'E': {
      const int weekDay = weekDayIndex(days_);
      if (count == 1) {
        number(weekDay + 1, 1);
      } else if (count == 3) {
        out += abbrWeekDayNames_[weekDay];
      } else if (count == 4) {
        out += weekDayNames_[weekDay];
      }
      break;
    }
    case 'e':
      if (count == 1) number((weekDayIndex(days_) + 6) % 7 + 1, 1);
      break;
    case 'Y': {
      if (count != 2 && count != 4) break;
      int64_t year = fields.year;
      if (fields.altEra >= 0) {
        const CivilDate date = civilFromDays(days_);
        year = eraYear(fields.altEra, date.year, date.month);
        if (native && year == 1) {
          out += kEraYearOne;
          break;
        }
      }
      if (count == 2) {
        number((year % 100 + 100) % 100, 2);
      } else {
        number(year, fields.altEra >= 0 ? 1 : 4);
      }
      break;
    }
    case 'w':
      if (count == 1) number(getWeekMonth(), 1);
      break;
    case 'W':
      if (count == 2) number(getISOWeek(), 2);
      break;
    case 'G':
      if (count == 1) out += eraNames_[fields.year >= 1 ? RnData::AD : RnData::BC];
      break;
    case 'g':
      if (count <= 3 && fields.altEra >= 0) out += altEras_[fields.altEra].names[count - 1];
      break;
    case 't':
      for (int tab = 0; tab < count; ++tab) out += '\t';
      break;
    default:
      break;
  }
}

// --- Parsing --------------------------------------------------------------

bool RnDate::parse(const zuString& value, const zuString& picture) {
  days_ = 0;
  resetFields();
  unsigned int position = 0;
  PictureReader reader(picture, kSymbolLetters);
  for (PictureItem item; reader.next(item);) {
    const int next =
        item.kind == PictureItem::kSymbol
            ? subParse(value, position, item.character, item.count, item.fullWidth)
            : matchLiteral(value, position, item.character, item.kind == PictureItem::kQuoted);
    if (next < 0) return false;
    position = static_cast<unsigned int>(next);
  }
  if (position != value.Length()) return false;
  return resolveFields();
}

int RnDate::matchLiteral(const zuString& value, unsigned int position, uint32_t literal,
                         bool quoted) {
  const unsigned int length = value.Length();
  if (!quoted && (literal == '+' || literal == '*')) {
    unsigned int next = position;
    int spaces = 0;
    for (;;) {
      unsigned int probe = next;
      if (next >= length || !zu::internal::isPictureSpace(value.UniChar(probe))) break;
      next = probe;
      ++spaces;
    }
    return literal == '+' && spaces == 0 ? -1 : static_cast<int>(next);
  }
  if (position >= length) return -1;
  const uint32_t found = value.UniChar(position);
  if (!quoted && literal == '?') return static_cast<int>(position);
  if (zu::internal::fullWidthToAscii(found) != zu::internal::fullWidthToAscii(literal)) return -1;
  return static_cast<int>(position);
}

int RnDate::readField(const zuString& value, unsigned int position, int& slot, int minDigits,
                      int maxDigits, int low, int high) const {
  if (slot >= 0) return -1;
  int number = 0;
  const int next = zu::internal::readNumber(value, position, minDigits, maxDigits, number);
  if (next < 0 || number < low || number > high) return -1;
  slot = number;
  return next;
}

int RnDate::readName(const zuString& value, unsigned int position, int& slot, const zuString* names,
                     int count, int offset) const {
  if (slot >= 0) return -1;
  int index = -1;
  const int next = zu::internal::matchName(value, position, names, count, index);
  if (next < 0) return -1;
  slot = index + offset;
  return next;
}

int RnDate::readAltEra(const zuString& value, unsigned int position, int form) {
  if (fields_.altEra >= 0 || altEras_ == nullptr) return -1;
  zuString names[kMaxAltEras];
  const int count = altEraCount_ < kMaxAltEras ? altEraCount_ : kMaxAltEras;
  for (int row = 0; row < count; ++row) names[row] = zuLiteral(altEras_[row].names[form]);
  return readName(value, position, fields_.altEra, names, count, 0);
}

int RnDate::readYear(const zuString& value, unsigned int position, int count, bool fullWidth) {
  if (fields_.year >= 0) return -1;
  if (fullWidth && count == 5) count = 4;
  if (count != 2 && count != 4) return -1;
  unsigned int probe = position;
  if (value.UniChar(probe) == kEraYearOne) {
    fields_.year = 1;
    fields_.yearDigits = 4;
    return static_cast<int>(probe);
  }
  const bool native = zu::internal::isNativeNumeralAt(value, position);
  const int next = readField(value, position, fields_.year, count == 2 ? 2 : 1, count, 0, 9999);
  if (next < 0) return -1;
  fields_.twoDigitYear = count == 2 ? 1 : -1;
  fields_.yearDigits =
      native
          ? 4
          : static_cast<int>(value.UniLength(position, static_cast<unsigned int>(next) - position));
  return next;
}

int RnDate::subParse(const zuString& value, unsigned int position, unsigned int symbol, int count,
                     bool fullWidth) {
  switch (symbol) {
    case 'D':
      // A longer run of D is skipped without reading anything.
      if (count > 2) return static_cast<int>(position);
      return readField(value, position, fields_.monthDay, count, 2, 1, 31);
    case 'J':
      if (count != 1 && count != 3) return -1;
      return readField(value, position, fields_.yearDay, count, 3, 1, 366);
    case 'M':
      if (count <= 2) return readField(value, position, fields_.month, count, 2, 1, 12);
      if (count == 4 && fullWidth && usesNativeNumerals('M', 4) &&
          zu::internal::isNativeNumeralAt(value, position)) {
        return readField(value, position, fields_.month, 1, 2, 1, 12);
      }
      if (count == 3) return readName(value, position, fields_.month, abbrMonthNames_, 12, 1);
      if (count == 4) return readName(value, position, fields_.month, monthNames_, 12, 1);
      return -1;
    case 'E':
      if (count == 1) return readField(value, position, fields_.weekDay, 1, 2, 1, 7);
      if (count == 3) return readName(value, position, fields_.weekDay, abbrWeekDayNames_, 7, 1);
      if (count == 4) return readName(value, position, fields_.weekDay, weekDayNames_, 7, 1);
      return -1;
    case 'e': {
      if (count != 1) return -1;
      const int next = readField(value, position, fields_.weekDay, 1, 1, 1, 7);
      if (next >= 0) fields_.weekDay = fields_.weekDay % 7 + 1;
      return next;
    }
    case 'Y':
      return readYear(value, position, count, fullWidth);
    case 'w':
      if (count != 1) return -1;
      return readField(value, position, fields_.weekOfMonth, 1, 1, 0, 5);
    case 'W':
      if (count != 2) return -1;
      return readField(value, position, fields_.weekOfYear, 2, 2, 1, 53);
    case 'G':
      if (count != 1) return -1;
      return readName(value, position, fields_.era, eraNames_, 2, 0);
    case 'g':
      if (count > 3) return -1;
      return readAltEra(value, position, count - 1);
    case 't': {
      unsigned int next = position;
      for (int tab = 0; tab < count; ++tab) {
        if (value[next] != '\t') return -1;
        ++next;
      }
      return static_cast<int>(next);
    }
    default:
      return -1;
  }
}

bool RnDate::resolveYear(int64_t& year) const {
  const Fields& f = fields_;
  if (f.year < 0) {
    if (f.altEra >= 0) return false;
    year = currentYear();
    return true;
  }
  year = f.year;
  if (f.altEra >= 0) {
    if (f.twoDigitYear > 0 && altEras_ == gThEra) {
      year += year % 100 < centurySplit_ ? 2500 : 2400;
    }
    year += altEras_[f.altEra].firstYear - 1;
    if (altEras_ == gThEra) {
      const int month = f.month > 0 ? f.month : 1;
      if (!(year <= 1940 && month <= 3)) --year;
    }
  } else if (f.twoDigitYear > 0 && year < 100) {
    year += centurySplit_ == 0 || year < centurySplit_ ? 2000 : 1900;
  } else if (f.yearDigits < 4) {
    return false;
  } else if (year < 100) {
    year += 1900;
  }
  if (f.era == RnData::BC) year = 1 - year;
  return yearInRange(year);
}

int64_t RnDate::resolveDay(int64_t year) const {
  const Fields& f = fields_;
  const int yearSince1900 = static_cast<int>(year - 1900);
  const int weekDay = f.weekDay >= 0 ? f.weekDay : 2;  // Monday
  if (f.yearDay >= 0) {
    if (f.month >= 0 || f.monthDay >= 0 || f.weekOfMonth >= 0 || f.weekOfYear >= 0) return 0;
    if (f.yearDay > (isLeapYear(year) ? 366 : 365)) return 0;
    return daysFromCivil(year, 1, 1) + f.yearDay - 1;
  }
  if (f.weekOfYear >= 0) {
    if (f.month >= 0 || f.monthDay >= 0 || f.weekOfMonth >= 0) return 0;
    return epochWeekYear(yearSince1900, f.weekOfYear, weekDay);
  }
  if (f.weekOfMonth >= 0) {
    if (f.month < 0 || f.monthDay >= 0) return 0;
    return epochWeekMonth(yearSince1900, f.month, f.weekOfMonth, weekDay);
  }
  int day = f.monthDay >= 0 ? f.monthDay : 1;
  int month = f.month >= 0 ? f.month : 1;
  int calendarYear = static_cast<int>(year);
  if (!getCalendarConverter(zuLiteral(locale_.getName()))->toGregorian(day, month, calendarYear)) {
    return 0;
  }
  if (!yearInRange(calendarYear)) return 0;
  const int64_t days = epoch(day, month, calendarYear - 1900);
  // A weekday read beside a day of the month must be that date's.
  if (days > 0 && f.monthDay >= 0 && f.weekDay >= 0 && weekDayIndex(days) + 1 != f.weekDay) {
    return 0;
  }
  return days;
}

bool RnDate::resolveFields() {
  const Fields& f = fields_;
  if (f.year < 0 && f.month < 0 && f.monthDay < 0 && f.yearDay < 0 && f.weekOfYear < 0 &&
      f.weekOfMonth < 0) {
    return false;
  }
  if (fields_.altEra >= 0 && locale_.isSimplifiedChinese() &&
      altEras_[fields_.altEra].startDay >= kCommonEraStart) {
    fields_.altEra = -1;
  }
  int64_t year = 0;
  if (!resolveYear(year)) return false;
  const int64_t days = resolveDay(year);
  if (days <= 0) return false;
  if (fields_.altEra >= 0 && (days < altEras_[fields_.altEra].startDay ||
                              days >= getNextEra(altEras_, altEraCount_, fields_.altEra))) {
    return false;
  }
  setDays(days);
  return isValid();
}
