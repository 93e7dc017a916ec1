#include "zu/locale/internal/RnDataTable.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace zu::internal {

const RnDataRecord* findRnDataRecord(const char* name, size_t length) {
  const std::string_view wanted(name, length);
  const RnDataRecord* end = kRnDataRecords + kRnDataRecordCount;
  const RnDataRecord* found =
      std::lower_bound(kRnDataRecords, end, wanted, [](const RnDataRecord& record, std::string_view key) {
        return std::string_view(record.fields[kFieldName]) < key;
      });
  if (found == end || std::string_view(found->fields[kFieldName]) != wanted) return nullptr;
  return found;
}

}  // namespace zu::internal
