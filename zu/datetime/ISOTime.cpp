#include "zu/datetime/ISOTime.h"

#include "zu/locale/RnLocale.h"
#include "zu/picture/internal/zuCanonicalDateTime.h"

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

ISOTime::ISOTime(const zuString& text, const zuString& locale)
    : RnTime(zu::internal::CanonicalTime(text, locale)) {}

bool ISOTime::parse(const zuString& text) {
  resetFields();
  return zu::internal::readCanonicalTimeForm(text, zoneGiven_,
                                             [&](unsigned int pos, unsigned int symbol, int count) {
                                               return subParse(text, pos, symbol, count);
                                             });
}
