// ISOTime: a time of day read from its ISO 8601 form ("10:20:30.500+05:30",
// "102030.500Z", "10"), then shown through any time picture.
//
//   ISOTime time("10:20:30.500+05:30", "de_DE");
//   time.getHour();                                  // 4 (universal time)
//   time.format(RnTime::getKDL_TIME_FMT2());         // "04:20:30.500Z"
//
// Accepted forms: HH, HHMM, HHMMSS, HHMMSS.FFF (basic) and HH:MM, HH:MM:SS,
// HH:MM:SS.FFF (extended, chosen by a ":" anywhere in the text), each
// complete form with seconds optionally followed by one zone: "Z" or "GMT",
// or a signed offset, +HHMM in the basic form and +HH:MM in the extended
// one. The fraction has exactly three digits; a comma, fractions of hours
// or minutes and 24:00 are not accepted. A time without a zone is local
// time: it is converted with the process's zone at the moment of parsing.
//
// Parsing always uses the default locale's symbols, so it never depends on
// the caller's locale; the locale given is installed afterwards and only
// affects formatting (its digits, meridiem and zone names). The parsed
// value is universal time with display zone 0. A text that does not match
// leaves the time invalid; nothing throws.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"
#include "zu/picture/RnTime.h"

class ZU_EXPORT ISOTime : public RnTime {
 public:
  // No time; formatting symbols of the thread's locale (RnLocale::getLocale),
  // or of the default locale when that does not resolve.
  ISOTime();
  // The stored count `millis` (RnTime's form), symbols as for ISOTime().
  explicit ISOTime(int millis);
  // No time; the symbols of `locale`, or when it is empty those of the
  // thread's locale. The integer is accepted and not used.
  ISOTime(const zuString& locale, int unused);
  // Reads the text after the first "T" (the whole text when it has none),
  // trimmed of white space at both ends; formatting symbols of `locale`.
  ISOTime(const zuString& text, const zuString& locale);
  ISOTime(const ISOTime& other) = default;
  ISOTime& operator=(const ISOTime& other) = default;
  ~ISOTime() = default;

 protected:
  // Reads `text` (already cut and trimmed) into the parse slots; true when
  // it is one of the accepted forms. Records whether a zone was given.
  bool parse(const zuString& text);

 private:
  bool zoneGiven_ = false;
};
