// ISODateTime: a date and a time of day read from one ISO 8601 text
// ("2024-03-05T10:20:30.500+05:30") and formatted through a picture with a
// "T" between its date part and its time part.
//
//   ISODateTime stamp("20240305T102030.500Z", "en_US", "en_US");
//   stamp.setGMTime();
//   stamp.format(ISODateTime::getKDL_DATETIME_FMT2());
//   // "2024-03-05T10:20:30.500Z"
//
// It holds an ISODate followed by an ISOTime and is valid when both are.
// The text's date part and time part are read separately (see ISODate and
// ISOTime); the date is the one written in the text, so a zone offset that
// moves the time across midnight does not move the date. Nothing throws.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"
#include "zu/datetime/ISODate.h"
#include "zu/datetime/ISOTime.h"

class ZU_EXPORT ISODateTime {
 public:
  // "YYYYMMDDTHHMMSS.FFFz" and "YYYY-MM-DDTHH:MM:SS.FFFzz": the basic and
  // extended forms. Made on first use without a lock.
  static const zuLiteral& getKDL_DATETIME_FMT1();
  static const zuLiteral& getKDL_DATETIME_FMT2();

  // Today and no time yet, both shown in local time.
  ISODateTime();
  // Reads the part before the first "T" as an ISODate (names of
  // `dateLocale`) and the part after it as an ISOTime (symbols of
  // `timeLocale`); a text without "T" gives an invalid value. Local display.
  ISODateTime(const zuString& text, const zuString& dateLocale, const zuString& timeLocale);
  ISODateTime(const ISODateTime& other) = default;
  ISODateTime& operator=(const ISODateTime& other) = default;
  ~ISODateTime() = default;

  bool isValid() const { return date_.isValid() && time_.isValid(); }
  ISODate getDate() const { return date_; }
  ISOTime getTime() const { return time_; }

  // Local or universal display for both parts; the stored instant stays.
  void setLocalTime();
  void setGMTime();

  // The date part formatted with the picture before its first "T", then
  // "T", then the time part with the picture after it. Empty when the value
  // is invalid or the picture has no "T".
  zuString format(const zuString& picture) const;

 private:
  ISODate date_;
  ISOTime time_;
};
