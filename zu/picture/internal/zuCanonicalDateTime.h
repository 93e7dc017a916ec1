// Canonical date and time values (the ISO 8601 calendar-date and time
// forms) read into RnDate and RnTime. The dispatcher reads every date and
// time value it is handed through CanonicalDate and CanonicalTime; the
// public ISODate and ISOTime are built from the same readers.
//
//   zu::internal::CanonicalDate date("2024-03-05T10:00", "fr_FR");
//   date.format("D MMMM YYYY");                 // "5 mars 2024"
//
// Forms: YYYY, YYYYMM, YYYYMMDD, YYYY-MM, YYYY-MM-DD for dates (a "-"
// anywhere chooses the extended form; a missing month or day is 1; the
// year needs four digits and one below 100 is 1900 + year); HH, HHMM,
// HHMMSS, HHMMSS.FFF, HH:MM, HH:MM:SS, HH:MM:SS.FFF for times (a ":"
// anywhere chooses the extended form), the complete forms with seconds
// optionally followed by one zone ("Z", "GMT" or +HHMM / +HH:MM). Values
// are read with the default locale's symbols whatever the locale given,
// which only chooses the names and digits of formatting.
#pragma once

#include "zu/core/zuString.h"
#include "zu/picture/RnDate.h"
#include "zu/picture/RnTime.h"

namespace zu::internal {

// The text before the first "T" (all of it when there is none), trimmed of
// white space at both ends.
zuString isoPartBeforeT(const zuString& text);
// The text after the first "T" (all of it when there is none), trimmed.
zuString isoPartAfterT(const zuString& text);

// Reads one of the date forms from `text` (already cut and trimmed) into
// the parse slots `fields` (RnDate's) through `readSymbol(position, symbol,
// count)`, which reads one field (RnDate::subParse) and returns the position
// after it or -1. True when the whole text is one of the forms.
template <class Fields, class ReadSymbol>
bool readCanonicalDateForm(const zuString& text, Fields& fields, ReadSymbol&& readSymbol) {
  const unsigned int length = text.Length();
  unsigned int dashAt = 0;
  const bool extended = text.CharInString('-', dashAt) != 0;
  if (length < 4) return false;
  int pos = readSymbol(0u, 'Y', 4);
  if (pos < 0) return false;
  fields.month = 1;
  fields.monthDay = 1;
  // Month, then day: an optional "-" and two digits each.
  const unsigned int symbols[2] = {'M', 'D'};
  for (const unsigned int symbol : symbols) {
    if (static_cast<unsigned int>(pos) == length) return true;
    if (extended) {
      if (text[pos] != '-') return false;
      ++pos;
    }
    if (length - static_cast<unsigned int>(pos) < 2) return false;
    (symbol == 'M' ? fields.month : fields.monthDay) = -1;
    pos = readSymbol(static_cast<unsigned int>(pos), symbol, 2);
    if (pos < 0) return false;
  }
  return static_cast<unsigned int>(pos) == length;
}

// Reads one of the time forms from `text` (already cut and trimmed) through
// `readSymbol(position, symbol, count)` (RnTime::subParse). True when the
// whole text is one of the forms; `zoneGiven` tells whether it named a zone.
template <class ReadSymbol>
bool readCanonicalTimeForm(const zuString& text, bool& zoneGiven, ReadSymbol&& readSymbol) {
  zoneGiven = false;
  const unsigned int length = text.Length();
  unsigned int colonAt = 0;
  const bool extended = text.CharInString(':', colonAt) != 0;
  if (length < 2) return false;
  // One field of `count` characters after an optional separator; -1 on failure.
  auto field = [&](unsigned int pos, unsigned int symbol, int count, char separator) -> int {
    if (separator != '\0') {
      if (text[pos] != separator) return -1;
      ++pos;
    }
    if (length - pos < static_cast<unsigned int>(count)) return -1;
    return readSymbol(pos, symbol, count);
  };
  int pos = field(0, 'H', 2, '\0');
  if (pos < 0) return false;
  if (static_cast<unsigned int>(pos) < length) pos = field(pos, 'M', 2, extended ? ':' : '\0');
  if (pos < 0) return false;
  if (static_cast<unsigned int>(pos) < length) pos = field(pos, 'S', 2, extended ? ':' : '\0');
  if (pos < 0) return false;
  if (static_cast<unsigned int>(pos) < length && text[pos] == '.') pos = field(pos, 'F', 3, '.');
  if (pos < 0) return false;
  if (static_cast<unsigned int>(pos) < length) {
    pos = readSymbol(static_cast<unsigned int>(pos), 'z', extended ? 2 : 1);
    if (pos < 0 || static_cast<unsigned int>(pos) != length) return false;
    zoneGiven = true;
  }
  return true;
}

// A date read from the text before the first "T" of a canonical value,
// with the names of `locale` for formatting and the century split 30;
// invalid (day number 0) when the text is none of the forms.
class CanonicalDate : public RnDate {
 public:
  CanonicalDate(const zuString& text, const zuString& locale);
};

// A time read from the text after the first "T" of a canonical value
// (all of it without one), with the symbols of `locale` for formatting. A
// time without a zone is local time, converted with the process's zone at
// the moment of reading. The value is universal time with display zone 0;
// invalid when the text is none of the forms.
class CanonicalTime : public RnTime {
 public:
  CanonicalTime(const zuString& text, const zuString& locale);
};

}  // namespace zu::internal
