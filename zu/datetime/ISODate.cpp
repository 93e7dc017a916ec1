#include "zu/datetime/ISODate.h"

#include "zu/picture/internal/zuCanonicalDateTime.h"

namespace {

constexpr int kCenturySplit = 30;

}  // namespace

ISODate::ISODate() : RnDate(RnDate::getDEFAULT_LOCALE(), kCenturySplit) {}

ISODate::ISODate(int days) : RnDate(days, RnDate::getDEFAULT_LOCALE(), kCenturySplit) {}

ISODate::ISODate(const zuString& locale, int centurySplit) : RnDate(locale, centurySplit) {}

ISODate::ISODate(const zuString& text, const zuString& locale)
    : RnDate(zu::internal::CanonicalDate(text, locale)) {}

bool ISODate::parse(const zuString& text) {
  resetFields();
  return zu::internal::readCanonicalDateForm(text, fields_,
                                             [&](unsigned int pos, unsigned int symbol, int count) {
                                               return subParse(text, pos, symbol, count);
                                             });
}
