// Reads arbitrary text as an ISO 8601 date, time and date-time, and formats
// whatever was read in both canonical forms.
//
// Input: the text up to the first NUL byte. A date that reads must format
// in the extended form to a text that reads back to the same day.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "zu/datetime/ISODateTime.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* bytes = reinterpret_cast<const char*>(data);
  const std::string text(bytes, strnlen(bytes, size));
  const zuString value(text.c_str());

  const ISODate date(value, "en_US");
  if (date.isValid()) {
    const ISODate again(date.format(RnDate::getKDL_DATE_FMT2()), "de_DE");
    if (again.getDays() != date.getDays()) __builtin_trap();
  }
  const ISOTime time(value, "ar");
  zuString formatted = time.format(RnTime::getKDL_TIME_FMT1());
  if (time.isValid() && (time.getHour() < 0 || time.getHour() > 23)) __builtin_trap();

  ISODateTime stamp(value, "ja_JP", "ko_KR");
  formatted = stamp.format(ISODateTime::getKDL_DATETIME_FMT2());
  stamp.setGMTime();
  formatted = stamp.format(ISODateTime::getKDL_DATETIME_FMT1());
  formatted = stamp.format(value);
  return 0;
}
