#include "zu/picture/RnTime.h"

#include "zu/locale/RnData.h"
#include "zu/picture/internal/RnDateTimeUtil.h"
#include "zu/picture/internal/RnLocalZone.h"
#include "zu/picture/internal/RnTimeZoneTable.h"

using namespace zu::internal;

namespace {

constexpr char kSymbols[] = "hkHKMSFAZzt";

int32_t saturate(int64_t value) {
  if (value > INT32_MAX) return INT32_MAX;
  if (value < INT32_MIN) return INT32_MIN;
  return static_cast<int32_t>(value);
}

int64_t floorDiv(int64_t value, int64_t divisor) {
  const int64_t quotient = value / divisor;
  return (value % divisor < 0) ? quotient - 1 : quotient;
}

RnLocale resolveLocale(const char* name) {
  RnLocale locale(name);
  return locale.isValid() ? locale : RnLocale(RnLocale::getDEFAULT_LOCALE());
}

// Appends an ASCII character, or its full-width form.
void appendChar(zuString& out, char ascii, bool fullWidth) {
  if (fullWidth) {
    out += static_cast<unsigned int>(asciiToFullWidth(static_cast<unsigned char>(ascii)));
  } else {
    out += ascii;
  }
}

void appendAscii(zuString& out, const char* text, bool fullWidth) {
  for (; *text != '\0'; ++text) appendChar(out, *text, fullWidth);
}

bool isFullWidth(unsigned int codePoint) {
  return fullWidthToAscii(codePoint) != codePoint;
}

// The symbol as the picture wrote it: the ASCII letter or its full-width form.
unsigned int writtenSymbol(const PictureItem& item) {
  return item.fullWidth ? asciiToFullWidth(item.character) : item.character;
}

// The code point at `pos` folded to ASCII where it is a full-width form;
// `pos` moves past it. 0 at the end.
unsigned int foldedAt(const zuString& text, unsigned int& pos) {
  const unsigned int start = pos;
  const unsigned int codePoint = text.UniChar(pos);
  if (pos == start && start < text.Length()) ++pos;
  return fullWidthToAscii(codePoint);
}

// Matches one of the two forms (ASCII and full-width) of a keyword.
int matchKeyword(const zuString& text, unsigned int pos, const char* ascii, const char* fullWidth) {
  const zuString forms[2] = {zuString(1, ascii), zuString(1, fullWidth)};
  int which = 0;
  return matchName(text, pos, forms, 2, which);
}

int matchZulu(const zuString& text, unsigned int pos) {
  return matchKeyword(text, pos, "Z", "\uFF3A");
}

int matchGmt(const zuString& text, unsigned int pos) {
  return matchKeyword(text, pos, "GMT", "\uFF27\uFF2D\uFF34");
}

}  // namespace

// --- Constants --------------------------------------------------------------

const zuLiteral& RnTime::getTIME_PICTURE_SYMBOLS() {
  static const zuLiteral kValue(kSymbols);
  return kValue;
}

const zuLiteral& RnTime::getDEFAULT_TIME_FMT() {
  static const zuLiteral kValue("h:MM:SS A");
  return kValue;
}

const zuLiteral& RnTime::getKDL_TIME_FMT1() {
  static const zuLiteral kValue("HHMMSS.FFFz");
  return kValue;
}

const zuLiteral& RnTime::getKDL_TIME_FMT2() {
  static const zuLiteral kValue("HH:MM:SS.FFFzz");
  return kValue;
}

// --- Construction -----------------------------------------------------------

RnTime::RnTime(const zuString& locale) {
  setTimeSymbols(locale);
}

RnTime::RnTime(int millis, const zuString& locale) : value_(millis), valid_(millis != 0) {
  setTimeSymbols(locale);
}

RnTime::RnTime(const zuString& text, const zuString& picture, const zuString& locale) {
  setTimeSymbols(locale);
  parse(text, picture);
}

void RnTime::setTimeSymbols(const char* locale) {
  locale_ = resolveLocale(locale);
  const RnData data(locale_.getName());
  meridiem_[RnData::AM] = data.getMeridiemName(RnData::AM);
  meridiem_[RnData::PM] = data.getMeridiemName(RnData::PM);
  zeroDigit_ = localeZeroDigit(data);
}

