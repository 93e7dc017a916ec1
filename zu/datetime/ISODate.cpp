#include "zu/datetime/ISODate.h"

#include "zu/datetime/internal/ISOText.h"

using namespace zu::internal;

namespace {

constexpr int kCenturySplit = 30;

}  // namespace

ISODate::ISODate() : RnDate(RnDate::getDEFAULT_LOCALE(), kCenturySplit) {}

ISODate::ISODate(int days) : RnDate(days, RnDate::getDEFAULT_LOCALE(), kCenturySplit) {}

ISODate::ISODate(const zuString& locale, int centurySplit) : RnDate(locale, centurySplit) {}

// Read with the default locale's symbols (ASCII digits whatever the locale),
// then given the names of `locale` for formatting.
ISODate::ISODate(const zuString& text, const zuString& locale)
    : RnDate(0, RnDate::getDEFAULT_LOCALE(), kCenturySplit) {
  // The year goes through the picture rules: "24-03-05" fails as "YYYY"
  // would, "0024-03-05" is 1924.
  const int days = parse(isoPartBeforeT(text)) && resolveFields() ? getDays() : 0;
  resetFields();
  setDateSymbols(locale);
  setDays(days);
}

bool ISODate::parse(const zuString& text) {
  resetFields();
  const unsigned int length = text.Length();
  unsigned int dashAt = 0;
  const bool extended = text.CharInString('-', dashAt) != 0;
  if (length < 4) return false;
  int pos = subParse(text, 0, 'Y', 4);
  if (pos < 0) return false;
  fields_.month = 1;
  fields_.monthDay = 1;
  // Month, then day: an optional "-" and two digits each.
  const unsigned int symbols[2] = {'M', 'D'};
  for (const unsigned int symbol : symbols) {
    if (static_cast<unsigned int>(pos) == length) return true;
    if (extended) {
      if (text[pos] != '-') return false;
      ++pos;
    }
    if (length - static_cast<unsigned int>(pos) < 2) return false;
    if (symbol == 'M') fields_.month = -1;
    if (symbol == 'D') fields_.monthDay = -1;
    pos = subParse(text, static_cast<unsigned int>(pos), symbol, 2);
    if (pos < 0) return false;
  }
  return static_cast<unsigned int>(pos) == length;
}
