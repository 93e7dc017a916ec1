#include "zu/locale/internal/RnDataTable.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace zu::internal {

namespace {

uint32_t hashName(const char* name) {
  uint32_t hash = 2166136261u;
  for (; *name != '\0'; ++name) hash = (hash ^ static_cast<unsigned char>(*name)) * 16777619u;
  return hash;
}

// An open-addressing index over the records' names, built once: a name is
// found with one hash and, as a rule, one comparison.
class RecordIndex {
 public:
  RecordIndex() {
    std::size_t size = 16;
    while (size < 2 * kRnDataRecordCount) size *= 2;
    slots_.assign(size, nullptr);
    mask_ = size - 1;
    for (unsigned int i = 0; i < kRnDataRecordCount; ++i) {
      std::size_t slot = hashName(kRnDataRecords[i].fields[kFieldName]) & mask_;
      while (slots_[slot] != nullptr) slot = (slot + 1) & mask_;
      slots_[slot] = &kRnDataRecords[i];
    }
  }

  const RnDataRecord* find(const char* name) const {
    for (std::size_t slot = hashName(name) & mask_; slots_[slot] != nullptr;
         slot = (slot + 1) & mask_) {
      if (std::strcmp(slots_[slot]->fields[kFieldName], name) == 0) return slots_[slot];
    }
    return nullptr;
  }

 private:
  std::vector<const RnDataRecord*> slots_;
  std::size_t mask_ = 0;
};

}  // namespace

const RnDataRecord* findRnDataRecord(const char* name) {
  static const RecordIndex index;
  return index.find(name);
}

}  // namespace zu::internal