int RnTime::epoch(int hour, int minute, int second, int millisecond, int offset) {
  if (hour < 0 || minute < 0 || second < 0 || millisecond < 0 || hour > 23 || minute > 59 ||
      second > 59 || millisecond > 999) {
    return 0;
  }
  const int64_t count = ((hour * 60LL + minute) * 60 + second) * 1000 + millisecond;
  return saturate(count + offset + 1);
}

// --- Readings ---------------------------------------------------------------

int64_t RnTime::displayed() const {
  return static_cast<int64_t>(value_) - 1 + zone_;
}

int RnTime::dayMillis() const {
  const int64_t shown = displayed();
  return static_cast<int>(shown - floorDiv(shown, MILLISPERDAY) * MILLISPERDAY);
}

int RnTime::getMillis() const {
  return valid_ ? dayMillis() : -1;
}
int RnTime::getHour() const {
  return valid_ ? dayMillis() / MILLISPERHOUR : -1;
}
int RnTime::getMinute() const {
  return valid_ ? dayMillis() % MILLISPERHOUR / MILLISPERMINUTE : -1;
}
int RnTime::getSecond() const {
  return valid_ ? dayMillis() % MILLISPERMINUTE / MILLISPERSECOND : -1;
}
int RnTime::getMilliSecond() const {
  return valid_ ? dayMillis() % MILLISPERSECOND : -1;
}

int RnTime::getDays() const {
  return valid_ ? static_cast<int>(floorDiv(displayed(), MILLISPERDAY)) : -366;
}

RnTime& RnTime::operator+=(int millis) {
  if (valid_) value_ = saturate(static_cast<int64_t>(value_) + millis);
  return *this;
}

void RnTime::setLocalTime() {
  const RnLocalZone zone = currentLocalZone();
  zone_ = zone.offsetMillis;
  daylight_ = zone.daylightInForce;
}

void RnTime::setGMTime() {
  zone_ = 0;
  daylight_ = false;
}

zuString RnTime::getTimeFormat(int style, const zuString& locale) {
  return RnData(resolveLocale(locale).getName()).getTimeFormat(style);
}

zuString RnTime::getLocalTimeFormat(int style, const zuString& locale) {
  return RnData(resolveLocale(locale).getName()).getLocalTimeFormat(style);
}

// --- Formatting -------------------------------------------------------------

zuString RnTime::format(const zuString& picture, unsigned int flags) const {
  zuString out("");
  if (!valid_) return out;
  PictureReader reader(picture, kSymbols);
  for (PictureItem item; reader.next(item);) {
    if (item.kind == PictureItem::kSymbol) {
      const unsigned int symbol = writtenSymbol(item);
      if (flags == 0) {
        formatField(out, symbol, item.count);
      } else {
        out += subFormat(symbol, item.count, flags);
      }
    } else if (item.character < 128) {
      out += static_cast<char>(item.character);
    } else {
      out += static_cast<unsigned int>(item.character);
    }
  }
  return out;
}

zuString RnTime::toString() const {
  return format(getDEFAULT_TIME_FMT());
}

zuString RnTime::subFormat(unsigned int symbol, int count, unsigned int) const {
  zuString out("");
  if (valid_) formatField(out, symbol, count);
  return out;
}

void RnTime::formatField(zuString& out, unsigned int symbol, int count) const {
  const int millis = dayMillis();
  const int hour = millis / MILLISPERHOUR;
  switch (fullWidthToAscii(symbol)) {
    case 'h':
      appendField(out, hour % 12 == 0 ? 12 : hour % 12, count, symbol, count);
      break;
    case 'k':
      appendField(out, hour % 12, count, symbol, count);
      break;
    case 'H':
      appendField(out, hour, count, symbol, count);
      break;
    case 'K':
      appendField(out, hour == 0 ? 24 : hour, count, symbol, count);
      break;
    case 'M':
      appendField(out, millis % MILLISPERHOUR / MILLISPERMINUTE, count, symbol, count);
      break;
    case 'S':
      appendField(out, millis % MILLISPERMINUTE / MILLISPERSECOND, count, symbol, count);
      break;
    case 'F':
      if (count == 3) appendDigits(out, millis % MILLISPERSECOND, 3, isFullWidth(symbol));
      break;
    case 'A': {
      const zuString& name = meridiem_[hour < 12 ? RnData::AM : RnData::PM];
      if (count == 1) {
        out += name;
      } else if (count == 2) {
        unsigned int pos = 0;
        out += name.UniChar(pos);
      }
      break;
    }
    case 'z':
    case 'Z':
      appendZone(out, fullWidthToAscii(symbol), count, isFullWidth(symbol));
      break;
    case 't':
      for (int i = 0; i < count; ++i) out += '\t';
      break;
    default:
      break;
  }
}

