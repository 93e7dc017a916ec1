// The calling thread's run-time locale data, kept in its storage slot 4.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "zu/core/zuString.h"
#include "zu/locale/RnData.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

// Raised whenever some thread's run-time data changes or goes, so that
// whatever was derived from locale data can tell it is out of date.
inline std::atomic<uint64_t> gRunTimeDataGeneration{0};

inline void noteRunTimeDataChange() {
  gRunTimeDataGeneration.fetch_add(1, std::memory_order_acq_rel);
}

class RnRunTimeStore : public zuThreadStorage {
 public:
  ~RnRunTimeStore() override { noteRunTimeDataChange(); }

  // The calling thread's store; null when it has none and `create` is false.
  static RnRunTimeStore* current(bool create);

  // The record of exactly `name`, or null.
  RnRunTimeData_s* find(std::string_view name) const;
  // The record of `name`, made empty when missing.
  RnRunTimeData_s* findOrAdd(std::string_view name);
  // Destroys the record of `name`; false when there was none.
  bool remove(std::string_view name);

 private:
  struct Entry {
    zuString name;
    std::unique_ptr<RnRunTimeData_s> data;  // stable address for RnData objects
  };
  std::vector<Entry> entries_;
};

// Whether the calling thread has run-time locale data or a registry of
// locales of its own, either of which can give a locale name other data
// than the built-in tables. Answered from a per-thread memo while no
// thread's slot for either has changed since the thread last asked.
bool threadHasOwnLocales();

// The run-time entry standing for record field `field`, or null for fields
// that run-time data does not hold (name, combining pattern, alphabet,
// typefaces).
const zuString* runTimeField(const RnRunTimeData_s& data, int field);

}  // namespace zu::internal
