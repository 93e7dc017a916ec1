#include "zu/picture/GregorianCalendarConvertor.h"

ICalendarConverter::~ICalendarConverter() = default;

bool GregorianCalendarConvertor::fromGregorian(int&, int&, int&) {
  return true;
}

bool GregorianCalendarConvertor::toGregorian(int&, int&, int&) {
  return true;
}
