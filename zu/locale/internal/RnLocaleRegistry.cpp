#include "zu/locale/internal/RnLocaleRegistry.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "zu/core/zuException.h"

namespace zu::internal {

RnLocaleRegistry::~RnLocaleRegistry() {
  for (RnRunTimeDesc_s* entry : entries_) delete entry;
}

RnLocaleRegistry* RnLocaleRegistry::current() {
  return static_cast<RnLocaleRegistry*>(
      zuThreadLocalStorage::getThreadStorage(zuThreadLocalStorage::eLocaleCache));
}

RnLocaleRegistry& RnLocaleRegistry::currentOrCreate() {
  RnLocaleRegistry* registry = current();
  if (registry == nullptr) {
    registry = new (std::nothrow) RnLocaleRegistry;
    if (registry == nullptr) throw zuExMemory();
    zuThreadLocalStorage::setThreadStorage(zuThreadLocalStorage::eLocaleCache, registry);
  }
  return *registry;
}

size_t RnLocaleRegistry::lowerBound(const char* name) const {
  const auto found = std::lower_bound(entries_.begin(), entries_.end(), name,
                                      [](const RnRunTimeDesc_s* entry, const char* wanted) {
                                        return std::strcmp(entry->name, wanted) < 0;
                                      });
  return static_cast<size_t>(found - entries_.begin());
}

unsigned int RnLocaleRegistry::find(const char* name) const {
  const size_t index = lowerBound(name);
  if (index < entries_.size() && std::strcmp(entries_[index]->name, name) == 0) {
    return static_cast<unsigned int>(index + 1);
  }
  return 0;
}

RnRunTimeDesc_s* RnLocaleRegistry::at(unsigned int position) const {
  return position >= 1 && position <= entries_.size() ? entries_[position - 1] : nullptr;
}

void RnLocaleRegistry::insert(RnRunTimeDesc_s* entry) {
  const size_t index = lowerBound(entry->name);
  if (index < entries_.size() && std::strcmp(entries_[index]->name, entry->name) == 0) {
    delete entries_[index];
    entries_[index] = entry;
    return;
  }
  try {
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(index), entry);
  } catch (const std::bad_alloc&) {
    delete entry;
    throw zuExMemory();
  }
}

bool RnLocaleRegistry::remove(const RnRunTimeDesc_s* entry) {
  const auto found = std::find(entries_.begin(), entries_.end(), entry);
  if (found == entries_.end()) return false;
  entries_.erase(found);
  return true;
}

void RnLocaleRegistry::clearExceptPlaceholder() {
  const auto isPlaceholder = [](const RnRunTimeDesc_s* entry) {
    return std::strcmp(entry->name, "x") == 0 && std::strcmp(entry->descName, "XXX") == 0;
  };
  const auto kept = std::stable_partition(entries_.begin(), entries_.end(), isPlaceholder);
  for (auto it = kept; it != entries_.end(); ++it) delete *it;
  entries_.erase(kept, entries_.end());
}

}  // namespace zu::internal