// Counts 1 and 2 write the number unpadded and in two digits; a full-width
// symbol with count 3 or 4 writes native numerals.
void RnTime::appendField(zuString& out, int value, int width, unsigned int letter,
                         int count) const {
  const bool fullWidth = isFullWidth(letter);
  if (count == 1 || count == 2) {
    appendDigits(out, value, width, fullWidth);
  } else if (fullWidth && (count == 3 || count == 4)) {
    appendNativeDigits(out, value, count);
  }
}

void RnTime::appendZone(zuString& out, unsigned int symbol, int count, bool fullWidth) const {
  const int minutes = zone_ / MILLISPERMINUTE;
  const int magnitude = minutes < 0 ? -minutes : minutes;
  ZoneForm form;
  if (symbol == 'z') {
    if (count != 1 && count != 2) return;
    if (minutes == 0) {
      appendChar(out, 'Z', fullWidth);
      return;
    }
    form = count == 1 ? ZoneForm::kBasic : ZoneForm::kColon;
  } else if (count == 1) {
    if (minutes != 0) {
      const char* name =
          timeZoneName(locale_.getName(), minutes, daylight_, localZoneObservesDaylight());
      if (name != nullptr) {
        out += name;
        return;
      }
    }
    appendAscii(out, "GMT", fullWidth);
    if (minutes == 0) return;
    form = ZoneForm::kColon;
  } else if (count == 2 || count == 3) {
    form = ZoneForm::kQuoted;
  } else {
    return;
  }
  appendChar(out, minutes < 0 ? '-' : '+', fullWidth);
  appendDigits(out, magnitude / 60, 2, fullWidth);
  if (form == ZoneForm::kColon) appendChar(out, ':', fullWidth);
  if (form == ZoneForm::kQuoted) appendChar(out, '\'', fullWidth);
  appendDigits(out, magnitude % 60, 2, fullWidth);
  if (form == ZoneForm::kQuoted) appendChar(out, '\'', fullWidth);
}

// --- Parsing ----------------------------------------------------------------

bool RnTime::parse(const zuString& text, const zuString& picture) {
  resetFields();
  valid_ = false;
  value_ = 0;
  PictureReader reader(picture, kSymbols);
  unsigned int pos = 0;
  const unsigned int length = text.Length();
  for (PictureItem item; reader.next(item);) {
    if (item.kind == PictureItem::kSymbol) {
      const int next = subParse(text, pos, writtenSymbol(item), item.count);
      if (next < 0) return false;
      pos = static_cast<unsigned int>(next);
      continue;
    }
    const unsigned int literal = item.kind == PictureItem::kQuoted ? 0 : item.character;
    if (literal == '+' || literal == '*') {
      unsigned int probe = pos;
      unsigned int spaces = 0;
      while (probe < length) {
        unsigned int after = probe;
        if (!isPictureSpace(text.UniChar(after))) break;
        probe = after;
        ++spaces;
      }
      if (literal == '+' && spaces == 0) return false;
      pos = probe;
      continue;
    }
    if (pos >= length) return false;
    const unsigned int found = foldedAt(text, pos);
    if (literal != '?' && found != fullWidthToAscii(item.character)) return false;
  }
  if (pos != length) return false;
  if (fields_.zoneMinutes != kNoZone) {
    zone_ = fields_.zoneMinutes * MILLISPERMINUTE;
    daylight_ = fields_.zoneDaylight;
  }
  setFromFields(-zone_);
  return valid_;
}

