// Time-zone abbreviations by locale, for the "Z" symbol of time pictures.
//
// Each locale that has names owns a run of records; the first record of a
// run carries the locale name, the others null. A zone without daylight
// rules has the same text for both abbreviations.
#pragma once

namespace zu::internal {

struct RnTimeZoneRecord {
  const char* locale;  // on the first record of a locale only
  int offsetMinutes;   // standard time, east of Greenwich positive
  bool observesDaylight;
  const char* standardName;
  const char* daylightName;
};

struct RnTimeZoneRows {
  const RnTimeZoneRecord* first;
  int count;  // 0 when the locale has no names
};

// The records of `locale` (a canonical locale name such as "en_US").
RnTimeZoneRows timeZoneRows(const char* locale);

// The abbreviation of a time shown at `offsetMinutes` (daylight shift
// included) in `locale`, or null when no record fits. A record fits when
// its standard offset equals the offset of a standard time, or its offset
// plus one hour that of a daylight time on a zone with daylight rules.
// Where two records fit (Hawaii and the Aleutians), the one whose daylight
// rules agree with the process zone's (`processObservesDaylight`) wins.
const char* timeZoneName(const char* locale, int offsetMinutes, bool daylight,
                         bool processObservesDaylight);

}  // namespace zu::internal
