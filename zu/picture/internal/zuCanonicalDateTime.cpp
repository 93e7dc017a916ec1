#include "zu/picture/internal/zuCanonicalDateTime.h"

#include "zu/picture/internal/RnLocalZone.h"

namespace zu::internal {

namespace {

constexpr int kCenturySplit = 30;

zuString trimmed(zuString text) {
  text.Trim();
  text.TrimStart();
  return text;
}

}  // namespace

zuString isoPartBeforeT(const zuString& text) {
  unsigned int at = 0;
  if (text.CharInString('T', at) == 0) return trimmed(text);
  return trimmed(text.Substring(0, at));
}

zuString isoPartAfterT(const zuString& text) {
  unsigned int at = 0;
  if (text.CharInString('T', at) == 0) return trimmed(text);
  return trimmed(text.Substring(at + 1, text.Length()));
}

// Read with the default locale's symbols (ASCII digits whatever the locale),
// then given the names of `locale` for formatting. The year goes through
// the picture rules: "24-03-05" fails as "YYYY" would, "0024-03-05" is 1924.
CanonicalDate::CanonicalDate(const zuString& text, const zuString& locale)
    : RnDate(0, RnDate::getDEFAULT_LOCALE(), kCenturySplit) {
  const zuString body = isoPartBeforeT(text);
  const bool read =
      readCanonicalDateForm(body, fields_, [&](unsigned int pos, unsigned int symbol, int count) {
        return subParse(body, pos, symbol, count);
      });
  const int days = read && resolveFields() ? getDays() : 0;
  resetFields();
  setDateSymbols(locale);
  setDays(days);
}

CanonicalTime::CanonicalTime(const zuString& text, const zuString& locale)
    : RnTime(RnLocale::getDEFAULT_LOCALE()) {
  const zuString body = isoPartAfterT(text);
  resetFields();
  bool zoneGiven = false;
  const bool read =
      readCanonicalTimeForm(body, zoneGiven, [&](unsigned int pos, unsigned int symbol, int count) {
        return subParse(body, pos, symbol, count);
      });
  if (read) {
    // Without a zone the text is local time, taken at the moment of reading;
    // epoch adds the offset, so it is given west of Greenwich.
    const int east =
        zoneGiven ? fields_.zoneMinutes * MILLISPERMINUTE : currentLocalZone().offsetMillis;
    setFromFields(-east);
  }
  zone_ = 0;
  daylight_ = false;
  setTimeSymbols(locale);
}

}  // namespace zu::internal
