// The process's time zone as the time pictures and ISO 8601 values need it.
//
// The zone is read from the C runtime on every call: tzset() picks up a
// changed TZ, localtime_r() of the current instant says whether daylight
// time is in force and gives the full offset of that instant (tm_gmtoff),
// `timezone` the standard offset. Whether the zone has daylight rules is
// probed at two instants half a year apart, because the C runtime's
// `daylight` also counts rules the zone dropped long ago.
#pragma once

namespace zu::internal {

struct RnLocalZone {
  int offsetMillis;       // east of Greenwich positive, daylight shift included
  int standardMinutes;    // east of Greenwich positive, without daylight time
  bool daylightInForce;   // daylight time is in force now
  bool observesDaylight;  // the zone has daylight time now or within half a year
};

// The zone of the process at this moment.
RnLocalZone currentLocalZone();
// Whether the process zone has daylight time now or half a year from now.
bool localZoneObservesDaylight();

}  // namespace zu::internal
