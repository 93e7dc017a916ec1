// The static locale map: one row per supported locale, generated from ICU's
// locale ids (see tools/localemap).
//
// Row 0 is a placeholder that no search matches; rows 1 to 190 are sorted by
// name under a case-insensitive comparison, so that they can be searched by
// binary search.
#pragma once

#include <cstdint>

namespace zu::internal {

struct RnLocaleMapRow {
  const char* name;      // canonical name, e.g. "ar_AE"
  const char* descName;  // descriptive platform name, e.g. "Arabic_U.A.E."
  const char* codeSet;   // e.g. "iso88596"
  uint32_t lcid;         // published platform locale id, e.g. 14337
};

inline constexpr int kLocaleMapRows = 191;

extern const RnLocaleMapRow kLocaleMap[kLocaleMapRows];

// The row of `name` among rows 1 to 190 (case-insensitive), 0 when absent.
int findLocaleMapRow(const char* name);

}  // namespace zu::internal
