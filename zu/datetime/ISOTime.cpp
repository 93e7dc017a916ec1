#include "zu/datetime/ISOTime.h"

#include "zu/datetime/internal/ISOText.h"
#include "zu/locale/RnLocale.h"
#include "zu/picture/internal/RnLocalZone.h"

using namespace zu::internal;

namespace {

// The locale whose symbols format a time: `locale`, or the thread's locale
// when it is empty (RnTime falls back to the default for unknown names).
zuString displayLocale(const zuString& locale) {
  return locale.IsEmpty() ? RnLocale::getLocale() : locale;
}

}  // namespace

ISOTime::ISOTime() : RnTime(RnLocale::getDEFAULT_LOCALE()) {
  setTimeSymbols(displayLocale(zuString::EmptyString()));
}

ISOTime::ISOTime(int millis) : RnTime(millis, RnLocale::getDEFAULT_LOCALE()) {
  setTimeSymbols(displayLocale(zuString::EmptyString()));
}

ISOTime::ISOTime(const zuString& locale, int) : RnTime(displayLocale(locale)) {}

ISOTime::ISOTime(const zuString& text, const zuString& locale) : RnTime(displayLocale(locale)) {
  const zuString body = isoPartAfterT(text);
  setTimeSymbols(RnLocale::getDEFAULT_LOCALE());
  valid_ = false;
  value_ = 0;
  if (parse(body)) {
    // Without a zone the text is local time, taken at the moment of parsing;
    // epoch adds the offset, so it is given west of Greenwich.
    const int east = zoneGiven_ ? fields_.zoneMinutes * MILLISPERMINUTE
                                : currentLocalZone().offsetMillis;
    setFromFields(-east);
  }
  zone_ = 0;
  daylight_ = false;
  setTimeSymbols(locale);
}

bool ISOTime::parse(const zuString& text) {
  resetFields();
  zoneGiven_ = false;
  const unsigned int length = text.Length();
  unsigned int colonAt = 0;
  const bool extended = text.CharInString(':', colonAt) != 0;
  if (length < 2) return false;
  // One field of two characters after an optional separator; -1 on failure.
  auto field = [&](unsigned int pos, unsigned int symbol, int count, char separator) -> int {
    if (separator != '\0') {
      if (text[pos] != separator) return -1;
      ++pos;
    }
    if (length - pos < static_cast<unsigned int>(count)) return -1;
    return subParse(text, pos, symbol, count);
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
    pos = subParse(text, pos, 'z', extended ? 2 : 1);
    if (pos < 0 || static_cast<unsigned int>(pos) != length) return false;
    zoneGiven_ = true;
  }
  return true;
}