void RnTime::setFromFields(int offset) {
  const Fields& f = fields_;
  int hour = f.hour24;
  if (hour < 0) hour = (f.hour12 < 0 ? 0 : f.hour12) + (f.meridiem == RnData::PM ? 12 : 0);
  const int minute = f.minute < 0 ? 0 : f.minute;
  const int second = f.second < 0 ? 0 : f.second;
  const int milli = f.milli < 0 ? 0 : f.milli;
  valid_ = hour <= 23 && minute <= 59 && second <= 59 && milli <= 999;
  value_ = valid_ ? epoch(hour, minute, second, milli, offset) : 0;
}

int RnTime::parseNumber(const zuString& text, unsigned int position, int count, int low, int high,
                        int& slot) const {
  int value = 0;
  int next;
  if (count == 1 || count == 2) {
    next = readDigits(text, position, count, 2, value);
  } else if (count == 3 || count == 4) {
    next = readNativeDigits(text, position, value);
  } else {
    return -1;
  }
  if (next < 0 || value < low || value > high) return -1;
  slot = value;
  return next;
}

int RnTime::subParse(const zuString& text, unsigned int position, unsigned int symbol, int count) {
  Fields& f = fields_;
  const bool fullWidth = isFullWidth(symbol);
  // Native numerals stand only behind full-width symbols.
  if (!fullWidth && count > 2 && symbol != 'F' && symbol != 't' && symbol != 'Z') return -1;
  const bool hourSet = f.hour12 >= 0 || f.hour24 >= 0;
  int value = 0;
  int next = -1;
  switch (fullWidthToAscii(symbol)) {
    case 'h':
      if (hourSet || (next = parseNumber(text, position, count, 1, 12, value)) < 0) return -1;
      f.hour12 = value % 12;
      return next;
    case 'k':
      if (hourSet) return -1;
      return parseNumber(text, position, count, 0, 11, f.hour12);
    case 'H':
      if (hourSet) return -1;
      return parseNumber(text, position, count, 0, 23, f.hour24);
    case 'K':
      if (hourSet || (next = parseNumber(text, position, count, 1, 24, value)) < 0) return -1;
      f.hour24 = value % 24;
      return next;
    case 'M':
      if (f.minute >= 0) return -1;
      return parseNumber(text, position, count, 0, 59, f.minute);
    case 'S':
      if (f.second >= 0) return -1;
      return parseNumber(text, position, count, 0, 59, f.second);
    case 'F':
      if (f.milli >= 0 || count != 3) return -1;
      next = readDigits(text, position, 3, 3, value);
      if (next >= 0) f.milli = value;
      return next;
    case 'A': {
      if (f.meridiem >= 0 || (count != 1 && count != 2)) return -1;
      int which = -1;
      next = count == 1 ? matchMeridiem(text, position, which)
                        : matchMeridiemInitial(text, position, which);
      if (next >= 0) f.meridiem = which;
      return next;
    }
    case 't':
      for (int i = 0; i < count; ++i, ++position) {
        if (text[position] != '\t') return -1;
      }
      return static_cast<int>(position);
    case 'z':
    case 'Z':
      if (f.zoneMinutes != kNoZone) return -1;
      return parseZone(text, position, fullWidthToAscii(symbol), count);
    default:
      return -1;
  }
}

// Reads a signed offset: sign, two-digit hours, the separator of `form`,
// two-digit minutes (and a closing quote in the quoted form).
int RnTime::parseOffset(const zuString& text, unsigned int position, ZoneForm form,
                        int& minutes) const {
  unsigned int pos = position;
  const unsigned int sign = foldedAt(text, pos);
  if (sign != '+' && sign != '-' && sign != 0x2212) return -1;
  int hours = 0;
  int mins = 0;
  int next = readDigits(text, pos, 2, 2, hours);
  if (next < 0 || hours > 23) return -1;
  pos = static_cast<unsigned int>(next);
  const unsigned int separator = form == ZoneForm::kColon    ? ':'
                                 : form == ZoneForm::kQuoted ? '\''
                                                             : 0;
  if (separator != 0 && foldedAt(text, pos) != separator) return -1;
  next = readDigits(text, pos, 2, 2, mins);
  if (next < 0 || mins > 59) return -1;
  pos = static_cast<unsigned int>(next);
  if (form == ZoneForm::kQuoted && foldedAt(text, pos) != '\'') return -1;
  minutes = (sign == '+' ? 1 : -1) * (hours * 60 + mins);
  return static_cast<int>(pos);
}

