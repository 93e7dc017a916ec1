#include "zu/locale/internal/RnDataTable.h"

#include <algorithm>
#include <cstring>

namespace zu::internal {

const RnDataRecord* findRnDataRecord(const char* name) {
  const RnDataRecord* end = kRnDataRecords + kRnDataRecordCount;
  // strcmp compares as unsigned bytes, the order of the table.
  const RnDataRecord* found = std::lower_bound(
      kRnDataRecords, end, name,
      [](const RnDataRecord& record, const char* key) { return std::strcmp(record.fields[kFieldName], key) < 0; });
  if (found == end || std::strcmp(found->fields[kFieldName], name) != 0) return nullptr;
  return found;
}

}  // namespace zu::internal
