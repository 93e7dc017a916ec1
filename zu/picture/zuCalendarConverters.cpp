#include "zu/picture/zuCalendarConverters.h"

#include <map>
#include <string>

#include "zu/picture/GregorianCalendarConvertor.h"
#include "zu/picture/HijriCalendarConvertor.h"
#include "zu/picture/internal/CalendarConverterTable.h"

namespace {

using ConverterTable = std::map<std::string, std::shared_ptr<ICalendarConverter>>;

const ConverterTable& converterTable() {
  static const ConverterTable table{
      {"en_US", std::make_shared<GregorianCalendarConvertor>()},
      {"ar_SA", std::make_shared<HijriCalendarConvertor>()},
  };
  return table;
}

}  // namespace

namespace zu::internal {

std::shared_ptr<ICalendarConverter> lookupCalendarConverter(const char* locale, bool altCalendars) {
  const ConverterTable& table = converterTable();
  if (altCalendars) {
    const auto found = table.find(locale != nullptr ? locale : "");
    if (found != table.end()) return found->second;
  }
  return table.at("en_US");
}

}  // namespace zu::internal

std::shared_ptr<ICalendarConverter> getCalendarConverter(const zuString& locale) {
  return zu::internal::lookupCalendarConverter(locale, isAltCalendarEnabled());
}

bool isAltCalendarEnabled() {
  return false;
}