int RnTime::parseZone(const zuString& text, unsigned int position, unsigned int symbol, int count) {
  Fields& f = fields_;
  int minutes = 0;
  int next;
  if (symbol == 'z') {
    if (count != 1 && count != 2) return -1;
    if ((next = matchZulu(text, position)) >= 0 || (next = matchGmt(text, position)) >= 0) {
      f.zoneMinutes = 0;
      return next;
    }
    next = parseOffset(text, position, count == 1 ? ZoneForm::kBasic : ZoneForm::kColon, minutes);
    if (next >= 0) f.zoneMinutes = minutes;
    return next;
  }
  if (count < 1 || count > 3) return -1;
  if ((next = matchGmt(text, position)) >= 0) {
    const unsigned int afterGmt = static_cast<unsigned int>(next);
    int offsetEnd = parseOffset(text, afterGmt, ZoneForm::kColon, minutes);
    if (offsetEnd < 0) offsetEnd = parseOffset(text, afterGmt, ZoneForm::kBasic, minutes);
    f.zoneMinutes = offsetEnd < 0 ? 0 : minutes;
    return offsetEnd < 0 ? next : offsetEnd;
  }
  if ((next = parseOffset(text, position, ZoneForm::kQuoted, minutes)) >= 0) {
    f.zoneMinutes = minutes;
    return next;
  }
  bool daylight = false;
  next = matchZoneName(text, position, minutes, daylight);
  if (next >= 0) {
    f.zoneMinutes = minutes;
    f.zoneDaylight = daylight;
  }
  return next;
}

// --- Digits and names ---------------------------------------------------------

void RnTime::appendDigits(zuString& out, int value, int width, bool fullWidth) const {
  if (fullWidth) {
    zu::internal::appendNumber(out, value, width, {NumeralForm::kFullWidth, '0'});
  } else if (zeroDigit_ == '0' && value >= 0 && value < 1000) {
    // The common case, written without the general routine's digit buffer.
    if (value >= 100 || width >= 3) out += static_cast<char>('0' + value / 100);
    if (value >= 10 || width >= 2) out += static_cast<char>('0' + value / 10 % 10);
    out += static_cast<char>('0' + value % 10);
  } else {
    zu::internal::appendNumber(out, value, width, {NumeralForm::kLocale, zeroDigit_});
  }
}

void RnTime::appendNativeDigits(zuString& out, int value, int) const {
  zu::internal::appendNumber(out, value, 1, {NumeralForm::kNative, '0'});
}

int RnTime::readDigits(const zuString& text, unsigned int position, int minDigits, int maxDigits,
                       int& value) const {
  return readNumber(text, position, minDigits, maxDigits, value);
}

int RnTime::readNativeDigits(const zuString& text, unsigned int position, int& value) const {
  return readNumber(text, position, 1, 2, value);
}

int RnTime::matchMeridiem(const zuString& text, unsigned int position, int& which) const {
  return matchName(text, position, meridiem_, 2, which);
}

int RnTime::matchMeridiemInitial(const zuString& text, unsigned int position, int& which) const {
  zuString initials[2];
  for (int i = 0; i < 2; ++i) {
    unsigned int initialEnd = 0;
    meridiem_[i].UniChar(initialEnd);
    initials[i] = meridiem_[i].Substring(0, initialEnd);
  }
  return matchName(text, position, initials, 2, which);
}

int RnTime::matchZoneName(const zuString& text, unsigned int position, int& minutes,
                          bool& daylight) const {
  const RnTimeZoneRows rows = timeZoneRows(locale_.getName());
  int best = -1;
  for (int i = 0; i < rows.count; ++i) {
    const RnTimeZoneRecord& record = rows.first[i];
    const zuString names[2] = {zuString(1, record.standardName),
                               zuString(1, record.observesDaylight ? record.daylightName : "")};
    int which = 0;
    const int end = matchName(text, position, names, 2, which);
    if (end > best) {
      best = end;
      daylight = which == 1;
      minutes = record.offsetMinutes + (daylight ? 60 : 0);
    }
  }
  return best;
}
