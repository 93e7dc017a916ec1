// The calling thread's registry of user-defined locales, kept in its
// thread-local storage slot for the locale cache and released with the
// thread's storage.
//
// Entries are ordered by name (byte order) and found by binary search; their
// positions count from 1, so that 0 can mean "absent" and the negated
// position serves as a locale handle.
#pragma once

#include <cstddef>
#include <vector>

#include "zu/locale/RnLocale.h"
#include "zu/runtime/zuThreadLocalStorage.h"

namespace zu::internal {

class RnLocaleRegistry : public zuThreadStorage {
 public:
  ~RnLocaleRegistry() override;

  // The calling thread's registry; null when it has none yet.
  static RnLocaleRegistry* current();
  // The calling thread's registry, created on first use. Throws zuExMemory.
  static RnLocaleRegistry& currentOrCreate();

  // The position of an exactly matching name, 0 when absent.
  unsigned int find(const char* name) const;
  // The entry at a position, null when out of range.
  RnRunTimeDesc_s* at(unsigned int position) const;
  // Takes ownership of `entry`, freeing an entry of the same name first.
  // Throws zuExMemory (and frees `entry`) when the registry cannot grow.
  void insert(RnRunTimeDesc_s* entry);
  // Takes `entry` out of the registry; false when it is not there.
  bool remove(const RnRunTimeDesc_s* entry);
  // Frees every entry except the placeholder named "x" with the descriptive
  // name "XXX".
  void clearExceptPlaceholder();

 private:
  // The first position whose name is not below `name`, counting from 0.
  size_t lowerBound(const char* name) const;

  std::vector<RnRunTimeDesc_s*> entries_;
};

}  // namespace zu::internal
