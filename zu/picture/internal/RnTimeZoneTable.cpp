#include "zu/picture/internal/RnTimeZoneTable.h"

#include <cstring>
#include <iterator>

namespace zu::internal {

namespace {

constexpr bool kDst = true;
constexpr bool kNoDst = false;

// Runs of records, one per locale. Within a run, a record with daylight
// rules comes before one without at the same offset.
constexpr RnTimeZoneRecord kZones[] = {
    // United States, west to east.
    {"en_US", -600, kDst, "HAST", "HADT"},
    {nullptr, -600, kNoDst, "HST", "HST"},
    {nullptr, -540, kDst, "AKST", "AKDT"},
    {nullptr, -480, kDst, "PST", "PDT"},
    {nullptr, -420, kDst, "MST", "MDT"},
    {nullptr, -420, kNoDst, "MST", "MST"},
    {nullptr, -360, kDst, "CST", "CDT"},
    {nullptr, -300, kDst, "EST", "EDT"},
    {"en_CA", -480, kDst, "PST", "PDT"},
    {nullptr, -420, kDst, "MST", "MDT"},
    {nullptr, -360, kDst, "CST", "CDT"},
    {nullptr, -360, kNoDst, "CST", "CST"},
    {nullptr, -300, kDst, "EST", "EDT"},
    {nullptr, -240, kDst, "AST", "ADT"},
    {nullptr, -210, kDst, "NST", "NDT"},
    // Arabic locales.
    {"ar_AE", 240, kNoDst, "GST", "GST"},
    {"ar_BH", 180, kNoDst, "AST", "AST"},
    {"ar_DZ", 60, kNoDst, "CET", "CET"},
    {"ar_EG", 120, kDst, "EET", "EEST"},
    {"ar_IQ", 180, kNoDst, "AST", "AST"},
    {"ar_JO", 180, kNoDst, "AST", "AST"},
    {"ar_KW", 180, kNoDst, "AST", "AST"},
    {"ar_LB", 120, kDst, "EET", "EEST"},
    {"ar_LY", 120, kNoDst, "EET", "EET"},
    {"ar_OM", 240, kNoDst, "GST", "GST"},
    {"ar_QA", 180, kNoDst, "AST", "AST"},
    {"ar_SA", 180, kNoDst, "AST", "AST"},
    {"ar_SD", 120, kNoDst, "CAT", "CAT"},
    {"ar_SY", 180, kNoDst, "AST", "AST"},
    {"ar_TN", 60, kNoDst, "CET", "CET"},
    {"ar_YE", 180, kNoDst, "AST", "AST"},
    // A few other regions.
    {"de_DE", 60, kDst, "MEZ", "MESZ"},
    {"en_AU", 600, kDst, "AEST", "AEDT"},
    {nullptr, 600, kNoDst, "AEST", "AEST"},
    {nullptr, 570, kDst, "ACST", "ACDT"},
    {nullptr, 570, kNoDst, "ACST", "ACST"},
    {nullptr, 480, kNoDst, "AWST", "AWST"},
    {"en_GB", 0, kDst, "GMT", "BST"},
    {"en_IE", 0, kDst, "GMT", "IST"},
    {"en_IN", 330, kNoDst, "IST", "IST"},
    {"en_NZ", 720, kDst, "NZST", "NZDT"},
    {"fr_FR", 60, kDst, "CET", "CEST"},
    {"he_IL", 120, kDst, "IST", "IDT"},
    {"hi_IN", 330, kNoDst, "IST", "IST"},
    {"ja_JP", 540, kNoDst, "JST", "JST"},
    {"ko_KR", 540, kNoDst, "KST", "KST"},
    {"zh_CN", 480, kNoDst, "CST", "CST"},
    {"zh_HK", 480, kNoDst, "HKT", "HKT"},
    {"zh_TW", 480, kNoDst, "CST", "CST"},
};

constexpr int kZoneCount = static_cast<int>(std::size(kZones));

bool fits(const RnTimeZoneRecord& record, int offsetMinutes, bool daylight) {
  if (daylight) return record.observesDaylight && record.offsetMinutes + 60 == offsetMinutes;
  return record.offsetMinutes == offsetMinutes;
}

}  // namespace

RnTimeZoneRows timeZoneRows(const char* locale) {
  if (locale == nullptr) return {nullptr, 0};
  for (int first = 0; first < kZoneCount; ++first) {
    if (kZones[first].locale == nullptr || std::strcmp(kZones[first].locale, locale) != 0) continue;
    int end = first + 1;
    while (end < kZoneCount && kZones[end].locale == nullptr) ++end;
    return {&kZones[first], end - first};
  }
  return {nullptr, 0};
}

const char* timeZoneName(const char* locale, int offsetMinutes, bool daylight,
                         bool processObservesDaylight) {
  const RnTimeZoneRows rows = timeZoneRows(locale);
  const RnTimeZoneRecord* chosen = nullptr;
  for (int i = 0; i < rows.count; ++i) {
    const RnTimeZoneRecord& record = rows.first[i];
    if (!fits(record, offsetMinutes, daylight)) continue;
    if (chosen == nullptr || record.observesDaylight == processObservesDaylight) chosen = &record;
    if (record.observesDaylight == processObservesDaylight) break;
  }
  if (chosen == nullptr) return nullptr;
  return daylight ? chosen->daylightName : chosen->standardName;
}

}  // namespace zu::internal
