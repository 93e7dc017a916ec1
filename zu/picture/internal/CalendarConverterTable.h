// The lookup behind getCalendarConverter, with the switch as an argument so
// that the table itself can be exercised while the switch is off.
#pragma once

#include <memory>

#include "zu/picture/ICalendarConverter.h"

namespace zu::internal {

// The table's converter for `locale` when `altCalendars` is set and the
// table has the name; otherwise the "en_US" entry.
std::shared_ptr<ICalendarConverter> lookupCalendarConverter(const char* locale, bool altCalendars);

}  // namespace zu::internal
