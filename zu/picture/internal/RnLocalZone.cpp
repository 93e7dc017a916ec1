#include "zu/picture/internal/RnLocalZone.h"

#include <ctime>
#include <initializer_list>

namespace zu::internal {

RnLocalZone currentLocalZone() {
  tzset();
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  RnLocalZone zone{0, static_cast<int>(-(timezone / 60)), false, false};
  if (localtime_r(&now, &local) == nullptr) {
    zone.offsetMillis = zone.standardMinutes * 60000;
    return zone;
  }
  zone.daylightInForce = local.tm_isdst > 0;
  // tm_gmtoff rather than `timezone` plus one hour: a few zones shift by
  // other amounts (Lord Howe Island by 30 minutes) and `timezone` follows
  // the zone's latest rule, not necessarily the one in force.
  zone.offsetMillis = static_cast<int>(local.tm_gmtoff) * 1000;
  zone.observesDaylight = zone.daylightInForce || localZoneObservesDaylight();
  return zone;
}

bool localZoneObservesDaylight() {
  tzset();
  // `daylight` is set when the zone ever had daylight time (Honolulu did in
  // the 1940s), so the zone's present rules are probed instead: daylight
  // time in force now or half a year from now.
  constexpr std::time_t kHalfYear = 182 * 24 * 3600;
  const std::time_t now = std::time(nullptr);
  for (const std::time_t probe : {now, now + kHalfYear}) {
    std::tm local{};
    if (localtime_r(&probe, &local) != nullptr && local.tm_isdst > 0) return true;
  }
  return false;
}

}  // namespace zu::internal
