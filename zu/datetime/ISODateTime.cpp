#include "zu/datetime/ISODateTime.h"

const zuLiteral& ISODateTime::getKDL_DATETIME_FMT1() {
  static const zuLiteral kValue("YYYYMMDDTHHMMSS.FFFz");
  return kValue;
}

const zuLiteral& ISODateTime::getKDL_DATETIME_FMT2() {
  static const zuLiteral kValue("YYYY-MM-DDTHH:MM:SS.FFFzz");
  return kValue;
}

ISODateTime::ISODateTime() {
  setLocalTime();
}

ISODateTime::ISODateTime(const zuString& text, const zuString& dateLocale,
                         const zuString& timeLocale)
    : date_(0), time_(0) {
  unsigned int at = 0;
  if (text.CharInString('T', at) != 0) {
    date_ = ISODate(text.Substring(0, at), dateLocale);
    time_ = ISOTime(text.Substring(at + 1, text.Length()), timeLocale);
  }
  setLocalTime();
}

void ISODateTime::setLocalTime() {
  date_.setLocalDate();
  time_.setLocalTime();
}

void ISODateTime::setGMTime() {
  date_.setGMDate();
  time_.setGMTime();
}

zuString ISODateTime::format(const zuString& picture) const {
  unsigned int at = 0;
  if (!isValid() || picture.CharInString('T', at) == 0) return zuString("");
  zuString out = date_.format(picture.Substring(0, at));
  out += 'T';
  out += time_.format(picture.Substring(at + 1, picture.Length()));
  return out;
}
